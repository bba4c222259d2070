// The readers of pictures and models, when memory runs out at any of their allocations: a failure or
// std::bad_alloc, no file left open, and what was being filled can be filled again and deleted.
#include "models/MS3DModel.h"
#include "models/ModelFactory.h"
#include "models/VRXModel.h"
#include "tests/starved/Shortage.h"
#include "tests/support/CapturedErrors.h"
#include "textures/PNGReader.h"
#include "textures/TGAReader.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace tamor::test
{
namespace
{
void starvePictureReader(bool (*read)(Image&, TextureKey), const std::string& path)
{
    const CapturedErrors errors;
    const TextureKey key = {path, 0};
    const int descriptors = openDescriptors();
    const int refused = starve([&](Shortage& shortage) {
        Image image;
        bool isRead = false;

        const bool isThrough = shortage.during([&] { isRead = read(image, key); });

        EXPECT_EQ(isThrough && isRead, !shortage.hasCome());
        image.clear(2, 2);
        EXPECT_EQ(image.pixels[3], 1.0F);
    });
    EXPECT_GE(refused, 4);
    EXPECT_EQ(openDescriptors(), descriptors);
}

TEST(StarvedReadTGA, ClosesItsFileAndLeavesAnImage)
{
    starvePictureReader(readTGA, TAMOR_TESTS "/textures/fuzz/tga/runs-24");
}

TEST(StarvedReadPNG, ClosesItsFileAndLeavesAnImage)
{
    starvePictureReader(readPNG, TAMOR_TESTS "/textures/fuzz/png/none");
}

TEST(StarvedImage, StaysOneWhenItCannotGrow)
{
    const int refused = starve([](Shortage& shortage) {
        Image image;

        shortage.during([&] {
            image.clear(4, 4);
            image.blur(1);
            image.allocate(8, 8);
        });

        // What it says that it has is there.
        image.invert(true);
        image.clear(2, 2);
    });
    EXPECT_GE(refused, 4);
}

void deleteBones(const Model& model)
{
    for (const Bone* bone : model.bones)
        delete bone;
}

TEST(StarvedMS3DModel, ClosesItsFileAndHasNoBoneThatIsNone)
{
    const CapturedErrors errors;
    const std::string path = TAMOR_TESTS "/models/fuzz/corpus/full";
    const int descriptors = openDescriptors();
    const int refused = starve([&](Shortage& shortage) {
        MS3DModel model;
        std::int32_t isRead = 0;

        const bool isThrough = shortage.during([&] { isRead = model.load(path); });

        EXPECT_EQ(isThrough && isRead == 1, !shortage.hasCome());
        for (const Bone* bone : model.bones)
            EXPECT_NE(bone, nullptr);
        model.prepare(1);
        model.update(0.5F);
        model.render(false);
        deleteBones(model);
    });
    EXPECT_GE(refused, 40);
    EXPECT_EQ(openDescriptors(), descriptors);
}

TEST(StarvedVRXModel, IsReadWrittenAndDeleted)
{
    const CapturedErrors errors;
    const std::string path = TAMOR_TESTS "/models/fuzz/corpus/full";
    const int descriptors = openDescriptors();
    const int refused = starve([&](Shortage& shortage) {
        VRXModel model;
        model.makeCube();
        bool isDone = false;

        const bool isThrough =
            shortage.during([&] { isDone = model.load(path) == 1 && model.save() == 1; });

        EXPECT_EQ(isThrough && isDone, !shortage.hasCome());
    });
    EXPECT_GE(refused, 2);
    EXPECT_EQ(openDescriptors(), descriptors);
}

TEST(StarvedModel, IsMadePosedAndDrawn)
{
    const CapturedErrors errors;
    for (const char* const name : {"cube", "teapot", TAMOR_TESTS "/models/fuzz/corpus/full.vrx"}) {
        const int refused = starve([name](Shortage& shortage) {
            Model* made = nullptr;
            shortage.during([&] {
                made = createModel(name);
                made->prepare(1);
                made->computeNormals(false);
                made->render(false);
            });
            const std::unique_ptr<Model> model(made);
            EXPECT_TRUE(model != nullptr || shortage.hasCome());
            if (model == nullptr)
                return;
            model->computeNormals(true);
            model->render(true);
        });
        EXPECT_GE(refused, 4) << name;
    }
}
} // namespace
} // namespace tamor::test

#include "models/VRXModel.h"
#include "tests/models/ModelBuilding.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cstring>

using namespace tamor;
using namespace tamor::test;

namespace
{
/// A call of zlib's `compress`.
struct CompressCall
{
    bool hasDestination = false;
    uLong room = 0;
    std::vector<std::uint8_t> source;
};

std::vector<CompressCall> compressCalls;
} // namespace

/// This program's own, which notes its calls on their way to zlib.
extern "C" int compress(Bytef* destination, uLongf* room, const Bytef* source, uLong size)
{
    compressCalls.push_back({destination != nullptr, *room, {source, source + size}});
    return compress2(destination, room, source, size, Z_DEFAULT_COMPRESSION);
}

namespace
{
TEST(VRXModel, OpensAFileAndReadsNothing)
{
    const TemporaryDirectory directory;
    directory.write("x.vrx", "anything");
    const CapturedErrors errors;
    VRXModel model;

    EXPECT_EQ(model.load("x.vrx"), 1);

    EXPECT_TRUE(model.vertices.empty() && model.faces.empty() && model.bones.empty());
    EXPECT_EQ(errors.text(), "");
}

TEST(VRXModel, SaysSoWhenThereIsNoFile)
{
    const TemporaryDirectory directory;
    const CapturedErrors errors;
    VRXModel model;

    EXPECT_EQ(model.load("x.vrx"), 0);

    EXPECT_EQ(errors.text(), "'x.vrx': Invalid model filename\n");
}

TEST(VRXModel, SavesAnEmptyModel)
{
    const TemporaryDirectory directory;
    const CapturedErrors errors;
    VRXModel model;

    EXPECT_EQ(model.save(), 1);

    EXPECT_EQ(errors.text(), "writing\n");
    EXPECT_TRUE(makeVRXBody(model).empty());
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST(VRXModel, SavesAFullModelWithoutAFile)
{
    const TemporaryDirectory directory;
    const CapturedErrors errors;
    VRXModel model;
    model.makeTeapot();
    model.restVertices = model.vertices;
    Bone bone;
    model.bones = {&bone};
    model.materials.resize(2);

    EXPECT_EQ(model.save(), 1);

    EXPECT_EQ(errors.text(), "writing\n");
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST(VRXModel, HandsTheBodyToZlibTwice)
{
    const CapturedErrors errors;
    VRXModel model;
    model.makeCube();
    compressCalls.clear();

    model.save();

    ASSERT_EQ(compressCalls.size(), 2U);
    EXPECT_FALSE(compressCalls[0].hasDestination);
    EXPECT_EQ(compressCalls[0].source, makeVRXBody(model));
    EXPECT_EQ(compressCalls[1].source, makeVRXBody(model));
    // As much room as the first call has left the length at.
    uLongf length = compressCalls[0].room;
    compress2(nullptr, &length, makeVRXBody(model).data(), 768, Z_DEFAULT_COMPRESSION);
    EXPECT_EQ(compressCalls[1].room, length);
}

TEST(VRXModel, IsReleasedAndDeletedThroughTheBase)
{
    std::unique_ptr<Model> model = std::make_unique<VRXModel>();

    EXPECT_EQ(model->release(), 0);
}

TEST(VRXBody, HasTheSizeOfItsSections)
{
    BonedModel model;
    model.addBone();
    model.addBone();
    model.vertices.resize(99); // not counted
    model.restVertices.resize(3);
    model.faces.resize(5);
    model.materials.resize(7);

    EXPECT_EQ(makeVRXBody(model).size(), 2U * 208 + 3 * 44 + 5 * 64 + 7 * 80);
}

TEST(VRXBody, CopiesEachBoneFromItsStart)
{
    BonedModel model;
    model.addBone().flags = 0x01020304;
    model.addBone().flags = 0x0A0B0C0D;

    const std::vector<std::uint8_t> body = makeVRXBody(model);

    for (std::size_t i = 0; i < 2; ++i) {
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(model.bones[i]);
        EXPECT_TRUE(std::equal(bytes, bytes + 208, body.begin() + static_cast<long>(i * 208)));
    }
}

TEST(VRXBody, CopiesTheModelObjectAndNotTheElements)
{
    Model model;
    model.restVertices.resize(20);
    model.faces.resize(1);
    model.materials.resize(20);
    model.position = {1, 2, 3};
    model.renderMode = 0x01020304;

    const std::vector<std::uint8_t> body = makeVRXBody(model);

    const auto bytesFrom = [&](const void* member, std::size_t count) {
        const auto* bytes = static_cast<const std::uint8_t*>(member);
        return std::vector<std::uint8_t>(bytes, bytes + count);
    };
    const auto section = [&](std::size_t from, std::size_t count) {
        const auto begin = body.begin() + static_cast<long>(from);
        return std::vector<std::uint8_t>(begin, begin + static_cast<long>(count));
    };
    // The rest of the object, from the member to the end of `renderMode`; then zeros.
    const auto distance = [&](const void* member) {
        return static_cast<std::size_t>(
            reinterpret_cast<const std::uint8_t*>(&model.renderMode + 1) -
            static_cast<const std::uint8_t*>(member));
    };
    const std::size_t verticesLength = distance(&model.restVertices);
    EXPECT_EQ(section(0, verticesLength), bytesFrom(&model.restVertices, verticesLength));
    EXPECT_EQ(section(verticesLength, 880 - verticesLength),
              std::vector<std::uint8_t>(880 - verticesLength, 0));
    // A section that ends before the object does.
    EXPECT_EQ(section(880, 64), bytesFrom(&model.faces, 64));
    const std::size_t materialsLength = distance(&model.materials);
    EXPECT_EQ(section(944, materialsLength), bytesFrom(&model.materials, materialsLength));
    EXPECT_EQ(section(944 + materialsLength, 1600 - materialsLength),
              std::vector<std::uint8_t>(1600 - materialsLength, 0));
}
} // namespace

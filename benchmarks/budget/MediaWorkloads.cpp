#include "art/TGAWriter.h"
#include "benchmarks/budget/Workload.h"
#include "benchmarks/models/Torus.h"
#include "benchmarks/support/NoOpWindow.h"
#include "benchmarks/support/UpdateReceiver.h"
#include "benchmarks/textures/SmallPNG.h"
#include "generator/MeshGenerator.h"
#include "kernel/Kernel.h"
#include "models/MS3DModel.h"
#include "models/internal/CornerArrays.h"
#include "textures/Font.h"
#include "textures/Image.h"
#include "textures/PNGReader.h"
#include "textures/TGAReader.h"

#include <array>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace tamor::bench
{
namespace
{
using Work = std::function<bool()>;

constexpr std::int32_t side = 256;

Work sendToThreeCatchers()
{
    auto* const kernel = new Kernel;
    const UpdateReceiver* const last = addThreeReceivers(*kernel);
    return [kernel, last, event = updateEvent()] {
        for (int count = 0; count < 10000; ++count)
            kernel->sendEvent(ObjectRef<EventCatcher>(), event);
        return last->received == 160000;
    };
}

/// Opaque pixels of random colours, -0.25 to 1.25.
Image scatteredImage()
{
    std::mt19937 random(1);
    Image image;
    image.clear(side, side);
    for (std::size_t n = 0; n < image.pixelCount() * 4; n++)
        if (n % 4 != 3)
            image.pixels[n] = static_cast<float>(random() % 1500) / 1000.0F - 0.25F;
    return image;
}

/// A procedure on a picture, which it changes.
Work onAnImage(const std::function<void(Image&)>& change)
{
    const Image image = scatteredImage();
    return [image, change] {
        Image changed = image;
        const float before = image.pixels[4 * (side + 1)];
        change(changed);
        return changed.pixels[4 * (side + 1)] != before;
    };
}

/// \param longestRun  of pixels of one colour
Work readOfTGA(std::uint32_t longestRun)
{
    std::mt19937 random(11);
    std::vector<std::uint8_t> bytes;
    while (bytes.size() < std::size_t{4} * side * side) {
        const auto colour = static_cast<std::uint32_t>(random());
        for (std::size_t left = 1 + random() % longestRun; left > 0; --left)
            for (int shift = 0; shift < 32; shift += 8)
                bytes.push_back(static_cast<std::uint8_t>(colour >> shift));
    }
    const std::string path = writeTemporary("tamor-budget.tga", "");
    tools::writeTGA(path, side, side, 4, bytes);
    return [path] {
        Image image;
        return readTGA(image, {path, 0}) && image.pixelCount() == std::size_t{side} * side;
    };
}

Work readOfPNG()
{
    const std::string path = writeTemporary("tamor-budget.png", makeSmallPNG(frontOfOurs, 10000));
    return [path] {
        Image image;
        return readPNG(image, {path, 0}) && image.pixels[23] == smallPNGsPixels()[23];
    };
}

/// The bytes and the mipmaps.
Work upload()
{
    openNoOpWindow();
    return [image = scatteredImage()] {
        std::uint32_t id = 0;
        uploadTexture(id, image, {"", 0});
        return id != 0;
    };
}

Font loadedFont()
{
    openNoOpWindow();
    Font font;
    font.load(TAMOR_TEST_FONT);
    font.setScale(0.04F, 0.05F);
    return font;
}

std::vector<std::string> shortStrings()
{
    std::vector<std::string> strings(1000);
    for (std::size_t number = 0; number < strings.size(); ++number)
        strings[number] = "label number " + std::to_string(number);
    return strings;
}

MS3DModel* loadedTorus()
{
    auto* const model = new MS3DModel;
    model->load(writeTemporary("tamor-budget.ms3d", makeTorusMS3D()));
    model->prepare(0);
    return model;
}

const Workload workloads[] = {
    {"kernel.send", sendToThreeCatchers},
    {"image.readTGA", [] { return readOfTGA(1); }},
    {"image.readTGA.runs", [] { return readOfTGA(60); }},
    {"image.readPNG", readOfPNG},
    {"image.upload", upload},
    {"image.invert", [] { return onAnImage([](Image& image) { image.invert(false); }); }},
    {"image.clamp",
     [] {
         return onAnImage([](Image& image) {
             image.clamp();
             image.invert(false);
         });
     }},
    {"image.normalise", [] { return onAnImage([](Image& image) { image.normalise(); }); }},
    {"image.scroll",
     [] { return onAnImage([](Image& image) { image.scroll(3, -5, 0, 0, Vector(), false); }); }},
    {"image.blur", [] { return onAnImage([](Image& image) { image.blur(4); }); }},
    {"font.load",
     [] {
         openNoOpWindow();
         return [] { return loadedFont().textWidth("%s", "Tamor") > 0.0F; };
     }},
    {"font.print",
     [] {
         return [font = loadedFont(), strings = shortStrings()] {
             for (const std::string& text : strings)
                 font.print("%s", text.c_str());
             return true;
         };
     }},
    {"font.textWidth",
     [] {
         return [font = loadedFont(), strings = shortStrings()] {
             float width = 0.0F;
             for (const std::string& text : strings)
                 width += font.textWidth("%s", text.c_str());
             return width > 0.0F;
         };
     }},
    {"model.loadMS3D",
     [] {
         return [path = writeTemporary("tamor-budget.ms3d", makeTorusMS3D())] {
             auto* const model = new MS3DModel;
             return model->load(path) && model->vertices.size() == torusVertices;
         };
     }},
    {"model.pose",
     [] {
         return [model = loadedTorus()] {
             const float before = model->vertices[1000].position.x;
             model->update(7.5F);
             for (Bone* bone : model->rootBones)
                 model->poseBone(bone, Matrix(), false);
             return model->vertices[1000].position.x != before;
         };
     }},
    {"terrain.fractal",
     [] {
         return [] {
             std::srand(1);
             return fractalTerrain(side, 0.5F, 0.5F, 100, 100, 100).faces.size() ==
                    std::size_t{2} * side * side;
         };
     }},
};
} // namespace

std::span<const Workload> mediaWorkloads()
{
    return workloads;
}
} // namespace tamor::bench

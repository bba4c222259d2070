#include "art/TGAWriter.h"
#include "benchmarks/growth/Row.h"
#include "benchmarks/gui/Scene.h"
#include "benchmarks/models/Torus.h"
#include "benchmarks/textures/SmallPNG.h"
#include "generator/MeshGenerator.h"
#include "gui/GLWidget.h"
#include "models/MS3DModel.h"
#include "script/ScriptInterpreter.h"
#include "textures/PNGReader.h"
#include "textures/TGAReader.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace tamor::bench
{
namespace
{
using Work = std::function<bool()>;

constexpr std::size_t kilo = 1000;
constexpr std::size_t mega = 1000 * kilo;

/// Forgets all widgets first.
Work loadOf(const std::string& layout, std::size_t widgets)
{
    openScene();
    return [layout, widgets] {
        loadScene(layout);
        return GLWidget::widgets.size() >= widgets;
    };
}

/// Quadratic, since each line makes the buttons of all tabs anew.
Work loadOfTabs(std::size_t count)
{
    std::string layout = "THEM default.theme x\nCADD TWin pages NULL -1.2 -0.9\n";
    for (std::size_t tab = 0; tab < count; ++tab)
        layout += "NTAB pages " + std::to_string(tab) + " A tab\n";
    return loadOf(layout + "SOLID\n", count);
}

Work loadOfWidgets(std::size_t count)
{
    return loadOf(layoutOf(static_cast<int>(count)), count);
}

Work frameOfWidgets(std::size_t count)
{
    loadOfWidgets(count)();
    return [count] {
        drawFrame();
        return GLWidget::widgets.size() >= count;
    };
}

/// \param size  of the file, in bytes
Work readOfTGA(std::size_t size)
{
    const std::int32_t width = size < mega ? 16 : 1024;
    const auto height = static_cast<std::int32_t>(size / (4 * static_cast<std::size_t>(width)));
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(4 * width * height));
    std::uint32_t random = 1;
    for (std::uint8_t& byte : bytes) {
        random = random * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(random >> 24);
    }
    const std::string path = writeTemporary("tamor-growth.tga", "");
    tools::writeTGA(path, width, height, 4, bytes);
    return [path, pixels = bytes.size() / 4] {
        Image image;
        const bool isRead = readTGA(image, {path, 0}) && image.pixelCount() == pixels;
        delete[] image.pixels;
        return isRead;
    };
}

Work readOfPNG(std::size_t size)
{
    const std::string path = writeTemporary("tamor-growth.png", makeSmallPNG(frontOfOurs, size));
    return [path] {
        Image image;
        const bool isRead = readPNG(image, {path, 0});
        delete[] image.pixels;
        return isRead;
    };
}

/// A mesh of as many triangles as the file is to have, and no bones.
Work loadOfMS3D(std::size_t size)
{
    const std::size_t count = size / 70;
    std::string text =
        "Frames: 1\nFrame: 1\n\nMeshes: 1\n\"Mesh\" 0 0\n" + std::to_string(count) + "\n";
    for (std::size_t n = 0; n < count; ++n)
        text += "0 0.125000 2.250000 -1.500000 0.5 0.25 -1\n";
    text += "1\n0.0 1.0 0.0\n" + std::to_string(count) + "\n";
    for (std::size_t n = 0; n < count; ++n)
        text += "0 0 1 2 0 0 0 1\n";
    text += "\nMaterials: 0\n\nBones: 0\n";
    const std::string path = writeTemporary("tamor-growth.ms3d", text);
    return [path, count] {
        const auto model = std::make_unique<MS3DModel>();
        return model->load(path) && model->faces.size() == count;
    };
}

Work parseOfScript(std::size_t size)
{
    std::string text;
    while (text.size() < size)
        text += "if (count < limit) { count = count * factor + base; }\n";
    return [text] {
        ScriptInterpreter interpreter;
        std::vector<ScriptToken> list;
        parseText(interpreter, list, text);
        return list.size() > text.size() / 20;
    };
}

/// A bone that moves a vertex, with a key for each frame, halfway between the last two of them.
Work poseOfKeys(std::size_t count)
{
    auto model = std::make_shared<MS3DModel>();
    auto* const bone = new Bone;
    for (std::size_t key = 0; key < count; ++key)
        bone->positionKeys.push_back(
            {static_cast<float>(key), Vector(static_cast<float>(key), 0.0F, 0.0F)});
    bone->rotationKeys = bone->positionKeys;
    bone->attached = {0};
    model->bones = {bone};
    model->rootBones = {bone};
    model->vertices.resize(1);
    model->restVertices.resize(1);
    model->frameCount = static_cast<std::int32_t>(count);
    return [model, bone, at = static_cast<float>(count) - 1.5F] {
        model->update(at);
        model->poseBone(bone, Matrix(), false);
        return bone->position.x == at;
    };
}

Work fractalOfDivisions(std::size_t count)
{
    return [count] {
        std::size_t side = 1;
        while (side * side < count)
            side *= 2;
        return fractalTerrain(static_cast<std::int32_t>(side), 0.5F, 0.5F, 1.0F, 1.0F, 1.0F)
                   .faces.size() == 2 * side * side;
    };
}

Work blurOfPixels(std::size_t count)
{
    Image image;
    image.clear(static_cast<std::int32_t>(count / 100), 100);
    std::fill_n(image.pixels, 4 * image.pixelCount(), 0.5F);
    return [image]() mutable { return image.blur(4) && image.pixels[0] == 0.5F; };
}
} // namespace

std::span<const Row> rows()
{
    static const std::vector<Row> all = {
        {"loadLayout, tabs", "tabs", {1, 10, 100, 1000}, loadOfTabs},
        {"loadLayout, widgets", "widgets", {20, 100, kilo, 10 * kilo, 100 * kilo}, loadOfWidgets},
        {"frame, widgets", "widgets", {20, 100, kilo, 10 * kilo, 100 * kilo}, frameOfWidgets},
        {"readTGA", "bytes", {kilo, 10 * kilo, 100 * kilo, mega, 10 * mega, 100 * mega}, readOfTGA},
        {"readPNG", "bytes", {kilo, 10 * kilo, 100 * kilo, mega, 10 * mega, 100 * mega}, readOfPNG},
        {"MS3DModel::load",
         "bytes",
         {kilo, 10 * kilo, 100 * kilo, mega, 10 * mega, 100 * mega},
         loadOfMS3D},
        // The tokens of a text take forty times its size.
        {"parseText", "bytes", {kilo, 10 * kilo, 100 * kilo, mega, 10 * mega}, parseOfScript},
        {"pose, keys of a bone", "keys", {10, 100, kilo, 10 * kilo}, poseOfKeys},
        {"fractalTerrain",
         "cells",
         {1 << 8, 1 << 12, 1 << 16, 1 << 20, 1 << 22},
         fractalOfDivisions},
        {"Image::blur", "pixels", {kilo, 10 * kilo, 100 * kilo, mega, 10 * mega}, blurOfPixels},
    };
    return all;
}
} // namespace tamor::bench

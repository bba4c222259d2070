/// \file
/// Makes a picture by a chain of procedures:
///
///     tamor-make-texture OUT SIZE PROCEDURE... [--preview | --screenshot FILE]
///
/// OUT is a TGA file, which the engine reads back. A procedure is a word and its numbers:
///
///     invert    clamp    normalise    blur RADIUS
///     perlin OCTAVES FREQUENCY AMPLITUDE FREQUENCY_FACTOR AMPLITUDE_FACTOR
///     scroll DX DY RED GREEN BLUE ALPHA
///     blend THIS_FACTOR OTHER_FACTOR IMAGE
///
/// Clouds in a blue sky, which `scroll` fills in from the side:
///
///     tamor-make-texture noise.tga 256 perlin 6 0.4 1 0.5 0.5 normalise
///     tamor-make-texture sky.tga 256 scroll 256 0 0.2 0.42 0.78 1 blend 8 7 noise.tga --preview
///
/// `--preview` shows the picture until Escape; `--screenshot` shows one frame and writes it to
/// FILE.
#include "platform/GLee.h"

#include "art/TGAWriter.h"
#include "examples/Host.h"
#include "textures/Image.h"
#include "textures/TextureRegistry.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace
{
using namespace tamor;

/// The words of the command line, taken from the front.
struct Words
{
    std::string take() { return place < all.size() ? all[place++] : ""; }
    float number() { return static_cast<float>(std::atof(take().c_str())); }
    std::int32_t integer() { return std::atoi(take().c_str()); }

    std::vector<std::string> all;
    std::size_t place = 0;
};

bool runProcedure(Image& image, const std::string& name, Words& words)
{
    if (name == "invert")
        return image.invert(false);
    if (name == "clamp")
        return image.clamp();
    if (name == "normalise")
        return image.normalise();
    if (name == "blur")
        return image.blur(words.integer());
    // In braces, unlike in a call, the words are taken from left to right.
    if (name == "perlin") {
        const std::int32_t octaves = words.integer();
        const float n[] = {words.number(), words.number(), words.number(), words.number()};
        return image.perlin(octaves, n[0], n[1], n[2], n[3]);
    }
    if (name == "scroll") {
        const std::int32_t move[] = {words.integer(), words.integer()};
        const Vector fill{words.number(), words.number(), words.number(), words.number()};
        return image.scroll(move[0], move[1], 0, 0, fill, false);
    }
    if (name == "blend") {
        const std::int32_t factors[] = {words.integer(), words.integer()};
        Image other;
        return loadImage(other, {words.take(), 0}) &&
               image.blend(static_cast<std::uint32_t>(factors[0]),
                           static_cast<std::uint32_t>(factors[1]), other);
    }
    std::fprintf(stderr, "no such procedure: %s\n", name.c_str());
    return false;
}

/// The pixels as a TGA file has them: bytes, blue first.
std::vector<std::uint8_t> bytesOf(const Image& image)
{
    std::vector<std::uint8_t> bytes;
    for (std::size_t n = 0; n < image.pixelCount() * 4; n += 4) {
        for (const std::size_t channel : {2U, 1U, 0U, 3U}) {
            const float value = std::clamp(image.pixels[n + channel], 0.0F, 1.0F);
            bytes.push_back(static_cast<std::uint8_t>(value * 255.0F + 0.5F));
        }
    }
    return bytes;
}

/// Shows an image on a square in the middle of the window.
class Preview : public EventCatcher
{
public:
    Preview(const ObjectRef<Kernel>& kernel, const Image& newImage, std::string newScreenshot)
        : image(newImage), screenshot(std::move(newScreenshot))
    {
        kernel->addCatcher(this, 1 << CLASS_GRAPHICS | 1 << CLASS_RENDER | 1 << CLASS_KEYBOARD, 0);
    }

    bool handleEvent(Event event) override
    {
        if (event.kind == EV_LOAD_GRAPHICS_RESOURCES) {
            image.clamp(); // an upload takes channels of 0 to 1 only: others would wrap around
            return uploadTexture(texture, image, {"", 0});
        }
        if (event.kind == EV_RENDER) {
            draw();
            return goesOnAfterFrame(screenshot);
        }
        return isNotEscape(event);
    }

private:
    void draw() const
    {
        glClearColor(0.16F, 0.17F, 0.19F, 1.0F);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-4.0 / 3.0, 4.0 / 3.0, 1.0, -1.0, -1.0, 1.0); // the first row of an image is on top
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glEnable(GL_TEXTURE_2D);
        glBindTexture(GL_TEXTURE_2D, texture);
        glColor3f(1.0F, 1.0F, 1.0F);
        glBegin(GL_QUADS);
        for (const Vector& corner : {Vector(0, 0), Vector(1, 0), Vector(1, 1), Vector(0, 1)}) {
            glTexCoord2f(corner.x, corner.y);
            glVertex2f(corner.x * 1.8F - 0.9F, corner.y * 1.8F - 0.9F);
        }
        glEnd();
    }

    Image image;
    std::string screenshot;
    std::uint32_t texture = 0;
};
} // namespace

int main(int argumentCount, char** arguments)
{
    Words words{{arguments + 1, arguments + argumentCount}};
    const std::string screenshot = takeScreenshotOption(words.all);
    const bool isShown = !screenshot.empty() || std::erase(words.all, "--preview") > 0;
    const std::string out = words.take();
    const std::int32_t size = words.integer();
    if (size < 1 || size > 4096) {
        std::fprintf(stderr, "usage: tamor-make-texture OUT SIZE PROCEDURE... "
                             "[--preview | --screenshot FILE]\n");
        return 2;
    }

    Image image;
    image.clear(size, size);
    while (words.place < words.all.size())
        if (!runProcedure(image, words.take(), words))
            return 1;
    if (!tools::writeTGA(out, size, size, 4, bytesOf(image))) {
        std::fprintf(stderr, "%s cannot be written\n", out.c_str());
        return 1;
    }
    return isShown ? runHost<Preview>(image, screenshot) : 0;
}

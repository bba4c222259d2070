/// \file
/// Makes a picture by a chain of procedures:
///
///     tamor-make-texture OUT SIZE PROCEDURE... [--preview | --screenshot FILE]
///
/// OUT is a ".tga" file, which the engine reads back, or a ".ppm" one. A procedure is a word and
/// its numbers: invert; clamp; normalise; blur RADIUS; perlin OCTAVES FREQUENCY AMPLITUDE
/// FREQUENCY_FACTOR AMPLITUDE_FACTOR; scroll DX DY RED GREEN BLUE ALPHA; blend THIS OTHER IMAGE.
/// Clouds in a blue sky, which `scroll` fills in from the side:
///
///     tamor-make-texture noise.tga 256 perlin 6 0.4 1 0.5 0.5 normalise
///     tamor-make-texture sky.tga 256 scroll 256 0 0.2 0.42 0.78 1 blend 8 7 noise.tga --preview
///
/// `--preview` shows the picture until Escape; `--screenshot` shows one frame and writes it to
/// FILE.
#include "platform/GLee.h"

#include "examples/Screenshot.h"
#include "platform/GLRender.h"
#include "platform/SDLInput.h"
#include "textures/Image.h"
#include "textures/TextureRegistry.h"

#include <SDL.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
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
    bool isAtEnd() const { return place >= all.size(); }

    std::vector<std::string> all;
    std::size_t place = 0;
};

/// A number a word: in a chain, arguments are taken from left to right.
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
    if (name == "perlin") {
        const std::int32_t octaves = words.integer();
        const float frequency = words.number();
        const float amplitude = words.number();
        const float frequencyFactor = words.number();
        return image.perlin(octaves, frequency, amplitude, frequencyFactor, words.number());
    }
    if (name == "scroll") {
        const std::int32_t dx = words.integer();
        const std::int32_t dy = words.integer();
        Vector fill;
        for (float* const channel : {&fill.x, &fill.y, &fill.z, &fill.w})
            *channel = words.number();
        return image.scroll(dx, dy, 0, 0, fill, false);
    }
    if (name == "blend") {
        const auto thisFactor = static_cast<std::uint32_t>(words.integer());
        const auto otherFactor = static_cast<std::uint32_t>(words.integer());
        Image other;
        return loadImage(other, {words.take(), 0}) && image.blend(thisFactor, otherFactor, other);
    }
    std::fprintf(stderr, "no such procedure: %s\n", name.c_str());
    return false;
}

char toByte(float channel)
{
    return static_cast<char>(static_cast<int>(std::clamp(channel, 0.0F, 1.0F) * 255.0F + 0.5F));
}

/// A 32-bit TGA file of run packets of one pixel each: the engine reads no other kind than packets.
void writeTGA(const Image& image, std::ofstream& file)
{
    const auto low = [](std::int32_t value) { return static_cast<char>(value & 255); };
    const auto high = [](std::int32_t value) { return static_cast<char>(value >> 8); };
    const char header[18] = {0,
                             0,
                             10,
                             0,
                             0,
                             0,
                             0,
                             0,
                             0,
                             0,
                             0,
                             0,
                             low(image.width),
                             high(image.width),
                             low(image.height),
                             high(image.height),
                             32,
                             8};
    file.write(header, sizeof header);
    for (std::size_t n = 0; n < image.pixelCount() * 4; n += 4) {
        const float* const pixel = image.pixels + n;
        file << '\x80' << toByte(pixel[2]) << toByte(pixel[1]) << toByte(pixel[0])
             << toByte(pixel[3]);
    }
}

void writePPM(const Image& image, std::ofstream& file)
{
    file << "P6\n" << image.width << ' ' << image.height << "\n255\n";
    for (std::size_t n = 0; n < image.pixelCount() * 4; n += 4)
        for (std::size_t c = 0; c < 3; c++)
            file << toByte(image.pixels[n + c]);
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
        switch (event.kind) {
        case EV_LOAD_GRAPHICS_RESOURCES:
            // An upload takes channels of 0 to 1 only: others would wrap around.
            image.clamp();
            return uploadTexture(texture, image, {"", 0});
        case EV_KEYBOARD:
            return event.keyboard.held[SDLK_ESCAPE] == 0;
        case EV_RENDER:
            draw();
            if (!screenshot.empty())
                writeScreenshot(screenshot);
            return screenshot.empty();
        default:
            return true;
        }
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
    const std::string out = words.take();
    const std::int32_t size = words.integer();
    if (size < 1 || size > 4096) {
        std::fprintf(stderr, "usage: tamor-make-texture OUT SIZE PROCEDURE... "
                             "[--preview | --screenshot FILE]\n");
        return 2;
    }

    Image image;
    image.clear(size, size);
    bool isShown = false;
    std::string screenshot;
    while (!words.isAtEnd()) {
        const std::string word = words.take();
        if (word == "--preview" || word == "--screenshot") {
            isShown = true;
            screenshot = words.take();
        } else if (!runProcedure(image, word, words)) {
            return 1;
        }
    }

    std::ofstream file(out, std::ios::binary);
    if (out.ends_with(".tga"))
        writeTGA(image, file);
    else
        writePPM(image, file);
    if (!isShown)
        return 0;

    const ObjectRef<Kernel> kernel = new Kernel;
    const ObjectRef<EventCatcher> input = new SDLInput(kernel, false);
    const ObjectRef<EventCatcher> render = new GLRender(kernel);
    const ObjectRef<EventCatcher> preview = new Preview(kernel, image, screenshot);
    kernel->run();
    collectAll();
    return 0;
}

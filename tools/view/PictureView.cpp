#include "tools/view/PictureView.h"

#include "textures/TextureRegistry.h"
#include "tools/view/Overlay.h"
#include "tools/view/WidgetTree.h"

#include <GL/gl.h>
#include <SDL.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>

namespace tamor::view
{
namespace
{
constexpr std::size_t channels = 4;
constexpr int largestZoom = 64;
constexpr int smallestZoom = -16; // a sixteenth
constexpr int leastOutlinedZoom = 4;
constexpr int squareSide = 8; // of the background, in pixels

std::array<GLint, 4> windowArea()
{
    std::array<GLint, 4> viewport;
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    return viewport;
}

bool isPNG(const std::string& name)
{
    return name.ends_with(".png");
}

std::uint8_t toByte(float value)
{
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0F, 1.0F) * 255.0F));
}

/// The engine's image with its first row, the lowest, at the end.
BytePicture turnedOver(const Image& image)
{
    BytePicture result{image.width, image.height, {}};
    const std::size_t rowLength = channels * static_cast<std::size_t>(image.width);
    for (std::size_t row = static_cast<std::size_t>(image.height); row-- > 0;)
        for (std::size_t i = 0; i < rowLength; i++)
            result.bytes.push_back(toByte(image.pixels[row * rowLength + i]));
    return result;
}

std::string number(float value)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.3f", static_cast<double>(value));
    return text.data();
}
} // namespace

PictureView::PictureView(std::string newFile) : file(std::move(newFile)) {}

bool PictureView::isThere() const
{
    return std::ifstream(file).is_open();
}

std::optional<check::FileKind> PictureView::kind() const
{
    return isPNG(file) ? check::FileKind::png : check::FileKind::tga;
}

std::string PictureView::read(const std::set<std::string>&)
{
    const int oldWidth = picture.width;
    const int oldHeight = picture.height;
    readFile();
    if (picture.width != oldWidth || picture.height != oldHeight)
        fitToWindow();
    upload();
    const std::string size =
        std::to_string(picture.width) + " x " + std::to_string(picture.height) + " pixels";
    return remark.empty() ? size : size + "; " + remark;
}

void PictureView::readFile()
{
    Image image;
    const bool isReadByTheEngine = loadImage(image, {file, 0});
    remark.clear();
    if (isPNG(file)) {
        BytePicture next;
        const std::string fault = readPNGFile(next, file);
        if (fault.empty())
            picture = std::move(next);
        remark = !fault.empty() ? fault : isReadByTheEngine ? "" : "the engine does not read it";
    } else if (isReadByTheEngine) {
        picture = turnedOver(image);
    } else {
        remark = "the engine does not read it";
    }
    // Nothing else frees the pixels of an image.
    delete[] image.pixels;
}

void PictureView::upload()
{
    std::vector<std::uint8_t> bytes = picture.bytes;
    if (channel != Channel::ALL) {
        const std::size_t source = static_cast<std::size_t>(channel) - 1;
        for (std::size_t i = 0; i + channels <= bytes.size(); i += channels) {
            const std::uint8_t value = bytes[i + source];
            bytes[i] = bytes[i + 1] = bytes[i + 2] = value;
            bytes[i + 3] = 255;
        }
    }
    if (texture == 0)
        glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, picture.width, picture.height, 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, bytes.data());
    glBindTexture(GL_TEXTURE_2D, 0);
}

/// The largest scale at which all of the picture is seen, but for a margin.
void PictureView::fitToWindow()
{
    const std::array<GLint, 4> area = windowArea();
    shiftX = 0;
    shiftY = 0;
    zoom = largestZoom;
    while (zoom > smallestZoom &&
           (scaled(picture.width) > area[2] * 9 / 10 || scaled(picture.height) > area[3] * 9 / 10))
        zoom = zoom > 1 ? zoom - 1 : zoom == 1 ? -2 : zoom - 1;
}

int PictureView::scaled(int length) const
{
    return zoom > 0 ? length * zoom : length / -zoom;
}

int PictureView::left() const
{
    return windowArea()[2] / 2 + shiftX - scaled(picture.width) / 2;
}

int PictureView::top() const
{
    return windowArea()[3] / 2 + shiftY - scaled(picture.height) / 2;
}

void PictureView::takeKeys(const KeyboardState& keys)
{
    constexpr std::array<std::pair<std::size_t, Channel>, 5> channelKeys{{{'c', Channel::ALL},
                                                                          {'r', Channel::RED},
                                                                          {'g', Channel::GREEN},
                                                                          {'b', Channel::BLUE},
                                                                          {'a', Channel::ALPHA}}};
    for (const auto& [key, keyChannel] : channelKeys) {
        if (keys.pressed[key] == 0)
            continue;
        channel = keyChannel;
        upload();
    }
    takeWheel(zoomOf(keys));
    if (keys.pressed['0'] != 0)
        fitToWindow();
    if (keys.pressed[SDLK_F1] != 0)
        isTold = !isTold;
}

void PictureView::takePointer(const MouseState& pointer)
{
    pointerX = pointer.x;
    pointerY = pointer.y;
    if (pointer.left != 0 && wasLeft) {
        shiftX += pointer.dx;
        shiftY -= pointer.dy;
    }
    wasLeft = pointer.left != 0;
}

void PictureView::takeWheel(int notches)
{
    for (; notches > 0 && zoom < largestZoom; notches--)
        zoom = zoom == -2 ? 1 : zoom + 1;
    for (; notches < 0 && zoom > smallestZoom; notches++)
        zoom = zoom == 1 ? -2 : zoom - 1;
}

bool PictureView::pixelUnderPointer(int& x, int& y) const
{
    const int dx = pointerX - left();
    const int dy = pointerY - top();
    x = zoom > 0 ? dx / zoom : dx * -zoom;
    y = zoom > 0 ? dy / zoom : dy * -zoom;
    return dx >= 0 && dy >= 0 && x < picture.width && y < picture.height;
}

/// Squares of two greys, for what is transparent to be seen as such.
void PictureView::drawBackground() const
{
    const int right = left() + scaled(picture.width);
    const int bottom = top() + scaled(picture.height);
    glDisable(GL_TEXTURE_2D);
    for (int y = top(); y < bottom; y += squareSide) {
        for (int x = left(); x < right; x += squareSide) {
            const bool isLight = ((x - left()) / squareSide + (y - top()) / squareSide) % 2 == 0;
            const float grey = isLight ? 0.42F : 0.34F;
            glColor3f(grey, grey, grey);
            glRecti(x, y, std::min(x + squareSide, right), std::min(y + squareSide, bottom));
        }
    }
}

void PictureView::draw()
{
    const std::array<GLint, 4> area = windowArea();
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0.0, area[2], area[3], 0.0, -1.0, 1.0); // pixels from the top left
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    drawBackground();

    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    // Worked out here, since nothing may be asked of OpenGL inside a primitive.
    const int x = left();
    const int y = top();
    const int right = x + scaled(picture.width);
    const int bottom = y + scaled(picture.height);
    glBegin(GL_QUADS);
    glTexCoord2i(0, 0);
    glVertex2i(x, y);
    glTexCoord2i(0, 1);
    glVertex2i(x, bottom);
    glTexCoord2i(1, 1);
    glVertex2i(right, bottom);
    glTexCoord2i(1, 0);
    glVertex2i(right, y);
    glEnd();
    glBindTexture(GL_TEXTURE_2D, 0);
    glPopAttrib();
}

void PictureView::tellOfPixel(Overlay& overlay, std::vector<TextLine>& lines) const
{
    int x = 0;
    int y = 0;
    if (!pixelUnderPointer(x, y))
        return;
    const std::size_t pixel =
        static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
        static_cast<std::size_t>(x);
    std::string bytes;
    std::string values;
    for (std::size_t i = 0; i < channels; i++) {
        const int byte = picture.bytes[channels * pixel + i];
        bytes += std::to_string(byte) + " ";
        values += number(static_cast<float>(byte) / 255.0F) + " ";
    }
    const auto u = (static_cast<float>(x) + 0.5F) / static_cast<float>(picture.width);
    const auto v = 1.0F - (static_cast<float>(y) + 0.5F) / static_cast<float>(picture.height);
    lines.push_back({std::to_string(x) + ", " + std::to_string(y), Ink::CHOSEN, "pixel"});
    lines.push_back({number(u) + ", " + number(v), Ink::PLAIN, "u, v"});
    lines.push_back({bytes, Ink::PLAIN, "bytes"});
    lines.push_back({values, Ink::PLAIN, "values"});

    if (zoom < leastOutlinedZoom)
        return;
    const auto corner = [&](int column, int row) {
        return toUnits(static_cast<float>(left() + zoom * column),
                       static_cast<float>(top() + zoom * row), windowArea());
    };
    const Vector topLeft = corner(x, y);
    const Vector bottomRight = corner(x + 1, y + 1);
    overlay.addOutline({topLeft.x, bottomRight.y, bottomRight.x, topLeft.y}, Ink::CHOSEN);
}

void PictureView::decorate(Overlay& overlay)
{
    if (!isTold)
        return;
    constexpr std::array<const char*, 5> channelNames{"all", "red", "green", "blue", "alpha"};
    std::vector<TextLine> lines{
        {std::to_string(picture.width) + " x " + std::to_string(picture.height), Ink::PLAIN,
         "size"},
        {zoom > 0 ? std::to_string(zoom) + " : 1" : "1 : " + std::to_string(-zoom), Ink::PLAIN,
         "zoom"},
        {channelNames[static_cast<std::size_t>(channel)], Ink::PLAIN, "channel"},
    };
    if (!remark.empty())
        lines.push_back({remark, Ink::WARNING});
    tellOfPixel(overlay, lines);
    overlay.addWindow(file, lines, Corner::TOP_LEFT);
    overlay.addWindow("Keys",
                      {{"wheel, + and - zoom; 0 fits; drag moves; r g b a one channel, c all; F1 "
                        "hides this",
                        Ink::QUIET}},
                      Corner::BOTTOM_LEFT);
}
} // namespace tamor::view

/// \file
/// A picture to look at pixel by pixel.
#pragma once

#include "tools/view/PNGFile.h"
#include "tools/view/Subject.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tamor::view
{
struct TextLine;

/// A TGA file as the engine reads it, with its first row at the bottom as textures have it, or a
/// PNG file, with its first row at the top.
class PictureView : public Subject
{
public:
    explicit PictureView(std::string newFile);

    bool isThere() const override;
    std::optional<check::FileKind> kind() const override;
    /// A picture is not for the engine alone, and the engine's readers always come back.
    bool isShownWithErrors() const override { return true; }
    std::string read(const std::set<std::string>& changed) override;
    std::set<std::filesystem::path> files() const override { return {file}; }

    void takeKeys(const KeyboardState& keys) override;
    void takePointer(const MouseState& pointer) override;
    void takeWheel(int notches) override;
    void update(std::int32_t) override {}
    void settle() override {}
    void draw() override;
    void decorate(Overlay& overlay) override;

private:
    enum class Channel : std::uint8_t
    {
        ALL,
        RED,
        GREEN,
        BLUE,
        ALPHA,
    };

    void readFile();
    void upload();
    void fitToWindow();
    /// The picture's left and top edge, in pixels of the window.
    int left() const;
    int top() const;
    int scaled(int length) const;
    void drawBackground() const;
    bool pixelUnderPointer(int& x, int& y) const;
    void tellOfPixel(Overlay& overlay, std::vector<TextLine>& lines) const;

    std::string file;
    std::string remark; ///< what the engine's reader makes of the file, if that is another thing
    BytePicture picture;
    std::uint32_t texture = 0;
    Channel channel = Channel::ALL;
    int zoom = 1;   ///< pixels of the window to one of the picture; -2 is the other way round
    int shiftX = 0; ///< of the picture's middle from the window's, in pixels of the window
    int shiftY = 0;
    int pointerX = -1;
    int pointerY = -1;
    bool wasLeft = false;
    bool isTold = true;
};
} // namespace tamor::view

// The checker of TGA pictures.

#include "tools/check/Formats.h"
#include "tools/check/Pictures.h"

#include <algorithm>
#include <bit>

namespace tamor::check
{
namespace
{
constexpr std::size_t headerSize = 18;
constexpr unsigned compressedTrueColour = 10;
constexpr unsigned plainTrueColour = 2;
constexpr unsigned fromTop = 0x20;
constexpr unsigned fromRight = 0x10;

unsigned byteAt(std::string_view bytes, std::size_t at)
{
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

/// Follows the packets up to the last pixel.
class Packets
{
public:
    Packets(std::string_view newBytes, std::size_t newPixelSize)
        : bytes(newBytes), pixelSize(newPixelSize)
    {}

    /// \return the pixels that the packets hold: fewer than `total` if the file ends before
    std::size_t count(std::size_t total)
    {
        std::size_t done = 0;
        while (done < total && at < bytes.size()) {
            const unsigned packet = byteAt(bytes, at);
            const std::size_t pixels = (packet & 0x7F) + 1;
            const std::size_t size = 1 + (packet >= 0x80 ? 1 : pixels) * pixelSize;
            if (bytes.size() - at < size)
                return done + (bytes.size() - at - 1) / std::max<std::size_t>(pixelSize, 1);
            at += size;
            done += pixels;
        }
        return done;
    }

private:
    std::string_view bytes;
    std::size_t pixelSize;
    std::size_t at = headerSize;
};

void checkPackets(Source& source, std::size_t width, std::size_t height, std::size_t depth)
{
    const std::size_t total = width * height;
    const std::size_t pixels = Packets(source.text(), depth / 8).count(total);
    if (pixels < total) {
        source.report("tga-short", "the file ends behind " + std::to_string(pixels) + " of " +
                                       std::to_string(total) +
                                       " pixels: the rest repeats what was read last");
    } else if (pixels > total) {
        source.report("tga-overrun", "the last packet goes on behind the last pixel by " +
                                         std::to_string(pixels - total));
    }
}
} // namespace

void checkSides(Source& source, std::string_view code, std::size_t width, std::size_t height)
{
    if (width == 0 || height == 0) {
        source.report(code, "a picture of " + std::to_string(width) + " by " +
                                std::to_string(height) + " pixels has none");
    } else if (!std::has_single_bit(width) || !std::has_single_bit(height)) {
        source.report(code, "the sides are " + std::to_string(width) + " by " +
                                std::to_string(height) +
                                " pixels: it is scaled to powers of two, and blurred");
    }
}

void checkTGA(Source& source)
{
    const std::string_view bytes = source.text();
    if (bytes.size() < headerSize) {
        source.report("tga-short", "the file ends in its header of 18 bytes");
        return;
    }
    const unsigned type = byteAt(bytes, 2);
    if (type != compressedTrueColour) {
        source.report("tga-type", type == plainTrueColour
                                      ? "the picture is not compressed: it is not read; save it "
                                        "with run lengths"
                                      : "the picture is of type " + std::to_string(type) +
                                            ": only type 10, true colour with run lengths, is "
                                            "read");
        return;
    }
    const std::size_t width = byteAt(bytes, 12) | byteAt(bytes, 13) << 8;
    const std::size_t height = byteAt(bytes, 14) | byteAt(bytes, 15) << 8;
    const std::size_t depth = byteAt(bytes, 16);
    if (byteAt(bytes, 0) != 0 || byteAt(bytes, 1) != 0) {
        source.report("tga-id", "the file has a remark or a colour map in front of its pixels, "
                                "which is read as pixels");
    }
    if (depth != 24 && depth != 32) {
        source.report("tga-depth", "a pixel has " + std::to_string(depth) +
                                       " bits: only 24 and 32 give a picture");
        return;
    }
    if ((byteAt(bytes, 17) & (fromTop | fromRight)) != 0) {
        source.report("tga-origin", "the picture begins at its top or its right, which is not "
                                    "heeded: it is shown upside down or mirrored");
    }
    checkSides(source, "tga-sides", width, height);
    checkPackets(source, width, height, depth);
}
} // namespace tamor::check

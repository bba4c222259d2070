#include "benchmarks/textures/SmallPNG.h"

#include <zlib.h>

#include <cstdint>
#include <string_view>

namespace tamor::bench
{
namespace
{
constexpr std::uint32_t width = 3;
constexpr std::uint32_t height = 2;
constexpr std::size_t rowSize = 1 + 4 * std::size_t{width};

/// Both rows, each behind the byte that says that nothing is filtered.
constexpr std::string_view rows("\0red.greeblue\0cyanmageyell", rowSize* height);

std::string bigEndian(std::uint64_t value)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

std::string chunk(const std::string& type, const std::string& data)
{
    const std::string summed = type + data;
    return bigEndian(data.size()) + summed +
           bigEndian(crc32(0, reinterpret_cast<const Bytef*>(summed.data()),
                           static_cast<uInt>(summed.size())));
}
} // namespace

std::string makeSmallPNG(const std::string& front, std::size_t textSize)
{
    std::array<char, 64> packed{};
    uLongf packedSize = packed.size();
    compress(reinterpret_cast<Bytef*>(packed.data()), &packedSize,
             reinterpret_cast<const Bytef*>(rows.data()), rows.size());
    return "\x89PNG\r\n\x1A\n" +
           chunk("IHDR", bigEndian(width) + bigEndian(height) + std::string("\10\6\0\0\0", 5)) +
           chunk("teXt", std::string(textSize, 't')) +
           chunk("IDAT", front + std::string(packed.data(), packedSize)) + chunk("IEND", "");
}

SmallPixels smallPNGsPixels()
{
    SmallPixels pixels{};
    std::size_t place = 0;
    for (std::size_t k = 0; k < rows.size(); k++)
        if (k % rowSize != 0)
            pixels[place++] = static_cast<float>(static_cast<std::uint8_t>(rows[k])) / 255.0F;
    return pixels;
}
} // namespace tamor::bench

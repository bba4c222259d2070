#include "textures/TGAReader.h"

#include "maths/Memory.h"
#include "textures/internal/Pixels.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>
#include <tuple>
#include <type_traits>

namespace tamor
{
namespace
{
constexpr std::uint8_t compressedTrueColour = 10;
constexpr std::size_t longestPacket = 128;

/// A file that is read a block at a time, and that never ends: past the end of the file a read
/// leaves its destination as it was. The end is asked for once.
class BlockReader
{
public:
    explicit BlockReader(std::FILE* newFile) : file(newFile) {}

    void read(std::uint8_t* destination, std::size_t size)
    {
        if (size > end - position) {
            readAcrossBlocks(destination, size);
            return;
        }
        std::memcpy(destination, block.data() + position, size);
        position += size;
    }

private:
    void readAcrossBlocks(std::uint8_t* destination, std::size_t size)
    {
        while (size > 0) {
            if (position == end && !refill())
                return;
            const std::size_t part = std::min(size, end - position);
            std::memcpy(destination, block.data() + position, part);
            position += part;
            destination += part;
            size -= part;
        }
    }

    // From loops that are as long as the picture: a way out of them for exceptions costs an eighth.
    bool refill() noexcept
    {
        if (hasEnded)
            return false;
        position = 0;
        end = std::fread(block.data(), 1, block.size(), file);
        hasEnded = end < block.size();
        return end > 0;
    }

    std::FILE* file;
    std::size_t position = 0;
    std::size_t end = 0;
    bool hasEnded = false;
    std::array<std::uint8_t, 65536> block;
};

/// Unpacks runs and raw packets until there are at least `total` pixels.
///
/// A packet that goes on behind the last pixel is carried out in full, and four bytes are stored
/// for each pixel though the next one starts `pixelSize` bytes on: `bytes` has room for both. Each
/// pixel in the file is blue, green, red, alpha.
/// \param pixelSize  bytes a pixel, as a constant, so that no copy has a loop
template <typename PixelSize>
void unpack(BlockReader& file, PixelSize pixelSize, std::size_t total, std::uint8_t* bytes)
{
    std::array<std::uint8_t, 4> pixel{};
    std::uint8_t packet = 0;
    std::size_t done = 0;
    const auto readPixel = [&] { file.read(pixel.data(), pixelSize); };
    const auto storePixel = [&] {
        const std::uint8_t swapped[4] = {pixel[2], pixel[1], pixel[0], pixel[3]};
        std::memcpy(bytes, swapped, sizeof swapped);
        bytes += pixelSize;
    };
    while (done < total) {
        file.read(&packet, 1);
        const bool isRun = (packet & 0x80) != 0;
        const std::size_t count = (packet & 0x7FU) + 1;
        if (isRun) {
            readPixel();
            for (std::size_t k = 0; k < count; k++)
                storePixel();
        } else {
            for (std::size_t k = 0; k < count; k++) {
                readPixel();
                storePixel();
            }
        }
        done += count;
    }
}

/// Storage for the unpacked bytes of a picture.
///
/// Meant: never freed by a load that succeeds;
/// `ReadTGA.FreesTheOldPixelsAndLeavesTheUnpackedBytesAllocated` holds it.
std::uint8_t* newUnpackedBytes(std::size_t total, std::size_t pixelSize)
{
    return new std::uint8_t[(total + longestPacket) * pixelSize + 4];
}

/// Closes what `std::fopen` has opened.
struct FileCloser
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
} // namespace

bool readTGA(Image& image, TextureKey key)
{
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(key.path.c_str(), "rb"));
    if (file == nullptr) {
        std::cerr << "Error loading texture tga file '" << key.path << "'" << std::endl;
        return false;
    }
    BlockReader reader(file.get());

    std::uint8_t imageType = 0;
    for (int i = 0; i < 3; i++)
        reader.read(&imageType, 1);
    if (imageType != compressedTrueColour) {
        std::cerr << "Please use compressed TGAs" << std::endl;
        // Meant: the file stays open; `ReadTGA.LeavesARefusedFileOpen` holds it.
        std::ignore = file.release();
        return false;
    }

    std::array<std::uint8_t, 9> unused{};
    reader.read(unused.data(), unused.size());
    std::array<std::uint8_t, 6> header{};
    reader.read(header.data(), header.size());
    const std::int32_t width = header[0] | header[1] << 8;
    const std::int32_t height = header[2] | header[3] << 8;
    const std::size_t depth = header[4];

    const std::size_t total = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    const std::size_t pixelSize = depth / 8;
    if (!memoryHolds(saturatingProduct(total, pixelSize + floatPixelSize))) {
        std::cerr << key.path << ": Too large for the memory" << std::endl;
        return false;
    }
    std::uint8_t* const bytes = newUnpackedBytes(total, pixelSize);
    if (depth == 24)
        unpack(reader, std::integral_constant<std::size_t, 3>(), total, bytes);
    else if (depth == 32)
        unpack(reader, std::integral_constant<std::size_t, 4>(), total, bytes);
    file.reset();

    // Of any other depth no byte is looked at.
    if (depth == 24 || depth == 32)
        image.setFromBytes(width, height, depth == 32, bytes);
    else
        image.allocate(width, height);
    return true;
}
} // namespace tamor

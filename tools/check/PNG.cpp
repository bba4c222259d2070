// The checker of PNG pictures. It walks the chunks as the engine's reader does, and gives zlib what
// that gives it.

#include "tools/check/Formats.h"
#include "tools/check/Pictures.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace tamor::check
{
namespace
{
constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
constexpr std::size_t headerLength = 13;
constexpr unsigned colourTypeRGBA = 6;
constexpr std::size_t largestPicture = std::size_t{1} << 30; // bytes, of what the reader takes

/// The bytes of a file as the reader sees them: words of two, so that an odd last byte is lost, and
/// zeros behind the end.
class Bytes
{
public:
    explicit Bytes(std::string_view newBytes) : bytes(newBytes) {}

    /// The reader's walk ends with the last whole word.
    bool isAtEnd() const { return at / 2 >= bytes.size() / 2; }
    std::size_t left() const { return bytes.size() - std::min(at, bytes.size()); }

    std::uint32_t readLong()
    {
        std::uint32_t value = 0;
        for (int i = 0; i < 4; ++i, ++at)
            value = value << 8 | (at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U);
        return value;
    }

    std::string readData(std::size_t length)
    {
        std::string data(bytes.substr(std::min(at, bytes.size()), length));
        at += length;
        return data;
    }

private:
    std::string_view bytes;
    std::size_t at = signature.size();
};

struct Picture
{
    std::size_t width = 1;
    std::size_t height = 1;
    bool hasHeader = false;
    std::string data; ///< of all IDAT chunks
};

std::uint32_t longAt(std::string_view data, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = at; i < at + 4; ++i)
        value = value << 8 | static_cast<unsigned char>(data[i]);
    return value;
}

/// \return false, after a report, for a form that is not read
bool readHeader(Source& source, Picture& picture, std::string data)
{
    data.resize(std::max(data.size(), headerLength));
    picture.hasHeader = true;
    picture.width = longAt(data, 0);
    picture.height = longAt(data, 4);
    if (static_cast<unsigned char>(data[9]) != colourTypeRGBA || data[10] != 0 || data[11] != 0 ||
        data[12] != 0) {
        source.report("png-form", "only red, green, blue and alpha without interlacing is read; "
                                  "save a TGA");
        return false;
    }
    if (data[8] != 8) {
        source.report("png-depth", "a channel has " + std::to_string(int{data[8]}) +
                                       " bits and is read as if it had 8");
    }
    return true;
}

bool readChunks(Source& source, Picture& picture)
{
    Bytes bytes(source.text());
    bool isCut = false;
    while (!bytes.isAtEnd()) {
        const std::size_t length = bytes.readLong();
        const std::uint32_t type = bytes.readLong();
        isCut = isCut || length > bytes.left();
        const std::string data = bytes.readData(std::min(length, bytes.left()));
        const std::uint32_t sum = bytes.readLong();
        std::array<unsigned char, 4> name{};
        for (std::size_t i = 0; i < 4; ++i)
            name[i] = static_cast<unsigned char>(type >> (24 - 8 * i));
        const auto* const content = reinterpret_cast<const Bytef*>(data.data());
        const uLong computed =
            crc32(crc32(0, name.data(), 4), content, static_cast<uInt>(data.size()));
        if (!isCut && computed != sum)
            source.report("png-sum", "a check sum is wrong, which the reader does not look at");
        if (std::memcmp(name.data(), "IHDR", 4) == 0 && !readHeader(source, picture, data))
            return false;
        if (std::memcmp(name.data(), "IDAT", 4) == 0)
            picture.data += data;
    }
    if (isCut)
        source.report("png-short", "the file ends in the middle of a chunk");
    return true;
}

/// Whether the inflated rows are of filter types that exist, as far as they reach.
void checkRows(Source& source, const Picture& picture, const std::array<Bytef, 64>& inflated,
               std::size_t inflatedLength)
{
    const std::size_t stride = picture.width * 4;
    std::size_t at = 0;
    for (std::size_t row = 0; row < picture.height; ++row) {
        const unsigned type = at < inflatedLength ? inflated[at] : 0U;
        if (at >= inflatedLength) {
            source.report("png-short", "the data ends in front of row " + std::to_string(row));
            return;
        }
        if (type > 4) {
            source.report("png-filter", "row " + std::to_string(row) + " has the filter type " +
                                            std::to_string(type) + ": the picture is not read");
            return;
        }
        if (row == 0 && type == 2) {
            source.report("png-filter", "a first row of filter type 2 shifts all rows behind it");
            return;
        }
        at += 1 + stride;
    }
    if (at > inflatedLength)
        source.report("png-short", "the data ends in the middle of a row");
}

void inflate(Source& source, const Picture& picture)
{
    // The reader looks at what lies behind the data as zeros.
    std::string joined = picture.data;
    joined.resize(joined.size() + 8);
    const unsigned method = static_cast<unsigned char>(joined[0]);
    if ((method & 1) != 0 || method >> 4 != 7) {
        source.report("png-method", picture.data.empty()
                                        ? "the picture has no data"
                                        : "the picture's data is not compressed as it is read");
        return;
    }
    std::array<Bytef, 64> inflated{};
    uLongf capacity = 32; // what the reader tells zlib, whatever the picture's size
    const int result =
        uncompress(inflated.data(), &capacity, reinterpret_cast<const Bytef*>(joined.data()) + 2,
                   picture.data.size());
    if (result != Z_OK) {
        source.report("png-unread",
                      "the reader cannot decompress an ordinary PNG, and shows nothing of it; "
                      "save a TGA");
        return;
    }
    if (picture.width > largestPicture || picture.height > largestPicture ||
        picture.width * picture.height > 8)
        source.report("png-short", "the data is too short for the picture's size");
    else
        checkRows(source, picture, inflated, capacity);
}
} // namespace

void checkPNG(Source& source)
{
    if (!source.text().starts_with(signature)) {
        source.report("png-signature", "the file does not begin as a PNG: it is not read");
        return;
    }
    Picture picture;
    if (!readChunks(source, picture))
        return;
    if (source.text().size() % 2 != 0)
        source.report("png-odd", "the last byte of a file of odd size is not read");
    if (!picture.hasHeader) {
        source.report("png-header", "the picture has no header: it is taken for one pixel");
        return;
    }
    checkSides(source, "png-sides", picture.width, picture.height);
    inflate(source, picture);
}
} // namespace tamor::check

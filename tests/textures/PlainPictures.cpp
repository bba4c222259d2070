#include "tests/textures/PlainPictures.h"

#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace tamor::test
{
namespace
{
/// A file that is read as by `fread`, whose counts nobody looks at: past the end what is read into
/// stays as it was.
class PlainFile
{
public:
    explicit PlainFile(const std::string& newBytes) : bytes(newBytes) {}

    void read(std::uint8_t* destination, std::size_t size)
    {
        for (std::size_t k = 0; k < size && at < bytes.size(); k++)
            destination[k] = static_cast<std::uint8_t>(bytes[at++]);
    }

private:
    const std::string& bytes;
    std::size_t at = 0;
};

/// The words of a PNG file, as they lie in the reader's memory. Behind them all is 0.
class PlainWords
{
public:
    explicit PlainWords(const std::string& bytes) : count(bytes.size() / 2), stored((count + 2) * 2)
    {
        std::uint8_t word[2] = {};
        std::size_t at = 0;
        bool isAtEnd = false;
        for (std::size_t counter = 0; counter < count; counter += 5) {
            for (std::size_t k = counter; k < counter + 5 && !isAtEnd; k++) {
                for (std::uint8_t& byte : word) {
                    isAtEnd = isAtEnd || at == bytes.size();
                    if (!isAtEnd)
                        byte = static_cast<std::uint8_t>(bytes[at++]);
                }
                stored[2 * k] = word[0];
                stored[2 * k + 1] = word[1];
            }
        }
    }

    bool hasMore() const { return cursor / 2 < count; }
    /// How many bytes there are from the cursor's word on.
    std::size_t bytesFromWord() const
    {
        return stored.size() - std::min(cursor / 2 * 2, stored.size());
    }

    std::uint8_t readByte()
    {
        const std::uint8_t byte = cursor < stored.size() ? stored[cursor] : 0;
        cursor += cursor < stored.size() ? 1 : 0;
        return byte;
    }

    std::uint32_t readLong()
    {
        std::uint32_t value = 0;
        for (int k = 0; k < 4; k++)
            value = value * 256 + readByte();
        return value;
    }

private:
    std::size_t count;
    std::vector<std::uint8_t> stored;
    std::size_t cursor = 0;
};

std::uint32_t bigEndian(const std::vector<std::uint8_t>& data, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t k = at; k < at + 4; k++)
        value = value * 256 + data[k];
    return value;
}

int paeth(int left, int above, int aboveLeft)
{
    const int pa = std::abs(above - aboveLeft);
    const int pb = std::abs(left - aboveLeft);
    const int pc = std::abs((above - aboveLeft) + (left - aboveLeft));
    if (pa <= pb && pa <= pc)
        return left;
    return pb <= pc ? above : aboveLeft;
}

/// Undoes the filters of the rows, as far as there is data.
/// \return whether all types are known; what is wrong is printed otherwise
bool unfilter(PlainPicture& picture, const std::vector<std::uint8_t>& in)
{
    std::vector<int> out;
    const auto stride = 4 * static_cast<std::ptrdiff_t>(std::max(picture.width, 0));
    const auto before = [&](std::ptrdiff_t distance) {
        const auto place = static_cast<std::ptrdiff_t>(out.size()) - distance;
        return place < 0 ? 0 : out[static_cast<std::size_t>(place)];
    };
    std::size_t i = 0;
    for (std::int32_t row = 0; row < picture.height && i < in.size(); row++) {
        const int type = in[i];
        if (type > 4) {
            picture.errors = "unsupported filter format at byte " + std::to_string(i) + ": " +
                             std::to_string(type) + "\n";
            return false;
        }
        i++;
        if (type == 2 && row == 0)
            continue;
        for (std::ptrdiff_t k = 0; k < stride && i < in.size(); k++) {
            const int left = k < 4 ? 0 : before(4);
            const int above = before(stride);
            const int aboveLeft = k < 4 ? 0 : before(stride + 4);
            const int predictions[] = {0, left, above, (left + above) / 2,
                                       paeth(left, above, aboveLeft)};
            out.push_back((in[i++] + predictions[type]) % 256);
        }
    }
    for (const int byte : out)
        picture.channels.push_back(static_cast<float>(byte) / 255.0F);
    return true;
}
} // namespace

std::size_t PlainPicture::pixelCount() const
{
    if (width <= 0 || height <= 0)
        return 0;
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

PlainPicture readTGAPlainly(const std::string& bytes)
{
    PlainPicture picture;
    PlainFile file(bytes);
    std::uint8_t byte = 0;
    for (int k = 0; k < 3; k++)
        file.read(&byte, 1);
    if (byte != 10) {
        picture.errors = "Please use compressed TGAs\n";
        return picture;
    }
    for (int k = 0; k < 9; k++)
        file.read(&byte, 1);
    std::uint8_t header[6] = {};
    file.read(header, 6);
    picture.width = header[0] + 256 * header[1];
    picture.height = header[2] + 256 * header[3];
    picture.wasRead = true;
    const int depth = header[4];
    if (depth != 24 && depth != 32) {
        picture.hasDefinedPixels = false;
        return picture;
    }

    const auto p = static_cast<std::size_t>(depth / 8);
    std::uint8_t pixel[4] = {};
    std::uint8_t packet = 0;
    std::size_t done = 0;
    const auto store = [&] {
        if (done++ >= picture.pixelCount())
            return;
        for (const std::size_t c : {2U, 1U, 0U})
            picture.channels.push_back(static_cast<float>(pixel[c]) / 255.0F);
        picture.channels.push_back(depth == 32 ? static_cast<float>(pixel[3]) / 255.0F : 1.0F);
    };
    while (done < picture.pixelCount()) {
        file.read(&packet, 1);
        if (packet < 128) {
            for (int k = 0; k < packet + 1; k++) {
                file.read(pixel, p);
                store();
            }
        } else {
            file.read(pixel, p);
            for (int k = 0; k < packet - 127; k++)
                store();
        }
    }
    return picture;
}

PlainPicture readPNGPlainly(const std::string& bytes, const std::string& path)
{
    PlainPicture picture;
    PlainWords words(bytes);
    const std::uint32_t signature[] = {words.readLong(), words.readLong()};
    if (signature[0] != 0x89504E47 || signature[1] != 0x0D0A1A0A) {
        picture.errors = path + " is not a valid png file - header invalid\n";
        return picture;
    }
    picture.width = picture.height = 1;

    std::vector<std::uint8_t> joined;
    while (words.hasMore()) {
        const std::uint32_t claimed = words.readLong();
        const std::uint32_t type = words.readLong();
        std::vector<std::uint8_t> data(std::min<std::size_t>(claimed, words.bytesFromWord()));
        for (std::uint8_t& byte : data)
            byte = words.readByte();
        words.readLong();
        if (type == 0x49484452) {
            data.resize(std::max<std::size_t>(data.size(), 13));
            picture.width = static_cast<std::int32_t>(bigEndian(data, 0));
            picture.height = static_cast<std::int32_t>(bigEndian(data, 4));
            if (data[9] != 6 || data[10] != 0 || data[11] != 0 || data[12] != 0) {
                picture.errors =
                    "Unsupported format of PNG. Make sure it is RGBA, non-interlaced.\n";
                return picture;
            }
        } else if (type == 0x49444154) {
            joined.insert(joined.end(), data.begin(), data.end());
        }
    }

    const auto length = static_cast<uLong>(joined.size());
    joined.resize(joined.size() + 2);
    if (joined[0] % 2 != 0 || joined[0] / 16 != 7) {
        picture.errors = "Invalid compression format.\n";
        return picture;
    }
    std::vector<std::uint8_t> inflated(32);
    uLongf capacity = 32;
    const int code = uncompress(inflated.data(), &capacity, joined.data() + 2, length);
    if (code != 0) {
        picture.errors =
            "Could not decompress PNG data. Error code: " + std::to_string(code) + "\n";
        return picture;
    }
    inflated.resize(capacity);
    picture.wasRead = unfilter(picture, inflated);
    return picture;
}

std::string difference(const Image& image, const PlainPicture& plain)
{
    if (image.width != plain.width || image.height != plain.height)
        return "size " + std::to_string(image.width) + " by " + std::to_string(image.height) +
               ", not " + std::to_string(plain.width) + " by " + std::to_string(plain.height);
    if (!plain.wasRead || !plain.hasDefinedPixels)
        return "";
    const std::size_t count = plain.pixelCount() * 4;
    const auto expected = [&](std::size_t n) {
        return n < plain.channels.size() ? plain.channels[n] : 0.0F;
    };
    constexpr std::size_t looked = 4096;
    const std::size_t front = std::min(count, std::max(looked, plain.channels.size()));
    for (std::size_t n = 0; n < count; n = n + 1 == front ? std::max(front, count - looked) : n + 1)
        if (image.pixels[n] != expected(n))
            return "channel " + std::to_string(n) + " is " + std::to_string(image.pixels[n]) +
                   ", not " + std::to_string(expected(n));
    return "";
}
} // namespace tamor::test

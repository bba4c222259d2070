#include "textures/PNGReader.h"

#include <arpa/inet.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <tuple>
#include <vector>

namespace tamor
{
namespace
{
constexpr std::uint32_t signatureHigh = 0x89504E47;
constexpr std::uint32_t signatureLow = 0x0D0A1A0A;
constexpr std::uint32_t headerChunk = 0x49484452; // "IHDR"
constexpr std::uint32_t dataChunk = 0x49444154;   // "IDAT"
constexpr std::size_t headerSize = 13;
constexpr std::uint8_t colourTypeRGBA = 6;

// What zlib is told that it may write, whatever the picture's size.
constexpr uLongf statedCapacity = 32;

// Sizes beyond these are nonsense in a damaged file. (A directory opens like a file, and claims to
// hold 2^63 - 1 bytes.)
constexpr std::uint64_t largestPicture = std::uint64_t{1} << 30; // bytes
constexpr long largestFile = 0x7FFFFFFF;

using Bytes = std::unique_ptr<std::uint8_t[]>;

/// Storage for all words of a file, and two to spare.
///
/// Meant: never freed, at no exit of the reader; `ReadPNG.LeavesTheWordsAllocatedAtEveryExit` holds
/// it.
std::uint16_t* newWords(std::size_t wordCount)
{
    return new std::uint16_t[wordCount + 2]();
}

std::uint32_t countWords(std::FILE* file)
{
    std::fseek(file, 0, SEEK_END);
    const long size = std::ftell(file);
    std::fseek(file, 0, SEEK_SET);
    if (size < 0 || size > largestFile)
        return 0;
    return static_cast<std::uint32_t>(size) >> 1;
}

/// Reads the file five words at a time, each by itself. The word that meets the end of the file is
/// stored too, which is what the spare words are for.
PNGWordStream readWords(std::FILE* file, std::uint32_t wordCount)
{
    PNGWordStream stream;
    stream.wordLimit = wordCount + 2;
    stream.words = newWords(wordCount);
    std::uint16_t word = 0;
    std::uint32_t stored = 0;
    for (std::uint32_t counter = 0; counter < wordCount; counter += 5) {
        for (int attempt = 0; attempt < 5; attempt++) {
            if (std::feof(file) != 0 || stored == stream.wordLimit)
                break;
            std::ignore = std::fread(&word, sizeof word, 1, file);
            stream.words[stored] = ntohs(word);
            stored++;
        }
    }
    return stream;
}

std::int32_t readSize(const std::uint8_t* bytes)
{
    std::uint32_t value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return static_cast<std::int32_t>(ntohl(value));
}

/// The data of a chunk. What its length claims beyond the end of the file is left out.
std::vector<std::uint8_t> readChunkData(PNGWordStream& stream, std::uint32_t length)
{
    const std::uint32_t wordsLeft = stream.wordLimit - std::min(stream.wordIndex, stream.wordLimit);
    std::vector<std::uint8_t> data(std::min<std::size_t>(length, 2 * std::size_t{wordsLeft}));
    for (std::uint8_t& byte : data)
        byte = stream.readByte();
    return data;
}

/// Takes the picture's size from a header chunk; what a short chunk lacks is 0.
/// \return whether the picture is of the one form that is read
bool readHeader(Image& image, std::vector<std::uint8_t> data)
{
    data.resize(std::max(data.size(), headerSize));
    image.width = readSize(&data[0]);
    image.height = readSize(&data[4]);
    const bool isCompressedByMethod0 = data[10] == 0;
    const bool isFilteredByMethod0 = data[11] == 0;
    const bool isInterlaced = data[12] != 0;
    return data[9] == colourTypeRGBA && isCompressedByMethod0 && isFilteredByMethod0 &&
           !isInterlaced;
}

/// The data of all IDAT chunks, one behind the other.
struct JoinedData
{
    Bytes bytes;
    std::size_t length = 0;
};

// Meant: what the next three give is not freed at every exit of the reader, but left where
// `readPNG` releases it; `ReadPNG.LeavesItsWorkingStorageAtFailures` holds it.

/// Storage for the joined data of a file, and for what is read behind it: the test of the first
/// byte, and as many bytes as zlib is told behind an offset of two.
JoinedData newJoinedData(std::uint32_t wordCount)
{
    return {std::make_unique<std::uint8_t[]>(2 * std::size_t{wordCount} + 8), 0};
}

Bytes newInflatedData(std::uint64_t size)
{
    return std::make_unique<std::uint8_t[]>(size);
}

Bytes newRGBABytes(std::uint64_t size)
{
    return std::make_unique<std::uint8_t[]>(size);
}

/// Walks the chunks to the end of the words.
/// \return false after a header that is not of the one form that is read
bool readChunks(Image& image, PNGWordStream& stream, std::uint32_t wordCount, JoinedData& joined)
{
    while (stream.wordIndex < wordCount) {
        const std::uint32_t length = stream.readLong();
        const std::uint32_t type = stream.readLong();
        const std::vector<std::uint8_t> data = readChunkData(stream, length);
        stream.readLong(); // the check sum, which is not computed
        if (type == headerChunk && !readHeader(image, data))
            return false;
        if (type == dataChunk) {
            std::copy(data.begin(), data.end(), joined.bytes.get() + joined.length);
            joined.length += data.size();
        }
    }
    return true;
}

std::uint64_t positive(std::int32_t size)
{
    return static_cast<std::uint64_t>(std::max(size, 0));
}

/// The bytes that the filtered rows of a picture take, and no fewer than zlib may write.
std::uint64_t inflatedSize(const Image& image)
{
    const std::uint64_t width = positive(image.width);
    const std::uint64_t height = positive(image.height);
    return std::max<std::uint64_t>(width * height * 4 + std::max(width, height), statedCapacity);
}

/// Undoes the filters row by row. What lies before the start of the picture is taken as 0.
class Unfilter
{
public:
    Unfilter(const std::uint8_t* newInput, std::uint8_t* newOutput, std::size_t newStride)
        : input(newInput), output(newOutput), stride(newStride)
    {}

    /// \return false if the row's filter type is none of 0 to 4, with the input at that byte
    bool undoRow(bool isFirstRow)
    {
        const std::uint8_t type = input[inputOffset];
        if (type > 4)
            return false;
        inputOffset++;
        // Meant: the first row of type 2 takes no bytes at all, so that all later rows shift;
        // `ReadPNG.ShiftsAllRowsBehindAFirstRowOfTypeUp` holds it.
        if (type == 2 && isFirstRow)
            return true;
        for (std::size_t k = 0; k < stride; k++) {
            output[outputOffset] = static_cast<std::uint8_t>(input[inputOffset] + predict(type, k));
            inputOffset++;
            outputOffset++;
        }
        return true;
    }

    std::size_t offset() const { return inputOffset; }

private:
    /// \param k  the byte's place in its row
    int predict(std::uint8_t type, std::size_t k) const
    {
        const int left = k < 4 ? 0 : output[outputOffset - 4];
        const int above = outputOffset < stride ? 0 : output[outputOffset - stride];
        switch (type) {
        case 1:
            return left;
        case 2:
            return above;
        case 3:
            return (left + above) / 2;
        case 4:
            return paeth(left, above,
                         k < 4 || outputOffset < stride ? 0 : output[outputOffset - stride - 4]);
        default:
            return 0;
        }
    }

    static int paeth(int a, int b, int c)
    {
        const int pa = std::abs(b - c);
        const int pb = std::abs(a - c);
        const int pc = std::abs((b - c) + (a - c));
        if (pa <= pb && pa <= pc)
            return a;
        return pb <= pc ? b : c;
    }

    const std::uint8_t* input;
    std::uint8_t* output;
    std::size_t stride;
    std::size_t inputOffset = 0;
    std::size_t outputOffset = 0;
};
} // namespace

std::uint8_t PNGWordStream::readByte()
{
    if (wordIndex >= wordLimit)
        return 0;
    const std::uint16_t word = words[wordIndex];
    if (lowByteNext == 0) {
        lowByteNext = 1;
        return static_cast<std::uint8_t>(word >> 8);
    }
    lowByteNext = 0;
    wordIndex++;
    return static_cast<std::uint8_t>(word);
}

std::uint32_t PNGWordStream::readLong()
{
    std::uint32_t value = 0;
    for (int i = 0; i < 4; i++)
        value = value << 8 | readByte();
    return value;
}

bool readPNG(Image& image, TextureKey key)
{
    std::FILE* const file = std::fopen(key.path.c_str(), "rb");
    if (file == nullptr) {
        std::cerr << "Error opening " << key.path << std::endl;
        return false;
    }
    const std::uint32_t wordCount = countWords(file);
    PNGWordStream stream = readWords(file, wordCount);
    std::fclose(file);

    if (stream.readLong() != signatureHigh || stream.readLong() != signatureLow) {
        std::cerr << key.path << " is not a valid png file - header invalid" << std::endl;
        return false;
    }

    image.width = 1;
    image.height = 1;
    JoinedData joined = newJoinedData(wordCount);
    if (!readChunks(image, stream, wordCount, joined)) {
        std::cerr << "Unsupported format of PNG. Make sure it is RGBA, non-interlaced."
                  << std::endl;
        std::ignore = joined.bytes.release();
        return false;
    }
    const std::uint8_t method = joined.bytes[0];
    if ((method & 1) != 0 || method >> 4 != 7) {
        std::cerr << "Invalid compression format." << std::endl;
        std::ignore = joined.bytes.release();
        return false;
    }

    // Meant: zlib is given the data from behind its header on, under the full length and as room
    // for 32 bytes whatever the size, so that a well-formed picture ends in the error line;
    // textures are registered all the same. `ReadPNG.AWellFormedPictureEndsInTheErrorLine` holds
    // it.
    const std::uint64_t size = inflatedSize(image);
    const bool isHoldable = size <= largestPicture;
    Bytes inflated = newInflatedData(isHoldable ? size : statedCapacity);
    uLongf capacity = statedCapacity;
    const int code = uncompress(inflated.get(), &capacity, joined.bytes.get() + 2, joined.length);
    if (code != Z_OK) {
        std::cerr << "Could not decompress PNG data. Error code: " << code << std::endl;
        std::ignore = joined.bytes.release();
        std::ignore = inflated.release();
        return false;
    }
    // A size that no file of this kind can fill. Nothing is printed for it.
    if (!isHoldable)
        return false;

    const std::size_t stride = 4 * positive(image.width);
    Bytes rgba = newRGBABytes(stride * positive(image.height));
    Unfilter unfilter(inflated.get(), rgba.get(), stride);
    for (std::int32_t row = 0; row < image.height; row++) {
        if (!unfilter.undoRow(row == 0)) {
            const std::size_t offset = unfilter.offset();
            std::cerr << "unsupported filter format at byte " << offset << ": "
                      << int{inflated[offset]} << std::endl;
            std::ignore = rgba.release();
            return false;
        }
    }
    image.setFromBytes(image.width, image.height, true, rgba.get());
    return true;
}
} // namespace tamor

#include "textures/PNGReader.h"

#include "maths/Memory.h"
#include "textures/internal/Pixels.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>

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

// Sizes beyond this are nonsense. (A directory opens like a file, and claims to hold 2^63 - 1
// bytes.)
constexpr off_t largestFile = 0x7FFFFFFF;

constexpr std::size_t bytesAPixel = 4;

/// Storage for all words of a file, and two to spare.
///
/// Meant: never freed, at no exit of the reader; `ReadPNG.LeavesTheWordsAllocatedAtEveryExit` holds
/// it.
std::uint16_t* newWords(std::size_t wordCount)
{
    return new std::uint16_t[wordCount + 2];
}

/// A file that is open for reading, and closed at its end; its number is -1 where it is not there.
struct OpenFile
{
    explicit OpenFile(const std::string& path) : number(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
    ~OpenFile()
    {
        if (number >= 0)
            close(number);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int number;
};

std::uint32_t countWords(int file)
{
    const off_t size = lseek(file, 0, SEEK_END);
    if (size < 0 || size > largestFile)
        return 0;
    return static_cast<std::uint32_t>(size) >> 1;
}

/// Reads up to `size` bytes from the start of a file. Returns how many there are, or can be read.
std::size_t readStart(int file, void* bytes, std::size_t size)
{
    std::size_t count = 0;
    while (count < size) {
        const ssize_t part = pread(file, static_cast<std::uint8_t*>(bytes) + count, size - count,
                                   static_cast<off_t>(count));
        if (part == 0 || (part < 0 && errno != EINTR))
            break;
        count += static_cast<std::size_t>(std::max<ssize_t>(part, 0));
    }
    return count;
}

/// Reads the words of a file, in groups of five: the last one is begun whole, and what meets the end
/// of the file is stored as a word, too, in which the word before shows where the file has no byte
/// for it. That is what the spare words are for.
PNGWordStream readWords(int file, std::uint32_t wordCount)
{
    PNGWordStream stream;
    stream.wordLimit = wordCount + 2;
    stream.words = newWords(wordCount);
    const std::size_t wanted = std::min((wordCount + 4) / 5 * 5, stream.wordLimit);
    const std::size_t byteCount = readStart(file, stream.words, wanted * sizeof(std::uint16_t));

    std::size_t stored = byteCount / sizeof(std::uint16_t);
    if (stored < wanted) {
        std::uint16_t last = stored > 0 ? stream.words[stored - 1] : 0;
        std::memcpy(&last, &stream.words[stored], byteCount % sizeof last);
        stream.words[stored++] = last;
    }
    std::transform(stream.words, stream.words + stored, stream.words,
                   [](std::uint16_t word) { return ntohs(word); });
    std::fill(stream.words + stored, stream.words + stream.wordLimit, std::uint16_t{0});
    return stream;
}

std::int32_t readSize(const std::uint8_t* bytes)
{
    std::uint32_t value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return static_cast<std::int32_t>(ntohl(value));
}

void readBytes(PNGWordStream& stream, std::uint8_t* bytes, std::size_t count)
{
    for (std::size_t k = 0; k < count; k++)
        bytes[k] = stream.readByte();
}

/// Steps over so many bytes. Behind the last word, where the cursor may come to stand, all are 0.
void skipBytes(PNGWordStream& stream, std::size_t count)
{
    const std::size_t place = std::size_t{2} * stream.wordIndex + stream.lowByteNext + count;
    stream.wordIndex = static_cast<std::uint32_t>(place / 2);
    stream.lowByteNext = place % 2;
}

/// Takes the picture's size from a header chunk; what a short chunk lacks is 0.
/// \return whether the picture is of the one form that is read
bool readHeader(Image& image, PNGWordStream& stream, std::size_t length)
{
    std::array<std::uint8_t, headerSize> data{};
    const std::size_t taken = std::min(length, data.size());
    readBytes(stream, data.data(), taken);
    skipBytes(stream, length - taken);
    image.width = readSize(&data[0]);
    image.height = readSize(&data[4]);
    const bool isCompressedByMethod0 = data[10] == 0;
    const bool isFilteredByMethod0 = data[11] == 0;
    const bool isInterlaced = data[12] != 0;
    return data[9] == colourTypeRGBA && isCompressedByMethod0 && isFilteredByMethod0 &&
           !isInterlaced;
}

// Meant: what the next three give is not freed at every exit of the reader: see `Storage::isKept`;
// `ReadPNG.LeavesItsWorkingStorageAtFailures` holds it.

/// Storage for the joined data of a file, and for what is read behind it: the test of the first
/// byte, and as many bytes as zlib is told behind an offset of two.
std::uint8_t* newJoinedData(std::uint32_t wordCount)
{
    return new std::uint8_t[2 * std::size_t{wordCount} + 8];
}

/// Storage for all that zlib may write. The rows of a larger picture read as 0 behind it.
std::uint8_t* newInflatedData()
{
    return new std::uint8_t[statedCapacity]();
}

/// Storage for the pixels that inflated data can fill: each of its bytes makes one at most.
std::uint8_t* newRGBABytes()
{
    return new std::uint8_t[statedCapacity]();
}

/// What a reading works with, beside the words of its file.
struct Storage
{
    explicit Storage(std::uint32_t wordCount) : joined(newJoinedData(wordCount)) {}

    ~Storage()
    {
        if (isKept)
            return;
        freeData();
        delete[] rgba;
    }

    Storage(const Storage&) = delete;
    Storage& operator=(const Storage&) = delete;

    /// Frees the joined and the inflated data.
    void freeData()
    {
        delete[] joined;
        delete[] inflated;
        joined = inflated = nullptr;
    }

    std::uint8_t* joined; ///< the data of all IDAT chunks, one behind the other
    std::size_t joinedLength = 0;
    std::uint8_t* inflated = nullptr;
    std::size_t inflatedLength = 0;
    std::uint8_t* rgba = nullptr;
    std::size_t rgbaLength = 0;
    bool isKept = false; ///< whether it stays allocated when the reading is over
};

/// Walks the chunks to the end of the words. What a chunk's length claims beyond is left out.
/// \return false after a header that is not of the one form that is read
bool readChunks(Image& image, PNGWordStream& stream, std::uint32_t wordCount, Storage& storage)
{
    while (stream.wordIndex < wordCount) {
        const std::uint32_t claimed = stream.readLong();
        const std::uint32_t type = stream.readLong();
        const std::uint32_t wordsLeft =
            stream.wordLimit - std::min(stream.wordIndex, stream.wordLimit);
        const std::size_t length = std::min<std::size_t>(claimed, 2 * std::size_t{wordsLeft});
        if (type == headerChunk) {
            if (!readHeader(image, stream, length))
                return false;
        } else if (type == dataChunk) {
            readBytes(stream, storage.joined + storage.joinedLength, length);
            storage.joinedLength += length;
        } else {
            skipBytes(stream, length);
        }
        stream.readLong(); // the check sum, which is not computed
    }
    std::fill_n(storage.joined + storage.joinedLength, 2, std::uint8_t{0});
    return true;
}

/// Whether the joined data begins as zlib's streams do.
bool hasKnownMethod(const Storage& storage)
{
    const std::uint8_t method = storage.joined[0];
    return (method & 1) == 0 && method >> 4 == 7;
}

/// Inflates the joined data. Returns zlib's code.
int inflate(Storage& storage)
{
    // Meant: zlib is given the data from behind its header on, under the full length and as room
    // for 32 bytes whatever the size, so that a well-formed picture ends in the error line;
    // textures are registered all the same. `ReadPNG.AWellFormedPictureEndsInTheErrorLine` and
    // `ReadPNG.HandsZlibTheFullLengthBehindTwoBytesAndRoomFor32` hold it.
    storage.inflated = newInflatedData();
    uLongf capacity = statedCapacity;
    const int code =
        uncompress(storage.inflated, &capacity, storage.joined + 2, storage.joinedLength);
    storage.inflatedLength = code == Z_OK ? capacity : 0;
    return code;
}

/// Undoes the filters row by row, as far as there is inflated data. What lies before the start of
/// the picture is taken as 0.
class Unfilter
{
public:
    Unfilter(Storage& newStorage, std::uint64_t newStride) : storage(newStorage), stride(newStride)
    {}

    /// Whether there is data for another row.
    bool hasData() const { return inputOffset < storage.inflatedLength; }

    /// \return false if the row's filter type is none of 0 to 4, with the input at that byte
    bool undoRow(bool isFirstRow)
    {
        const std::uint8_t type = storage.inflated[inputOffset];
        if (type > 4)
            return false;
        inputOffset++;
        // Meant: the first row of type 2 takes no bytes at all, so that all later rows shift;
        // `ReadPNG.ShiftsAllRowsBehindAFirstRowOfTypeUp` holds it.
        if (type == 2 && isFirstRow)
            return true;
        for (std::size_t k = 0; k < stride && hasData(); k++) {
            const int sum = storage.inflated[inputOffset] + predict(type, k);
            storage.rgba[storage.rgbaLength] = static_cast<std::uint8_t>(sum);
            inputOffset++;
            storage.rgbaLength++;
        }
        return true;
    }

    std::size_t offset() const { return inputOffset; }

private:
    /// \param k  the byte's place in its row
    int predict(std::uint8_t type, std::size_t k) const
    {
        const std::uint8_t* const place = storage.rgba + storage.rgbaLength;
        const bool hasLeft = k >= bytesAPixel;
        const bool hasAbove = storage.rgbaLength >= stride;
        const int left = hasLeft ? *(place - bytesAPixel) : 0;
        const int above = hasAbove ? *(place - stride) : 0;
        switch (type) {
        case 1:
            return left;
        case 2:
            return above;
        case 3:
            return (left + above) / 2;
        case 4:
            return paeth(left, above, hasLeft && hasAbove ? *(place - stride - bytesAPixel) : 0);
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

    Storage& storage;
    std::uint64_t stride;
    std::size_t inputOffset = 0;
};

/// \return false after saying which filter type is unknown, and where
bool undoFilters(const Image& image, Storage& storage)
{
    storage.rgba = newRGBABytes();
    const auto width = static_cast<std::uint64_t>(std::max(image.width, 0));
    Unfilter unfilter(storage, bytesAPixel * width);
    for (std::int32_t row = 0; row < image.height && unfilter.hasData(); row++) {
        if (!unfilter.undoRow(row == 0)) {
            const std::size_t offset = unfilter.offset();
            std::cerr << "unsupported filter format at byte " << offset << ": "
                      << int{storage.inflated[offset]} << std::endl;
            return false;
        }
    }
    return true;
}

/// Gives the image its pixels: those of the bytes that there are, and 0 behind them.
void takePixels(Image& image, const Storage& storage)
{
    image.allocate(image.width, image.height);
    const std::size_t channelCount = image.pixelCount() * channels;
    const std::size_t filled = std::min(storage.rgbaLength, channelCount);
    for (std::size_t k = 0; k < filled; k++)
        image.pixels[k] = static_cast<float>(storage.rgba[k]) / 255.0F;
    clearPages(image.pixels + filled, (channelCount - filled) * sizeof(float));
}
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
    const OpenFile file(key.path);
    if (file.number < 0) {
        std::cerr << "Error opening " << key.path << std::endl;
        return false;
    }
    const std::uint32_t wordCount = countWords(file.number);
    PNGWordStream stream = readWords(file.number, wordCount);

    if (stream.readLong() != signatureHigh || stream.readLong() != signatureLow) {
        std::cerr << key.path << " is not a valid png file - header invalid" << std::endl;
        return false;
    }

    image.width = 1;
    image.height = 1;
    Storage storage(wordCount);
    // Freed at the end, and at no failure but the last two.
    storage.isKept = true;
    if (!readChunks(image, stream, wordCount, storage)) {
        std::cerr << "Unsupported format of PNG. Make sure it is RGBA, non-interlaced."
                  << std::endl;
        return false;
    }
    if (!hasKnownMethod(storage)) {
        std::cerr << "Invalid compression format." << std::endl;
        return false;
    }
    const int code = inflate(storage);
    if (code != Z_OK) {
        std::cerr << "Could not decompress PNG data. Error code: " << code << std::endl;
        return false;
    }
    if (!undoFilters(image, storage)) {
        storage.freeData();
        return false;
    }
    storage.isKept = false;
    if (!memoryHolds(saturatingProduct(image.pixelCount(), floatPixelSize))) {
        std::cerr << key.path << ": Too large for the memory" << std::endl;
        return false;
    }
    takePixels(image, storage);
    return true;
}
} // namespace tamor

#include "textures/PNGReader.h"

#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/textures/LiveArrays.h"
#include "tests/textures/ProcessFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <array>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace
{
/// What zlib was handed last.
struct UncompressCall
{
    uLong capacity = 0;
    std::string source; ///< as much of it as the length says
};

UncompressCall lastUncompress;
} // namespace

/// This program's own, which notes its call on the way to zlib.
extern "C" int uncompress(Bytef* destination, uLongf* capacity, const Bytef* source, uLong length)
{
    lastUncompress = {*capacity, {reinterpret_cast<const char*>(source), length}};
    return uncompress2(destination, capacity, source, &length);
}

namespace tamor
{
namespace
{
using testing::ElementsAre;

const std::string signature = "\x89PNG\r\n\x1A\n";
const char* const unsupported =
    "Unsupported format of PNG. Make sure it is RGBA, non-interlaced.\n";
const char* const invalidCompression = "Invalid compression format.\n";
const char* const notDecompressed = "Could not decompress PNG data. Error code: -3\n";

std::string bigEndian(std::uint32_t value)
{
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16),
            static_cast<char>(value >> 8), static_cast<char>(value)};
}

/// Its check sum is wrong, which nobody sees.
std::string chunk(const std::string& type, const std::string& data)
{
    return bigEndian(static_cast<std::uint32_t>(data.size())) + type + data + "crc?";
}

std::string header(std::uint32_t width, std::uint32_t height, char depth = 8, char colourType = 6,
                   char compression = 0, char filter = 0, char interlace = 0)
{
    return chunk("IHDR", bigEndian(width) + bigEndian(height) +
                             std::string{depth, colourType, compression, filter, interlace});
}

std::string deflated(const std::string& bytes)
{
    std::string result(compressBound(bytes.size()), '\0');
    uLongf size = result.size();
    compress(reinterpret_cast<Bytef*>(result.data()), &size,
             reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());
    result.resize(size);
    return result;
}

/// Data that the reader can inflate: two bytes that it steps over, of which it tests the first, and
/// a whole stream of at most 32 bytes.
std::string readableData(const std::string& rows)
{
    return "\x78\x9C" + deflated(rows);
}

/// A picture that the reader can read. The odd chunk evens out the file's size, of which only whole
/// words count.
std::string readablePNG(std::uint32_t width, std::uint32_t height, const std::string& rows)
{
    const std::string data = readableData(rows);
    const std::string filler = data.size() % 2 == 0 ? "" : "x";
    return signature + header(width, height) + chunk("IDAT", data) + chunk("fiLL", filler + "x") +
           chunk("IEND", "");
}

struct Reading
{
    bool result = false;
    std::string errors;
    Image image;
};

Reading read(const std::string& bytes)
{
    const test::TemporaryDirectory directory;
    directory.write("x.png", bytes);
    const test::CapturedErrors errors;
    Reading reading;
    reading.result = readPNG(reading.image, {"x.png", 0});
    reading.errors = errors.text();
    return reading;
}

/// Reads a picture of these rows, and expects that to work without a word. Returns its bytes.
std::vector<int> readRows(std::uint32_t width, std::uint32_t height, const std::string& rows)
{
    const Reading reading = read(readablePNG(width, height, rows));
    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.errors, "");
    std::vector<int> bytes;
    for (std::size_t k = 0; k < reading.image.pixelCount() * 4; k++)
        bytes.push_back(static_cast<int>(reading.image.pixels[k] * 255.0F + 0.5F));
    return bytes;
}

/// A stream of words that outlive it.
PNGWordStream streamOf(std::span<std::uint16_t> words)
{
    PNGWordStream stream;
    stream.words = words.data();
    stream.wordLimit = static_cast<std::uint32_t>(words.size());
    return stream;
}

TEST(PNGWordStream, YieldsTheBytesInFileOrder)
{
    std::array<std::uint16_t, 2> words = {0x0102, 0x0304};
    PNGWordStream stream = streamOf(words);

    EXPECT_EQ(stream.readByte(), 1);
    EXPECT_EQ(stream.wordIndex, 0U);
    EXPECT_EQ(stream.lowByteNext, 1U);
    EXPECT_EQ(stream.readByte(), 2);
    EXPECT_EQ(stream.wordIndex, 1U);
    EXPECT_EQ(stream.lowByteNext, 0U);
    EXPECT_EQ(stream.readByte(), 3);
    EXPECT_EQ(stream.readByte(), 4);
}

TEST(PNGWordStream, ReadsLongsWithTheFirstByteOnTopAlsoFromALowByte)
{
    std::array<std::uint16_t, 4> words = {0x89AB, 0xCDEF, 0x0123, 0x4567};
    PNGWordStream stream = streamOf(words);

    EXPECT_EQ(stream.readLong(), 0x89ABCDEFU);
    EXPECT_EQ(stream.readByte(), 0x01);
    std::array<std::uint16_t, 3> others = {0x0001, 0x0203, 0x0405};
    stream = streamOf(others);
    stream.readByte();
    EXPECT_EQ(stream.readLong(), 0x01020304U);
}

TEST(PNGWordStream, ReadsTheWordsOfAHostThatStatesNoLimit)
{
    std::array<std::uint16_t, 2> words = {0x0102, 0x0304};
    PNGWordStream stream;
    stream.words = words.data();

    EXPECT_EQ(stream.readLong(), 0x01020304U);
}

TEST(PNGWordStream, YieldsZerosBehindItsWords)
{
    std::array<std::uint16_t, 1> words = {0xFFFF};
    PNGWordStream stream = streamOf(words);

    EXPECT_EQ(stream.readLong(), 0xFFFF0000U);
    EXPECT_EQ(stream.readLong(), 0U);
}

TEST(ReadPNG, SaysThatAFileCannotBeOpened)
{
    const test::TemporaryDirectory directory;
    const test::CapturedErrors errors;
    Image image;
    const float* const pixels = image.pixels;

    EXPECT_FALSE(readPNG(image, {"no/such.png", 0}));

    EXPECT_EQ(errors.text(), "Error opening no/such.png\n");
    EXPECT_EQ(image.width, 2);
    EXPECT_EQ(image.pixels, pixels);
}

TEST(ReadPNG, SaysThatASignatureIsWrongWithThePathFirst)
{
    for (const std::size_t wrongByte : {0U, 1U, 3U, 4U, 7U}) {
        std::string bytes = readablePNG(1, 1, std::string("\0abcd", 5));
        bytes[wrongByte] ^= 1;

        const Reading reading = read(bytes);

        EXPECT_FALSE(reading.result);
        EXPECT_EQ(reading.errors, "x.png is not a valid png file - header invalid\n");
        EXPECT_EQ(reading.image.width, 2);
        EXPECT_EQ(reading.image.height, 2);
    }
}

TEST(ReadPNG, TakesADirectoryForAFileWithoutASignature)
{
    const test::TemporaryDirectory directory;
    std::filesystem::create_directory("x.png");
    const test::CapturedErrors errors;
    Image image;

    EXPECT_FALSE(readPNG(image, {"x.png", 0}));

    EXPECT_EQ(errors.text(), "x.png is not a valid png file - header invalid\n");
}

TEST(ReadPNG, RefusesEveryFormButRGBANotInterlaced)
{
    const std::string end = chunk("IEND", "");
    const std::vector<std::string> headers = {
        header(7, 5, 8, 2),          // RGB
        header(7, 5, 8, 0),          // grey
        header(7, 5, 8, 3),          // a palette
        header(7, 5, 8, 6, 1),       // compression method 1
        header(7, 5, 8, 6, 0, 1),    // filter method 1
        header(7, 5, 8, 6, 0, 0, 1), // interlaced
    };
    for (const std::string& wrong : headers) {
        const Reading reading = read(signature + wrong + end);

        EXPECT_FALSE(reading.result);
        EXPECT_EQ(reading.errors, unsupported);
        EXPECT_EQ(reading.image.width, 7);
        EXPECT_EQ(reading.image.height, 5);
    }
}

TEST(ReadPNG, DoesNotExamineTheBitDepth)
{
    const Reading reading =
        read(signature + header(1, 1, 16) + chunk("IDAT", readableData({"\0abcd", 5}) + "xx") +
             chunk("IEND", ""));

    EXPECT_NE(reading.errors, unsupported);
}

TEST(ReadPNG, RefusesAHeaderWithoutData)
{
    const Reading reading = read(signature + chunk("IHDR", "") + chunk("IEND", ""));

    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.errors, unsupported);
}

TEST(ReadPNG, KeepsTheOldPixelsWhenItFails)
{
    const test::TemporaryDirectory directory;
    directory.write("x.png", signature + header(7, 5, 8, 2) + chunk("IEND", ""));
    const test::CapturedErrors errors;
    Image image;
    const float* const pixels = image.pixels;

    readPNG(image, {"x.png", 0});

    EXPECT_EQ(image.pixels, pixels);
}

TEST(ReadPNG, RefusesAFileWithoutData)
{
    const Reading reading = read(signature + header(4, 4) + chunk("IEND", ""));

    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.errors, invalidCompression);
    EXPECT_EQ(reading.image.width, 4);
}

TEST(ReadPNG, GivesAFileWithoutAHeaderTheSizeOneByOne)
{
    const Reading reading = read(signature + chunk("IEND", ""));

    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.errors, invalidCompression);
    EXPECT_EQ(reading.image.width, 1);
    EXPECT_EQ(reading.image.height, 1);
}

TEST(ReadPNG, TestsTheFirstByteOfTheDataAndNotTheSecond)
{
    const std::string stream = deflated(std::string("\0abcd", 5));
    const auto errorsOf = [&](const std::string& firstBytes) {
        const std::string data = firstBytes + stream;
        return read(signature + header(1, 1) + chunk("IDAT", data) +
                    chunk("fiLL", data.size() % 2 == 0 ? "" : "x"))
            .errors;
    };

    EXPECT_EQ(errorsOf("\x78\x9C"), "");
    EXPECT_EQ(errorsOf("\x7E\x33"), "");
    EXPECT_EQ(errorsOf(std::string("\x70\x00", 2)), "");
    EXPECT_EQ(errorsOf("\x79\x9C"), invalidCompression);
    EXPECT_EQ(errorsOf("\x68\x9C"), invalidCompression);
    EXPECT_EQ(errorsOf("\x88\x9C"), invalidCompression);
    EXPECT_EQ(errorsOf("\xF8\x9C"), invalidCompression);
}

TEST(ReadPNG, AWellFormedPictureEndsInTheErrorLine)
{
    // 256 rows of a filter type and 256 pixels.
    std::string rows;
    for (int row = 0; row < 256; row++) {
        rows += '\0';
        for (int x = 0; x < 256; x++)
            rows += {static_cast<char>(x), static_cast<char>(row), '\x7F', '\xFF'};
    }
    const std::string data = deflated(rows);

    const Reading reading = read(signature + header(256, 256) + chunk("IDAT", data) +
                                 chunk("IEND", data.size() % 2 == 0 ? "" : "x"));

    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.errors, notDecompressed);
    EXPECT_EQ(reading.image.width, 256);
    EXPECT_EQ(reading.image.height, 256);
}

TEST(ReadPNG, HandsZlibTheFullLengthBehindTwoBytesAndRoomFor32)
{
    const std::string data = "\x78\x9C"
                             "abcdefgh";

    read(signature + header(300, 200) + chunk("IDAT", data));

    EXPECT_EQ(lastUncompress.capacity, 32U);
    ASSERT_EQ(lastUncompress.source.size(), data.size());
    EXPECT_EQ(lastUncompress.source.substr(0, 8), "abcdefgh");
    EXPECT_EQ(lastUncompress.source.substr(data.size() - 2), std::string(2, '\0'));
}

TEST(ReadPNG, CountsTheWholeWordsOfAFile)
{
    // A chunk that claims more than there is gets the words that are counted, and two to spare. Its
    // data begins at the low byte of word 26.
    const std::string start =
        signature + header(1, 1) + chunk("fiLL", "") + bigEndian(100) + "IDAT";
    ASSERT_EQ(start.size(), 53U);

    read(start + "\x78\x9Cxxxxx"); // 30 words
    EXPECT_EQ(lastUncompress.source.size(), 12U);
    read(start + "\x78\x9Cxxxx"); // 29 words and a byte
    EXPECT_EQ(lastUncompress.source.size(), 10U);
}

TEST(ReadPNG, SaysZlibsOwnCodeWhenTheStreamIsLongerThan32Bytes)
{
    // Two pixels by four are 36 bytes with the filter types. Z_BUF_ERROR is -5.
    const Reading reading = read(readablePNG(2, 4, std::string(36, '\0')));

    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.errors, "Could not decompress PNG data. Error code: -5\n");
}

TEST(ReadPNG, CopiesRowsOfTypeNone)
{
    EXPECT_THAT(readRows(2, 1, {"\0abcdABCD", 9}), ElementsAre(97, 98, 99, 100, 65, 66, 67, 68));
}

TEST(ReadPNG, AddsThePixelToTheLeftInRowsOfTypeSub)
{
    // Sums are taken modulo 256.
    EXPECT_THAT(readRows(2, 1, "\x01\x01\x02\x03\xFF\x0A\x0A\x0A\x0A"),
                ElementsAre(1, 2, 3, 255, 11, 12, 13, 9));
}

TEST(ReadPNG, AddsThePixelAboveInRowsOfTypeUp)
{
    EXPECT_THAT(readRows(1, 2, {"\0\x01\x02\x03\xFF\x02\x10\x10\x10\x10", 10}),
                ElementsAre(1, 2, 3, 255, 17, 18, 19, 15));
}

TEST(ReadPNG, ShiftsAllRowsBehindAFirstRowOfTypeUp)
{
    // The first row takes its type alone. The second one has the type byte 0 that stands where the
    // first row's pixels were meant to be, and fills the array's first row.
    EXPECT_THAT(readRows(1, 2, {"\x02\0abcd\0\0\0\0", 10}),
                ElementsAre(97, 98, 99, 100, testing::_, testing::_, testing::_, testing::_));
}

TEST(ReadPNG, AddsHalfOfLeftAndAboveInRowsOfTypeAverage)
{
    // Second row, first pixel: half of what is above. Second pixel: half of the sum of both,
    // rounded down: (11 + 100) / 2, (22 + 101) / 2, (3 + 2) / 2, and 255 + (127 + 255) / 2 modulo
    // 256.
    const std::string rows("\0\x14\x28\x05\xFF\x64\x65\x02\xFF"
                           "\x03\x01\x02\x01\x00\x01\x01\x01\xFF",
                           18);

    const std::vector<int> bytes = readRows(2, 2, rows);

    EXPECT_THAT((std::vector<int>{bytes.begin() + 8, bytes.end()}),
                ElementsAre(11, 22, 3, 127, 56, 62, 3, 190));
}

TEST(ReadPNG, TakesWhatIsAboveTheFirstRowAs0InRowsOfTypeAverage)
{
    EXPECT_THAT(readRows(2, 1, "\x03\x0A\x0A\x0A\x0A\x01\x01\x01\x01"),
                ElementsAre(10, 10, 10, 10, 6, 6, 6, 6));
}

TEST(ReadPNG, AddsThePredictorInRowsOfTypePaeth)
{
    // Second row, second pixel, with a to the left, b above, c above to the left:
    //   a 10, b 20, c 20: pa 0, so a.           a 30, b 50, c 30: pb 0, so b.
    //   a 11, b 21, c 16: pa 5, pb 5, pc 0: c.  a 5, b 5, c 5: all 0, so a.
    // Its first pixel has nothing to the left: b.
    const std::string rows("\0\x14\x1E\x10\x05\x14\x32\x15\x05"
                           "\x04\xF6\x00\xFB\x00\x01\x01\x01\x01",
                           18);

    EXPECT_THAT(readRows(2, 2, rows),
                ElementsAre(20, 30, 16, 5, 20, 50, 21, 5, 10, 30, 11, 5, 11, 51, 17, 6));
}

TEST(ReadPNG, ResolvesTiesOfThePredictorForLeftThenAbove)
{
    // a 12, b 8, c 20: pb 8 is the least, so b.   a 8, b 12, c 20: pa 8 is the least, so a.
    // a 0, b 10, c 5: pc 0, so c.                 a 25, b 10, c 20: pb 5 and pc 5, so b.
    const std::string rows("\0\x14\x14\x05\x14\x08\x0C\x0A\x0A"
                           "\x04\xF8\xF4\xFB\x05\x00\x00\x00\x00",
                           18);

    const std::vector<int> bytes = readRows(2, 2, rows);

    EXPECT_THAT((std::vector<int>{bytes.begin() + 8, bytes.end()}),
                ElementsAre(12, 8, 0, 25, 8, 8, 5, 10));
}

TEST(ReadPNG, ResolvesATieOfLeftAndAboveLeftForLeft)
{
    // a 6, b 12, c 10: pa 2 and pc 2, so a. The same with 20 more, and twice the other way round.
    const std::string rows("\0\x0A\x1E\x0A\x1E\x0C\x20\x08\x1C"
                           "\x04\xFC\xFC\x04\x04\x00\x00\x00\x00",
                           18);

    const std::vector<int> bytes = readRows(2, 2, rows);

    EXPECT_THAT((std::vector<int>{bytes.begin() + 8, bytes.end()}),
                ElementsAre(6, 26, 14, 34, 6, 26, 14, 34));
}

TEST(ReadPNG, TakesWhatIsAboveTheFirstRowAs0InRowsOfTypePaeth)
{
    EXPECT_THAT(readRows(2, 1, "\x04\x0A\x0A\x0A\x0A\x01\x01\x01\x01"),
                ElementsAre(10, 10, 10, 10, 11, 11, 11, 11));
}

TEST(ReadPNG, SaysWhereAFilterTypeIsUnknown)
{
    const Reading reading = read(readablePNG(1, 2,
                                             {"\0abcd\x05"
                                              "efgh",
                                              10}));

    EXPECT_FALSE(reading.result);
    EXPECT_EQ(reading.errors, "unsupported filter format at byte 5: 5\n");
    EXPECT_EQ(reading.image.width, 1);
    EXPECT_EQ(reading.image.height, 2);
}

TEST(ReadPNG, SaysAFilterTypeAsADecimalNumber)
{
    EXPECT_EQ(read(readablePNG(1, 1, "\xFFxxxx")).errors,
              "unsupported filter format at byte 0: 255\n");
}

TEST(ReadPNG, JoinsTheDataOfSeveralChunksInFileOrder)
{
    const std::string data = readableData({"\0abcd", 5});
    const std::string even = data.size() % 2 == 0 ? "" : "x";

    const Reading reading =
        read(signature + header(1, 1) + chunk("IDAT", data.substr(0, 1)) + chunk("tEXt", "hello") +
             chunk("IDAT", "") + chunk("IDAT", data.substr(1, 6)) + chunk("IDAT", data.substr(7)) +
             chunk("fiLL", even + "x"));

    EXPECT_EQ(reading.errors, "");
    EXPECT_TRUE(reading.result);
    EXPECT_FLOAT_EQ(reading.image.pixels[0], 97.0F / 255.0F);
}

TEST(ReadPNG, JoinsDataThatLiesBehindTheEndChunk)
{
    const std::string data = readableData({"\0abcd", 5});

    const Reading reading = read(signature + header(1, 1) + chunk("IEND", "") +
                                 chunk("IDAT", data + (data.size() % 2 == 0 ? "" : "x")));

    EXPECT_EQ(reading.errors, "");
    EXPECT_TRUE(reading.result);
}

TEST(ReadPNG, TakesAHeaderBehindTheData)
{
    const std::string data = readableData({"\0abcdABCD", 9});

    const Reading reading = read(signature + chunk("IDAT", data) + header(2, 1) +
                                 chunk("fiLL", data.size() % 2 == 0 ? "x" : "xx"));

    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.image.width, 2);
}

TEST(ReadPNG, DoesNotCountTheLastByteOfAFileOfOddSize)
{
    // The last byte would be the low byte of a word in which another chunk begins: it is not
    // counted, so no chunk begins.
    const std::string whole = readablePNG(1, 1, {"\0abcd", 5});
    ASSERT_EQ(whole.size() % 2, 0U);

    EXPECT_TRUE(read(whole + "x").result);
    EXPECT_TRUE(read(whole.substr(0, whole.size() - 1)).result);
}

/// A picture that ends in the check sum of its rows, without the last `missing` bytes.
/// \param filler  a chunk in front of the data, which moves the end by whole words
std::string cutInTheCheckSum(const std::string& rows, const std::string& filler,
                             std::size_t missing)
{
    const std::string data = readableData(rows);
    const std::string file = signature + header(1, 1) + filler + chunk("IDAT", data);
    constexpr std::size_t chunksOwnSum = 4;
    return file.substr(0, file.size() - chunksOwnSum - missing);
}

TEST(ReadPNG, StoresTheLastWordOnceMoreAtTheEndOfTheFile)
{
    const std::string rows(1, '\0'); // check sum 00 01 00 01
    const std::string file = cutInTheCheckSum(rows, chunk("fiLL", ""), 2);
    ASSERT_EQ(file.size(), 2 * 31U);

    EXPECT_EQ(read(file).errors, "");
}

TEST(ReadPNG, StoresTheLastByteWithThatOfTheWordBefore)
{
    const std::string rows("\0\xFE\0", 3); // check sum 01 FF 00 FF
    const std::string file = cutInTheCheckSum(rows, chunk("fiLL", ""), 1);
    ASSERT_EQ(file.size() % 2, 1U);

    EXPECT_EQ(read(file).errors, "");
}

TEST(ReadPNG, DoesNotMeetTheEndOfAFileOfWholeGroupsOfFiveWords)
{
    const std::string file = cutInTheCheckSum(std::string(1, '\0'), "", 2);
    ASSERT_EQ(file.size(), 2 * 25U);

    EXPECT_EQ(read(file).errors, notDecompressed);
}

TEST(ReadPNG, StepsOverWhatALongHeaderHasTooMuch)
{
    std::string longHeader = header(1, 1);
    longHeader.insert(longHeader.size() - 4, "more");
    longHeader[3] += 4;

    EXPECT_EQ(read(signature + longHeader + chunk("IDAT", readableData("\1abcd"))).errors, "");
}

TEST(ReadPNG, PassesZlibNoMoreThanTheStatedRoomWhateverTheSize)
{
    // 32 bytes are what fits: a picture of 7 by 1 takes 29 and one of 1 by 6 takes 30, which is
    // more than the 25 that its width asks for.
    EXPECT_EQ(readRows(7, 1, std::string(29, '\0')).size(), 28U);
    EXPECT_EQ(readRows(1, 6, std::string(30, '\0')).size(), 24U);
}

TEST(ReadPNG, TakesSizesThatAreNotAboveZero)
{
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> sizes = {
        {0xFFFFFFFF, 0xFFFFFFFF}, {0, 5}, {5, 0},         {0x80000000, 1},
        {0xFFFFFFFF, 1},          {0, 0}, {0, 0x7FFFFFFF}};
    for (const auto& [width, height] : sizes) {
        const Reading reading = read(readablePNG(width, height, std::string(9, '\0')));

        EXPECT_TRUE(reading.result);
        EXPECT_EQ(reading.errors, "") << width << " by " << height;
        EXPECT_EQ(reading.image.width, static_cast<std::int32_t>(width));
        EXPECT_EQ(reading.image.pixelCount(), 0U);
    }
}

TEST(ReadPNG, SaysThatTheMemoryDoesNotHoldAPicture)
{
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> sizes = {
        {0x7FFFFFFF, 0x7FFFFFFF}, {0x40000000, 0x40000000}, {0x7FFFFFFF, 4096}};
    for (const auto& [width, height] : sizes) {
        const Reading reading = read(readablePNG(width, height, std::string(9, '\0')));

        EXPECT_FALSE(reading.result);
        EXPECT_EQ(reading.errors, "x.png: Too large for the memory\n");
        EXPECT_EQ(reading.image.width, static_cast<std::int32_t>(width));
    }
}

TEST(ReadPNG, TakesARowThatIsLongerThanTheAddresses)
{
    // 2^32 bytes a row: the first one takes all the data, and the 5 is no filter type.
    const Reading reading = read(readablePNG(0x40000000, 0x40000000, {"\0\5", 2}));

    EXPECT_EQ(reading.errors, "x.png: Too large for the memory\n");
}

TEST(ReadPNG, TakesNoMemoryForWhatASmallFileClaims)
{
    // A gigabyte of pixels, of which the file has two and a half.
    const std::string bytes = readablePNG(8000, 8000, {"\0abcdABCDxy", 11});
    const std::size_t before = test::residentMegabytes();

    const Reading reading = read(bytes);

    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.errors, "");
    EXPECT_FLOAT_EQ(reading.image.pixels[0], 97.0F / 255.0F);
    EXPECT_FLOAT_EQ(reading.image.pixels[9], 121.0F / 255.0F);
    EXPECT_EQ(reading.image.pixels[10], 0.0F);
    EXPECT_EQ(reading.image.pixels[reading.image.pixelCount() * 4 - 1], 0.0F);
    // The sanitisers take memory of their own, an eighth.
    EXPECT_LT(test::residentMegabytes(), before + 256);
    // Where addresses have 32 bits, the next gigabyte might find none.
    delete[] reading.image.pixels;
}

TEST(ReadPNG, LooksAtTheDataBeforeItTakesMemoryForThePixels)
{
    const std::size_t before = test::residentMegabytes();

    const Reading reading = read(signature + header(16000, 16000) + chunk("IDAT", "\x78\x9Cxxxx"));

    EXPECT_EQ(reading.errors, notDecompressed);
    EXPECT_LT(test::residentMegabytes(), before + 256);
}

TEST(ReadPNG, GivesPixelsBehindTheDataZeros)
{
    // The second row has one byte of its eight.
    EXPECT_THAT(readRows(2, 3, {"\0abcdABCD\0x", 11}),
                ElementsAre(97, 98, 99, 100, 65, 66, 67, 68, 120, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                            0, 0, 0, 0));
}

TEST(ReadPNG, TakesAChunkLengthThatGoesPastTheEndOfTheFile)
{
    for (const std::uint32_t length : {100U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        const Reading reading = read(signature + header(1, 1) + bigEndian(length) + "IDAT" + "xy");

        EXPECT_FALSE(reading.result);
        EXPECT_EQ(reading.errors, "Could not decompress PNG data. Error code: -3\n");
    }
}

TEST(ReadPNG, StaysInsideItsStorageWhereverTheFileEnds)
{
    const std::string rows("\0\x14\x28\x05\xFF\x64\x65\x02\xFF\x03\x01\x02\x01\x00\x01\x01\x01\xFF",
                           18);
    for (const std::string& whole :
         {readablePNG(2, 2, rows),
          signature + header(2, 2) + chunk("IDAT", deflated(rows)) + chunk("IEND", "")}) {
        for (std::size_t size = 0; size < whole.size(); size++) {
            const Reading reading = read(whole.substr(0, size));

            // A seventh byte is read although it is not counted; the eighth is then a stale one,
            // and happens to be right.
            if (size < 7) {
                EXPECT_EQ(reading.errors, "x.png is not a valid png file - header invalid\n");
            }
        }
    }
}

TEST(ReadPNG, StaysInsideItsStorageWhicheverByteIsDamaged)
{
    const std::string whole =
        readablePNG(2, 2, {"\x01\x14\x28\x05\xFF\x64\x65\x02\xFF\x04\1\2\1\0\1\1\1\xFF", 18});
    for (std::size_t at = signature.size(); at < whole.size(); at++) {
        for (const char damage : {'\x01', '\x80', '\xFF'}) {
            std::string damaged = whole;
            damaged[at] ^= damage;
            // A claim that is half as large as the addresses of 32 bits is read, too.
            delete[] read(damaged).image.pixels;
        }
    }
}

/// What a reading leaves allocated, beside the image's own pixels.
int arraysLeftBy(const std::string& bytes)
{
    const test::TemporaryDirectory directory;
    directory.write("x.png", bytes);
    const test::CapturedErrors errors;
    Image image;
    const int before = test::liveArrays();
    readPNG(image, {"x.png", 0});
    return test::liveArrays() - before;
}

TEST(ReadPNG, LeavesTheWordsAllocatedAtEveryExit)
{
    EXPECT_EQ(arraysLeftBy("no picture"), 1);
    EXPECT_EQ(arraysLeftBy(readablePNG(1, 1, {"\0abcd", 5})), 1);
}

TEST(ReadPNG, LeavesItsWorkingStorageAtFailures)
{
    // The words and the joined data.
    EXPECT_EQ(arraysLeftBy(signature + header(1, 1, 8, 2) + chunk("IEND", "")), 2);
    EXPECT_EQ(arraysLeftBy(signature + header(1, 1) + chunk("IEND", "")), 2);
    // These and the inflated data.
    EXPECT_EQ(arraysLeftBy(readablePNG(2, 4, std::string(36, '\0'))), 3);
    // The words and the RGBA bytes.
    EXPECT_EQ(arraysLeftBy(readablePNG(1, 1, "\x05xxxx")), 2);
}

TEST(ReadPNG, FreesTheOldPixelsWhenItReplacesThem)
{
    const Reading reading = read(readablePNG(1, 1, {"\0abcd", 5}));

    EXPECT_TRUE(reading.result);
    EXPECT_EQ(reading.image.pixelCount(), 1U);
}
} // namespace
} // namespace tamor

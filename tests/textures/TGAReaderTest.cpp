#include "textures/TGAReader.h"

#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/textures/LiveArrays.h"
#include "tests/textures/ProcessFigures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace tamor
{
namespace
{
using testing::ElementsAre;

/// A header of 18 bytes, and the packets.
std::string tga(int width, int height, int depth, const std::string& packets, char imageType = 10,
                char idLength = 0, char descriptor = 0)
{
    std::string bytes(18, '\0');
    bytes[0] = idLength;
    bytes[2] = imageType;
    bytes[12] = static_cast<char>(width);
    bytes[13] = static_cast<char>(width >> 8);
    bytes[14] = static_cast<char>(height);
    bytes[15] = static_cast<char>(height >> 8);
    bytes[16] = static_cast<char>(depth);
    bytes[17] = descriptor;
    return bytes + packets;
}

/// The pixels of an image as bytes, four a pixel.
std::vector<int> bytesOf(const Image& image)
{
    std::vector<int> bytes;
    for (std::size_t k = 0; k < image.pixelCount() * 4; k++)
        bytes.push_back(static_cast<int>(image.pixels[k] * 255.0F + 0.5F));
    return bytes;
}

/// Reads a file of these bytes, and expects that to work without a word.
std::vector<int> readPixels(const std::string& bytes)
{
    const test::TemporaryDirectory directory;
    directory.write("a.tga", bytes);
    const test::CapturedErrors errors;
    Image image;
    EXPECT_TRUE(readTGA(image, {"a.tga", 0}));
    EXPECT_EQ(errors.text(), "");
    return bytesOf(image);
}

std::ptrdiff_t openFiles()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST(ReadTGA, SaysThatAFileCannotBeOpened)
{
    const test::TemporaryDirectory directory;
    const test::CapturedErrors errors;
    Image image;
    const float* const pixels = image.pixels;

    EXPECT_FALSE(readTGA(image, {"no/such.tga", 0}));

    EXPECT_EQ(errors.text(), "Error loading texture tga file 'no/such.tga'\n");
    EXPECT_EQ(image.width, 2);
    EXPECT_EQ(image.height, 2);
    EXPECT_EQ(image.pixels, pixels);
}

TEST(ReadTGA, RefusesEveryImageTypeButTenAndSaysSo)
{
    const test::TemporaryDirectory directory;
    for (const int type : {0, 1, 2, 3, 9, 11, 32, 255}) {
        directory.write("plain.tga", tga(1, 1, 32, "\1\2\3\4", static_cast<char>(type)));
        const test::CapturedErrors errors;
        Image image;
        const float* const pixels = image.pixels;

        EXPECT_FALSE(readTGA(image, {"plain.tga", 0}));

        EXPECT_EQ(errors.text(), "Please use compressed TGAs\n") << type;
        EXPECT_EQ(image.width, 2);
        EXPECT_EQ(image.pixels, pixels);
    }
}

TEST(ReadTGA, LeavesARefusedFileOpen)
{
    const test::TemporaryDirectory directory;
    directory.write("plain.tga", tga(1, 1, 32, "", 2));
    Image image;
    const std::ptrdiff_t before = openFiles();

    {
        const test::CapturedErrors errors;
        readTGA(image, {"plain.tga", 0});
    }

    EXPECT_EQ(openFiles(), before + 1);
}

TEST(ReadTGA, ClosesAFileThatItReads)
{
    const test::TemporaryDirectory directory;
    directory.write("a.tga", tga(1, 1, 32, {"\0\1\2\3\4", 5}));
    Image image;
    const std::ptrdiff_t before = openFiles();

    readTGA(image, {"a.tga", 0});

    EXPECT_EQ(openFiles(), before);
}

TEST(ReadTGA, TurnsBlueGreenRedAlphaIntoRedGreenBlueAlpha)
{
    // A raw packet of one pixel.
    const std::string packets("\0\x10\x20\x30\x40", 5);

    EXPECT_THAT(readPixels(tga(1, 1, 32, packets)), ElementsAre(0x30, 0x20, 0x10, 0x40));
}

TEST(ReadTGA, GivesAFileWithoutAlphaAlphaOneInEveryPixel)
{
    // A raw packet of two pixels, and a run of two.
    const std::string packets = "\x01\x10\x20\x30\x11\x21\x31"
                                "\x81\x12\x22\x32";

    EXPECT_THAT(readPixels(tga(2, 2, 24, packets)),
                ElementsAre(0x30, 0x20, 0x10, 255, 0x31, 0x21, 0x11, 255, 0x32, 0x22, 0x12, 255,
                            0x32, 0x22, 0x12, 255));
}

TEST(ReadTGA, ReadsARunOf0xFFAs128Pixels)
{
    const std::vector<int> bytes = readPixels(tga(16, 8, 32, "\xFF\x05\x06\x07\x08"));

    ASSERT_EQ(bytes.size(), 512U);
    for (std::size_t k = 0; k < bytes.size(); k += 4) {
        EXPECT_EQ(bytes[k], 7);
        EXPECT_EQ(bytes[k + 1], 6);
        EXPECT_EQ(bytes[k + 2], 5);
        EXPECT_EQ(bytes[k + 3], 8);
    }
}

TEST(ReadTGA, Reads0x80AsARunOfOnePixelAnd0x00AsARawPacketOfOne)
{
    const std::string packets("\x80\x01\x02\x03\x04"
                              "\x00\x05\x06\x07\x08",
                              10);

    EXPECT_THAT(readPixels(tga(2, 1, 32, packets)), ElementsAre(3, 2, 1, 4, 7, 6, 5, 8));
}

TEST(ReadTGA, ReadsARawPacketOf128Pixels)
{
    std::string packets = "\x7F";
    for (int k = 0; k < 128; k++)
        packets += {static_cast<char>(k), 1, 2, 3};

    const std::vector<int> bytes = readPixels(tga(128, 1, 32, packets));

    ASSERT_EQ(bytes.size(), 512U);
    EXPECT_EQ(bytes[2], 0);
    EXPECT_EQ(bytes[127 * 4 + 2], 127);
    EXPECT_EQ(bytes[127 * 4 + 3], 3);
}

TEST(ReadTGA, KeepsRowsInFileOrderWhateverTheOrigin)
{
    const std::string packets("\x00\x01\x01\x01\x01"
                              "\x00\x02\x02\x02\x02",
                              10);

    for (const char descriptor : {'\x00', '\x08', '\x20', '\x28', '\x30'})
        EXPECT_THAT(readPixels(tga(1, 2, 32, packets, 10, 0, descriptor)),
                    ElementsAre(1, 1, 1, 1, 2, 2, 2, 2));
}

TEST(ReadTGA, TakesAnIDFieldForPackets)
{
    // An ID of five bytes reads as a run of two.
    const std::string packets = "\x81\x09\x09\x09\x09"
                                "\x81\x01\x02\x03\x04";

    EXPECT_THAT(readPixels(tga(2, 1, 32, packets, 10, 5)), ElementsAre(9, 9, 9, 9, 9, 9, 9, 9));
}

TEST(ReadTGA, ReadsTheSizeAsLittleEndianUnsignedNumbers)
{
    const test::TemporaryDirectory directory;
    // Three pixels high and 258 wide: six runs of 128, and one of 6.
    std::string packets;
    for (int k = 0; k < 6; k++)
        packets += "\xFF\x01\x01\x01\x01";
    directory.write("a.tga", tga(258, 3, 32, packets + "\x85\x02\x02\x02\x02"));
    Image image;

    EXPECT_TRUE(readTGA(image, {"a.tga", 0}));

    EXPECT_EQ(image.width, 258);
    EXPECT_EQ(image.height, 3);
    EXPECT_EQ(bytesOf(image)[767 * 4], 1);
    EXPECT_EQ(bytesOf(image)[768 * 4], 2);
}

TEST(ReadTGA, CarriesOutAPacketThatRunsPastTheLastPixel)
{
    EXPECT_THAT(readPixels(tga(1, 1, 24, "\xFF\x01\x02\x03")), ElementsAre(3, 2, 1, 255));
    EXPECT_THAT(readPixels(tga(1, 1, 32, "\x7F\x01\x02\x03\x04")), ElementsAre(3, 2, 1, 4));
}

TEST(ReadTGA, AcceptsEveryOtherDepthAndLeavesThePixelsUndefined)
{
    const test::TemporaryDirectory directory;
    for (const int depth : {0, 1, 7, 8, 15, 16, 23, 25, 31, 33, 40, 255}) {
        directory.write("a.tga", tga(3, 5, depth, "\xFF\x01\x02"));
        const test::CapturedErrors errors;
        Image image;

        EXPECT_TRUE(readTGA(image, {"a.tga", 0})) << depth;

        EXPECT_EQ(errors.text(), "");
        EXPECT_EQ(image.width, 3);
        EXPECT_EQ(image.height, 5);
    }
}

TEST(ReadTGA, GivesAnEmptyPictureForASizeOfZero)
{
    EXPECT_THAT(readPixels(tga(0, 9, 32, "")), ElementsAre());
    EXPECT_THAT(readPixels(tga(9, 0, 24, "\xFF")), ElementsAre());
}

TEST(ReadTGA, GoesOnWithTheLastBytesOfAShortFile)
{
    // The run's packet byte and its pixel are read again and again.
    const std::vector<int> bytes = readPixels(tga(20, 20, 32, "\x80\x01\x02\x03\x04"));

    ASSERT_EQ(bytes.size(), 1600U);
    EXPECT_THAT((std::vector<int>{bytes.end() - 4, bytes.end()}), ElementsAre(3, 2, 1, 4));
}

TEST(ReadTGA, AsksForTheEndOfAShortFileOnce)
{
    const test::TemporaryDirectory directory;
    // A raw packet of four pixels, of which there is one: both are read again for all the others.
    directory.write("a.tga", tga(2000, 1000, 32, "\x03\x01\x02\x03\x04"));
    Image image;
    const std::size_t before = test::readCalls();

    EXPECT_TRUE(readTGA(image, {"a.tga", 0}));

    EXPECT_LT(test::readCalls(), before + 50);
    EXPECT_EQ(image.pixels[8000000 - 4], 3.0F / 255.0F);
}

TEST(ReadTGA, SaysThatTheMemoryDoesNotHoldAPicture)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitiser takes more addresses than the limit leaves";
#endif
    const test::TemporaryDirectory directory;
    // The last one takes a megabyte more than a multiple of 2^32.
    const std::vector<std::pair<int, int>> heightsAndDepths = {
        {65535, 24}, {65535, 32}, {65535, 16}, {65535, 7}, {62261, 32}};
    for (const auto& [height, depth] : heightsAndDepths) {
        directory.write("a.tga", tga(65535, height, depth, ""));
        test::ChildProcess reader([] {
            const rlimit limit = {2UL << 30, 2UL << 30};
            setrlimit(RLIMIT_AS, &limit);
            Image image;
            const Image before = image;
            const bool wasRead = readTGA(image, {"a.tga", 0});
            const bool isUntouched = image.width == before.width && image.height == before.height &&
                                     image.pixels == before.pixels;
            return wasRead || !isUntouched ? 1 : 0;
        });

        EXPECT_EQ(reader.wait().status, 0) << height << ", " << depth;
        EXPECT_EQ(reader.errors(), "a.tga: Too large for the memory\n") << height << ", " << depth;
    }
}

TEST(ReadTGA, ClosesAFileThatTheMemoryDoesNotHold)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitiser takes more addresses than the limit leaves";
#endif
    const test::TemporaryDirectory directory;
    directory.write("a.tga", tga(65535, 65535, 32, ""));
    test::ChildProcess reader([] {
        const rlimit limit = {2UL << 30, 2UL << 30};
        setrlimit(RLIMIT_AS, &limit);
        Image image;
        const std::ptrdiff_t before = openFiles();
        readTGA(image, {"a.tga", 0});
        return openFiles() == before ? 0 : 1;
    });

    EXPECT_EQ(reader.wait().status, 0);
}

TEST(ReadTGA, TakesNoMemoryForPixelsThatAreNotRead)
{
    const test::TemporaryDirectory directory;
    directory.write("a.tga", tga(8000, 8000, 16, ""));
    Image image;
    const std::size_t before = test::residentMegabytes();

    EXPECT_TRUE(readTGA(image, {"a.tga", 0}));

    EXPECT_EQ(image.width, 8000);
    // The sanitisers take memory of their own, an eighth.
    EXPECT_LT(test::residentMegabytes(), before + 256);
    // Where addresses have 32 bits, the next gigabyte might find none.
    delete[] image.pixels;
}

TEST(ReadTGA, ReadsAFileThatIsLongerThanABlock)
{
    // Raw packets of 128 pixels of four bytes: 300 of them are 154,200 bytes.
    std::string packets;
    for (int packet = 0; packet < 300; packet++) {
        packets += "\x7F";
        for (int k = 0; k < 128; k++)
            packets += {static_cast<char>(packet), static_cast<char>(k), 5, 6};
    }

    const std::vector<int> bytes = readPixels(tga(128, 300, 32, packets));

    for (int packet = 0; packet < 300; packet++) {
        for (int k = 0; k < 128; k++) {
            const std::size_t at = 4 * static_cast<std::size_t>(128 * packet + k);
            ASSERT_EQ(bytes[at], 5);
            ASSERT_EQ(bytes[at + 1], k);
            ASSERT_EQ(bytes[at + 2], packet & 0xFF);
            ASSERT_EQ(bytes[at + 3], 6);
        }
    }
}

TEST(ReadTGA, StaysInsideItsStorageWhereverTheFileEnds)
{
    const test::TemporaryDirectory directory;
    for (const int depth : {16, 24, 32}) {
        const std::string whole = tga(5, 3, depth,
                                      "\x84\x10\x20\x30\x40\x03\x01\x02\x03\x04\x05\x06\x07\x08"
                                      "\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10\x86\x50\x60\x70\x80");
        for (std::size_t size = 0; size <= whole.size(); size++) {
            directory.write("cut.tga", whole.substr(0, size));
            const test::CapturedErrors errors;
            Image image;

            // The image type is the third byte.
            EXPECT_EQ(readTGA(image, {"cut.tga", 0}), size >= 3) << size;

            EXPECT_EQ(errors.text(), size >= 3 ? "" : "Please use compressed TGAs\n") << size;
        }
    }
}

TEST(ReadTGA, TakesADirectoryForAnEmptyFile)
{
    const test::TemporaryDirectory directory;
    std::filesystem::create_directory("folder.tga");
    const test::CapturedErrors errors;
    Image image;

    EXPECT_FALSE(readTGA(image, {"folder.tga", 0}));

    EXPECT_EQ(errors.text(), "Please use compressed TGAs\n");
}

TEST(ReadTGA, FreesTheOldPixelsAndLeavesTheUnpackedBytesAllocated)
{
    const test::TemporaryDirectory directory;
    directory.write("a.tga", tga(1, 1, 32, {"\0\1\2\3\4", 5}));
    Image image;
    const int before = test::liveArrays();

    readTGA(image, {"a.tga", 0});

    EXPECT_EQ(test::liveArrays(), before + 1);
}
} // namespace
} // namespace tamor

// The readers of files, when the system does not give them the file as it is: in pieces, with
// interruptions, cut short behind their backs, or not at all.
#include "gui/GLWidget.h"
#include "gui/Theme.h"
#include "maths/Utilities.h"
#include "models/MS3DModel.h"
#include "script/ScriptInterpreter.h"
#include "tests/starved/Shortage.h"
#include "tests/support/CapturedErrors.h"
#include "textures/PNGReader.h"
#include "textures/TGAReader.h"

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace
{
/// What `pread` does in place of reading; nothing, if it is empty.
std::function<ssize_t(int file, void* bytes, std::size_t size, off_t offset)> reading;

/// The same for `read`, which the streams of the standard library call.
std::function<ssize_t(int file, void* bytes, std::size_t size)> streamReading;

ssize_t readAt(int file, void* bytes, std::size_t size, off_t offset)
{
    return syscall(SYS_pread64, file, bytes, size, offset);
}
} // namespace

// This program's own, as the system's might be on another day.

extern "C" ssize_t read(int file, void* bytes, std::size_t size)
{
    return streamReading ? streamReading(file, bytes, size) : syscall(SYS_read, file, bytes, size);
}

extern "C" ssize_t pread(int file, void* bytes, std::size_t size, off_t offset)
{
    return reading ? reading(file, bytes, size, offset) : readAt(file, bytes, size, offset);
}

namespace tamor::test
{
namespace
{
constexpr const char* picture = TAMOR_TESTS "/textures/fuzz/png/none";

/// The channels of the picture, read as `pread` has it; none where the reader fails.
std::vector<float> readPicture()
{
    const CapturedErrors errors;
    Image image;
    if (!readPNG(image, {picture, 0}))
        return {};
    return {image.pixels, image.pixels + image.pixelCount() * 4};
}

class ReadPNGInPieces : public testing::Test
{
protected:
    void TearDown() override { reading = nullptr; }

    const std::vector<float> whole = readPicture();
};

TEST_F(ReadPNGInPieces, TakesAByteAtATime)
{
    reading = [](int file, void* bytes, std::size_t size, off_t offset) {
        return readAt(file, bytes, std::min<std::size_t>(size, 1), offset);
    };

    ASSERT_EQ(whole.size(), 8U);
    EXPECT_EQ(readPicture(), whole);
}

TEST_F(ReadPNGInPieces, GoesOnAfterInterruptions)
{
    int calls = 0;
    reading = [&](int file, void* bytes, std::size_t size, off_t offset) -> ssize_t {
        if (++calls % 3 != 0) {
            errno = EINTR;
            return -1;
        }
        return readAt(file, bytes, std::min<std::size_t>(size, 7), offset);
    };

    EXPECT_EQ(readPicture(), whole);
    EXPECT_GT(calls, 30);
}

TEST_F(ReadPNGInPieces, EndsWhereTheFileHasShrunkOrFails)
{
    for (const int error : {0, EIO}) {
        int pictures = 0;
        for (off_t end = 0; end < 90; ++end) {
            reading = [=](int file, void* bytes, std::size_t size, off_t offset) -> ssize_t {
                if (offset >= end) {
                    errno = error;
                    return error == 0 ? 0 : -1;
                }
                return readAt(file, bytes, std::min(size, static_cast<std::size_t>(end - offset)),
                              offset);
            };

            const std::vector<float> read = readPicture();

            // The chunks behind the data may be missing, and nothing else.
            EXPECT_TRUE(read.empty() || read == whole) << end;
            pictures += read.empty() ? 0 : 1;
        }
        EXPECT_GT(pictures, 20);
        EXPECT_LT(pictures, 50);
    }
}

constexpr const char* themeFile = TAMOR_TESTS "/gui/fuzz/theme/numbers";
constexpr const char* configFile = TAMOR_TESTS "/gui/fuzz/config/whole";

/// A text, what a theme and a configuration make of their lines, and what they print.
std::string readTexts()
{
    const CapturedErrors errors;
    Theme theme;
    theme.read(themeFile);
    GLWidget::glowRate = 0.0F;
    GLWidget::readConfig(configFile);
    std::ostringstream texts;
    texts << readFile(themeFile) << theme.iconSize << ' ' << GLWidget::glowRate << errors.text();
    GLWidget::glowRate = 0.0F;
    return texts.str();
}

class ReadTextsInPieces : public testing::Test
{
protected:
    void SetUp() override
    {
#ifdef _LIBCPP_VERSION
        GTEST_SKIP() << "its streams read by the C library, whose calls are its own";
#endif
    }

    void TearDown() override
    {
        streamReading = nullptr;
    }

    const std::string whole = readTexts();
};

TEST_F(ReadTextsInPieces, TakesAByteAtATime)
{
    streamReading = [](int file, void* bytes, std::size_t size) {
        return syscall(SYS_read, file, bytes, std::min<std::size_t>(size, 1));
    };

    EXPECT_EQ(readTexts(), whole);
}

TEST_F(ReadTextsInPieces, GoesOnAfterInterruptions)
{
    int calls = 0;
    streamReading = [&](int file, void* bytes, std::size_t size) -> ssize_t {
        if (++calls % 3 != 0) {
            errno = EINTR;
            return -1;
        }
        return syscall(SYS_read, file, bytes, std::min<std::size_t>(size, 7));
    };

    EXPECT_EQ(readTexts(), whole);
    EXPECT_GT(calls, 100);
}

TEST_F(ReadTextsInPieces, EndsWhereTheFileHasShrunkOrFails)
{
    const std::string text = readFile(themeFile);
    const int descriptors = openDescriptors();
    for (const int error : {0, EIO}) {
        for (std::size_t end = 0; end < text.size(); ++end) {
            std::size_t place = 0;
            streamReading = [&](int file, void* bytes, std::size_t size) -> ssize_t {
                if (place == end) {
                    errno = error;
                    return error == 0 ? 0 : -1;
                }
                const ssize_t count = syscall(SYS_read, file, bytes, std::min(size, end - place));
                place += static_cast<std::size_t>(count);
                return count;
            };

            const std::string read = readFile(themeFile);
            place = 0;
            readTexts();

            EXPECT_EQ(read, text.substr(0, end) + '\n') << error;
        }
    }
    streamReading = nullptr;
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_EQ(readTexts(), whole);
}

/// It opens, and the first byte of it is nobody's: each read fails with an error of the device.
constexpr const char* unreadable = "/proc/self/mem";

TEST(UnreadableFile, IsAPictureOfNoKind)
{
    const CapturedErrors errors;
    Image image;

    EXPECT_FALSE(readTGA(image, {unreadable, 0}));
    EXPECT_FALSE(readPNG(image, {unreadable, 0}));

    EXPECT_EQ(errors.text(), "Please use compressed TGAs\n"
                             "/proc/self/mem is not a valid png file - header invalid\n");
    EXPECT_EQ(image.pixelCount(), 4U);
}

TEST(UnreadableFile, IsAnEmptyTextScriptAndModel)
{
    ScriptInterpreter interpreter;
    MS3DModel model;

    EXPECT_EQ(readFile(unreadable), "\n");
    EXPECT_TRUE(interpreter.runFile(unreadable));
    EXPECT_TRUE(interpreter.functions.empty());
    EXPECT_EQ(model.load(unreadable), 1);
    EXPECT_TRUE(model.faces.empty());
}

TEST(UnreadableFile, LeavesThemesAndTheConfigurationAsTheyWere)
{
    const CapturedErrors errors;
    Theme theme;
    theme.iconSize = 0.5F;
    GLWidget::glowRate = 0.25F;

    theme.read(unreadable);
    GLWidget::readConfig(unreadable);

    EXPECT_EQ(theme.iconSize, 0.5F);
    EXPECT_EQ(GLWidget::glowRate, 0.25F);
    GLWidget::glowRate = 0.0F;
}
} // namespace
} // namespace tamor::test

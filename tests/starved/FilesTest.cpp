// The readers of files, when the system does not give them the file as it is: in pieces, with
// interruptions, cut short behind their backs, or not at all.
#include "gui/GLWidget.h"
#include "gui/Theme.h"
#include "maths/Utilities.h"
#include "models/MS3DModel.h"
#include "script/ScriptInterpreter.h"
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
#include <vector>

namespace
{
/// What `pread` does in place of reading; nothing, if it is empty.
std::function<ssize_t(int file, void* bytes, std::size_t size, off_t offset)> reading;

ssize_t readAt(int file, void* bytes, std::size_t size, off_t offset)
{
    return syscall(SYS_pread64, file, bytes, size, offset);
}
} // namespace

/// This program's own, as the system's might be on another day.
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

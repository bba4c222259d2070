#include "textures/Font.h"

#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <dlfcn.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tamor
{
namespace
{
/// Letters are as wide as they come in the alphabet: `a` is 1.
Font alphabetFont()
{
    Font font;
    for (std::size_t k = 0; k < 26; k++)
        font.advance['a' + k] = static_cast<float>(k + 1);
    return font;
}

TEST(Font, StartsAtScale1WithoutWidths)
{
    const Font font;

    EXPECT_EQ(font.scaleX, 1.0F);
    EXPECT_EQ(font.scaleY, 1.0F);
    EXPECT_EQ(font.textWidth("any text"), 0.0F);
}

TEST(Font, SetScaleStoresBoth)
{
    Font font;

    EXPECT_TRUE(font.setScale(0.5F, 3.0F));

    EXPECT_EQ(font.scaleX, 0.5F);
    EXPECT_EQ(font.scaleY, 3.0F);
}

TEST(Font, MeasuresALineInUnitsTimesTheHorizontalScale)
{
    Font font = alphabetFont();

    EXPECT_EQ(font.textWidth(""), 0.0F);
    EXPECT_EQ(font.textWidth("abc"), 6.0F);
    font.setScale(0.5F, 100.0F);
    EXPECT_EQ(font.textWidth("abc"), 3.0F);
}

TEST(Font, MeasuresTheWidestLine)
{
    const Font font = alphabetFont();

    EXPECT_EQ(font.textWidth("a\nz"), 26.0F);
    EXPECT_EQ(font.textWidth("z\na"), 26.0F);
    EXPECT_EQ(font.textWidth("z\n"), 26.0F);
    EXPECT_EQ(font.textWidth("\n\nc"), 3.0F);
}

TEST(Font, MeasuresAShortLineWithTheTailOfTheLongerOneBefore)
{
    Font font;
    // As seen from the second line, measured as "xycdef", the tail is what decides.
    font.advance['a'] = 1;
    font.advance['b'] = 1;
    font.advance['c'] = 10;
    font.advance['d'] = 10;
    font.advance['e'] = 10;
    font.advance['f'] = 10;
    font.advance['x'] = 100;
    font.advance['y'] = 200;
    font.advance['z'] = 300;

    EXPECT_EQ(font.textWidth("abcdef\nxy\nz"), 340.0F);
    EXPECT_EQ(font.textWidth("abcdef\nxy"), 300.0F); // the last line ends properly
    EXPECT_EQ(font.textWidth("abcdef\nxy\n"), 340.0F);
    EXPECT_EQ(font.textWidth("abcdef\nxy\nx\n"), 340.0F); // "xycdef" again, and so on
    EXPECT_EQ(font.textWidth("cdef\n\nx"), 100.0F);
}

TEST(Font, NegativeWidthsLeaveTheWidestLineAtZero)
{
    Font font = alphabetFont();
    font.setScale(-1.0F, 1.0F);

    EXPECT_EQ(font.textWidth("abc\nz"), 0.0F);
}

TEST(Font, TakesArgumentsAsPrintfDoes)
{
    Font font = alphabetFont();
    font.advance['4'] = 1000;
    font.advance['2'] = 500;

    EXPECT_EQ(font.textWidth("%d", 42), 1500.0F);
    EXPECT_EQ(font.textWidth("%s%c", "ab", 'c'), 6.0F);
    EXPECT_EQ(font.textWidth("%.1f", 4.2), 1500.0F);
}

TEST(Font, GivesConversionsWithoutArgumentsAZero)
{
    Font font = alphabetFont();
    font.advance['0'] = 7;

    EXPECT_EQ(font.textWidth("%d"), 7.0F);
    EXPECT_EQ(font.textWidth("%s%n%c"), 0.0F);
    EXPECT_EQ(font.textWidth("%04d"), 28.0F);
}

TEST(Font, MeasuresNoMoreThan511Characters)
{
    const Font font = alphabetFont();
    const std::string text(2000, 'a');

    EXPECT_EQ(font.textWidth(std::string(511, 'a').c_str()), 511.0F);
    EXPECT_EQ(font.textWidth(text.c_str()), 511.0F);
    EXPECT_EQ(font.textWidth("%s", text.c_str()), 511.0F);
    EXPECT_EQ(font.textWidth((text + "%d").c_str()), 511.0F);
    EXPECT_EQ(font.textWidth((std::string(511, 'a') + "\nz").c_str()), 511.0F);
    EXPECT_EQ(font.textWidth((std::string(509, 'a') + "\nz\n" + text).c_str()), 509.0F);
}

TEST(Font, GivesCharactersOutsideSevenBitsNoWidth)
{
    const Font font = alphabetFont();

    EXPECT_EQ(font.textWidth("a\x80\xC3\xA4\xFF"
                             "b"),
              3.0F);
}

TEST(Font, SaysWhenAFileIsNoFont)
{
    const test::TemporaryDirectory directory;
    directory.write("no.ttf", "This is no font, but it is a file of some length, as it were.");
    const test::CapturedErrors errors;
    Font font;

    EXPECT_FALSE(font.load("no.ttf"));

    EXPECT_EQ(errors.text(), "The font file format is not recgonised\n");
    EXPECT_EQ(font.listBase, 0U);
}

TEST(Font, SaysWhenAFileCannotBeOpened)
{
    const test::TemporaryDirectory directory;
    const test::CapturedErrors errors;
    Font font;

    EXPECT_FALSE(font.load("missing.ttf"));

    EXPECT_EQ(errors.text(), "Error loading the font\n");
}

/// What the compiler says of a host that makes this call.
std::string warningsOf(const std::string& call)
{
    const test::TemporaryDirectory directory;
    directory.write("host.cpp", "#include \"textures/Font.h\"\n"
                                "void draw(tamor::Font& font, const char* text) { " +
                                    call +
                                    "; }\nvoid draw(tamor::Font& font, const char* text);\n");
    test::ChildProcess compiler({TAMOR_COMPILER, "-std=c++20", "-fsyntax-only", "-Wall",
                                 std::string("-I") + TAMOR_SOURCE, "host.cpp"});
    EXPECT_EQ(compiler.wait().status, 0);
    return compiler.errors();
}

TEST(Font, HasTheCompilerCheckTheArguments)
{
    using testing::HasSubstr;
    EXPECT_THAT(warningsOf("font.print(\"%s %d\", 42, \"x\")"), HasSubstr("[-Wformat"));
    EXPECT_THAT(warningsOf("font.textWidth(\"%s\", 42)"), HasSubstr("[-Wformat"));
    EXPECT_THAT(warningsOf("font.print(\"%d %d\", 42)"), HasSubstr("[-Wformat"));

    EXPECT_EQ(warningsOf("font.print(\"%s %d\", \"x\", 42)"), "");
    EXPECT_EQ(warningsOf("font.textWidth(\"%.1f\", 1.5)"), "");
    // Without arguments any text is taken.
    EXPECT_EQ(warningsOf("font.print(text)"), "");
    EXPECT_EQ(warningsOf("font.print(\"%s\")"), "");
}

/// A font of one glyph of 8 by 8 pixels, and of no other size.
const std::string oneSize = "STARTFONT 2.1\nFONT -x-x-medium-r-normal--8-80-75-75-c-80-iso10646-1\n"
                            "SIZE 8 75 75\nFONTBOUNDINGBOX 8 8 0 0\nSTARTPROPERTIES 2\n"
                            "FONT_ASCENT 8\nFONT_DESCENT 0\nENDPROPERTIES\nCHARS 1\n"
                            "STARTCHAR A\nENCODING 65\nSWIDTH 1000 0\nDWIDTH 8 0\nBBX 8 8 0 0\n"
                            "BITMAP\nFF\n81\n81\n81\n81\n81\n81\nFF\nENDCHAR\nENDFONT\n";

TEST(Font, SaysThatAFontHasNotTheSize)
{
    const test::TemporaryDirectory directory;
    const std::string path = directory.write("one.bdf", oneSize);
    const test::CapturedErrors errors;
    Font font;

    EXPECT_FALSE(font.load(path));

    EXPECT_EQ(errors.text(), "Error setting the font size\n");
}

/// Whether FreeType is to fail when it is started, as it does without memory.
bool freeTypeFails = false;
} // namespace
} // namespace tamor

/// This program's own, which lets FreeType start unless a test wants it to fail.
extern "C" FT_Error FT_Init_FreeType(FT_Library* library)
{
    if (tamor::freeTypeFails)
        return FT_Err_Out_Of_Memory;
    using Function = FT_Error (*)(FT_Library*);
    static const auto start = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "FT_Init_FreeType"));
    return start(library);
}

namespace tamor
{
namespace
{
TEST(Font, SaysThatFreeTypeDoesNotStart)
{
    const test::CapturedErrors errors;
    Font font;
    freeTypeFails = true;

    const bool isLoaded = font.load(TAMOR_TEST_FONT);

    freeTypeFails = false;
    EXPECT_FALSE(isLoaded);
    EXPECT_EQ(errors.text(), "Error loading freetype library\n");
}
} // namespace
} // namespace tamor

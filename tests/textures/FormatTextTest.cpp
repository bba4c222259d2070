#include "textures/internal/FormatText.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace tamor
{
namespace
{
std::string formatted(const char* format)
{
    std::array<char, 256> buffer;
    return std::string(formatWithoutArguments(format, buffer));
}

TEST(FormatWithoutArguments, TakesTextWithoutAPerCentSignWhereItLies)
{
    const char* const text = "plain";
    std::array<char, 16> buffer;

    const std::string_view result = formatWithoutArguments(text, buffer);

    EXPECT_EQ(result.data(), text);
    EXPECT_EQ(result, "plain");
    EXPECT_EQ(formatted(""), "");
}

TEST(FormatWithoutArguments, GivesEachConversionAZero)
{
    EXPECT_EQ(formatted("%d %i %u %o %x %X"), "0 0 0 0 0 0");
    EXPECT_EQ(formatted("%f %F %e %E %g %G"), "0.000000 0.000000 0.000000e+00 0.000000E+00 0 0");
    EXPECT_EQ(formatted("%a %A"), "0x0p+0 0X0P+0");
    EXPECT_EQ(formatted("[%s][%c][%S][%C]"), "[][][][]");
    EXPECT_EQ(formatted("%p"), "(nil)");
    EXPECT_EQ(formatted("a%db%sc"), "a0bc");
}

TEST(FormatWithoutArguments, PrintsOnePerCentSignForTwo)
{
    EXPECT_EQ(formatted("100%%"), "100%");
    EXPECT_EQ(formatted("%%d"), "%d");
    EXPECT_EQ(formatted("%%%d%%"), "%0%");
}

TEST(FormatWithoutArguments, HonoursFlagsWidthsAndPrecisions)
{
    EXPECT_EQ(formatted("[%5d][%-5d][%05d][%+d][% d][%.3d]"), "[    0][0    ][00000][+0][ 0][000]");
    EXPECT_EQ(formatted("[%.2f][%8.3f][%5s][%-3s]"), "[0.00][   0.000][     ][   ]");
}

TEST(FormatWithoutArguments, PassesOverSizes)
{
    EXPECT_EQ(formatted("%hhd %hd %ld %lld %qd %Lf %jd %zu %Zu %td %lc %ls"),
              "0 0 0 0 0 0.000000 0 0 0 0  ");
}

TEST(FormatWithoutArguments, TakesAStarForAZero)
{
    EXPECT_EQ(formatted("[%*d][%.*f][%*.*s]"), "[0][0][]");
}

TEST(FormatWithoutArguments, WritesNothingForTheConversionThatStores)
{
    EXPECT_EQ(formatted("a%nb%hhnc%5$nd"), "abc%5$nd");
}

TEST(FormatWithoutArguments, LeavesWhatIsNoConversionAsItIs)
{
    EXPECT_EQ(formatted("100%"), "100%");
    EXPECT_EQ(formatted("50%!"), "50%!");
    EXPECT_EQ(formatted("%5."), "%5.");
    EXPECT_EQ(formatted("%y%d"), "%y0");
    EXPECT_EQ(formatted("%\xC3\xA4"), "%\xC3\xA4");
    EXPECT_EQ(formatted("%m"), "%m");
    EXPECT_EQ(formatted("%Id"), "%Id");
}

TEST(FormatWithoutArguments, CutsWidthsToTheRoom)
{
    const std::string blanks(255, ' ');
    EXPECT_EQ(formatted("%9999999d"), blanks);
    EXPECT_EQ(formatted("%99999999999999999999999999d"), blanks);
    EXPECT_EQ(formatted("%4294967300d"), blanks);
    EXPECT_EQ(formatted("%.9999999d"), std::string(255, '0'));
    EXPECT_EQ(formatted("%.9999999f"), "0." + std::string(253, '0'));
    EXPECT_EQ(formatted("ab%-9999999dcd"), "ab0" + std::string(252, ' '));
}

TEST(FormatWithoutArguments, CutsAsLongerTextWouldBeCut)
{
    // Behind 292 blanks comes "0.000000", and behind 9697 "0." with 300 zeros.
    EXPECT_EQ(formatted("%300f"), std::string(255, ' '));
    EXPECT_EQ(formatted("%9999.300f"), std::string(255, ' '));
    EXPECT_EQ(formatted("%600.590f"), std::string(8, ' ') + "0." + std::string(245, '0'));
    EXPECT_EQ(formatted("%600.590d"), std::string(10, ' ') + std::string(245, '0'));
    EXPECT_EQ(formatted("%#600.590g"), std::string(9, ' ') + "0." + std::string(244, '0'));
    // What does not grow with the precision.
    EXPECT_EQ(formatted("%600.590s"), std::string(255, ' '));
    EXPECT_EQ(formatted("%250.590gx"), std::string(249, ' ') + "0x");
}

TEST(FormatWithoutArguments, CutsTextToOneLessThanTheBuffer)
{
    std::array<char, 8> buffer;
    buffer.fill('x');

    EXPECT_EQ(formatWithoutArguments("1234567890", buffer), "1234567");
    EXPECT_EQ(buffer[0], 'x');
    EXPECT_EQ(formatWithoutArguments("12345%d7890", buffer), "1234507");
    EXPECT_EQ(buffer[7], '\0');
    EXPECT_EQ(formatWithoutArguments("%d234567%d%s%%", buffer), "0234567");
}

TEST(FormatWithoutArguments, TakesAnyBytesWhatever)
{
    // All texts of up to three of these characters behind a per cent sign.
    const std::string characters = "%dsnfc*.$0-9lh#'I \n\xFF";
    for (const char a : characters) {
        for (const char b : characters) {
            for (const char c : characters)
                EXPECT_LT(formatted((std::string("%") + a + b + c).c_str()).size(), 256U);
        }
    }
}
} // namespace
} // namespace tamor

#include "models/internal/NumberFields.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdio>
#include <string>
#include <vector>

using namespace tamor;

namespace
{
/// Where the standard library reads no floats so, none is plain, and the pattern reads them all.
class NumberFieldsOfFloats : public testing::Test
{
protected:
    void SetUp() override
    {
#ifndef __cpp_lib_to_chars
        GTEST_SKIP() << "this standard library reads integers alone";
#endif
    }
};

TEST_F(NumberFieldsOfFloats, ReadsPlainNumbersInTurn)
{
    std::int32_t integer = 0;
    float first = 0.0F;
    float second = 0.0F;

    NumberFields fields("7 -12 1.5\t-2.25e1");
    fields.skipInteger().read(integer).read(first).read(second);

    EXPECT_TRUE(fields.arePlain());
    EXPECT_EQ(integer, -12);
    EXPECT_EQ(first, 1.5F);
    EXPECT_EQ(second, -22.5F);
}

TEST_F(NumberFieldsOfFloats, StopsAtWhatIsNotPlainAndKeepsTheTargets)
{
    float first = 1.0F;
    float second = 2.0F;
    float third = 3.0F;

    NumberFields fields("5 6x 7");
    fields.read(first).read(second).read(third);

    EXPECT_FALSE(fields.arePlain());
    EXPECT_EQ(first, 5.0F);
    EXPECT_EQ(second, 2.0F);
    EXPECT_EQ(third, 3.0F);
}

TEST(NumberFields, LeavesNumbersToThePatternThatAreReadDifferentlyOrNotAtAll)
{
    for (const char* text : {"", " ", "+1", "x", "-", "--1", ".5", "nan", "inf", "-inf", "0x10",
                             "1e", "1.5.2", "1,5", "1e39", "9999999999999999999e99999"}) {
        float target = 4.0F;
        EXPECT_FALSE(NumberFields(text).read(target).arePlain()) << text;
        EXPECT_EQ(target, 4.0F) << text;
    }
    for (const char* text : {"", "+1", "1.0", "2147483648", "-2147483649", "1e3", "0x1", "x"}) {
        std::int32_t target = 4;
        EXPECT_FALSE(NumberFields(text).read(target).arePlain()) << text;
        EXPECT_EQ(target, 4) << text;
    }
}

/// Pieces of numbers whose combinations meet every way in which a number can begin, go on and end.
std::vector<std::string> numberTexts()
{
    const std::vector<std::string> signs = {"", "-", "+", " -", "- "};
    const std::vector<std::string> wholes = {
        "",           "0",          "7",   "007", "0x1f",     "123456789",
        "2147483647", "2147483648", "inf", "nan", "16777217", "99999999999999999999"};
    const std::vector<std::string> fractions = {"", ".", ".5", ".000000000000000000000001", ".1.2"};
    const std::vector<std::string> exponents = {"",    "e",    "e5",   "E-3", "e+2",
                                                "e39", "e-46", "e-50", "e999"};
    const std::vector<std::string> ends = {"", " ", "\t9", "\r", "x", "-1", "\v", "//"};
    std::vector<std::string> texts;
    for (const auto& sign : signs)
        for (const auto& whole : wholes)
            for (const auto& fraction : fractions)
                for (const auto& exponent : exponents)
                    for (const auto& end : ends)
                        texts.push_back(std::string(sign)
                                            .append(whole)
                                            .append(fraction)
                                            .append(exponent)
                                            .append(end));
    return texts;
}

TEST_F(NumberFieldsOfFloats, GivesTheBitsThatThePatternGives)
{
    std::size_t plain = 0;
    for (const std::string& text : numberTexts()) {
        float fast = 0.0F;
        if (NumberFields(text).read(fast).arePlain()) {
            float slow = 0.0F;
            EXPECT_EQ(std::sscanf(text.c_str(), "%f", &slow), 1) << text;
            EXPECT_EQ(std::bit_cast<std::uint32_t>(fast), std::bit_cast<std::uint32_t>(slow))
                << text;
            ++plain;
        }
        std::int32_t fastInteger = 0;
        if (NumberFields(text).read(fastInteger).arePlain()) {
            std::int32_t slowInteger = 0;
            EXPECT_EQ(std::sscanf(text.c_str(), "%d", &slowInteger), 1) << text;
            EXPECT_EQ(fastInteger, slowInteger) << text;
        }
    }
    EXPECT_GT(plain, 1000U);
}
} // namespace

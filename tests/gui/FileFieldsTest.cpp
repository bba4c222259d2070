#include "gui/FileFields.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tamor::test
{
namespace
{
std::string restOf(std::istream& stream)
{
    stream.clear();
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(ReadField, TakesANumberAWordOrATruthValue)
{
    std::istringstream stream("  -0.25 \n word 1 12");
    float number = 0.0F;
    std::string word;
    bool truth = false;
    std::int32_t whole = 0;

    readField(stream, number);
    readField(stream, word);
    readField(stream, truth);
    readField(stream, whole);

    EXPECT_EQ(number, -0.25F);
    EXPECT_EQ(word, "word");
    EXPECT_TRUE(truth);
    EXPECT_EQ(whole, 12);
}

TEST(ReadField, KeepsWhatItHeldAndFailsTheStreamOnAnythingElse)
{
    std::istringstream stream("word 2");
    float number = 0.75F;
    float next = 0.5F;

    readField(stream, number);
    readField(stream, next);

    EXPECT_EQ(number, 0.75F);
    EXPECT_EQ(next, 0.5F);
    EXPECT_TRUE(stream.fail());
    EXPECT_FALSE(stream.eof());
}

TEST(ReadField, EndsANumberInFrontOfWhatCannotGoOnWithIt)
{
    struct Row
    {
        const char* text;
        float number;
        const char* rest;
    };
    const Row rows[] = {
        {"0.5cm", 0.5F, "cm"},    {"1.5.2", 1.5F, ".2"}, {"0x1p3", 0.0F, "x1p3"},
        {"+.5e1e", 5.0F, "e"},    {"5f", 5.0F, "f"},     {"-7-7", -7.0F, "-7"},
        {"2E-1+", 0.2F, "+"},     {"1,5", 1.0F, ",5"},   {"007e+002.", 700.0F, "."},
        {"5.infx", 5.0F, "infx"}, {"1e-60 ", 0.0F, " "}, {"3", 3.0F, ""},
    };
    for (const Row& row : rows) {
        std::istringstream stream(row.text);
        float number = -1.0F;

        readField(stream, number);

        EXPECT_FALSE(stream.fail()) << row.text;
        EXPECT_EQ(stream.eof(), *row.rest == '\0') << row.text;
        EXPECT_EQ(number, row.number) << row.text;
        EXPECT_EQ(restOf(stream), row.rest) << row.text;
    }
}

TEST(ReadField, RefusesABeginningThatIsNoNumber)
{
    struct Row
    {
        const char* text;
        const char* rest;
    };
    const Row rows[] = {
        {"inf", "inf"}, {"nan", "nan"},  {"-", ""},        {"--1", "-1"}, {".", ""}, {"e5", "e5"},
        {"1e", ""},     {"1e+ 3", " 3"}, {"1e99 8", " 8"}, {"-1e99", ""}, {"", ""},  {" ", ""},
    };
    for (const Row& row : rows) {
        std::istringstream stream(row.text);
        float number = 4.0F;

        readField(stream, number);

        EXPECT_TRUE(stream.fail()) << row.text;
        EXPECT_EQ(number, 4.0F) << row.text;
        EXPECT_EQ(restOf(stream), row.rest) << row.text;
    }
}

TEST(ReadField, KeepsATruthValueThatIsNeither0Nor1)
{
    std::istringstream stream("2");
    bool truth = false;

    readField(stream, truth);

    EXPECT_FALSE(truth);
    EXPECT_TRUE(stream.fail());
}

TEST(SkipLine, LeavesTheNextLine)
{
    std::istringstream stream("a remark\nnext");

    skipLine(stream);

    EXPECT_EQ(restOf(stream), "next");
}

TEST(SkipLine, SkipsTenThousandCharactersAtMost)
{
    std::istringstream stream(std::string(10000, 'x') + "word\n");

    skipLine(stream);

    EXPECT_EQ(restOf(stream), "word\n");
}

TEST(ReadText, TakesTheRestOfTheLineWithoutTheWhiteSpaceInFront)
{
    std::istringstream stream(" \t two  words // and all \nnext");

    EXPECT_EQ(readText(stream), "two  words // and all ");

    EXPECT_TRUE(stream.good());
    EXPECT_EQ(restOf(stream), "\nnext");
}

TEST(ReadText, IsEmptyForALineOfBlanks)
{
    std::istringstream stream("  \nnext");

    EXPECT_EQ(readText(stream), "");

    EXPECT_TRUE(stream.good());
}

TEST(ReadText, FailsTheStreamWhenTheLineEndsAtOnce)
{
    std::istringstream stream("\nnext");

    EXPECT_EQ(readText(stream), "");

    EXPECT_TRUE(stream.fail());
    EXPECT_FALSE(stream.eof());
}

TEST(ReadText, TakesALastLineWithoutALineEnd)
{
    std::istringstream stream(" last");

    EXPECT_EQ(readText(stream), "last");

    EXPECT_FALSE(stream.fail());
    EXPECT_TRUE(stream.eof());
}

TEST(ReadText, Takes511CharactersTheBlanksInFrontAmongThem)
{
    std::istringstream stream(" " + std::string(510, 'a') + "bc\n");

    EXPECT_EQ(readText(stream), std::string(510, 'a'));

    EXPECT_TRUE(stream.good());
    EXPECT_EQ(restOf(stream), "bc\n");
}

TEST(ReadText, LeavesBackslashAndNAlone)
{
    std::istringstream stream(" a\\nb");

    EXPECT_EQ(readText(stream), "a\\nb");
}

TEST(ReadText, TakesBytesAbove127AsTheyAre)
{
    std::istringstream stream(" \xC3\xA9");

    EXPECT_EQ(readText(stream), "\xC3\xA9");
}

TEST(ReadTextWithLineEnds, TurnsEveryBackslashAndNIntoALineEnd)
{
    std::istringstream stream(" a\\nb\\n\\nc\\");

    EXPECT_EQ(readTextWithLineEnds(stream), "a\nb\n\nc\\");
}
} // namespace
} // namespace tamor::test

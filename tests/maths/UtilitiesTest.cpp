#include "maths/Utilities.h"

#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <vector>

namespace tamor
{
namespace
{
TEST(ReadFile, GivesNothingAndSaysNothingForAMissingFile)
{
    const test::TemporaryDirectory directory;
    const test::CapturedErrors errors;

    EXPECT_EQ(readFile("missing"), "");
    EXPECT_EQ(errors.text(), "");
}

TEST(ReadFile, EndsInOneNewlineMoreThanTheFile)
{
    const test::TemporaryDirectory directory;

    EXPECT_EQ(readFile(directory.write("empty", "")), "\n");
    EXPECT_EQ(readFile(directory.write("unended", "a")), "a\n");
    EXPECT_EQ(readFile(directory.write("ended", "a\n")), "a\n\n");
    EXPECT_EQ(readFile(directory.write("two", "one\ntwo\n")), "one\ntwo\n\n");
}

TEST(ReadFile, EndsForADirectory)
{
    const test::TemporaryDirectory directory;

    EXPECT_EQ(readFile(directory.path().string()), "\n");
}

TEST(CountOccurrences, CountsWithoutOverlap)
{
    EXPECT_EQ(countOccurrences("aaaaa", "aa"), 2);
    EXPECT_EQ(countOccurrences("a\nb\nc", "\n"), 2);
    EXPECT_EQ(countOccurrences("", "a"), 0);
}

TEST(CountOccurrences, IsZeroForAPatternLongerThanTheText)
{
    EXPECT_EQ(countOccurrences("ab", "abc"), 0);
}

TEST(ReplaceAll, DoesNotLookAgainAtWhatItPutIn)
{
    EXPECT_EQ(replaceAll("ab", "b", "aabb"), "abb");
    EXPECT_EQ(replaceAll("a", "aa", "aba"), "aabaa");
}

TEST(ReplaceAll, LeavesATextWithoutThePatternAsItIs)
{
    EXPECT_EQ(replaceAll("x", "y", "abc"), "abc");
    EXPECT_EQ(replaceAll("abc", "", "abc"), "");
}

TEST(HasIndex, TellsNegativeIndicesAndThoseBehindTheEnd)
{
    const std::vector<int> items(3);

    EXPECT_TRUE(hasIndex(items, 0));
    EXPECT_TRUE(hasIndex(items, 2));
    EXPECT_FALSE(hasIndex(items, 3));
    EXPECT_FALSE(hasIndex(items, -1));
    EXPECT_FALSE(hasIndex(std::vector<int>(), 0));
}

TEST(AlmostEqual, AllowsStrictlyLessThanTheTolerance)
{
    EXPECT_TRUE(almostEqual(1.0F, 1.0079F));
    EXPECT_TRUE(almostEqual(1.0079F, 1.0F));
    EXPECT_FALSE(almostEqual(1.0F, 1.01F));
    EXPECT_FALSE(almostEqual(0.0F, 0.008F));
}
} // namespace
} // namespace tamor

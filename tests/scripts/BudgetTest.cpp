#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
using testing::ContainsRegex;
using testing::HasSubstr;

/// A budget for the counted program, whose one work is ten thousand instructions and a few to enter
/// and to leave it.
class TheBudget : public testing::Test
{
protected:
    struct Counting
    {
        int status = 0;
        std::string said;
    };

    /// \param budget  the text of its file
    Counting count(const std::string& budget, const std::vector<std::string>& options = {}) const
    {
        std::vector<std::string> words = {TAMOR_SOURCES "/benchmarks/budget/count",
                                          TAMOR_COUNTED_PROGRAM,
                                          directory.write("budget.txt", budget)};
        words.insert(words.end(), options.begin(), options.end());
        ChildProcess script(words);
        const int status = script.wait().status;
        return {status, script.output() + script.errors()};
    }

    const TemporaryDirectory directory;
};

TEST_F(TheBudget, IsKeptByAWorkThatTakesThreeInAHundredMore)
{
    const Counting counting = count("nops 9725\n");

    EXPECT_EQ(counting.status, 0) << counting.said;
    EXPECT_THAT(counting.said, ContainsRegex("^nops +100[0-9][0-9]  ok\n$"));
}

TEST_F(TheBudget, EndsTheScriptWithWordsWhenAWorkTakesMore)
{
    const Counting counting = count("nops 9000\n");

    EXPECT_EQ(counting.status, 1);
    EXPECT_THAT(counting.said, HasSubstr("over the budget of 9000\n"));
    EXPECT_THAT(counting.said, HasSubstr("scripts/bench --budget --accept"));
}

TEST_F(TheBudget, TellsWhenAWorkTakesLess)
{
    const Counting counting = count("nops 12000\n");

    EXPECT_EQ(counting.status, 0);
    EXPECT_THAT(counting.said, HasSubstr("below the budget of 12000: accept the lower figure\n"));
}

TEST_F(TheBudget, EndsTheScriptForAWorkThatItDoesNotList)
{
    const Counting counting = count("other 1000\n");

    EXPECT_EQ(counting.status, 1);
    EXPECT_THAT(counting.said, HasSubstr("has no budget\n"));
}

TEST_F(TheBudget, TakesNewFiguresWhenToldTo)
{
    const Counting counting = count("nops 9000\nother 1000\n", {"--accept"});

    EXPECT_EQ(counting.status, 0);
    std::ifstream file("budget.txt");
    EXPECT_THAT(std::string(std::istreambuf_iterator<char>(file), {}),
                ContainsRegex("^nops 100[0-9][0-9]\n$"));
}
} // namespace
} // namespace tamor::test

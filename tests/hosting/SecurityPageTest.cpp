// The listing of docs/security.md: a host that survives the scripts of strangers.

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace tamor::test
{
namespace
{
struct Stranger
{
    const char* name;
    const char* script;
    const char* output;

    friend void PrintTo(const Stranger& row, std::ostream* stream) { *stream << row.name; }
};

class TheHostOfStrangers : public testing::TestWithParam<Stranger>
{};

TEST_P(TheHostOfStrangers, SurvivesTheirScript)
{
    const TemporaryDirectory directory;
    ChildProcess host({LISTINGS "tamor-listing-strangers",
                       directory.write("stranger.script", GetParam().script)});

    EXPECT_EQ(host.wait().status, 0);

    EXPECT_EQ(host.output(), GetParam().output);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TheHostOfStrangers,
    testing::Values(
        Stranger{"ThatIsWellMeant", "answer = 6 * 7;", "42\nit is done\n"},
        Stranger{"ThatNeverEnds", "answer = 1; while (true) { }", "1\nit was stopped\n"},
        Stranger{"ThatTakesAllMemory", "answer = 1; a[-1] = 1;", "1\nit was stopped\n"},
        Stranger{"ThatCallsItself", "answer = 1; func f() { f(); } f();", "1\nit was stopped\n"},
        Stranger{"WithARemainderByZero", "answer = 1 % 0;", "it crashed\n"},
        Stranger{"WithAnUnfinishedString", "answer = \"1;", "it crashed\n"},
        Stranger{"WithAnUnfinishedIndex", "answer[1", "it crashed\n"}),
    [](const auto& row) { return row.param.name; });
} // namespace
} // namespace tamor::test

// The listings of docs/tools.md that show tamor-script at work.

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/tools/script/Terminal.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace tamor::test
{
namespace
{
std::string page()
{
    std::ostringstream text;
    text << std::ifstream(TAMOR_DOCS "/tools.md").rdbuf();
    return text.str();
}

/// What stands between two marks, or nothing if they are not there.
std::string between(const std::string& text, const std::string& from, const std::string& to)
{
    const std::size_t begin = text.find(from);
    const std::size_t end = text.find(to, begin + from.size());
    EXPECT_NE(end, std::string::npos) << from;
    return begin == std::string::npos || end == std::string::npos
               ? ""
               : text.substr(begin + from.size(), end - begin - from.size());
}

/// The lines of an indented listing behind its first one, which is `command`.
std::string listingOf(const std::string& command)
{
    std::istringstream lines(between(page(), "    $ " + command + "\n", "\n\n") + "\n");
    std::string result;
    for (std::string line; std::getline(lines, line);)
        result += line.substr(4) + "\n";
    return result;
}

TEST(ToolsPage, ShowsWhatATextOfTheCommandLineLeaves)
{
    ChildProcess program({TAMOR_SCRIPT_PROGRAM, "-e", "2 ^ 10"});
    program.wait();

    EXPECT_EQ(program.output(), listingOf("tamor-script -e '2 ^ 10'"));
}

TEST(ToolsPage, ShowsWhatATracePrints)
{
    const TemporaryDirectory directory;
    directory.write("steps.script", between(page(), "```text steps.script\n", "```"));

    ChildProcess program({TAMOR_SCRIPT_PROGRAM, "--trace", "steps.script"});
    program.wait();

    EXPECT_EQ(program.errors(), listingOf("tamor-script --trace steps.script"));
}

TEST(ToolsPage, ShowsWhatThePromptAnswers)
{
    std::istringstream lines(between(page(), "$ tamor-script\n", "```"));
    Terminal terminal({TAMOR_SCRIPT_PROGRAM});

    for (std::string line; std::getline(lines, line);) {
        const std::string start = line.substr(0, 2);
        if (start == "^C") {
            // The loop runs once its line has been taken.
            ASSERT_TRUE(terminal.shows("}\r\n"));
            terminal.type("\x03");
            EXPECT_TRUE(terminal.shows(line.substr(2) + "\r\n")) << terminal.written();
        } else if (start == "> " || start == ". ") {
            ASSERT_TRUE(terminal.shows(start) && terminal.takesKeys()) << terminal.written();
            terminal.type(line.substr(2) + "\r");
        } else {
            EXPECT_TRUE(terminal.shows(line + "\r\n")) << line << "\n" << terminal.written();
        }
    }
}
} // namespace
} // namespace tamor::test

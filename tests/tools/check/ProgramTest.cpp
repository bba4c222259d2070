// The program as its user calls it.

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <fstream>
#include <map>

namespace tamor::test
{
namespace
{
using testing::HasSubstr;
using testing::StartsWith;

const std::string usage =
    "Usage: tamor-check [--format text|json] [--kind KIND] [--codes] FILE|DIRECTORY|- ...\n";

const std::string theme = "1 1 1\n1 0.71 0.16\n0.8 0.8 0.8\n0.3 0.3 0.3\n1\n0.8\n2\n0.005\n0.1\n"
                          "0.003\n0.04 0.05\n0.7 1\n0.005 -0.005 0\n0.1\nNULL\n1\n";

struct Answer
{
    int status;
    std::string output;
    std::string errors;
};

Answer answerOf(std::vector<std::string> arguments,
                const std::map<std::string, std::string>& environment = {})
{
    arguments.insert(arguments.begin(), TAMOR_CHECK_PROGRAM);
    ChildProcess child(arguments, "", environment);
    const ProcessEnd end = child.wait();
    return {end.status, child.output(), child.errors()};
}

/// What the program writes to a terminal.
std::string onATerminal(const std::string& file, const std::string& noColour)
{
    ChildProcess child(
        {"script", "-qec", std::string(TAMOR_CHECK_PROGRAM) + " " + file, "/dev/null"}, "",
        {{"NO_COLOR", noColour}});
    child.wait();
    return child.output();
}

class CheckProgram : public testing::Test
{
protected:
    TemporaryDirectory directory;
};

TEST_F(CheckProgram, EndsWith0WhereNothingIsFound)
{
    directory.write("blue.theme", theme);

    const Answer answer = answerOf({"blue.theme"});

    EXPECT_EQ(answer.status, 0);
    EXPECT_EQ(answer.output, "0 errors and 0 warnings in 1 file\n");
    EXPECT_EQ(answer.errors, "");
}

TEST_F(CheckProgram, ShowsWarningsAsCompilersDoAndEndsWith1)
{
    directory.write("my.gui", "CADD Slide volume NULL 0 0 0.5 0.5\n");

    const Answer answer = answerOf({"my.gui"});

    EXPECT_EQ(answer.status, 1);
    EXPECT_EQ(answer.output,
              "my.gui:1:28: warning: one of a slider's lengths is 0 and the other is "
              "not, or it cannot be moved [layout-slider]\n"
              "0 errors and 1 warning in 1 file\n");
}

TEST_F(CheckProgram, EndsWith2WhereThereAreErrors)
{
    directory.write("my.gui",
                    "CADD TWin page NULL 0 0\nNTAB page 0 First\n\n\nNTAB pages 1 Next\n");
    directory.write("blue.theme", theme);

    const Answer answer = answerOf({"blue.theme", "my.gui"});

    EXPECT_EQ(answer.status, 2);
    EXPECT_EQ(
        answer.output,
        "my.gui:1:11: warning: no CONF line above names a font: the words of \"page\" are not "
        "seen and measure 0 [layout-no-config]\n"
        "my.gui:5:6: error: no widget \"pages\" is made above this line; did you mean "
        "\"page\"? [layout-parent]\n"
        "1 error and 1 warning in 2 files\n");
}

TEST_F(CheckProgram, WritesOneArrayOfObjects)
{
    directory.write("a.script", "say \"hi\";\na = 1;");

    const Answer answer = answerOf({"--format", "json", "a.script"});

    EXPECT_EQ(answer.status, 2);
    EXPECT_EQ(answer.output,
              "[\n"
              "  {\"file\": \"a.script\", \"line\": 1, \"column\": 5, \"severity\": \"error\", "
              "\"code\": \"script-values\", \"message\": \"the expression does not come to one "
              "value: the program ends; is a semicolon or an operator missing?\"}\n"
              "]\n");
}

TEST_F(CheckProgram, WritesAnEmptyArrayWhereNothingIsFound)
{
    directory.write("blue.theme", theme);

    EXPECT_EQ(answerOf({"--format=json", "blue.theme"}).output, "[]\n");
}

TEST_F(CheckProgram, EndsWith3WhereAFileCannotBeRead)
{
    directory.write("blue.theme", theme);

    const Answer answer = answerOf({"blue.theme", "missing.gui"});

    EXPECT_EQ(answer.status, 3);
    EXPECT_EQ(answer.errors, "tamor-check: missing.gui cannot be read\n");
    EXPECT_EQ(answer.output, "0 errors and 0 warnings in 1 file\n");
}

TEST_F(CheckProgram, EndsWith3AndTheUsageWhereTheCallIsWrong)
{
    EXPECT_EQ(answerOf({}).errors, "tamor-check: nothing to check\n" + usage);
    EXPECT_EQ(answerOf({}).status, 3);
    EXPECT_EQ(answerOf({"--kidn", "theme", "x"}).errors,
              "tamor-check: no option '--kidn'; did you mean '--kind'?\n" + usage);
    EXPECT_EQ(answerOf({"--kind", "themes", "x"}).errors,
              "tamor-check: no kind 'themes'; did you mean \"theme\"?\n" + usage);
    EXPECT_EQ(answerOf({"--format", "xml", "x"}).errors,
              "tamor-check: no format 'xml': text or json\n" + usage);
    EXPECT_EQ(answerOf({"--format", "xml", "x"}).status, 3);
}

TEST_F(CheckProgram, ReadsTheStandardInput)
{
    ChildProcess child({"sh", "-c", "printf '1 1\\n' | " TAMOR_CHECK_PROGRAM " --kind theme -"});

    EXPECT_EQ(child.wait().status, 2);
    EXPECT_EQ(child.output(), "-:2:1: error: the file ends in front of the blue of line 1 (text "
                              "colour): this and all that follows stays unread [theme-short]\n"
                              "1 error and 0 warnings in 1 file\n");
}

TEST_F(CheckProgram, TellsAFilesKindByItsContent)
{
    directory.write("layout.txt", "// a layout\nCADD Slide volume NULL 0 0 1 1\n");
    directory.write("theme.txt", theme + "x\n");
    directory.write("script.txt", "a = ;\nb = 3");
    directory.write("empty.txt", "");

    EXPECT_THAT(answerOf({"layout.txt"}).output, HasSubstr("[layout-slider]"));
    EXPECT_EQ(answerOf({"theme.txt"}).status, 0);
    EXPECT_THAT(answerOf({"script.txt"}).output, HasSubstr("[script-semicolon]"));
    EXPECT_EQ(answerOf({"empty.txt"}).errors,
              "tamor-check: empty.txt is of no kind that is known: name it with --kind\n");
}

TEST_F(CheckProgram, ChecksAWorkingDirectory)
{
    directory.write("my.gui",
                    "THEM blue.theme x\nTHEM gren.theme x\nCADD Slide volume NULL 0 0 1 0\n");
    for (const char* name : {"default.theme", "messagebox.theme", "blue.theme", "green.theme"})
        directory.write(name, theme);
    directory.write("notes.txt", "of no kind");

    const Answer answer = answerOf({"."});

    EXPECT_EQ(answer.status, 2);
    EXPECT_EQ(answer.output, "./my.gui:2:6: error: there is no \"gren.theme\"; did you mean "
                             "\"green.theme\"? [theme-missing]\n"
                             "1 error and 0 warnings in 5 files\n");
}

TEST_F(CheckProgram, ListsItsCodes)
{
    const Answer answer = answerOf({"--codes"});

    EXPECT_EQ(answer.status, 0);
    EXPECT_THAT(answer.output,
                HasSubstr("error    layout-parent               a line names a widget "
                          "that is not made above it\n"));
}

TEST_F(CheckProgram, ShowsItsHelpAndItsVersion)
{
    EXPECT_THAT(answerOf({"--help"}).output, StartsWith(usage));
    EXPECT_THAT(answerOf({"--version"}).output, StartsWith("tamor-check "));
}

TEST_F(CheckProgram, ColoursOnATerminalOnly)
{
    directory.write("my.gui", "CADD Slide volume NULL 0 0 0.5 0.5\n");

    EXPECT_THAT(onATerminal("my.gui", ""),
                StartsWith("\033[1mmy.gui:1:28: \033[0m\033[1;35mwarning: \033[0mone of"));
    EXPECT_THAT(onATerminal("my.gui", "1"), StartsWith("my.gui:1:28: warning: one of"));
}

// A listing that begins with "$" shows what the program says to the files above it.
TEST_F(CheckProgram, SaysWhatTheManualShows)
{
    std::ifstream page(TAMOR_DOCS "/tools.md");
    int shown = 0;
    for (std::string line; std::getline(page, line);) {
        const bool isFile = line.starts_with("```text ");
        if (!isFile && line != "```console")
            continue;
        const std::string name = isFile ? line.substr(8) : "";
        std::string text;
        for (std::string each; std::getline(page, each) && each != "```";)
            text += each + "\n";
        const std::string call = "$ tamor-check ";
        if (isFile) {
            directory.write(name, text);
        } else if (text.starts_with(call)) {
            const std::size_t end = text.find('\n');
            ++shown;
            EXPECT_EQ(answerOf({text.substr(call.size(), end - call.size())}).output,
                      text.substr(end + 1));
        }
    }
    EXPECT_EQ(shown, 2);
}

TEST_F(CheckProgram, HasItsOptionsCompletedByTheShell)
{
    const std::string complete = "source " TAMOR_SOURCES "/tools/completion.bash\n"
                                 "COMP_WORDS=(" TAMOR_CHECK_PROGRAM " --fo) COMP_CWORD=1\n"
                                 "_tamor_tool " TAMOR_CHECK_PROGRAM "\n"
                                 "echo \"${COMPREPLY[@]}\"\n";
    ChildProcess shell({"bash", "-c", complete});

    EXPECT_EQ(shell.wait().status, 0);
    EXPECT_EQ(shell.output() + shell.errors(), "--format\n");
}

// The sources' own files are as the checker wants them; scripts show what a library looks like.
TEST_F(CheckProgram, FindsNoErrorInTheFilesThatTheSourcesShip)
{
    for (const char* folder : {"/examples/models", "/examples/scripts", "/examples/shade_model"}) {
        const Answer answer = answerOf({std::string(TAMOR_SOURCES) + folder});

        EXPECT_LE(answer.status, 1) << answer.output;
    }
    EXPECT_EQ(answerOf({TAMOR_DEMO_DATA}).output, "0 errors and 0 warnings in 17 files\n");
}
} // namespace
} // namespace tamor::test

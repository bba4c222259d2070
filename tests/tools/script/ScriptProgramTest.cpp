#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
const std::string usage = "Usage: tamor-script [--load LIBRARY]... [--tokens] [--trace] [--time] "
                          "[--no-check] [FILE | -e TEXT]\n";

/// What a run of a program came to.
struct ScriptRun
{
    int status = -1;
    std::string output;
    std::string errors;
};

ScriptRun runScript(std::vector<std::string> words)
{
    words.insert(words.begin(), TAMOR_SCRIPT_PROGRAM);
    ChildProcess program(words);
    const ProcessEnd end = program.wait();
    return {end.status, program.output(), program.errors()};
}

std::string contentOf(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

class ScriptSamples : public testing::TestWithParam<std::string>
{
protected:
    static std::vector<std::string> arguments(const std::string& name)
    {
        const std::string directory = TAMOR_SCRIPTS;
        if (name == "chart")
            return {"--load", directory + "chart-library.script", directory + "chart.script"};
        return {directory + name + ".script"};
    }
};

TEST_P(ScriptSamples, PrintWhatIsKept)
{
    const ScriptRun run = runScript(arguments(GetParam()));

    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, contentOf(TAMOR_SAMPLE_OUTPUTS + GetParam() + ".txt"));
}

TEST_P(ScriptSamples, GiveTheSameWordsWhenTheyAreTimed)
{
    std::vector<std::string> words = arguments(GetParam());
    const ScriptRun plain = runScript(words);
    words.insert(words.begin(), "--time");

    const ScriptRun timed = runScript(words);

    EXPECT_EQ(timed.errors.substr(0, plain.errors.size()), plain.errors);
    EXPECT_EQ(timed.errors.find("       calls           ms  function\n"), plain.errors.size());
}

INSTANTIATE_TEST_SUITE_P(All, ScriptSamples,
                         testing::Values("ball", "chart", "mandelbrot", "primes", "statistics"),
                         [](const auto& sample) { return std::string(sample.param); });

TEST(ScriptProgram, TracesStatementsWithTheirLinesAndWhatTheyGive)
{
    const TemporaryDirectory directory;
    directory.write("a.script", "x = 1;\n"
                                "if (x == 1) {\n"
                                "    x = x +\n"
                                "        2;\n"
                                "}\n"
                                "func f(a) { a * 2; return \"end\"; }\n"
                                "y = f(x);\n");

    EXPECT_EQ(runScript({"--trace", "a.script"}).errors, "a.script:1: x = 1 -> 1\n"
                                                         "a.script:2: if (x == 1)\n"
                                                         "a.script:3: x = x + 2 -> 3\n"
                                                         "a.script:7: y = f(x)\n"
                                                         "a.script:6: a * 2 -> 6\n"
                                                         "a.script:6: return \"end\"\n"
                                                         "a.script:7: y = f(x) -> end\n");
}

TEST(ScriptProgram, TracesLibrariesAndLeavesAFalseIfWithoutABlockAsItIs)
{
    const TemporaryDirectory directory;
    directory.write("l.script", "func f(a) {\n    a;\n}\n");
    directory.write("a.script", "if (0) print(\"no\");\nif (1) f(7);\n");

    EXPECT_EQ(runScript({"--trace", "--load", "l.script", "a.script"}).errors,
              "a.script:1: if (0)\n"
              "a.script:2: if (1)\n"
              "l.script:2: a -> 7\n"
              "a.script:2: f(7) -> 7\n");
}

TEST(ScriptProgram, TracesNothingAwayWhereAFalseIfSkipsOneWord)
{
    const TemporaryDirectory directory;
    directory.write("a.script", "if (0) y print(\"the rest\");\n");

    EXPECT_EQ(runScript({"--no-check", "a.script"}).errors, "the rest \n");
    EXPECT_EQ(runScript({"--no-check", "--trace", "a.script"}).errors,
              "a.script:1: if (0)\nthe rest \n");
}

TEST(ScriptProgram, CountsTheCallsOfEachFunction)
{
    const TemporaryDirectory directory;
    directory.write("a.script", "func f(a) { sqrt(a); }\nfor (i = 0; i < 5; i = i + 1) { f(i); }\n"
                                "sqrt(4);\n");

    const std::string errors = runScript({"--time", "a.script"}).errors;

    EXPECT_NE(errors.find("           5 "), std::string::npos) << errors;
    EXPECT_NE(errors.find("  f\n"), std::string::npos) << errors;
    EXPECT_NE(errors.find("           6 "), std::string::npos) << errors;
    EXPECT_NE(errors.find("  sqrt\n"), std::string::npos) << errors;
}

TEST(ScriptProgram, ShowsTheErrorsOfTheCheckerAndRunsAllTheSame)
{
    const TemporaryDirectory directory;
    directory.write("a.script", "print(\"runs\");\nx = 1 != 2;\n");

    const ScriptRun run = runScript({"a.script"});
    EXPECT_EQ(run.errors.find("a.script:2:7: error: "), 0U) << run.errors;
    EXPECT_NE(run.errors.find("\nruns \n"), std::string::npos) << run.errors;

    EXPECT_EQ(runScript({"--no-check", "a.script"}).errors, "runs \n");
}

TEST(ScriptProgram, SaysThatATextIsCutOff)
{
    const TemporaryDirectory directory;
    directory.write("a.script", "print(\"never\");\nx = \"open");

    const ScriptRun run = runScript({"--no-check", "a.script"});

    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "tamor-script: a.script: the text ends inside a string or an index\n");
}

TEST(ScriptProgram, OffersFunctionsOfItsOwn)
{
    const TemporaryDirectory directory;
    directory.write("a.script", "a[1] = 4; in = item(a, 1); past = item(a, 2); below = item(a, -1);"
                                "print(sqrt(16), sqrt(2.25), sqrt(a), length(a), length(\"four\"));"
                                "print(in, past, below);");

    EXPECT_EQ(runScript({"a.script"}).errors, "4 1.5 NULL 2 4 \n4 NULL NULL \n");
}

TEST(ScriptProgram, PrintsTheTokensAndRunsNothing)
{
    const TemporaryDirectory directory;
    directory.write("a.script", "x = print(1);");

    const ScriptRun run = runScript({"--tokens", "a.script"});

    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, ">x< = print( 1 #1 #) ;\n");
    EXPECT_EQ(run.errors, "");
}

TEST(ScriptProgram, RunsATextOfTheCommandLine)
{
    const ScriptRun run = runScript({"-e", "x = 2; x ^ 10"});

    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "1024\n");
    EXPECT_EQ(runScript({"--tokens", "-e", "x = 1;"}).output, ">x< = 1 ;\n");
}

TEST(ScriptProgram, RefusesACallThatMakesNoSense)
{
    EXPECT_EQ(runScript({"--trcae"}).errors,
              "tamor-script: no option '--trcae'; did you mean '--trace'?\n" + usage);
    EXPECT_EQ(runScript({"a", "b"}).errors,
              "tamor-script: more than one file or text is named\n" + usage);
    EXPECT_EQ(runScript({"--tokens"}).errors,
              "tamor-script: no file is named for --tokens\n" + usage);
    EXPECT_EQ(runScript({"none.script"}).errors,
              "tamor-script: cannot read 'none.script'\n" + usage);
    EXPECT_EQ(runScript({"/"}).errors, "tamor-script: cannot read '/'\n" + usage);
    EXPECT_EQ(runScript({"--load", "none.script"}).status, 2);
}

TEST(ScriptProgram, HelpsAndTellsItsVersion)
{
    EXPECT_EQ(runScript({"--help"}).output.find(usage), 0U);
    EXPECT_EQ(runScript({"--version"}).output, "tamor-script 1.0.0\n");
}
} // namespace
} // namespace tamor::test

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>

namespace tamor::test
{
namespace
{
/// A tree of sources, each with one include.
class TheCheckOfIncludes : public testing::Test
{
protected:
    void write(const std::string& file, const std::string& include) const
    {
        std::filesystem::create_directories((tree.path() / file).parent_path());
        static_cast<void>(tree.write(file, "#include \"" + include + "\"\n"));
    }

    /// What the script says about the tree; it is expected to end with `status`.
    std::string check(int status) const
    {
        ChildProcess script({TAMOR_SOURCES "/scripts/check-includes", tree.path()});
        EXPECT_EQ(script.wait().status, status);
        return script.output() + script.errors();
    }

private:
    TemporaryDirectory tree;
};

TEST_F(TheCheckOfIncludes, AllowsOnesOwnFolderAndThoseBelowAtAnyDepth)
{
    write("maths/Matrix.h", "maths/Vector.h");
    write("models/Model.cpp", "platform/GLee.h");
    write("widgets/Button.cpp", "gui/GLWidget.h");
    write("widgets/Label.cpp", "maths/Vector.h");
    write("app/Main.cpp", "script/ScriptInterpreter.h");

    EXPECT_EQ(check(0), "");
}

struct Refused
{
    const char* name;
    const char* file;
    const char* include;
    const char* folder;

    friend void PrintTo(const Refused& row, std::ostream* stream) { *stream << row.name; }
};

class TheCheckOfIncludesRefuses : public TheCheckOfIncludes,
                                  public testing::WithParamInterface<Refused>
{};

TEST_P(TheCheckOfIncludesRefuses, AndSaysWhat)
{
    const std::string file = GetParam().file;
    const std::string include = GetParam().include;
    write(file, include);

    EXPECT_EQ(check(1), file + ":1: " + include + " is not below " + GetParam().folder + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TheCheckOfIncludesRefuses,
    testing::Values(Refused{"AFolderFromAbove", "gui/Layout.cpp", "widgets/Button.h", "gui/"},
                    Refused{"AFolderBeside", "textures/Font.cpp", "kernel/Kernel.h", "textures/"},
                    Refused{"TheRestOfAFolderThatLendsAHeader", "models/Model.cpp",
                            "platform/GLRender.h", "models/"},
                    Refused{"WhatALineOfAFolderOfAFolderLacks", "examples/replay/main.cpp",
                            "tools/check/Finding.h", "examples/replay/"},
                    Refused{"TheDemonstrationToExamples", "examples/tour/Tour.cpp",
                            "app/Application.h", "examples/"}),
    [](const auto& row) { return row.param.name; });

TEST_F(TheCheckOfIncludes, KeepsWhatIsInternalToItsFolder)
{
    write("script/Parser.cpp", "script/internal/Scanner.h");
    write("script/internal/Scanner.cpp", "script/internal/Scanner.h");
    write("tools/script/Run.cpp", "script/internal/Scanner.h");
    write("app/Main.cpp", "platform/internal/EventQueue.h");

    EXPECT_EQ(check(1),
              "app/Main.cpp:1: platform/internal/EventQueue.h is private to platform/\n"
              "tools/script/Run.cpp:1: script/internal/Scanner.h is private to script/\n");
}

TEST_F(TheCheckOfIncludes, AllowsAFolderOfAFolderWhatItsOwnLineSays)
{
    write("examples/replay/main.cpp", "app/Application.h");
    write("examples/replay/Player.cpp", "platform/InputPlayer.h");

    EXPECT_EQ(check(0), "");
}

TEST_F(TheCheckOfIncludes, LeavesTestsAndBenchmarksFree)
{
    write("tests/app/Test.cpp", "app/Application.h");
    write("benchmarks/models/Benchmark.cpp", "models/internal/CornerArrays.h");

    EXPECT_EQ(check(0), "");
}
} // namespace
} // namespace tamor::test

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
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

TEST_F(TheCheckOfIncludes, RefusesAFolderFromAbove)
{
    write("gui/Layout.cpp", "widgets/Button.h");

    EXPECT_EQ(check(1), "gui/Layout.cpp:1: widgets/Button.h is not below gui/\n");
}

TEST_F(TheCheckOfIncludes, RefusesAFolderBeside)
{
    write("textures/Font.cpp", "kernel/Kernel.h");

    EXPECT_EQ(check(1), "textures/Font.cpp:1: kernel/Kernel.h is not below textures/\n");
}

TEST_F(TheCheckOfIncludes, RefusesAllOfAFolderThatLendsOneHeader)
{
    write("models/Model.cpp", "platform/GLRender.h");

    EXPECT_EQ(check(1), "models/Model.cpp:1: platform/GLRender.h is not below models/\n");
}

TEST_F(TheCheckOfIncludes, RefusesTheDemonstrationToExamples)
{
    write("examples/tour/Tour.cpp", "app/Application.h");

    EXPECT_EQ(check(1), "examples/tour/Tour.cpp:1: app/Application.h is not below examples/\n");
}

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

TEST_F(TheCheckOfIncludes, LeavesTestsAndBenchmarksFree)
{
    write("tests/app/Test.cpp", "app/Application.h");
    write("benchmarks/models/Benchmark.cpp", "models/internal/CornerArrays.h");

    EXPECT_EQ(check(0), "");
}
} // namespace
} // namespace tamor::test

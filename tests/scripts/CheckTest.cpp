#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace tamor::test
{
namespace
{
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// The script in a tree of its own, with two sources that the build file lists.
class TheCheckOfSources : public testing::Test
{
protected:
    void SetUp() override
    {
        // The script would install what it lacks.
        ChildProcess packages(
            {"bash", "-c",
             "source scripts/common.sh; "
             "dpkg-query -W \"${packages_to_build[@]}\" \"${packages_to_check[@]}\""},
            TAMOR_SOURCES);
        if (packages.wait().status != 0)
            GTEST_SKIP() << "the packages of scripts/check are not installed: it installs them";

        for (const char* copied : {"scripts", ".clang-format", ".clang-tidy"})
            std::filesystem::copy(std::string(TAMOR_SOURCES "/") + copied, tree.path() / copied);
        write("CMakePresets.json",
              R"({"version": 6, "configurePresets": [{"name": "debug", "generator": "Ninja",
                  "cacheVariables": {"CMAKE_EXPORT_COMPILE_COMMANDS": "ON"}}]})");
        write("CMakeLists.txt", "cmake_minimum_required(VERSION 3.25)\n"
                                "project(tree LANGUAGES CXX)\n"
                                "add_library(tree kernel/Event.cpp kernel/Kernel.cpp)\n"
                                "target_include_directories(tree PRIVATE .)\n"
                                "file(WRITE ${CMAKE_BINARY_DIR}/left-out.txt kernel/Peer.cpp)\n");
        std::filesystem::create_directory("kernel");
        write("kernel/Event.h",
              "#pragma once\n\n#define TAMOR_EXPORT\n\nextern TAMOR_EXPORT int* event;\n");
        write("kernel/Event.cpp", "int* event = nullptr;\n");
        write("kernel/Kernel.cpp", "#include \"kernel/Event.h\"\n");
    }

    void write(const std::string& file, const std::string& text) const
    {
        static_cast<void>(tree.write(file, text));
    }

    /// What the script says about the tree; it is expected to end with `status`.
    static std::string check(int status)
    {
        ChildProcess script({"bash", "-c", "git init -q . && git add . && scripts/check"});
        EXPECT_EQ(script.wait().status, status);
        return script.output() + script.errors();
    }

private:
    TemporaryDirectory tree;
};

TEST_F(TheCheckOfSources, ShowsAFindingAndFails)
{
    write("kernel/Event.cpp", "int* event = 0;\n");

    const std::string said = check(123); // as xargs ends if a job fails

    EXPECT_THAT(said, HasSubstr("kernel/Event.cpp, by the commands of build/check:\n"));
    EXPECT_THAT(said, HasSubstr("kernel/Event.cpp:1:14: error: use nullptr"));
    EXPECT_THAT(said, Not(HasSubstr("Kernel.cpp")));
    EXPECT_THAT(said, Not(HasSubstr("well formed")));
}

TEST_F(TheCheckOfSources, FailsForASourceThatNoBuildFileLists)
{
    write("kernel/Lost.cpp", "int* lost = nullptr;\n");
    write("kernel/Peer.cpp", "int* peer = nullptr;\n");

    EXPECT_THAT(check(1),
                EndsWith("check: kernel/Peer.cpp is left out, since its peer's package is missing\n"
                         "check: no build file lists kernel/Lost.cpp\n"));
}

TEST_F(TheCheckOfSources, FailsForASourceThatIsFormattedOtherwise)
{
    write("kernel/Event.cpp", "int*  event = nullptr;\n");

    EXPECT_THAT(check(1), HasSubstr("kernel/Event.cpp:1:5: error: code should be clang-formatted"));
}
} // namespace
} // namespace tamor::test

// What README.md lists is what there is.

#include "tests/support/ChildProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
using testing::HasSubstr;

std::string readme()
{
    std::ostringstream text;
    text << std::ifstream(TAMOR_SOURCES "/README.md").rdbuf();
    return text.str();
}

/// The words that a command writes.
std::vector<std::string> wordsOf(const std::string& command)
{
    ChildProcess shell({"bash", "-c", command}, TAMOR_SOURCES);
    EXPECT_EQ(shell.wait().status, 0) << shell.errors();
    std::istringstream output(shell.output());
    return {std::istream_iterator<std::string>(output), {}};
}

TEST(TheReadme, NamesEachFolderInItsMap)
{
    const std::string text = readme();

    for (const auto& entry : std::filesystem::directory_iterator(TAMOR_SOURCES)) {
        const std::string folder = entry.path().filename().string();
        // Hidden folders belong to git and to editors.
        if (entry.is_directory() && folder != "build" && (folder[0] != '.' || folder == ".ci")) {
            EXPECT_THAT(text, HasSubstr("`" + folder + "/`"));
        }
    }
}

TEST(TheReadme, NamesEachPackageThatAScriptInstalls)
{
    const std::string text = readme();

    const std::vector<std::string> packages =
        wordsOf("source scripts/common.sh; for list in ${!packages_*}; do "
                "declare -n names=$list; echo ${names[*]}; done");

    EXPECT_GT(packages.size(), 30U);
    for (const std::string& package : packages)
        EXPECT_THAT(text, HasSubstr("`" + package + "`"));
}

TEST(TheReadme, NamesEachPageOfTheManual)
{
    const std::string text = readme();

    for (const auto& entry : std::filesystem::directory_iterator(TAMOR_SOURCES "/docs"))
        if (entry.path().extension() == ".md") {
            EXPECT_THAT(text, HasSubstr("(docs/" + entry.path().filename().string() + ")"));
        }
}

TEST(TheContributorsPage, NamesFilesThatAreThere)
{
    const std::vector<std::string> files = wordsOf(
        "grep -oE '`[A-Za-z_./-]+/[A-Za-z_./-]+`' docs/contributing.md | tr -d '`' | sort -u | "
        "grep -v 'NAME\\|^build/'");

    EXPECT_GT(files.size(), 20U);
    for (const std::string& file : files)
        EXPECT_TRUE(std::filesystem::exists(TAMOR_SOURCES "/" + file)) << file;
}

TEST(TheManual, SaysWhereTheBuiltProgramsLie)
{
    const std::vector<std::string> programs =
        wordsOf("grep -oh 'build/release/[a-z_/-]*/[a-z-]*' README.md docs/*.md | sort -u | "
                "grep -v 'build/release/data'");

    EXPECT_GT(programs.size(), 3U);
    for (const std::string& program : programs) {
        const std::string below = program.substr(std::string("build/release/").size());
        EXPECT_TRUE(std::filesystem::exists(TAMOR_BINARIES "/" + below)) << program;
    }
}
} // namespace
} // namespace tamor::test

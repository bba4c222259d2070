// The listings of docs/script-language.md, and the example that hosts scripts.
#include "tests/script/ScriptTesting.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
const std::string root = TAMOR_SOURCE_DIRECTORY;

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A script of the manual and what it prints.
struct Listing
{
    std::string script;
    std::string prints;
};

/// The content of the fenced block that begins with `fence`, from `position` on, which moves behind
/// it; npos where there is no such block.
std::string blockAt(const std::string& page, const std::string& fence, std::size_t& position)
{
    position = page.find(fence, position);
    if (position == std::string::npos)
        return "";
    const std::size_t start = position + fence.size();
    const std::size_t end = page.find("```\n", start);
    position = end + 4;
    return page.substr(start, end - start);
}

std::vector<Listing> listingsOf(const std::string& page)
{
    std::vector<Listing> listings;
    for (std::size_t position = 0;;) {
        const std::string script = blockAt(page, "```script\n", position);
        if (position == std::string::npos)
            return listings;
        EXPECT_EQ(page.compare(position, 10, "```prints\n"), 0) << script;
        listings.push_back({script, blockAt(page, "```prints\n", position)});
    }
}

/// A text without the space that print writes behind the last value of a line.
std::string withoutSpaceAtLineEnds(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        if (c == '\n' && result.ends_with(' '))
            result.pop_back();
        result += c;
    }
    return result;
}

/// How run_script ends, and what it writes.
struct HostRun
{
    explicit HostRun(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), TAMOR_RUN_SCRIPT);
        ChildProcess child(arguments);
        status = child.wait().status;
        output = child.output();
        errors = child.errors();
    }

    int status;
    std::string output;
    std::string errors;
};
} // namespace

TEST(Manual, PrintsWhatItSaysBehindEachListing)
{
    const std::vector<Listing> listings = listingsOf(contentOf(root + "/docs/script-language.md"));

    ASSERT_GT(listings.size(), 15U);
    for (const Listing& listing : listings) {
        const CapturedErrors errors;
        const Script script(listing.script);
        EXPECT_EQ(withoutSpaceAtLineEnds(errors.text()), listing.prints) << listing.script;
    }
}

TEST(Manual, ShowsTheHostThatIsCompiledAndRun)
{
    const std::string page = contentOf(root + "/docs/script-language.md");
    const std::string host = contentOf("ManualHost.cpp");
    const TemporaryDirectory directory;
    directory.write("library.script", "print(\"not run\");");
    directory.write("main.script", "answer = twice(speed);");

    ChildProcess child({TAMOR_MANUAL_HOST});

    EXPECT_EQ(child.wait().status, 42);
    EXPECT_EQ(child.errors(), "");
    EXPECT_NE(page.find("```cpp\n" + host + "```\n"), std::string::npos);
}

TEST(RunScript, HandsInAFunctionAndAVariableAndTakesOneBack)
{
    const TemporaryDirectory directory;
    directory.write("a.script", "a[2] = 1; print(file, length(a), length(\"four\"), length(1));"
                                "status = 7;");

    const HostRun run({"a.script"});

    EXPECT_EQ(run.errors, "a.script 3 4 NULL \n");
    EXPECT_EQ(run.status, 7);
}

TEST(RunScript, WantsAFileThatCanBeRead)
{
    EXPECT_EQ(HostRun({}).errors, "usage: run_script FILE\n");
    EXPECT_EQ(HostRun({"a", "b"}).status, 2);
    for (const char* path : {"missing", "/"}) {
        const HostRun run({path});
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.errors, "run_script: cannot read the file\n");
    }
}

TEST(RunScript, RunsAnEmptyFile)
{
    const TemporaryDirectory directory;
    directory.write("a.script", "");

    const HostRun run({"a.script"});

    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
}
} // namespace tamor::test

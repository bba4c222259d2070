// What cmake --install leaves, used as hosts and people use it. The tree is moved once before anything
// in it is used.

#include "tests/examples/Example.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/Picture.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/VirtualDisplay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// Runs a command of the shell and returns what it writes; an exit status other than 0 is a failure.
std::string outputOf(const std::string& command,
                     const std::map<std::string, std::string>& environment = {})
{
    ChildProcess shell({"sh", "-c", command}, "", environment);
    const ProcessEnd end = shell.wait(std::chrono::minutes(5));
    EXPECT_EQ(end.status, 0) << command << "\n" << shell.output() << shell.errors();
    return shell.output();
}

std::string contentOf(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

/// The README's host, as the file host.cpp of the current directory.
void writeHost()
{
    const std::string readme = contentOf(TAMOR_SOURCES "/README.md");
    const std::string head = "```cpp\n";
    const std::size_t begin = readme.find(head) + head.size();
    std::ofstream("host.cpp") << readme.substr(begin, readme.find("```\n", begin) - begin);
}

/// Runs the program that was built of the host: the README says that its window is orange.
void expectOrange(const std::string& program)
{
    useTestDisplay();
    ChildProcess host({program});

    EXPECT_EQ(host.wait().status, 0) << host.errors();
    EXPECT_EQ(host.errors(), "");
    const Picture window = readScreenshot("window.ppm");
    ASSERT_GT(window.width, 0);
    EXPECT_EQ(window.at(window.width / 2, window.height / 2), (Pixel{255, 128, 0}));
}

/// Each test works in a directory of its own; the installed tree is one for all.
class InstallGLTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        tree = std::make_unique<TemporaryDirectory>();
        outputOf("cmake --install " TAMOR_BINARIES " --prefix '" +
                 (tree->path() / "first").string() + "'");
        std::filesystem::rename(tree->path() / "first", tree->path() / "moved");
    }

    static void TearDownTestSuite() { tree.reset(); }

    static std::string prefix() { return (tree->path() / "moved").string(); }

    /// Whether the tree has the library as a file of that kind.
    static std::vector<std::string> kinds()
    {
        std::istringstream words(TAMOR_KINDS);
        std::vector<std::string> result;
        for (std::string kind; std::getline(words, kind, ',');)
            result.push_back(kind);
        return result;
    }

    TemporaryDirectory directory;

private:
    static inline std::unique_ptr<TemporaryDirectory> tree;
};

TEST_F(InstallGLTest, CMakeFindsTheLibrary)
{
    writeHost();
    std::filesystem::copy_file(TAMOR_SOURCES "/tests/install/host/CMakeLists.txt",
                               "CMakeLists.txt");
    for (const std::string& kind : kinds()) {
        SCOPED_TRACE(kind);
        outputOf("CXX='" TAMOR_COMPILER "' cmake -G Ninja -S . -B " + kind +
                 " -DCMAKE_PREFIX_PATH='" + prefix() +
                 "' -DTAMOR_SOURCES=" TAMOR_SOURCES " -DTAMOR_KIND=" + kind + " && cmake --build " +
                 kind);

        expectOrange(kind + "/host");
    }
}

TEST_F(InstallGLTest, CMakeIsToldOfAKindThatIsNotThere)
{
    std::ofstream("CMakeLists.txt") << "cmake_minimum_required(VERSION 3.25)\nproject(host)\n"
                                       "find_package(tamor 1.0 REQUIRED COMPONENTS lead)\n";

    ChildProcess cmake(
        {"cmake", "-G", "Ninja", "-S", ".", "-B", "b", "-DCMAKE_PREFIX_PATH=" + prefix()});

    EXPECT_EQ(cmake.wait().status, 1);
    EXPECT_THAT(cmake.errors(), HasSubstr("Tamor is not installed as 'lead'"));
}

TEST_F(InstallGLTest, PkgConfigTellsOneCallOfTheCompiler)
{
    writeHost();
    // What ends the host is no part of it and is compiled with its own flags.
    outputOf(TAMOR_COMPILER " -std=c++20 -I" TAMOR_SOURCES " -c " TAMOR_SOURCES
                            "/tests/hosting/FrameLimit.cpp " TAMOR_SOURCES
                            "/examples/Screenshot.cpp $(pkg-config --cflags sdl)");
    const std::string path = outputOf("find '" + prefix() + "' -name pkgconfig");
    const std::string directoryOfLibrary = std::filesystem::path(path).parent_path().string();
    const std::map<std::string, std::string> environment = {
        {"PKG_CONFIG_PATH", path.substr(0, path.find('\n'))}, {"LD_RUN_PATH", directoryOfLibrary}};

    outputOf(TAMOR_COMPILER " -std=c++20 host.cpp FrameLimit.o Screenshot.o "
                            "$(pkg-config --cflags --libs tamor) -o host",
             environment);

    EXPECT_EQ(outputOf("pkg-config --modversion tamor", environment), TAMOR_VERSION "\n");
    expectOrange("./host");
}

TEST_F(InstallGLTest, TheSharedLibraryHasAVersionAndOffersWhatIsPublic)
{
    if (kinds().back() != "shared")
        GTEST_SKIP() << "only the static library was built";
    const std::string library = outputOf("find '" + prefix() + "' -type f -name 'libtamor.so.*'");
    const std::string path = library.substr(0, library.find('\n'));

    const std::string head = outputOf("readelf -dW '" + path + "'");
    const std::string names = outputOf("nm -DC --defined-only '" + path + "'");

    EXPECT_THAT(path, HasSubstr("libtamor.so." TAMOR_VERSION));
    EXPECT_THAT(head, HasSubstr("soname: [libtamor.so." + std::string(1, TAMOR_VERSION[0]) + "]"));
    EXPECT_THAT(names, HasSubstr("tamor::Kernel::run()"));
    EXPECT_THAT(names, HasSubstr("tamor::liveObjects"));
    EXPECT_THAT(names, Not(HasSubstr("tamor::script::")));
}

TEST_F(InstallGLTest, HasTheHeadersThatAHostMayInclude)
{
    const std::string headers = prefix() + "/include/tamor/";

    EXPECT_TRUE(std::filesystem::exists(headers + "gui/GLWidget.h"));
    EXPECT_TRUE(std::filesystem::exists(headers + "platform/GLee.h"));
    for (const auto& entry : std::filesystem::recursive_directory_iterator(headers)) {
        EXPECT_NE(entry.path().filename(), "internal") << entry.path();
        EXPECT_TRUE(entry.is_directory() || entry.path().extension() == ".h") << entry.path();
    }
}

TEST_F(InstallGLTest, EachHeaderIsCompiledByItself)
{
    std::ofstream all("all.cpp");
    const std::string headers = prefix() + "/include/tamor";
    // GLee.h is to come before every other header of OpenGL.
    all << "#include \"platform/GLee.h\"\n";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(headers))
        if (entry.is_regular_file())
            all << "#include \"" << std::filesystem::relative(entry.path(), headers).string()
                << "\"\n";
    all.close();

    outputOf(TAMOR_COMPILER " -std=c++20 -fsyntax-only -Wall -Wextra -Werror -I'" + headers +
             "' all.cpp $(pkg-config --cflags sdl)");
}

TEST_F(InstallGLTest, TheToolsAndTheTourRunAndHaveTheirPages)
{
    for (const std::string tool : {"tamor-check", "tamor-view", "tamor-script", "tamor-tour"}) {
        SCOPED_TRACE(tool);
        EXPECT_EQ(outputOf("'" + prefix() + "/bin/" + tool + "' --version"),
                  tool + " " TAMOR_VERSION "\n");
        const std::string page = contentOf(prefix() + "/share/man/man1/" + tool + ".1");
        const std::string help = outputOf("'" + prefix() + "/bin/" + tool + "' --help");
        EXPECT_THAT(page, HasSubstr(".SH EXAMPLES"));
        // Each option of the help is one of the page, where dashes are written with a backslash.
        std::istringstream lines(help);
        for (std::string line; std::getline(lines, line);) {
            if (!line.starts_with("  -"))
                continue;
            std::string option = line.substr(2, line.find(' ', 2) - 2);
            for (std::size_t at = 0; (at = option.find('-', at)) != std::string::npos; at += 2)
                option.insert(at, "\\");
            EXPECT_THAT(page, HasSubstr(option));
        }
        EXPECT_TRUE(
            std::filesystem::exists(prefix() + "/share/bash-completion/completions/" + tool));
    }
}

TEST_F(InstallGLTest, TheDemonstrationRunsFromAnyDirectory)
{
    // Keys go to whatever window is under the pointer, so it has a display of its own.
    const VirtualDisplay display;
    const std::map<std::string, std::string> onDisplay = {{"DISPLAY", display.name()}};
    ChildProcess demonstration({prefix() + "/bin/tamor-demo"}, "/", onDisplay);
    for (int tries = 0; tries < 600 && demonstration.isRunning(); ++tries)
        outputOf("xdotool mousemove 400 300 key Escape sleep 0.1", onDisplay);

    EXPECT_EQ(demonstration.wait().status, 0);
    EXPECT_THAT(demonstration.errors(), HasSubstr("adding window program"));
}

TEST_F(InstallGLTest, TheTourHasItsFilesFromAnyDirectory)
{
    const VirtualDisplay display;
    const std::string pictures = directory.path().string();
    ChildProcess tour({prefix() + "/bin/tamor-tour", "--size", "200x150", "--pictures", pictures},
                      "/", {{"DISPLAY", display.name()}});

    EXPECT_EQ(tour.wait(std::chrono::minutes(3)).status, 0);

    // It says what is missing, and draws the rest.
    EXPECT_THAT(tour.errors(), HasSubstr("adding a 'TWin' - pages"));
    EXPECT_THAT(tour.errors(), Not(HasSubstr("missing")));
    EXPECT_EQ(readScreenshot(pictures + "/10-trip.ppm").width, 200);
}

TEST_F(InstallGLTest, TheDemonstrationStandsInTheMenuOfTheDesktop)
{
    const std::string share = prefix() + "/share/";

    const std::string entry = contentOf(share + "applications/tamor-demo.desktop");
    const std::string icon = contentOf(share + "icons/hicolor/scalable/apps/tamor-demo.svg");

    EXPECT_THAT(entry, HasSubstr("\nExec=tamor-demo\nIcon=tamor-demo\n"));
    EXPECT_THAT(icon, HasSubstr("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"128\""));
    // The shaft of the feather, which is drawn last.
    EXPECT_THAT(icon, EndsWith("<path d=\"M36 36 Q52 66 91 95\" fill=\"none\" "
                               "stroke=\"rgb(184,133,66)\" stroke-opacity=\"1\" "
                               "stroke-width=\"2.2\" stroke-linecap=\"round\" "
                               "stroke-linejoin=\"round\"/>\n</g></svg>\n</svg>\n"));
    EXPECT_THAT(contentOf(share + "man/man1/tamor-demo.1"), HasSubstr(".SH KEYS"));
}

TEST_F(InstallGLTest, TheDemonstrationNamesADirectoryThatItCannotWorkIn)
{
    ChildProcess demonstration({prefix() + "/bin/tamor-demo", "."});

    EXPECT_EQ(demonstration.wait().status, 2);
    EXPECT_EQ(demonstration.errors(), "tamor-demo: . holds no my.gui\n");
}
} // namespace
} // namespace tamor::test

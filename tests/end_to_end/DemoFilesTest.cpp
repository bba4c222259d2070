#include "tests/end_to_end/Demonstration.h"
#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

namespace tamor::test
{
namespace
{
/// Runs the script and expects it to end with `status`. Returns what it wrote, with paths in the
/// working directory.
std::string runDemoFiles(const WorkingDirectory& directory, int status)
{
    ChildProcess script(
        {TAMOR_SOURCES "/scripts/demo-files", directory.path(), TAMOR_CHECK_PROGRAM});
    EXPECT_EQ(script.wait().status, status);
    std::string text = script.output() + script.errors();
    const std::string prefix = directory.path() + "/";
    for (std::size_t at = 0; (at = text.find(prefix, at)) != std::string::npos;)
        text.erase(at, prefix.size());
    return text;
}

TEST(TheDemoFilesScript, SaysNothingAboutACompleteWorkingDirectory)
{
    const WorkingDirectory directory;

    EXPECT_EQ(runDemoFiles(directory, 0), "");
}

TEST(TheDemoFilesScript, NamesAMissingLayout)
{
    const WorkingDirectory directory;
    directory.remove("my.gui");

    EXPECT_EQ(runDemoFiles(directory, 2),
              "my.gui:1:1: error: there is no layout: the demonstration waits for ever "
              "[layout-missing]\n"
              "1 error and 0 warnings in 16 files\n");
}

TEST(TheDemoFilesScript, NamesAllThatIsMissingAndWhoNamesIt)
{
    const WorkingDirectory directory;
    for (const char* file : {"gui.tga", "messagebox.theme", "sidebar.theme", "combo_button.theme",
                             "tabwin_button.theme"})
        directory.remove(file);
    directory.write("gui.conf",
                    "/no/such/font.ttf\n-\n0 0 1 1\n0 0 1 1\n0 0 1 1\n0 0 1 1\n0 0 1 1\n1\n");
    for (const char* file : {"blue.theme", "choice.theme", "green.theme", "lower.theme",
                             "panel.theme", "paper.theme", "quill.theme", "red.theme"})
        directory.write(file, "1 1 1\n1 1 1\n1 1 1\n1 1 1\n1\n1\n1\n0.005\n0.1\n0.003\n0.04 0.04\n"
                              "1 1\n0 0 0\n0.1\nNULL\n1\n");

    EXPECT_EQ(runDemoFiles(directory, 2),
              "default.theme:15:1: warning: there is no picture \"gui.tga\" [texture-missing]\n"
              "gui.conf:1:1: error: there is no font \"/no/such/font.ttf\": no text is seen "
              "[font-missing]\n"
              "my.gui:1:1: warning: there is no messagebox.theme: a message box would be black and "
              "without a size [theme-default]\n"
              "my.gui:8:6: error: there is no \"sidebar.theme\" [theme-missing]\n"
              "my.gui:25:1: error: there is no \"tabwin_button.theme\" for a TWin "
              "[theme-missing]\n"
              "my.gui:49:1: error: there is no \"combo_button.theme\" for a Combo "
              "[theme-missing]\n"
              "4 errors and 2 warnings in 12 files\n");
}
} // namespace
} // namespace tamor::test

#include "tests/end_to_end/Demonstration.h"
#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

namespace tamor::test
{
namespace
{
/// Runs a script in `directory` and expects it to end with `status`. Returns what it wrote.
std::string runScript(const std::string& name, const std::string& argument, int status)
{
    ChildProcess script({TAMOR_SOURCES "/scripts/" + name, argument});
    EXPECT_EQ(script.wait().status, status);
    return script.output() + script.errors();
}

TEST(TheDemoFilesScript, SaysNothingAboutACompleteWorkingDirectory)
{
    const WorkingDirectory directory;

    EXPECT_EQ(runScript("demo-files", directory.path(), 0), "");
}

TEST(TheDemoFilesScript, NamesAMissingLayout)
{
    const WorkingDirectory directory;
    directory.remove("my.gui");

    EXPECT_EQ(runScript("demo-files", directory.path(), 1),
              "missing in " + directory.path() + ": my.gui\n");
}

TEST(TheDemoFilesScript, NamesInOneLineAllThatIsMissingAndWhoNamesIt)
{
    const WorkingDirectory directory;
    for (const char* file : {"gui.tga", "messagebox.theme", "panel.theme", "combo_button.theme",
                             "tabwin_button.theme"})
        directory.remove(file);
    directory.write("gui.conf", "/no/such/font.ttf\n");

    EXPECT_EQ(runScript("demo-files", directory.path(), 1),
              "missing in " + directory.path() +
                  ": gui.tga (named by default.theme), messagebox.theme, "
                  "/no/such/font.ttf (named by gui.conf), panel.theme (named by my.gui), "
                  "combo_button.theme (named by a Combo in my.gui), "
                  "tabwin_button.theme (named by a TWin in my.gui)\n");
}

TEST(TheDemoScript, RefusesAnArgumentThatItDoesNotKnow)
{
    EXPECT_EQ(runScript("demo", "--nonsense", 1),
              "demo: unknown argument '--nonsense': see the head of scripts/demo\n");
}
} // namespace
} // namespace tamor::test

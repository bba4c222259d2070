// What docs/text-entry.md says: its layout is loaded and typed into.

#include "tests/gui/GuiTest.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/widgets/RenderedCalls.h"
#include "widgets/Textbox.h"

#include <fstream>
#include <sstream>

namespace tamor::test
{
namespace
{
/// The first listing of the page.
std::string layoutOfThePage()
{
    std::ifstream stream(TAMOR_DOCS "/text-entry.md");
    std::stringstream page;
    page << stream.rdbuf();
    const std::string text = page.str();
    const std::string opening = "```text my.gui\n";
    const std::size_t start = text.find(opening);
    if (start == std::string::npos)
        return "";
    const std::size_t first = start + opening.size();
    return text.substr(first, text.find("```", first) - first);
}

using TextEntryPageGLTest = GuiGLTest;

TEST_F(TextEntryPageGLTest, HasALayoutWithABoxThatCanBeTypedInto)
{
    const std::string layout = layoutOfThePage();
    ASSERT_NE(layout, "");
    const TemporaryDirectory directory;
    directory.write("my.gui", layout);
    directory.write("default.theme", "1 1 1\n1 0.7 0.2\n0.6 0.6 0.6\n0 0 0\n1\n0.8\n2\n0.005\n0.1\n"
                                     "0\n0.04 0.05\n0.7 1\n0 0 0\n0.08\nNULL\n1\n");
    directory.write("gui.conf", TAMOR_TEST_FONT "\n-\n");
    const CapturedErrors errors;
    GLWidget::loadLayout("my.gui");
    auto& box = dynamic_cast<Textbox&>(*GLWidget::find("page"));

    // The window's corner is at (-0.5, -0.2), so this is inside the box.
    GLWidget::mouseMoved(Vector(290.0F, 350.0F));
    GLWidget::mouseButtons(true, false, false);
    const int keys[] = {'h', 'e', 'l', 'l', 'o', 13, '%', 'd'}; // 13 is Return
    for (const int key : keys)
        GLWidget::keysChanged(keysDown({key}).data());

    EXPECT_TRUE(box.isHovered());
    EXPECT_EQ(box.maxRows, 3U);
    EXPECT_EQ(seen(box).text, "hello\n%d");
    EXPECT_NE(callsOfRender(box).find("print \"hello/0\""), std::string::npos);
}
} // namespace
} // namespace tamor::test

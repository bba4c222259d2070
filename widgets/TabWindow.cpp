#include "widgets/TabWindow.h"

#include "gui/ErrorLine.h"
#include "widgets/Button.h"

#include <GL/gl.h>

#include <unistd.h>

#include <algorithm>

namespace tamor
{
namespace
{
/// What a tab takes that has a button: the button, its name three times, and its place in the
/// registry.
constexpr std::size_t bytesOfNamedTab = sizeof(Tab) + sizeof(Button) + 256;

/// Whether the machine's memory holds tabs up to `index`. Half of it counts: the rest is in use.
bool hasMemoryForTabs(std::int32_t index, std::size_t bytesOfTab)
{
    const auto pages = static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES));
    const auto pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return static_cast<std::size_t>(index) < pages / 2 * pageSize / bytesOfTab;
}

/// Freed when the row is built anew, and not with its window.
Button* newTabButton(const std::string& name, GLWidget* window, Vector position, Theme* theme,
                     const std::string& title)
{
    return new Button(name, window, position, theme, title);
}

float widthOf(const GLWidget& widget)
{
    const Vector rect = widget.getRect();
    return rect.z - rect.x;
}
} // namespace

/// Calls `action` with each tab's button, in tab order. Tabs that only `addToTab` has made have
/// none and are passed over.
template <class Action>
void TabWindow::forEachButton(Action action) const
{
    for (const Tab& tab : tabs) {
        if (tab.button != nullptr)
            action(*tab.button);
    }
}

TabWindow::TabWindow(const std::string& newName, GLWidget* newParent, Vector newPosition,
                     Theme* newTheme)
    : GLWindow(newName, newParent, newPosition, newTheme, "", false)
{}

bool TabWindow::onMouseButtons(bool left, bool middle, bool right)
{
    GLWindow::onMouseButtons(left, middle, right);
    forEachButton([=](Button& button) { button.onMouseButtons(left, middle, right); });
    for (std::size_t i = 0; i < tabs.size(); ++i) {
        if (tabs[i].button == nullptr || !tabs[i].button->isActive())
            continue;
        // Meant: the widgets that leave are not told, so that an option keeps its tick and a text
        // box its focus; `TabWindowSwitch.TellsNothingToTheWidgetsThatLeave` holds it.
        children = tabs[i].widgets;
        currentTab = static_cast<std::int32_t>(i);
    }
    return true;
}

bool TabWindow::onPointer(float x, float y)
{
    forEachButton([=](Button& button) { button.onPointer(x, y); });
    return GLWindow::onPointer(x, y);
}

bool TabWindow::update(std::int32_t milliseconds)
{
    GLWindow::update(milliseconds);
    forEachButton([=](Button& button) { button.update(milliseconds); });
    return true;
}

bool TabWindow::render()
{
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glPushMatrix();
    backdrop = 0;
    translateToCentre();
    glLineWidth(theme->lineWidth);
    renderPlate();
    // Meant: the colour before the texture is switched off, and so not as in `GLWindow`;
    // `TabWindowDrawingGLTest.MakesTheseCalls` holds it.
    setColour(theme->edgeColour, brightness(), theme->bodyAlpha);
    glDisable(GL_TEXTURE_2D);
    renderRule(dimensions.y / 2.0F - 2.0F * theme->fontSize.y);
    glPopMatrix();

    glPushMatrix();
    setColour(theme->textColour);
    renderButtons();
    glPopMatrix();

    renderContent();
    return true;
}

void TabWindow::renderButtons() const
{
    const auto current = static_cast<std::size_t>(currentTab);
    if (current < tabs.size() && tabs[current].button != nullptr)
        tabs[current].button->setLit();
    forEachButton([](Button& button) { button.render(); });
}

Vector TabWindow::move(Vector delta)
{
    GLWindow::move(delta);
    forEachButton([&delta](Button& button) { button.move(delta); });
    return position;
}

std::string TabWindow::typeName() const
{
    return "TabWindow";
}

bool TabWindow::fitChildren()
{
    GLWindow::fitChildren();
    // Without a tab there is nothing to show and nothing to place.
    if (tabs.empty())
        return true;
    children = tabs.front().widgets;

    const Vector rowStart(dimensions.y * theme->chamfer, dimensions.y - 1.75F * theme->fontSize.y);
    // Meant: an addition to where `addTab` put the button, so that a second call moves it again;
    // `TabWindowFit.MovesTheButtonsAgainWhenCalledAgain` holds it.
    forEachButton([&](Button& button) { button.move(position + rowStart); });
    widenForButtons();
    return true;
}

bool TabWindow::addTab(std::int32_t index, const std::string& title)
{
    if (index < 0)
        return true;
    if (!reserveTab(index, bytesOfNamedTab))
        return false;
    Tab& tab = tabs[static_cast<std::size_t>(index)];
    tab.title = title;
    tab.widgets.clear();

    Theme* const buttonTheme = themeOfFile("tabwin_button.theme");
    Vector offset;
    for (std::size_t i = 0; i < tabs.size(); ++i) {
        deleteButton(tabs[i]);
        const std::string buttonName = "__" + name + "tab" + std::to_string(i) + tabs[i].title;
        tabs[i].button = newTabButton(buttonName, this, offset, buttonTheme, tabs[i].title);
        offset.x += widthOf(*tabs[i].button) + 2.0F * theme->margin;
    }
    return true;
}

bool TabWindow::addToTab(std::int32_t index, GLWidget* child)
{
    if (index < 0)
        return true;
    if (!reserveTab(index, sizeof(Tab)))
        return false;
    Tab& tab = tabs[static_cast<std::size_t>(index)];
    if (tab.title.empty())
        tab.title = "unnamed";
    tab.widgets.push_back(child);
    addChild(child);
    widenForButtons();
    return true;
}

bool TabWindow::reserveTab(std::int32_t index, std::size_t bytesOfTab)
{
    const std::size_t needed = static_cast<std::size_t>(index) + 1;
    if (needed <= tabs.size())
        return true;
    if (!hasMemoryForTabs(index, bytesOfTab)) {
        printLine("Error adding tab ", index, " to '", name, "': too many for the memory");
        return false;
    }
    tabs.resize(needed);
    return true;
}

void TabWindow::deleteButton(Tab& tab)
{
    if (tab.button == nullptr)
        return;
    deletePart(tab.button);
    tab.button = nullptr;
}

void TabWindow::widenForButtons()
{
    float width = dimensions.y * theme->chamfer;
    forEachButton([&](const Button& button) { width += widthOf(button) + 2.0F * theme->margin; });
    dimensions.x = std::max(dimensions.x, width);
}
} // namespace tamor

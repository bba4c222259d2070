#include "widgets/TabWindow.h"

#include "widgets/Button.h"

#include <GL/gl.h>

#include <algorithm>
#include <utility>

namespace tamor
{
namespace
{
/// Deletes a tab's button, if there is one, and clears its name in the registry.
void deleteButton(Button*& button)
{
    if (button == nullptr)
        return;
    for (auto& [name, widget] : GLWidget::widgets) {
        if (widget == button)
            widget = nullptr;
    }
    delete button;
    button = nullptr;
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

TabWindow::TabWindow(const std::string& newName, GLWidget* newParent, const Vector& newPosition,
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

Vector TabWindow::move(const Vector& delta)
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
    Tab& tab = tabAt(index);
    tab.title = title;
    tab.widgets.clear();

    Theme* const buttonTheme = themeOfFile("tabwin_button.theme");
    Vector offset;
    for (std::size_t i = 0; i < tabs.size(); ++i) {
        deleteButton(tabs[i].button);
        tabs[i].button = new Button("__" + name + "tab" + std::to_string(i) + tabs[i].title, this,
                                    offset, buttonTheme, tabs[i].title);
        offset.x += widthOf(*tabs[i].button) + 2.0F * theme->margin;
    }
    return true;
}

bool TabWindow::addToTab(std::int32_t index, GLWidget* child)
{
    if (index < 0)
        return true;
    Tab& tab = tabAt(index);
    if (tab.title.empty())
        tab.title = "unnamed";
    tab.widgets.push_back(child);
    addChild(child);
    widenForButtons();
    return true;
}

Tab& TabWindow::tabAt(std::int32_t index)
{
    const auto place = static_cast<std::size_t>(index);
    if (place >= tabs.size())
        tabs.resize(place + 1);
    return tabs[place];
}

void TabWindow::widenForButtons()
{
    float width = dimensions.y * theme->chamfer;
    forEachButton([&](const Button& button) { width += widthOf(button) + 2.0F * theme->margin; });
    dimensions.x = std::max(dimensions.x, width);
}
} // namespace tamor

/// \file
/// One of several sets of widgets at a time, chosen by a row of buttons.
#pragma once

#include "TamorExport.h"
#include "widgets/GLWindow.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tamor
{
class Button;

/// One tab of a `TabWindow`.
struct Tab
{
    /// Caption of its button.
    std::string title;
    /// Not owned.
    std::vector<GLWidget*> widgets;
    /// Null until `TabWindow::addTab` builds the row; it also deletes it when it builds a new one.
    Button* button = nullptr;
};

/// A window whose `children` are the widgets of the current tab alone, so that all input and
/// drawing reaches these; the others are out of the tree until their tab's button is held.
///
/// It is built in this order: `addTab` for every tab, `addToTab` for their widgets, `fitChildren`
/// once. While it is being built `children` holds the widgets of all tabs, which is how the window
/// gets the size of the largest.
class TAMOR_EXPORT TabWindow : public GLWindow
{
public:
    /// Has no tab, no title, and cannot be dragged.
    TabWindow(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme);

    bool onMouseButtons(bool left, bool middle, bool right) override;
    bool onPointer(float x, float y) override;
    bool update(std::int32_t milliseconds) override;
    bool render() override;
    Vector move(Vector delta) override;
    std::string typeName() const override;
    /// Sizes the window, shows the first tab, and moves the row of buttons into place.
    ///
    /// To be called once, with at least one tab: a second call moves the buttons once more.
    bool fitChildren() override;
    /// Names tab `index`, empties it, and builds the whole row of buttons anew. Tabs in front of it
    /// that nobody has named get an empty title.
    ///
    /// The button of tab 1 "Second" of a window "pages" is named "__pagestab1Second", and the theme
    /// of all is "tabwin_button.theme"; the first tab of all reads that file.
    /// \return false, with nothing changed, if memory does not hold so many tabs, after printing
    ///         Error adding tab <index> to '<name>': too many for the memory
    bool addTab(std::int32_t index, const std::string& title) override;
    /// Adds a widget to tab `index`. Every tab must have been named before.
    /// \return as `addTab`
    bool addToTab(std::int32_t index, GLWidget* child) override;

    std::vector<Tab> tabs; ///< as their buttons stand, from the left
    /// Index into `tabs`.
    std::int32_t currentTab = 0;

private:
    template <class Action>
    void forEachButton(Action action) const;
    /// Makes as many tabs as it takes for `index` to be one.
    /// \param bytesOfTab  what each of them will take
    /// \return whether memory holds them; if not, says so and makes none
    bool reserveTab(std::int32_t index, std::size_t bytesOfTab);
    /// Deletes a tab's button, if there is one, and takes its name out of the registry.
    static void deleteButton(Tab& tab);
    /// Makes the window at least as wide as the row of buttons.
    void widenForButtons();
    void renderButtons() const;
};
} // namespace tamor

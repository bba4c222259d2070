/// \file
/// A box that shows the chosen line of a list, and drops the list below itself.
#pragma once

#include "TamorExport.h"
#include "gui/GLWidget.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tamor
{
/// A box with a button and the chosen item; a press on either opens the list, or shuts it again.
///
/// Items come from `addText`, and `lines` holds them. The application reads the choice with
/// `getSelection`. Rows are two font heights apart.
///
/// | State | Event                                 | Next                      |
/// |-------|---------------------------------------|---------------------------|
/// | shut  | press on the box or its button        | open                      |
/// | open  | press on the box or its button        | shut                      |
/// | open  | press or release over a row           | shut, the row is chosen   |
/// | open  | any other buttons event over a row    | the row is highlighted    |
///
/// A press or release anywhere else leaves an open list open. While it is open `depth` is -1, so
/// that parents draw the box over its siblings.
class TAMOR_EXPORT Combobox : public GLWidget
{
public:
    /// Builds the box around its button, which is named "__<name>dropbox" and has the theme
    /// "combo_button.theme"; the first box of all reads that file.
    Combobox(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme);

    /// Adds an item, and widens the box to the widest: all items are measured as the font and the
    /// themes are now.
    bool addText(const std::string& line) override;
    bool onMouseButtons(bool left, bool middle, bool right) override;
    bool onPointer(float x, float y) override;
    bool render() override;
    std::string typeName() const override;
    bool deselect(GLWidget* chosen) override;

    /// Chooses an item; an index that no item has changes nothing.
    void setSelected(std::uint32_t index);
    /// The chosen item, or the empty string if there is none.
    const std::string& selectedText() const;

    bool open = false; ///< the list is shown
    /// The press that is down has already opened or shut the list.
    bool toggled = false;
    /// Row under the pointer, -1 for none.
    std::int32_t highlight = -1;

private:
    /// All that the width of a box depends on, apart from its items.
    struct Measures
    {
        std::array<float, 128> advance;
        float scaleX;
        float fontWidth;
        float buttonRight;
        float margins;

        bool operator==(const Measures&) const = default;
    };

    /// The button that opens the list: the only child.
    GLWidget& button() const;
    float listHeight() const;
    bool isPointerInList() const;
    /// Chooses the row under the pointer if the left button changed, and highlights it if not.
    void chooseOrHighlight(bool left);
    void renderBox() const;
    void renderList() const;
    void drawListOutline() const;
    void renderRow(std::size_t row) const;

    // Of the items in front of `measuredItems` the widest needs `widest`, as long as `measures` hold;
    // so a list is not measured as often as it has items.
    Measures measures{};
    std::size_t measuredItems = 0;
    float widest = 0.0F;
};
} // namespace tamor

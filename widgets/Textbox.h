/// \file
/// Text that is typed: the one widget that reads the keyboard.
#pragma once

#include "TamorExport.h"
#include "gui/GLWidget.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace tamor
{
/// An editable text of several rows, with a cursor and word wrap at the right edge.
///
/// The text is held as what stands in front of the cursor and what stands behind it, so that every
/// edit is a change at the end of one or at the start of the other. `hover` means keyboard focus
/// here: a press over the box takes it, and only an exclusive sibling that is chosen takes it away.
///
/// | State     | Event                                         | Next      |
/// |-----------|-----------------------------------------------|-----------|
/// | unfocused | left press over the box                       | focused   |
/// | focused   | a sibling in the exclusive group is chosen    | unfocused |
/// | focused   | a press elsewhere                             | focused   |
class TAMOR_EXPORT Textbox : public GLWidget
{
public:
    /// Prints "textbox <columns> <rows>" and "dim: <dimensions>".
    /// \param columns   the width in letters "w"; a row takes as many characters as fit
    /// \param rows      the height, and the most rows that the text may have
    Textbox(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
            std::int32_t columns, std::int32_t rows);

    /// \return whether the pointer is over the box and the box has the focus
    bool onMouseButtons(bool left, bool middle, bool right) override;
    /// Edits, if the box has the focus: first the keys that delete and move, then Return, then wrap
    /// or characters. In one frame all of them apply, characters in the order of their codes.
    bool onKeys(const std::uint8_t* pressed) override;
    bool onPointer(float x, float y) override;
    bool render() override;
    bool isExclusive() const override;
    std::string typeName() const override;
    bool deselect(GLWidget* chosen) override;

    std::string beforeCursor; ///< what is typed in front of the cursor; rows end in a newline
    std::string afterCursor;  ///< and behind it
    std::uint32_t maxRows;    ///< the constructor's `rows`

private:
    void moveUp();
    void moveDown();
    /// The column of `row` whose distance from its start comes nearest to `target`: the last one
    /// before the first that comes no nearer. -1 if not even the start is nearer than 1000.
    static std::ptrdiff_t closestColumn(const std::string& row, float target);
    /// Moves the last word to a new row if its row is full, and otherwise types what is pressed.
    void wrapOrType(const std::uint8_t* pressed);
    void wrapLastWord();
    void type(const std::uint8_t* pressed);
    /// The width of the cursor's row in front of the cursor.
    float measureCursorRow() const;
    void renderPlate() const;
    void translateToCursor() const;
};
} // namespace tamor

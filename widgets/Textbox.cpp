#include "widgets/Textbox.h"

#include "gui/ErrorLine.h"
#include "textures/Font.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tamor
{
namespace
{
/// Indices into `KeyboardState::pressed`: SDL's key symbols, and the codes of characters.
enum Key
{
    KEY_BACKSPACE = 8,
    KEY_RETURN = 13,
    KEY_FIRST_TYPED = 32,
    KEY_LAST_TYPED = 125,
    KEY_DELETE = 127,
    KEY_UP = 273,
    KEY_DOWN = 274,
    KEY_RIGHT = 275,
    KEY_LEFT = 276,
    KEY_HOME = 278,
    KEY_END = 279,
};

/// Rows stand this many font heights apart, as those that `Font::print` draws do.
constexpr float rowStep = Font::lineStep;

std::uint32_t countRows(const std::string& text)
{
    return static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n')) + 1;
}

/// What `Font::textWidth` adds for a character.
float widthOf(char character)
{
    const auto code = static_cast<unsigned char>(character);
    const Font& font = GLWidget::font;
    return code < font.advance.size() ? font.advance[code] * font.scaleX : 0.0F;
}

/// Where the last row of `text` begins, its line end included: that is how rows are measured.
std::size_t lastRowStart(const std::string& text)
{
    const std::size_t lineEnd = text.rfind('\n');
    return lineEnd == std::string::npos ? 0 : lineEnd;
}
} // namespace

Textbox::Textbox(const std::string& newName, GLWidget* newParent, Vector newPosition,
                 Theme* newTheme, std::int32_t columns, std::int32_t rows)
    : GLWidget(newName, newParent, newPosition, newTheme), maxRows(static_cast<std::uint32_t>(rows))
{
    printLine("textbox ", columns, " ", rows);
    const auto letters = static_cast<std::size_t>(std::clamp(columns, 0, Font::longestMeasured));
    dimensions = Vector(measureText(std::string(letters, 'w')) + theme->fontSize.x,
                        theme->fontSize.y * rowStep * static_cast<float>(rows));
    printLine("dim: ", dimensions);
}

bool Textbox::onMouseButtons(bool left, bool /*middle*/, bool /*right*/)
{
    // Meant: nothing here takes the focus away, a press elsewhere included;
    // `TextboxFocus.StaysAfterAPressElsewhere` holds it.
    if (left && hitTest())
        hover = true;
    return hitTest() && hover;
}

bool Textbox::onKeys(const std::uint8_t* pressed)
{
    if (!hover)
        return true;

    if (pressed[KEY_BACKSPACE] != 0 && !beforeCursor.empty())
        beforeCursor.pop_back();
    if (pressed[KEY_DELETE] != 0 && !afterCursor.empty())
        afterCursor.erase(0, 1);
    if (pressed[KEY_LEFT] != 0 && !beforeCursor.empty()) {
        afterCursor.insert(afterCursor.begin(), beforeCursor.back());
        beforeCursor.pop_back();
    }
    if (pressed[KEY_RIGHT] != 0 && !afterCursor.empty()) {
        beforeCursor += afterCursor.front();
        afterCursor.erase(0, 1);
    }
    if (pressed[KEY_HOME] != 0) {
        afterCursor.insert(0, beforeCursor);
        beforeCursor.clear();
    }
    if (pressed[KEY_END] != 0) {
        beforeCursor += afterCursor;
        afterCursor.clear();
    }
    if (pressed[KEY_UP] != 0)
        moveUp();
    if (pressed[KEY_DOWN] != 0)
        moveDown();
    // Meant: rows are counted in `text`, which is older than this frame's changes;
    // `TextboxReturn.CountsTheRowsOfTheTextBeforeThisFrame` holds it.
    if (pressed[KEY_RETURN] != 0 && countRows(text) < maxRows)
        beforeCursor += '\n';
    wrapOrType(pressed);

    text = beforeCursor + afterCursor;
    return true;
}

bool Textbox::onPointer(float x, float y)
{
    mouse = Vector(x, y);
    return true;
}

bool Textbox::render()
{
    const Vector& fontSize = theme->fontSize;
    const Vector& colour = theme->textColour;

    glPushMatrix();
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDisable(GL_BLEND);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_DEPTH_TEST);
    setColour(colour);
    translateToCentre();
    glPushMatrix();
    renderPlate();
    glPopMatrix();
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);

    translateToText();
    glTranslatef(0.0F, fontSize.y * rowStep * static_cast<float>(maxRows - 1), 0.0F);
    setColour(Vector(1.0F - colour.x, 1.0F - colour.y, 1.0F - colour.z));
    drawText(text);
    translateToCursor();
    if (hover)
        drawText("|");
    glPopMatrix();
    return true;
}

void Textbox::renderPlate() const
{
    const float textureCut = 3.0F * theme->chamfer;
    const float cut = textureCut * 1.5F * theme->fontSize.y;

    // Meant: the line width is that of whatever was drawn before;
    // `TextboxDrawingGLTest.MakesTheseCalls` holds it.
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    setColour(theme->textColour, brightness());
    drawPlate(cut, textureCut);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    setColour(theme->textColour, brightness());
    glDisable(GL_TEXTURE_2D);
    drawPlate(cut, textureCut);
}

void Textbox::translateToCursor() const
{
    const auto rowsAbove = static_cast<float>(countRows(beforeCursor) - 1);
    glTranslatef(measureCursorRow(), rowsAbove * -rowStep * theme->fontSize.y, 0.0F);
}

bool Textbox::isExclusive() const
{
    return true;
}

std::string Textbox::typeName() const
{
    return "Textbox";
}

bool Textbox::deselect(GLWidget* chosen)
{
    if (chosen != this)
        hover = false;
    return true;
}

void Textbox::moveUp()
{
    const std::size_t lastEnd = beforeCursor.rfind('\n');
    if (lastEnd == std::string::npos)
        return;

    const std::size_t previousEnd =
        lastEnd == 0 ? std::string::npos : beforeCursor.rfind('\n', lastEnd - 1);
    const std::size_t rowStart = previousEnd == std::string::npos ? 0 : previousEnd + 1;
    const std::string row = beforeCursor.substr(rowStart, lastEnd - rowStart);
    const std::ptrdiff_t column = closestColumn(row, measureCursorRow());
    // Where nothing is near, that is the line end in front of the row; the first row has none.
    const auto cursor = static_cast<std::size_t>(
        std::max<std::ptrdiff_t>(0, static_cast<std::ptrdiff_t>(rowStart) + column));

    afterCursor.insert(0, beforeCursor, cursor);
    beforeCursor.erase(cursor);
}

void Textbox::moveDown()
{
    const std::size_t firstEnd = afterCursor.find('\n');
    if (firstEnd == std::string::npos)
        return;

    // Meant: all the text below is searched, not just the next row. The search stops at the first
    // column that comes no nearer, so it ends with that row.
    // `TextboxDown.StopsAtTheEndOfAShorterRow` holds it.
    const std::string rest = afterCursor.substr(firstEnd + 1);
    const auto column = static_cast<std::size_t>(
        std::max<std::ptrdiff_t>(0, closestColumn(rest, measureCursorRow())));

    beforeCursor.append(afterCursor, 0, firstEnd + 1 + column);
    afterCursor.erase(0, firstEnd + 1 + column);
}

std::ptrdiff_t Textbox::closestColumn(const std::string& row, float target)
{
    // Measuring every column's text from its start would take time by the square of the row. The
    // characters up to the first line end or conversion are each measured by themselves, so their
    // sum grows with the column.
    const std::size_t plain =
        std::min<std::size_t>(row.find_first_of("\n%"), Font::longestMeasured);
    float sum = 0.0F;
    float best = 1000.0F;
    for (std::size_t column = 0; column <= row.size(); ++column) {
        if (column > 0 && column <= plain)
            sum += widthOf(row[column - 1]);
        const float width =
            column <= plain ? std::max(0.0F, sum) : measureText(row.substr(0, column));
        const float distance = std::abs(width - target);
        if (!(distance < best))
            return static_cast<std::ptrdiff_t>(column) - 1;
        best = distance;
    }
    return static_cast<std::ptrdiff_t>(row.size());
}

void Textbox::wrapOrType(const std::uint8_t* pressed)
{
    // Room for two letters is kept free at the right edge.
    const float needed = measureCursorRow() + measureText("ww");
    // Meant: the keys of a frame that wraps are lost;
    // `TextboxWrap.LosesTheKeyOfTheFrameThatWraps` holds it.
    if (needed > dimensions.x && countRows(text) < maxRows)
        wrapLastWord();
    else if (dimensions.x >= needed)
        type(pressed);
}

void Textbox::type(const std::uint8_t* pressed)
{
    for (int code = KEY_FIRST_TYPED; code <= KEY_LAST_TYPED; ++code) {
        if (pressed[code] != 0)
            beforeCursor += static_cast<char>(code);
    }
}

void Textbox::wrapLastWord()
{
    const std::size_t blank = beforeCursor.find_last_of(" \n");
    if (blank != std::string::npos && beforeCursor[blank] == ' ')
        beforeCursor.insert(blank + 1, 1, '\n');
}

float Textbox::measureCursorRow() const
{
    return font.textWidth(beforeCursor.c_str() + lastRowStart(beforeCursor));
}
} // namespace tamor

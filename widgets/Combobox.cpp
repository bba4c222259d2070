#include "widgets/Combobox.h"

#include "textures/Font.h"
#include "widgets/Button.h"

#include <GL/gl.h>

#include <algorithm>
#include <limits>

namespace tamor
{
namespace
{
/// Depth of an open box: its parent draws it in the second pass.
constexpr float openDepth = -1.0F;
constexpr float pointSize = 5.0F;

/// Never freed, as no widget that a layout builds is.
Button* newListButton(const std::string& name, GLWidget* box, Theme* theme)
{
    return new Button(name, box, Vector(), theme, " ");
}
} // namespace

Combobox::Combobox(const std::string& newName, GLWidget* newParent, Vector newPosition,
                   Theme* newTheme)
    : GLWidget(newName, newParent, newPosition, newTheme)
{
    Theme* const buttonTheme = themeOfFile("combo_button.theme");
    children.reserve(1); // so that no button is left whose box could not be made
    children.push_back(newListButton("__" + name + "dropbox", this, buttonTheme));

    const Vector buttonRect = button().getRect();
    dimensions = Vector(innerMargins() + buttonRect.z, innerMargins() + buttonRect.w);
}

bool Combobox::addText(const std::string& line)
{
    GLWidget::addText(line);
    const Measures now = {font.advance, font.scaleX, theme->fontSize.x, button().getRect().z,
                          innerMargins()};
    if (!(now == measures)) {
        measures = now;
        measuredItems = 0;
        widest = -std::numeric_limits<float>::infinity();
    }
    for (; measuredItems < lines.size(); ++measuredItems) {
        const float width = measureText(lines[measuredItems]) + 2.0F * now.fontWidth +
                            now.buttonRight + now.margins;
        widest = std::max(widest, width);
    }
    dimensions.x = std::max(dimensions.x, widest);
    return true;
}

bool Combobox::onMouseButtons(bool left, bool middle, bool right)
{
    passButtonsToChildren(left, middle, right);

    const bool isPressed = button().isActive() || (left && hitTest());
    if (isPressed && !toggled && !prevLeft) {
        toggled = true;
        open = !open;
        // Meant: the press is stored as none, so that it is no press on a row, nor its end the
        // release; the button must be seen down once more for that.
        // `ComboboxChoice.TheReleaseOfTheOpeningPressChoosesNothing` holds it.
        left = false;
    } else if (!isPressed)
        toggled = false;

    if (open && isPointerInList())
        chooseOrHighlight(left);
    else
        highlight = -1;
    depth = open ? openDepth : 0.0F;
    rememberButtons(left, middle, right);
    return true;
}

bool Combobox::onPointer(float x, float y)
{
    mouse = Vector(x, y);
    // Meant: without the inner margin that the button is drawn with;
    // `ComboboxPointer.ReachesTheButtonWithoutTheInnerMargin` holds it.
    button().onPointer(x - position.x, y - position.y);
    return true;
}

bool Combobox::render()
{
    glPushMatrix();
    translateToCentre();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_TEXTURE_2D);
    glLineWidth(theme->lineWidth);
    glEnable(GL_BLEND);
    renderBox();
    if (open) {
        renderList();
        for (std::size_t row = 0; row < lines.size(); ++row)
            renderRow(row);
    }
    glPopMatrix();

    glPushMatrix();
    glTranslatef(position.x + innerMargin(), position.y + innerMargin(), 0.0F);
    for (GLWidget* child : children) {
        glPushMatrix();
        child->render();
        glPopMatrix();
    }
    // The colour is the button's text colour, which its drawing left.
    glTranslatef(measureText(" ") + button().getRect().z, theme->fontSize.y / 3.0F, 0.0F);
    drawText(selectedText());
    glPopMatrix();
    return true;
}

void Combobox::renderBox() const
{
    const float cut = theme->chamfer * dimensions.y;

    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    setColour(theme->bodyColour, brightness(), theme->bodyAlpha);
    drawPlate(cut);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    setColour(theme->edgeColour, brightness(), theme->bodyAlpha);
    glDisable(GL_TEXTURE_2D);
    drawPlate(cut);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
}

void Combobox::renderList() const
{
    // Meant: polygons have no use for a size of points;
    // `ComboboxDrawingGLTest.MakesTheseCallsForTheOpenList` holds it.
    glPointSize(pointSize);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    setColour(theme->bodyColour, brightness(), theme->listAlpha);
    drawListOutline();
    glPointSize(pointSize);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    setColour(theme->edgeColour, brightness(), theme->listAlpha);
    glDisable(GL_TEXTURE_2D);
    drawListOutline();
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
}

void Combobox::drawListOutline() const
{
    const float right = dimensions.x / 2.0F;
    const float top = -dimensions.y / 2.0F;
    const float bottom = top - listHeight();
    const float cut = theme->chamfer * dimensions.y;

    glBegin(GL_POLYGON);
    glVertex2f(right, top);
    glVertex2f(right, bottom);
    glVertex2f(-right, bottom);
    glVertex2f(-right, top);
    glVertex2f(right - cut, top);
    glVertex2f(right, top + cut);
    glEnd();
}

void Combobox::renderRow(std::size_t row) const
{
    const std::string& item = lines[row];
    const float lineHeight = theme->fontSize.y;

    glPushMatrix();
    glTranslatef(measureText(" ") + button().getRect().z - dimensions.x / 2.0F + innerMargin(),
                 -dimensions.y / 2.0F + lineHeight / 2.0F -
                     2.0F * static_cast<float>(row + 1) * lineHeight,
                 0.0F);
    if (static_cast<std::int64_t>(row) == highlight) {
        const float width = measureText(item);
        setColour(theme->edgeColour, theme->dimBrightness, theme->listAlpha);
        glBegin(GL_QUADS);
        glVertex2f(0.0F, -lineHeight / 3.0F);
        glVertex2f(0.0F, lineHeight);
        glVertex2f(width, lineHeight);
        glVertex2f(width, -lineHeight / 3.0F);
        glEnd();
    }
    setColour(theme->textColour, 1.0F, 1.0F);
    drawText(item);
    glPopMatrix();
}

std::string Combobox::typeName() const
{
    return "Combobox";
}

bool Combobox::deselect(GLWidget* /*chosen*/)
{
    return true;
}

void Combobox::setSelected(std::uint32_t index)
{
    if (index < lines.size())
        selection = index;
}

const std::string& Combobox::selectedText() const
{
    static const std::string nothing;
    return selection < lines.size() ? lines[selection] : nothing;
}

GLWidget& Combobox::button() const
{
    return *children.front();
}

float Combobox::listHeight() const
{
    return 2.0F * static_cast<float>(lines.size()) * theme->fontSize.y;
}

bool Combobox::isPointerInList() const
{
    return mouse.x > position.x && mouse.x < position.x + dimensions.x && mouse.y < position.y &&
           mouse.y > position.y - listHeight();
}

void Combobox::chooseOrHighlight(bool left)
{
    const float fraction = (position.y - mouse.y) / listHeight();
    const auto row = static_cast<std::int32_t>(static_cast<float>(lines.size()) * fraction);
    if (left == prevLeft) {
        highlight = row;
        return;
    }
    setSelected(static_cast<std::uint32_t>(row));
    open = false;
}
} // namespace tamor

#include "gui/GLWidget.h"

#include "textures/Font.h"

#include <GL/gl.h>

#include <algorithm>
#include <exception>

namespace tamor
{
std::map<std::string, GLWidget*> GLWidget::widgets;
std::map<std::string, Theme*> GLWidget::themes;
Font GLWidget::font;
std::vector<GLWidget*> GLWidget::topLevel;
std::int32_t GLWidget::messageResult = 0;
std::array<std::int32_t, 4> GLWidget::viewport{};
float GLWidget::glowRate = 0.0F;
Vector GLWidget::optionFrame;
Vector GLWidget::optionMark;
Vector GLWidget::checkFrame;
Vector GLWidget::checkMark;
Vector GLWidget::sliderKnob;
bool GLWidget::drawing = false;

namespace
{
/// Never freed: widgets point to it, and they live until the process ends.
Theme* newTheme()
{
    return new Theme;
}

Theme* defaultTheme()
{
    if (Theme* loaded = GLWidget::themes["default"])
        return loaded;
    // No layout was loaded yet: what stands in for a "default.theme" that is missing.
    Theme* created = newTheme();
    created->setDefaults();
    return GLWidget::themes["default"] = created;
}
} // namespace

GLWidget::GLWidget(const std::string& newName, GLWidget* newParent, Vector newPosition,
                   Theme* newTheme)
    : parent(newParent),
      position(newPosition),
      theme(newTheme != nullptr ? newTheme : defaultTheme()),
      name(newName)
{
    drawing = false;
    widgets[name] = this;
    if (parent != nullptr)
        parent->isParent = true;

    // Meant: the GUI has one font scale and one viewport, those of the widget built last, and a
    // widget built while an answer waits clears it. A constructor can thus measure its text with
    // its own theme. `GLWidgetConstructionGLTest.SetsScaleViewportAndMessageResult` holds it.
    font.setScale(theme->fontSize.x, theme->fontSize.y);
    messageResult = 0;
    glGetIntegerv(GL_VIEWPORT, viewport.data());
}

GLWidget::~GLWidget()
{
    if (std::uncaught_exceptions() > 0)
        unregister(*this);
}

bool GLWidget::addText(const std::string& line)
{
    lines.push_back(line);
    return true;
}

bool GLWidget::centreChild(GLWidget* child, bool alongX, bool alongY)
{
    const Vector own = getRect();
    const Vector its = child->getRect();
    const float width = own.z - own.x;
    const float height = own.w - own.y;
    const float childWidth = its.z - its.x;
    const float childHeight = its.w - its.y;

    const float dx = (width - innerMargins()) / 2.0F - childWidth / 2.0F;
    const float dy =
        (height - 2.0F * theme->fontSize.y - innerMargins()) / 2.0F - childHeight / 2.0F;
    if (alongX)
        child->move({dx, 0.0F});
    if (alongY)
        child->move({0.0F, dy});
    return true;
}

bool GLWidget::update(std::int32_t milliseconds)
{
    const float step = static_cast<float>(milliseconds) * glowRate;
    // It wraps, after 24.8 days: as unsigned numbers do, since overflowing signed ones may do anything.
    elapsed = static_cast<std::int32_t>(static_cast<std::uint32_t>(elapsed) +
                                        static_cast<std::uint32_t>(milliseconds));

    // Meant: the step that overshoots is not clamped; the next update settles it.
    // `GLWidgetUpdate.LetsGlowOvershootForOneFrame` holds it.
    if (!theme->glowEnabled)
        glow = 1.0F;
    else if (hover && glow < 1.0F)
        glow += step;
    else if (!hover && glow > animationEnd)
        glow -= step;
    else
        glow = hover ? 1.0F : 0.0F;

    if (fade > animationEnd)
        fade -= step;
    else
        fade = 0.0F;

    for (GLWidget* child : children)
        child->update(milliseconds);
    return true;
}

Vector GLWidget::move(Vector delta)
{
    return position += delta;
}

bool GLWidget::isExclusive() const
{
    return false;
}

std::string GLWidget::typeName() const
{
    return "GLWidget";
}

bool GLWidget::addChild(GLWidget* child)
{
    children.push_back(child);

    // Asked anew each time, though 10,000 children of one parent are 50 million questions: children
    // may have come another way, and an answer may change.
    const auto isExclusiveChild = [](const GLWidget* each) { return each->isExclusive(); };
    const auto found = std::find_if(children.begin(), children.end(), isExclusiveChild);
    if (found == children.end())
        return true;

    // Meant: each addition chooses the first one again, whatever was chosen before; a group thus
    // starts with its first member. `GLWidgetAddChild.ChoosesTheFirstExclusiveChildAgain` holds it.
    GLWidget* const first = *found;
    first->setActive();
    for (GLWidget* other : children)
        if (other != first && other->isExclusive())
            other->deselect(first);
    return true;
}

Vector GLWidget::getRect() const
{
    return {position.x, position.y, position.x + dimensions.x, position.y + dimensions.y};
}

Vector GLWidget::getClientRect() const
{
    return {};
}

bool GLWidget::fitChildren()
{
    for (GLWidget* child : children)
        child->fitChildren();

    for (const GLWidget* child : children) {
        const Vector rectangle = child->getRect();
        dimensions.x = std::max(dimensions.x, innerMargins() + rectangle.z);
        dimensions.y = std::max(dimensions.y, innerMargins() + rectangle.w);
    }
    return true;
}

bool GLWidget::addTab(std::int32_t /*index*/, const std::string& /*title*/)
{
    return true;
}

bool GLWidget::addToTab(std::int32_t /*index*/, GLWidget* /*child*/)
{
    return true;
}

bool GLWidget::hitTest() const
{
    const Vector rectangle = getRect();
    return mouse.x > rectangle.x && mouse.x < rectangle.z && mouse.y > rectangle.y &&
           mouse.y < rectangle.w;
}

bool GLWidget::wasClicked()
{
    const bool result = clicked;
    clicked = false;
    return result;
}

bool GLWidget::setCaption(const std::string& caption)
{
    text = caption;
    return true;
}

void GLWidget::setActive()
{
    active = true;
    fade = 0.0F;
}

void GLWidget::setLit()
{
    hover = true;
    glow = 1.0F;
}

GLWidget* GLWidget::find(const std::string& widgetName)
{
    // Meant: asking for an unknown name registers it with a null pointer, so that a name that was
    // cleared and one that never was look alike.
    // `GLWidgetFind.GivesNullForAnUnknownNameAndAddsANullEntry` holds it.
    return widgets[widgetName];
}

Theme* GLWidget::themeOfFile(const std::string& file)
{
    if (Theme* known = themes[file])
        return known;
    // Registered when it is read: there may be no memory for it.
    Theme* created = newTheme();
    created->read(file);
    return themes[file] = created;
}

Theme* GLWidget::createTheme(const std::string& key)
{
    return themes[key] = newTheme();
}

Vector GLWidget::clientRectBelowTitle() const
{
    // Meant: the share is of the width upward too, and `lineWidth`, a number of pixels, is taken
    // off a length in GUI units, which puts the top far below the bottom with the built-in theme,
    // so that a child window cannot be dragged at all; `GLWindowDrag.IsBoundedByTheParent`
    // holds it.
    const float share = 0.01F * dimensions.x;
    return {position.x + share, position.y + share, position.x + 0.99F * dimensions.x,
            position.y + dimensions.y - share - theme->lineWidth - 1.5F * theme->fontSize.y};
}

void GLWidget::deselectChildren(GLWidget* chosen)
{
    for (GLWidget* child : children)
        child->deselect(chosen);
}

void GLWidget::unregister(const GLWidget& widget)
{
    const auto entry = widgets.find(widget.name);
    if (entry != widgets.end() && entry->second == &widget)
        entry->second = nullptr;
}

void GLWidget::deletePart(GLWidget* part)
{
    unregister(*part);
    if (!part->isParent)
        delete part;
}

void GLWidget::translateToCentre() const
{
    glTranslatef(position.x + dimensions.x / 2.0F, position.y + dimensions.y / 2.0F, 0.0F);
}

void GLWidget::translateToText() const
{
    glTranslatef(-dimensions.x / 2.0F + theme->fontSize.x / 2.0F,
                 -dimensions.y / 2.0F + theme->fontSize.y / 3.0F, 0.0F);
}

void GLWidget::setColour(const Vector& colour, float factor)
{
    glColor3f(colour.x * factor, colour.y * factor, colour.z * factor);
}

void GLWidget::setColour(const Vector& colour, float factor, float alpha)
{
    glColor4f(colour.x * factor, colour.y * factor, colour.z * factor, alpha);
}

void GLWidget::drawText(const std::string& newText)
{
    font.print(newText.c_str());
}

float GLWidget::measureText(const std::string& newText)
{
    return font.textWidth(newText.c_str());
}

void GLWidget::drawPlate(float cut) const
{
    const float x = dimensions.x / 2.0F;
    const float y = dimensions.y / 2.0F;
    glBegin(GL_POLYGON);
    glVertex2f(-x, -y);
    glVertex2f(-x, -y + dimensions.y - cut);
    glVertex2f(-x + cut, y);
    glVertex2f(x, y);
    glVertex2f(x, -y + cut);
    glVertex2f(x - cut, -y);
    glVertex2f(-x, -y);
    glEnd();
}

void GLWidget::drawPlate(float cut, float textureCut) const
{
    const float x = dimensions.x / 2.0F;
    const float y = dimensions.y / 2.0F;
    glBegin(GL_POLYGON);
    glTexCoord2f(0.0F, 0.0F);
    glVertex2f(-x, -y);
    glTexCoord2f(0.0F, 1.0F - textureCut);
    glVertex2f(-x, -y + dimensions.y - cut);
    glTexCoord2f(textureCut, 1.0F);
    glVertex2f(-x + cut, y);
    glTexCoord2f(1.0F, 1.0F);
    glVertex2f(x, y);
    glTexCoord2f(1.0F, textureCut);
    glVertex2f(x, -y + cut);
    glTexCoord2f(1.0F, 0.0F);
    glVertex2f(x - cut, -y);
    glTexCoord2f(0.0F, 0.0F);
    glVertex2f(-x, -y);
    glEnd();
}

void GLWidget::drawIcon(const Vector& rectangle, float x, float y, float side)
{
    glBegin(GL_QUADS);
    glTexCoord2f(rectangle.x, rectangle.y);
    glVertex2f(x, y);
    glTexCoord2f(rectangle.x, rectangle.w);
    glVertex2f(x, y + side);
    glTexCoord2f(rectangle.z, rectangle.w);
    glVertex2f(x + side, y + side);
    glTexCoord2f(rectangle.z, rectangle.y);
    glVertex2f(x + side, y);
    glEnd();
}
} // namespace tamor

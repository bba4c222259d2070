#include "tools/view/Overlay.h"

#include "tools/view/WidgetFields.h"
#include "widgets/Frame.h"
#include "widgets/GLWindow.h"
#include "widgets/Label.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sstream>

namespace tamor::view
{
namespace
{
constexpr float textPixels = 12.0F; // of a font unit, which is smaller than a letter is high
constexpr float lineHeight = 1.5F;  // of a label, in font units
constexpr float edgeDistance = 0.03F;
constexpr float gridStep = 0.1F;
constexpr int gridStepsToBroadLine = 5;
constexpr float columnGap = 0.03F;

struct InkColours
{
    Vector text;
    Vector edge;
};

const std::array<InkColours, static_cast<std::size_t>(Ink::count)>& inkColours()
{
    static const std::array<InkColours, static_cast<std::size_t>(Ink::count)> colours{{
        {{0.93F, 0.95F, 0.97F}, {0.45F, 0.55F, 0.68F}}, // PLAIN
        {{0.60F, 0.68F, 0.76F}, {0.45F, 0.55F, 0.68F}}, // QUIET
        {{1.00F, 0.80F, 0.35F}, {1.00F, 0.80F, 0.35F}}, // WARNING
        {{1.00F, 0.52F, 0.46F}, {1.00F, 0.52F, 0.46F}}, // ERROR
        {{0.35F, 0.85F, 0.95F}, {0.20F, 0.62F, 0.72F}}, // OUTLINE
        {{1.00F, 0.62F, 0.15F}, {1.00F, 0.62F, 0.15F}}, // CHOSEN
    }};
    return colours;
}

/// A rectangle that only its edge is seen of.
class Outline : public Frame
{
public:
    Outline(const Vector& rectangle, Theme* newTheme)
        : Frame("outline", nullptr, {rectangle.x, rectangle.y}, newTheme, true)
    {
        dimensions = {rectangle.z - rectangle.x, rectangle.w - rectangle.y};
    }
};

/// Lines across the whole window.
class Grid : public Frame
{
public:
    explicit Grid(Theme* newTheme) : Frame("grid", nullptr, Vector(), newTheme, false) {}

    bool render() override
    {
        const float right = static_cast<float>(viewport[2]) / static_cast<float>(viewport[3]);
        const int last = static_cast<int>(std::max(right, 1.0F) / gridStep);
        glDisable(GL_TEXTURE_2D);
        glDisable(GL_DEPTH_TEST);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glLineWidth(1.0F);
        glBegin(GL_LINES);
        for (int i = -last; i <= last; i++) {
            const float place = static_cast<float>(i) * gridStep;
            const float alpha = i == 0 ? 0.9F : i % gridStepsToBroadLine == 0 ? 0.55F : 0.2F;
            setColour(theme->edgeColour, 1.0F, alpha);
            glVertex2f(place, -1.0F);
            glVertex2f(place, 1.0F);
            glVertex2f(-right, place);
            glVertex2f(right, place);
        }
        glEnd();
        return true;
    }
};

/// A text as the engine draws it: its font has seven bits, and a "%" would start a conversion.
std::string drawable(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        // Of a character of several bytes the first stands for all.
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 && byte < 0xC0)
            continue;
        result += byte >= 0x80 ? '?' : c;
        if (c == '%')
            result += c;
    }
    return result;
}

std::vector<TextLine> broken(const TextLine& line, float width)
{
    std::vector<TextLine> result{{"", line.ink, line.label}};
    std::istringstream words(line.text);
    for (std::string word; words >> word;) {
        std::string& text = result.back().text;
        const std::string longer = text.empty() ? word : text + " " + word;
        if (text.empty() || GLWidget::font.textWidth(drawable(longer).c_str()) < width)
            text = longer;
        else
            result.push_back({"    " + word, line.ink});
    }
    return result;
}
} // namespace

Overlay::Overlay()
{
    for (std::size_t i = 0; i < themes.size(); i++) {
        Theme& each = themes[i];
        each.textColour = inkColours()[i].text;
        each.edgeColour = inkColours()[i].edge;
        each.bodyColour = {0.09F, 0.11F, 0.15F};
        each.bodyAlpha = 1.0F;
        each.lineWidth = 1.0F;
        each.margin = 0.008F;
        each.dimBrightness = 1.0F;
        each.litBrightness = 1.0F;
    }
    theme(Ink::CHOSEN)->lineWidth = 2.0F;
}

void Overlay::clear()
{
    InSpace inside(space);
    widgets.clear();
    GLWidget::widgets.clear();
    GLWidget::topLevel.clear();
    if (!hasFont)
        GLWidget::font.load(TAMOR_VIEW_FONT);
    hasFont = true;
    setTextSize();
}

// The letters keep their size in pixels, whatever the window's.
void Overlay::setTextSize()
{
    std::array<GLint, 4> viewport;
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    const float size = textPixels * 2.0F / static_cast<float>(viewport[3]);
    for (Theme& each : themes)
        each.fontSize = {size, size};
    GLWidget::font.setScale(size, size);
    GLWidget::viewport = viewport;
}

void Overlay::keep(GLWidget* widget)
{
    widgets.emplace_back(widget);
    if (widget->*WidgetFields::parentOf == nullptr)
        GLWidget::topLevel.push_back(widget);
    else
        (widget->*WidgetFields::parentOf)->addChild(widget);
}

void Overlay::addLabel(const std::string& text, Ink ink, GLWidget* parent, const Vector& position)
{
    keep(new Label("text", parent, position, theme(ink), drawable(text)));
}

void Overlay::addGrid()
{
    InSpace inside(space);
    keep(new Grid(theme(Ink::OUTLINE)));
    const float right =
        static_cast<float>(GLWidget::viewport[2]) / static_cast<float>(GLWidget::viewport[3]);
    const int last = static_cast<int>(std::max(right, 1.0F) / gridStep) / gridStepsToBroadLine;
    for (int i = -last; i <= last; i++) {
        const float place = static_cast<float>(i) * gridStep * gridStepsToBroadLine;
        std::array<char, 16> number{};
        std::snprintf(number.data(), number.size(), "%.1f", static_cast<double>(place));
        addLabel(number.data(), Ink::OUTLINE, nullptr, {place, -0.06F});
        if (i != 0 && std::abs(place) < 1.0F)
            addLabel(number.data(), Ink::OUTLINE, nullptr, {0.0F, place - 0.06F});
    }
}

void Overlay::addOutline(const Vector& rectangle, Ink ink)
{
    InSpace inside(space);
    keep(new Outline(rectangle, theme(ink)));
}

void Overlay::addWindow(const std::string& title, const std::vector<TextLine>& lines, Corner corner)
{
    InSpace inside(space);
    const float right =
        static_cast<float>(GLWidget::viewport[2]) / static_cast<float>(GLWidget::viewport[3]);
    const float size = theme(Ink::PLAIN)->fontSize.y;
    float labelWidth = 0.0F;
    for (const TextLine& line : lines)
        if (!line.label.empty())
            labelWidth = std::max(labelWidth, GLWidget::font.textWidth(line.label.c_str()));
    if (labelWidth > 0.0F)
        labelWidth += columnGap;

    std::vector<TextLine> rows;
    for (const TextLine& line : lines)
        for (const TextLine& row : broken(line, 2.0F * right - labelWidth - 0.25F))
            rows.push_back(row);

    auto* const window =
        new GLWindow("window", nullptr, Vector(), theme(Ink::PLAIN), " " + drawable(title), false);
    keep(window);
    float y = static_cast<float>(rows.size()) * lineHeight * size;
    for (const TextLine& row : rows) {
        y -= lineHeight * size;
        if (!row.label.empty())
            addLabel(row.label, Ink::QUIET, window, {0.0F, y});
        addLabel(row.text, row.ink, window, {labelWidth, y});
    }
    window->fitChildren();

    const Vector own = window->getRect();
    const bool isLeft = corner == Corner::TOP_LEFT || corner == Corner::BOTTOM_LEFT;
    const bool isTop = corner == Corner::TOP_LEFT || corner == Corner::TOP_RIGHT;
    window->move({isLeft ? edgeDistance - right : right - edgeDistance - own.z,
                  isTop ? 1.0F - edgeDistance - own.w : edgeDistance - 1.0F});
}

void Overlay::draw()
{
    if (widgets.empty())
        return;
    InSpace inside(space);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    GLWidget::renderAll();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glPopAttrib();
}
} // namespace tamor::view

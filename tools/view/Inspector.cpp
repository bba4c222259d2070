#include "tools/view/Inspector.h"

#include "tools/view/Overlay.h"
#include "tools/view/WidgetFields.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iostream>

namespace tamor::view
{
namespace
{
std::string twoNumbers(float first, float second)
{
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.3f, %.3f", static_cast<double>(first),
                  static_cast<double>(second));
    return text.data();
}

std::string themeName(const Theme* theme)
{
    const auto entry = std::find_if(GLWidget::themes.begin(), GLWidget::themes.end(),
                                    [&](const auto& each) { return each.second == theme; });
    return entry == GLWidget::themes.end() ? "(none)" : entry->first;
}

std::string parentName(const GLWidget& widget)
{
    const GLWidget* parent = widget.*WidgetFields::parentOf;
    return parent == nullptr ? "NULL" : parent->*WidgetFields::nameOf;
}
} // namespace

void Inspector::takeKeys(const KeyboardState& keys)
{
    if (keys.pressed[SDLK_F1] != 0)
        opened = !opened;
    if (keys.pressed[SDLK_F2] != 0)
        outlinesAll = !outlinesAll;
    if (keys.pressed[SDLK_F3] != 0)
        hasGrid = !hasGrid;
}

void Inspector::takePointer(const MouseState& pointer)
{
    pointerX = static_cast<float>(pointer.x);
    pointerY = static_cast<float>(pointer.y);
    const bool isClick = pointer.left != 0 && !wasLeft;
    wasLeft = pointer.left != 0;
    if (!opened || !isClick)
        return;
    const std::vector<PlacedWidget> widgets = placedWidgets();
    const Vector place = toUnits(pointerX, pointerY, GLWidget::viewport);
    if (const PlacedWidget* hit = widgetAt(widgets, place.x, place.y))
        std::cout << lineOf(*hit->widget) << std::endl;
}

std::string Inspector::lineOf(const GLWidget& widget) const
{
    const auto line = lines.find(&widget);
    return line == lines.end() ? file : file + ":" + std::to_string(line->second);
}

void Inspector::decorate(Overlay& overlay) const
{
    if (hasGrid)
        overlay.addGrid();
    const std::vector<PlacedWidget> widgets = placedWidgets();
    if (outlinesAll)
        for (const PlacedWidget& each : widgets)
            overlay.addOutline(each.rectangle, Ink::OUTLINE);
    if (!opened)
        return;
    const Vector place = toUnits(pointerX, pointerY, GLWidget::viewport);
    if (const PlacedWidget* hit = widgetAt(widgets, place.x, place.y))
        describe(overlay, *hit, place);
    else
        overlay.addWindow("Inspector", {{"no widget under the pointer", Ink::QUIET}},
                          place.x < 0.0F ? Corner::TOP_RIGHT : Corner::TOP_LEFT);
}

void Inspector::describe(Overlay& overlay, const PlacedWidget& placed,
                         const Vector& pointerPlace) const
{
    const GLWidget& widget = *placed.widget;
    const Vector& position = widget.*WidgetFields::positionOf;
    const Vector& r = placed.rectangle;
    const std::array<int, 4> pixels = toPixels(r, GLWidget::viewport);
    overlay.addOutline(r, Ink::CHOSEN);

    // The window stands on the side where the pointer is not.
    overlay.addWindow("Inspector",
                      {{widget.*WidgetFields::nameOf, Ink::CHOSEN, "name"},
                       {widget.typeName(), Ink::PLAIN, "kind"},
                       {twoNumbers(position.x, position.y), Ink::PLAIN, "position"},
                       {twoNumbers(r.z - r.x, r.w - r.y), Ink::PLAIN, "size"},
                       {std::to_string(pixels[0]) + ", " + std::to_string(pixels[1]) + ", " +
                            std::to_string(pixels[2]) + " x " + std::to_string(pixels[3]),
                        Ink::PLAIN, "pixels"},
                       {themeName(widget.*WidgetFields::themeOf), Ink::PLAIN, "theme"},
                       {parentName(widget), Ink::PLAIN, "parent"},
                       {lineOf(widget), Ink::PLAIN, "line"}},
                      pointerPlace.x < 0.0F ? Corner::TOP_RIGHT : Corner::TOP_LEFT);
}
} // namespace tamor::view

#include "tools/view/WidgetTree.h"

#include "tools/view/WidgetFields.h"
#include "widgets/Button.h"
#include "widgets/Combobox.h"
#include "widgets/Frame.h"
#include "widgets/TabWindow.h"

#include <algorithm>
#include <cmath>

namespace tamor::view
{
namespace
{
// A container draws its children so many of its theme's margins inside itself.
constexpr float insetInMargins = 3.0F;

// What lies deeper than this its parent draws above the others.
constexpr float raisedDepth = -0.5F;

/// Where the children's coordinates begin, in those of the widget's own position.
Vector innerOrigin(const GLWidget& widget)
{
    const auto* frame = dynamic_cast<const Frame*>(&widget);
    const bool hasInset = dynamic_cast<const GLWindow*>(&widget) != nullptr ||
                          dynamic_cast<const Combobox*>(&widget) != nullptr ||
                          (frame != nullptr && frame->bordered);
    if (frame == nullptr && !hasInset)
        return {0.0F, 0.0F};
    const Vector& position = widget.*WidgetFields::positionOf;
    const float inset = hasInset ? insetInMargins * (widget.*WidgetFields::themeOf)->margin : 0.0F;
    return {position.x + inset, position.y + inset};
}

void place(std::vector<PlacedWidget>& placed, GLWidget* widget, const Vector& origin)
{
    const Vector own = widget->getRect();
    placed.push_back(
        {widget, Vector(own.x + origin.x, own.y + origin.y, own.z + origin.x, own.w + origin.y)});
    if (const auto* tabs = dynamic_cast<const TabWindow*>(widget))
        for (const Tab& tab : tabs->tabs)
            if (tab.button != nullptr)
                place(placed, tab.button, origin);

    const Vector inner = innerOrigin(*widget) + origin;
    for (const bool isRaised : {false, true})
        for (GLWidget* child : widget->*WidgetFields::childrenOf)
            if ((child->getDepth() < raisedDepth) == isRaised)
                place(placed, child, inner);
}

void collect(std::vector<GLWidget*>& widgets, GLWidget* widget)
{
    if (std::find(widgets.begin(), widgets.end(), widget) != widgets.end())
        return;
    widgets.push_back(widget);
    if (const auto* tabs = dynamic_cast<const TabWindow*>(widget)) {
        for (const Tab& tab : tabs->tabs) {
            if (tab.button != nullptr)
                widgets.push_back(tab.button);
            for (GLWidget* child : tab.widgets)
                collect(widgets, child);
        }
    }
    for (GLWidget* child : widget->*WidgetFields::childrenOf)
        collect(widgets, child);
}
} // namespace

std::vector<PlacedWidget> placedWidgets()
{
    std::vector<PlacedWidget> placed;
    for (GLWidget* widget : GLWidget::topLevel)
        place(placed, widget, Vector());
    return placed;
}

std::vector<GLWidget*> allWidgets()
{
    std::vector<GLWidget*> widgets;
    for (GLWidget* widget : GLWidget::topLevel)
        collect(widgets, widget);
    return widgets;
}

const PlacedWidget* widgetAt(const std::vector<PlacedWidget>& widgets, float x, float y)
{
    const auto isHit = [&](const PlacedWidget& each) {
        const Vector& r = each.rectangle;
        return x > r.x && x < r.z && y > r.y && y < r.w;
    };
    const auto hit = std::find_if(widgets.rbegin(), widgets.rend(), isHit);
    return hit == widgets.rend() ? nullptr : &*hit;
}

Vector toUnits(float pixelX, float pixelY, const std::array<std::int32_t, 4>& viewport)
{
    const auto width = static_cast<float>(viewport[2]);
    const auto height = static_cast<float>(viewport[3]);
    return {(2.0F * pixelX - width) / height, 1.0F - 2.0F * pixelY / height};
}

std::array<int, 4> toPixels(const Vector& rectangle, const std::array<std::int32_t, 4>& viewport)
{
    const auto width = static_cast<float>(viewport[2]);
    const auto height = static_cast<float>(viewport[3]);
    const auto rounded = [](float value) { return static_cast<int>(std::lround(value)); };
    const int left = rounded((rectangle.x * height + width) / 2.0F);
    const int right = rounded((rectangle.z * height + width) / 2.0F);
    const int top = rounded((1.0F - rectangle.w) * height / 2.0F);
    const int bottom = rounded((1.0F - rectangle.y) * height / 2.0F);
    return {left, top, right - left, bottom - top};
}
} // namespace tamor::view

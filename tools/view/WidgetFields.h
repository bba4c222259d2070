/// \file
/// The fields that every widget has and shows to widget classes alone.
#pragma once

#include "gui/GLWidget.h"

namespace tamor::view
{
/// Gives a host what a widget class of its own would see: `widget.*WidgetFields::text`. There is
/// never an object of it.
class WidgetFields : public GLWidget
{
public:
    static constexpr auto parentOf = &WidgetFields::parent;
    static constexpr auto selectionOf = &WidgetFields::selection;
    static constexpr auto valueOf = &WidgetFields::value;
    static constexpr auto positionOf = &WidgetFields::position;
    static constexpr auto dimensionsOf = &WidgetFields::dimensions;
    static constexpr auto hoverOf = &WidgetFields::hover;
    static constexpr auto activeOf = &WidgetFields::active;
    static constexpr auto clickedOf = &WidgetFields::clicked;
    static constexpr auto textOf = &WidgetFields::text;
    static constexpr auto themeOf = &WidgetFields::theme;
    static constexpr auto nameOf = &WidgetFields::name;
    static constexpr auto childrenOf = &WidgetFields::children;
};
} // namespace tamor::view

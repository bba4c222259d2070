/// \file
/// What a user did to widgets, carried from one reading of a layout to the next.
#pragma once

#include "gui/GLWidget.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace tamor::view
{
/// Clicks, ticks, choices, values, tabs and typed texts of all widgets that a user can change, by
/// the widget's name and the name of its class.
class KeptState
{
public:
    /// Takes down the state of the widgets that the engine sees.
    void capture();

    /// Gives it to those widgets that have the same name and class as one of then. What was typed
    /// or chosen survives; where a widget stands and what it says is the layout's.
    void restore() const;

private:
    struct State
    {
        bool active = false;
        bool clicked = false;
        bool hasFocus = false;
        float value = 0.0F;
        std::uint32_t selection = 0;
        std::int32_t tab = 0;
        std::string beforeCursor;
        std::string afterCursor;
    };

    const State* find(const GLWidget& widget) const;
    static void apply(const State& state, GLWidget& widget);
    void restoreOptions() const;

    std::map<std::pair<std::string, std::string>, State> states;
};
} // namespace tamor::view

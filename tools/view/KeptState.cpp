#include "tools/view/KeptState.h"

#include "tools/view/WidgetFields.h"
#include "tools/view/WidgetTree.h"
#include "widgets/Combobox.h"
#include "widgets/Optionbox.h"
#include "widgets/Slider.h"
#include "widgets/TabWindow.h"
#include "widgets/Textbox.h"

#include <set>

namespace tamor::view
{
void KeptState::capture()
{
    states.clear();
    for (GLWidget* widget : allWidgets()) {
        State& state = states[{widget->*WidgetFields::nameOf, widget->typeName()}];
        state.active = widget->isActive();
        state.clicked = widget->*WidgetFields::clickedOf;
        state.selection = widget->getSelection();
        if (dynamic_cast<Slider*>(widget) != nullptr)
            state.value = widget->getValue();
        if (const auto* tabs = dynamic_cast<TabWindow*>(widget))
            state.tab = tabs->currentTab;
        if (const auto* box = dynamic_cast<Textbox*>(widget)) {
            state.hasFocus = widget->isHovered();
            state.beforeCursor = box->beforeCursor;
            state.afterCursor = box->afterCursor;
        }
    }
}

void KeptState::restore() const
{
    for (GLWidget* widget : allWidgets())
        if (const State* state = find(*widget))
            apply(*state, *widget);
    restoreOptions();
}

const KeptState::State* KeptState::find(const GLWidget& widget) const
{
    const auto entry = states.find({widget.*WidgetFields::nameOf, widget.typeName()});
    return entry == states.end() ? nullptr : &entry->second;
}

void KeptState::apply(const State& state, GLWidget& widget)
{
    widget.*WidgetFields::clickedOf = state.clicked;
    if (widget.typeName() == "Checkbox")
        widget.*WidgetFields::activeOf = state.active;
    if (dynamic_cast<Slider*>(&widget) != nullptr)
        widget.*WidgetFields::valueOf = state.value;
    if (auto* list = dynamic_cast<Combobox*>(&widget))
        list->setSelected(state.selection);
    if (auto* box = dynamic_cast<Textbox*>(&widget)) {
        box->beforeCursor = state.beforeCursor;
        box->afterCursor = state.afterCursor;
        widget.*WidgetFields::textOf = state.beforeCursor + state.afterCursor;
        widget.*WidgetFields::hoverOf = state.hasFocus;
    }
    auto* tabs = dynamic_cast<TabWindow*>(&widget);
    if (tabs != nullptr && static_cast<std::size_t>(state.tab) < tabs->tabs.size()) {
        tabs->currentTab = state.tab;
        widget.*WidgetFields::childrenOf = tabs->tabs[static_cast<std::size_t>(state.tab)].widgets;
    }
}

// A group keeps the choice that the layout gives it if nothing of it was chosen before, such as
// when the chosen option has left the layout.
void KeptState::restoreOptions() const
{
    std::set<const GLWidget*> groups;
    std::vector<GLWidget*> options;
    for (GLWidget* widget : allWidgets()) {
        if (dynamic_cast<Optionbox*>(widget) == nullptr)
            continue;
        options.push_back(widget);
        const State* state = find(*widget);
        if (state != nullptr && state->active)
            groups.insert(widget->*WidgetFields::parentOf);
    }
    for (GLWidget* option : options) {
        const State* state = find(*option);
        if (groups.contains(option->*WidgetFields::parentOf))
            option->*WidgetFields::activeOf = state != nullptr && state->active;
    }
}
} // namespace tamor::view

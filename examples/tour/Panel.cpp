#include "platform/GLee.h"

#include "examples/tour/Panel.h"

#include "examples/tour/Screen.h"
#include "gui/GLWidget.h"
#include "widgets/Button.h"
#include "widgets/Combobox.h"
#include "widgets/TabWindow.h"
#include "widgets/Textbox.h"

#include <SDL.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <sstream>

namespace tour
{
using namespace tamor;

namespace
{
const std::string layout = "panel.gui";
constexpr float layoutAspect = 4.0F / 3.0F; // the layout's window

/// A widget that may not be there: a program that is to work with any layout asks each time.
template <class Widget = GLWidget>
Widget* find(const std::string& name)
{
    return dynamic_cast<Widget*>(GLWidget::find(name));
}

void setCaption(const std::string& name, const std::string& words)
{
    if (GLWidget* label = find(name))
        label->setCaption(words);
}

bool wasClicked(const std::string& name)
{
    GLWidget* const button = find(name);
    return button != nullptr && button->wasClicked();
}

template <class... Arguments>
std::string print(const char* format, Arguments... arguments)
{
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, format, arguments...);
    return buffer;
}

/// Words for a label: in rows as wide as the panel, with the signs that a label would read as those
/// of a format.
std::string wrap(const std::string& words)
{
    constexpr std::size_t charactersARow = 34;
    std::string result;
    std::size_t inRow = 0;
    const auto append = [&](const std::string& piece) {
        const bool fits = inRow + piece.size() <= charactersARow;
        if (!result.empty())
            result += fits ? ' ' : '\n';
        if (!fits)
            inRow = 0;
        for (const char character : piece)
            result += character == '%' ? "%%" : std::string(1, character);
        inRow += piece.size() + 1;
    };
    std::istringstream stream(words);
    for (std::string word; stream >> word;)
        for (std::size_t from = 0; from < word.size(); from += charactersARow)
            append(word.substr(from, charactersARow));
    return result;
}

/// A check box, and the setting that it shows.
struct Tick
{
    const char* box;
    bool Settings::*setting;
};

constexpr std::array ticks = {
    Tick{"wires", &Settings::showsWires},   Tick{"bones", &Settings::showsBones},
    Tick{"bounds", &Settings::showsBounds}, Tick{"toon", &Settings::usesToon},
    Tick{"waves", &Settings::usesWaves},    Tick{"lantern", &Settings::hasLantern},
};
} // namespace

bool Panel::load(const std::vector<std::string>& scripts)
{
    isLoaded = std::filesystem::exists(layout);
    if (!isLoaded) {
        std::cerr << layout << " is missing: the tour goes without its panel" << std::endl;
        return false;
    }
    // The engine keeps the widgets that are there, and never frees any.
    GLWidget::topLevel.clear();
    GLWidget::widgets.clear();
    seenValues.clear();
    GLWidget::loadLayout(layout);
    const Settings first;
    for (const Tick& each : ticks)
        if (first.*each.setting)
            tick(each.box);
    for (const std::string& script : scripts)
        if (GLWidget* list = find("samples"))
            list->addText(script);
    // The layout is made for a window of 4 by 3: what stands at its left goes to the left of this one.
    const float aspect =
        static_cast<float>(GLWidget::viewport[2]) / static_cast<float>(GLWidget::viewport[3]);
    for (GLWidget* widget : GLWidget::topLevel)
        widget->move(Vector(layoutAspect - aspect));
    Settings ignored;
    update(0, ignored); // what stands there at first is no change
    frames = 0;
    frameTime = 0;
    showsFrameTimes = false;
    return true;
}

bool Panel::isUnder(const MouseState& mouse) const
{
    if (!isLoaded || isHidden)
        return false;
    const auto height = static_cast<float>(GLWidget::viewport[3]);
    const float x =
        (2.0F * static_cast<float>(mouse.x) - static_cast<float>(GLWidget::viewport[2])) / height;
    const float y = 1.0F - 2.0F * static_cast<float>(mouse.y) / height;
    for (const GLWidget* widget : GLWidget::topLevel) {
        const Vector rect = widget->getRect();
        if (x > rect.x && x < rect.z && y > rect.y && y < rect.w)
            return true;
    }
    return false;
}

void Panel::takePointer(const MouseState& mouse)
{
    if (!isLoaded || isHidden)
        return;
    GLWidget::mouseMoved(Vector(static_cast<float>(mouse.x), static_cast<float>(mouse.y)));
    GLWidget::mouseButtons(mouse.left != 0, mouse.middle != 0, mouse.right != 0);
    auto* const text = find<Textbox>("text");
    auto* const pages = find<TabWindow>("pages");
    if (text == nullptr || pages == nullptr || mouse.left == 0)
        return;
    // A box on a page that is not shown hears of no press, and would keep the keyboard.
    if (pages->currentTab != 3 || !text->hitTest())
        text->deselect(nullptr);
}

bool Panel::takeKeys(const KeyboardState& keys)
{
    GLWidget* const text = find("text");
    const bool hasKeyboard = text != nullptr && !isHidden && text->isHovered();
    const bool endsNow = hasKeyboard && keys.pressed[SDLK_ESCAPE] != 0;
    if (endsNow)
        text->deselect(nullptr);
    else if (isLoaded)
        GLWidget::keysChanged(keys.pressed.data());
    // A key that stays down is pressed again and again, and this one is to end nothing else.
    endsTyping = endsNow || (endsTyping && keys.held[SDLK_ESCAPE] != 0);
    return hasKeyboard || endsTyping;
}

bool Panel::hasMoved(const char* name, float& value)
{
    GLWidget* const widget = find(name);
    if (widget == nullptr)
        return false;
    value = widget->getValue();
    if (dynamic_cast<Combobox*>(widget) != nullptr)
        value = static_cast<float>(widget->getSelection());
    else if (widget->typeName() == "Checkbox")
        value = widget->isActive() ? 1.0F : 0.0F;
    const auto seen = seenValues.insert({name, -1.0F}).first;
    if (seen->second == value)
        return false;
    seen->second = value;
    return true;
}

Panel::Presses Panel::update(std::int32_t milliseconds, Settings& settings)
{
    if (!isLoaded)
        return {};
    GLWidget::updateAll(milliseconds);
    showFrameTime(milliseconds);

    float value = 0.0F;
    if (hasMoved("source", value))
        settings.land.source = static_cast<Source>(value);
    if (hasMoved("size", value))
        settings.land.size = 140.0F + 200.0F * value;
    if (hasMoved("height", value))
        settings.land.height = 8.0F + 52.0F * value;
    if (hasMoved("roughness", value))
        settings.land.roughness = value;
    if (hasMoved("hour", value)) // in the middle half past nine, when the light is good
        settings.hour = std::fmod(24.0F * value + 21.5F, 24.0F);
    if (hasMoved("fog", value))
        settings.fog = 0.8F * value;
    if (hasMoved("way", value))
        settings.way = static_cast<Way>(value);
    for (const Tick& each : ticks)
        if (hasMoved(each.box, value))
            settings.*each.setting = value > 0.0F;

    Presses presses;
    presses.another = wasClicked("another");
    presses.trip = wasClicked("trip");
    presses.run = wasClicked("run");
    presses.stop = wasClicked("stop");
    presses.leave = wasClicked("leave");
    if (wasClicked("reset")) {
        GLWidget::messageBox("Begin again, as at first?", MESSAGE_YES | MESSAGE_NO);
        asksForReset = true;
    }
    const std::int32_t answer = GLWidget::takeMessageResult();
    presses.reset = asksForReset && answer == MESSAGE_YES;
    if (answer != 0)
        asksForReset = false;
    return presses;
}

int Panel::takeChosenScript()
{
    float value = 0.0F;
    return isLoaded && hasMoved("samples", value) ? static_cast<int>(value) : -1;
}

std::string Panel::scriptText() const
{
    const auto* const box = find<Textbox>("text");
    return box == nullptr ? "" : box->beforeCursor + box->afterCursor;
}

void Panel::showScript(const std::string& text)
{
    auto* const box = find<Textbox>("text");
    if (box == nullptr)
        return;
    box->beforeCursor.clear();
    box->afterCursor = text;
    box->setCaption(text); // what is drawn, until a key is pressed
}

void Panel::show(const Settings& settings, std::size_t thingCount)
{
    const int minutes = static_cast<int>(settings.hour * 60.0F);
    setCaption("hourtext", print("Hour: %d:%02d", minutes / 60, minutes % 60));
    setCaption("fogtext", print("Fog: %.0f %%%%", static_cast<double>(100.0F * settings.fog)));
    setCaption("sizetext", print("Size: %.0f", static_cast<double>(settings.land.size)));
    setCaption("heighttext", print("Height: %.0f", static_cast<double>(settings.land.height)));
    setCaption("roughnesstext", print("Roughness: %.0f %%%%",
                                      static_cast<double>(100.0F * settings.land.roughness)));
    setCaption("count", print("%zu things", thingCount));
}

void Panel::tell(const std::string& words)
{
    setCaption("words", wrap(words));
}

/// The mean of half a second at a time, as a label that changed each frame could not be read.
void Panel::showFrameTime(std::int32_t milliseconds)
{
    frames++;
    frameTime += milliseconds;
    if (frameTime == 0 || (frameTime < 500 && showsFrameTimes))
        return;
    showsFrameTimes = true; // and the first one at once
    setCaption("frametime", print("%.1f ms a frame",
                                  static_cast<double>(frameTime) / static_cast<double>(frames)));
    frames = 0;
    frameTime = 0;
}

void Panel::draw() const
{
    if (!isLoaded || isHidden)
        return;
    setUpForGui();
    GLWidget::renderAll();
}

void Panel::turnTo(int page)
{
    auto* const pages = find<TabWindow>("pages");
    const auto index = static_cast<std::size_t>(page);
    if (pages == nullptr || index >= pages->tabs.size())
        return;
    // As a user does it.
    const Vector rect = pages->tabs[index].button->getRect();
    const auto half = static_cast<float>(GLWidget::viewport[3]) / 2.0F;
    const float middle = static_cast<float>(GLWidget::viewport[2]) / 2.0F;
    const float x = (rect.x + rect.z) / 2.0F;
    const float y = (rect.y + rect.w) / 2.0F;
    GLWidget::mouseMoved(Vector(middle + x * half, half - y * half));
    GLWidget::mouseButtons(true, false, false);
    GLWidget::mouseButtons(false, false, false);
}

void Panel::tick(const std::string& box)
{
    if (GLWidget* widget = find(box))
        widget->setActive();
}

void Panel::choose(const std::string& list, std::uint32_t row)
{
    if (auto* box = find<Combobox>(list))
        box->setSelected(row);
}
} // namespace tour

#include "gui/WidgetKinds.h"

#include "gui/FileFields.h"
#include "widgets/Button.h"
#include "widgets/Checkbox.h"
#include "widgets/Combobox.h"
#include "widgets/Frame.h"
#include "widgets/GLWindow.h"
#include "widgets/Label.h"
#include "widgets/Optionbox.h"
#include "widgets/Slider.h"
#include "widgets/TabWindow.h"
#include "widgets/Textbox.h"

#include <iostream>

namespace tamor
{
namespace
{
/// Reads two numbers, x and y.
Vector readPair(std::istream& fields)
{
    Vector pair;
    readField(fields, pair.x);
    readField(fields, pair.y);
    return pair;
}

GLWidget* buildButton(std::istream& fields, const WidgetPlace& place)
{
    std::string caption;
    readField(fields, caption);
    if (caption == "TEX")
        return new Button(place.name, place.parent, place.position, place.theme, readPair(fields));
    return new Button(place.name, place.parent, place.position, place.theme, caption);
}

GLWidget* buildLabel(std::istream& fields, const WidgetPlace& place)
{
    const std::string caption = readTextWithLineEnds(fields);
    return new Label(place.name, place.parent, place.position, place.theme, caption);
}

/// Builds a `Checkbox` or an `Optionbox`.
template <class Box>
GLWidget* buildBox(std::istream& fields, const WidgetPlace& place)
{
    return new Box(place.name, place.parent, place.position, place.theme, readText(fields));
}

GLWidget* buildCombobox(std::istream& /*fields*/, const WidgetPlace& place)
{
    return new Combobox(place.name, place.parent, place.position, place.theme);
}

GLWidget* buildSlider(std::istream& fields, const WidgetPlace& place)
{
    return new Slider(place.name, place.parent, place.position, place.theme, readPair(fields));
}

GLWidget* buildTextbox(std::istream& fields, const WidgetPlace& place)
{
    std::int32_t columns = 0;
    std::int32_t rows = 0;
    readField(fields, columns);
    readField(fields, rows);
    return new Textbox(place.name, place.parent, place.position, place.theme, columns, rows);
}

GLWidget* buildFrame(std::istream& fields, const WidgetPlace& place)
{
    bool bordered = false;
    readField(fields, bordered);
    return new Frame(place.name, place.parent, place.position, place.theme, bordered);
}

GLWidget* buildWindow(std::istream& fields, const WidgetPlace& place)
{
    bool draggable = false;
    readField(fields, draggable);
    const std::string title = readText(fields);
    std::cerr << "adding window " << place.name << " " << draggable << std::endl;
    return new GLWindow(place.name, place.parent, place.position, place.theme, title, draggable);
}

GLWidget* buildTabWindow(std::istream& /*fields*/, const WidgetPlace& place)
{
    std::cerr << "adding tabwindow " << place.name << " " << place.parent << " " << place.position
              << " " << place.theme << std::endl;
    auto* const window = new TabWindow(place.name, place.parent, place.position, place.theme);
    std::cerr << "added tabwindow" << std::endl;
    return window;
}

constexpr bool atOnce = false;
constexpr bool deferred = true;

using enum FieldType;
constexpr FieldFormat captionWord[] = {{"caption", word}};
constexpr FieldFormat captionText[] = {{"caption", text}};
constexpr FieldFormat extent[] = {{"length along x", number}, {"length along y", number}};
constexpr FieldFormat size[] = {{"columns", integer}, {"rows", integer}};
constexpr FieldFormat border[] = {{"border", flag}};
constexpr FieldFormat drag[] = {{"draggable", flag}, {"title", text}};

// Behind the name and the position of each kind come, in a layout, the fields that its function
// reads; they are named in the same row.
constexpr WidgetKind kinds[] = {
    {"Butt", atOnce, buildButton, captionWord}, {"Check", atOnce, buildBox<Checkbox>, captionText},
    {"Combo", atOnce, buildCombobox, {}},       {"Frame", deferred, buildFrame, border},
    {"Label", atOnce, buildLabel, captionText}, {"Opt", atOnce, buildBox<Optionbox>, captionText},
    {"Slide", atOnce, buildSlider, extent},     {"Text", atOnce, buildTextbox, size},
    {"TWin", deferred, buildTabWindow, {}},     {"Win", deferred, buildWindow, drag},
};
} // namespace

std::span<const WidgetKind> widgetKinds()
{
    return kinds;
}
} // namespace tamor

#include "gui/WidgetKinds.h"

#include "gui/ErrorLine.h"
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

/// A widget with what every kind takes and what its own kind takes behind that. It is never freed:
/// the widgets of a layout live until the process ends.
template <class Widget, class... Arguments>
GLWidget* newWidget(const WidgetPlace& place, const Arguments&... arguments)
{
    return new Widget(place.name, place.parent, place.position, place.theme, arguments...);
}

GLWidget* buildButton(std::istream& fields, const WidgetPlace& place)
{
    std::string caption;
    readField(fields, caption);
    if (caption == "TEX")
        return newWidget<Button>(place, readPair(fields));
    return newWidget<Button>(place, caption);
}

GLWidget* buildLabel(std::istream& fields, const WidgetPlace& place)
{
    const std::string caption = readTextWithLineEnds(fields);
    return newWidget<Label>(place, caption);
}

/// Builds a `Checkbox` or an `Optionbox`.
template <class Box>
GLWidget* buildBox(std::istream& fields, const WidgetPlace& place)
{
    return newWidget<Box>(place, readText(fields));
}

GLWidget* buildCombobox(std::istream& /*fields*/, const WidgetPlace& place)
{
    return newWidget<Combobox>(place);
}

GLWidget* buildSlider(std::istream& fields, const WidgetPlace& place)
{
    return newWidget<Slider>(place, readPair(fields));
}

GLWidget* buildTextbox(std::istream& fields, const WidgetPlace& place)
{
    std::int32_t columns = 0;
    std::int32_t rows = 0;
    readField(fields, columns);
    readField(fields, rows);
    return newWidget<Textbox>(place, columns, rows);
}

GLWidget* buildFrame(std::istream& fields, const WidgetPlace& place)
{
    bool bordered = false;
    readField(fields, bordered);
    return newWidget<Frame>(place, bordered);
}

GLWidget* buildWindow(std::istream& fields, const WidgetPlace& place)
{
    bool draggable = false;
    readField(fields, draggable);
    const std::string title = readText(fields);
    printLine("adding window ", place.name, " ", draggable);
    return newWidget<GLWindow>(place, title, draggable);
}

GLWidget* buildTabWindow(std::istream& /*fields*/, const WidgetPlace& place)
{
    printLine("adding tabwindow ", place.name, " ", place.parent, " ", place.position, " ",
              place.theme);
    GLWidget* const window = newWidget<TabWindow>(place);
    printLine("added tabwindow");
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

// Makes layouts of all kinds of widgets and gives them input, time, captions, items, tabs and message
// boxes in any order: nothing may lead outside, and what widgets hold stays in its table. With
// libFuzzer's own main this is the fuzzer; with ReplayCorpus.cpp it runs the kept corpus, as ctest
// does.
#include "gui/GLWidget.h"
#include "tests/gui/LayoutWalk.h"
#include "tests/gui/Seen.h"
#include "tests/gui/fuzz/FuzzGui.h"
#include "tests/support/FuzzFile.h"
#include "tests/support/FuzzInput.h"
#include "textures/Font.h"
#include "widgets/Combobox.h"
#include "widgets/TabWindow.h"
#include "widgets/Textbox.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>

namespace
{
using namespace tamor;
using namespace tamor::test;

constexpr int mostLines = 24;
constexpr int mostEvents = 200;

/// Few, so that they meet; some of them are those of parts and of the message box.
constexpr const char* names[] = {"a",
                                 "b",
                                 "c",
                                 "d",
                                 "NULL",
                                 "__adropbox",
                                 "__atab0One",
                                 "__btab1One",
                                 "__msgbox",
                                 "__msgbox_ok",
                                 "__msgbox_no",
                                 "__msgbox_frm",
                                 "__msgbox_message"};
constexpr const char* texts[] = {"One", "two words", "three\\nlines\\nhere", "%d %s %n %9999d",
                                 "100%"};
constexpr const char* numbers[] = {"0",    "0.1", "0.3", "1",    "-0.2",
                                   "-1.3", "5",   "1e9", "3e38", "-3e38"};

std::string twoNumbers(FuzzInput& input)
{
    const std::string first = input.oneOf(numbers);
    return first + " " + input.oneOf(numbers);
}

/// A widget's line from its kind on.
/// \param isTab  whether it is added to a tab
std::string widgetLine(FuzzInput& input, bool isTab)
{
    struct Kind
    {
        const char* word;
        const char* fields; ///< behind the position, but for a text
        bool hasText;
    };
    static constexpr Kind kinds[] = {
        {"Win", "1 ", true},   {"Win", "0 ", true},    {"Frame", "1", false},
        {"Frame", "0", false}, {"Butt", "Go", false},  {"Butt", "", false},
        {"Label", "", true},   {"Check", "", true},    {"Opt", "", true},
        {"Combo", "", false},  {"Slide", "", false},   {"TWin", "", false},
        {"Text", "", false},   {"Text", "6 2", false}, {"Slide", "0 1", false}};
    const Kind& kind = input.oneOf(kinds);
    const std::string name = input.oneOf(names);
    const std::string parent = input.oneOf(names);
    std::string line = isTab ? parent + " " + kind.word + " " + name
                             : std::string(kind.word) + " " + name + " " + parent;
    line += " " + twoNumbers(input) + " " + kind.fields;
    const std::string word = kind.word;
    if (kind.hasText)
        line += input.oneOf(texts);
    else if (word == "Butt" && kind.fields[0] == 0)
        line += "TEX " + twoNumbers(input);
    else if (word == "Slide" && kind.fields[0] == 0)
        line += twoNumbers(input);
    else if (word == "Text" && kind.fields[0] == 0) {
        line += std::to_string(input.below(40) - 4);
        line += " " + std::to_string(input.below(8) - 1);
    }
    return line;
}

std::string layoutLine(FuzzInput& input)
{
    std::string line;
    switch (input.below(10)) {
    case 0:
        return "THEM other.theme x";
    case 1:
        line = "TADD " + std::to_string(input.below(5) - 1) + " ";
        return line + widgetLine(input, true);
    case 2:
        line = std::string("NTAB ") + input.oneOf(names) + " ";
        line += std::to_string(input.below(5) - 1) + " ";
        return line + input.oneOf(texts);
    case 3:
        line = std::string("TEXT ") + input.oneOf(names) + " ";
        return line + input.oneOf(texts);
    case 4:
        return "SOLID";
    case 5:
        return std::string("CENTRE ") + input.oneOf(names);
    default:
        return "CADD " + widgetLine(input, false);
    }
}

std::string layoutOf(FuzzInput& input)
{
    std::string layout = "CONF gui.conf\nTHEM default.theme x\n";
    for (int line = input.below(mostLines) + 1; line > 0; line--)
        layout += layoutLine(input) + "\n";
    return layout;
}

/// Any of the widgets that have a name; null where there is none.
GLWidget* anyWidget(FuzzInput& input)
{
    const auto& widgets = GLWidget::widgets;
    if (widgets.empty())
        return nullptr;
    const int place = input.below(static_cast<int>(std::min<std::size_t>(widgets.size(), 256)));
    return std::next(widgets.begin(), place)->second;
}

void pressKeys(FuzzInput& input)
{
    static constexpr int editing[] = {8, 13, 32, 127, 273, 274, 275, 276, 278, 279};
    std::array<std::uint8_t, 512> pressed{};
    for (int count = input.below(4); count > 0; count--) {
        const int choice = input.below(4);
        const int key = choice == 0   ? input.take<std::uint16_t>() % 512
                        : choice == 1 ? input.oneOf(editing)
                                      : 32 + input.below(94);
        pressed[static_cast<std::size_t>(key)] = 1;
    }
    GLWidget::keysChanged(pressed.data());
}

/// What a host does with a widget that it has found.
void useWidget(FuzzInput& input)
{
    GLWidget* const widget = anyWidget(input);
    if (widget == nullptr)
        return;
    switch (input.below(8)) {
    case 0:
        widget->setCaption(input.oneOf(texts));
        break;
    case 1:
        widget->addText(input.oneOf(texts));
        break;
    case 2: {
        const int tab = input.below(5) - 1;
        widget->addTab(tab, input.oneOf(texts));
        break;
    }
    case 3:
        widget->setActive();
        break;
    case 4:
        widget->setLit();
        break;
    case 5:
        widget->wasClicked();
        break;
    case 6:
        widget->fitChildren();
        break;
    default:
        widget->move({input.take<float>(), input.take<float>()});
    }
}

void makeEvent(FuzzInput& input)
{
    switch (input.below(10)) {
    case 0:
    case 1:
    case 2: {
        const auto x = static_cast<float>(input.below(256)) * 3.25F - 16.0F;
        const auto y = static_cast<float>(input.below(256)) * 2.5F - 16.0F;
        GLWidget::mouseMoved(Vector(x, y));
        break;
    }
    case 3: {
        const auto x = input.take<float>();
        GLWidget::mouseMoved(Vector(x, input.take<float>()));
        break;
    }
    case 4:
    case 5: {
        const int buttons = input.below(8);
        GLWidget::mouseButtons((buttons & 1) != 0, (buttons & 2) != 0, (buttons & 4) != 0);
        break;
    }
    case 6:
        pressKeys(input);
        break;
    case 7:
        GLWidget::updateAll(input.below(8) == 0 ? input.take<std::int32_t>() : input.below(60));
        break;
    case 8: {
        constexpr std::int32_t flags[] = {1, 3, 12, 14, 0, 2, -1};
        const char* const text = input.oneOf(texts);
        if (input.below(2) == 0)
            GLWidget::messageBox(text, input.oneOf(flags));
        else
            GLWidget::takeMessageResult();
        break;
    }
    default:
        useWidget(input);
    }
}

/// What no input whatever may do to a widget.
void checkStates()
{
    for (const auto& [name, widget] : GLWidget::widgets) {
        if (widget == nullptr)
            continue;
        if (widget->typeName() == "Slider") {
            const float value = widget->getValue();
            if (!(value > 0.0F && value < 1.0F))
                failFuzzing("the value of slider " + name + " is " + std::to_string(value));
        } else if (const auto* const box = dynamic_cast<Combobox*>(widget)) {
            const std::size_t items = seen(*widget).lines.size();
            if (items != 0 && box->getSelection() >= items)
                failFuzzing("box " + name + " has chosen what it has not");
            if (box->highlight < -1 || box->highlight > static_cast<std::int64_t>(items))
                failFuzzing("box " + name + " highlights what it has not");
        } else if (const auto* const window = dynamic_cast<TabWindow*>(widget)) {
            const auto tab = static_cast<std::size_t>(window->currentTab);
            if (tab != 0 && tab >= window->tabs.size())
                failFuzzing("window " + name + " shows a tab that it has not");
        }
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    const std::string layout = layoutOf(input);
    const LayoutWalk walk = walkLayout(layout);
    if (!walk.ends || !walk.isModest())
        return 0;

    enterGuiFolder();
    const Unprinted unprinted;
    const FuzzFile file(layout);
    GLWidget::loadLayout(file.path());
    GLWidget::font.advance.fill(0.5F);
    GLWidget::viewport = {0, 0, 800, 600};
    for (int event = 0; event < mostEvents && input.hasMore(); event++) {
        makeEvent(input);
        checkStates();
        if (event % 16 == 15)
            GLWidget::renderAll();
    }
    GLWidget::renderAll();
    deleteGui();
    return 0;
}

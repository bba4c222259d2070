// The message box: the one piece of the GUI that is built and removed while the program runs.

#include "gui/GLWidget.h"
#include "widgets/Button.h"
#include "widgets/Frame.h"
#include "widgets/GLWindow.h"
#include "widgets/Label.h"
#include "widgets/TabWindow.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <utility>

namespace tamor
{
namespace
{
/// A button that a box can have.
struct Answer
{
    std::int32_t value; ///< what `takeMessageResult` gives for it
    const char* name;
    const char* caption;
};

constexpr Answer okay = {MESSAGE_OK, "__msgbox_ok", "OK"};
constexpr Answer cancel = {MESSAGE_CANCEL, "__msgbox_cancel", "Cancel"};
constexpr Answer yes = {MESSAGE_YES, "__msgbox_yes", "Yes"};
constexpr Answer no = {MESSAGE_NO, "__msgbox_no", "No"};

/// In the order in which they are asked: of two clicked in one frame the later one counts.
constexpr Answer answers[] = {okay, cancel, yes, no};

/// A button in the frame of a box with these flags. The distances do not depend on the captions.
struct Place
{
    std::int32_t flags;
    float x;
    Answer answer;
};

constexpr std::int32_t okayCancel = MESSAGE_OK | MESSAGE_CANCEL;
constexpr std::int32_t yesNo = MESSAGE_YES | MESSAGE_NO;
constexpr std::int32_t yesNoCancel = yesNo | MESSAGE_CANCEL;

// As `GLWidget::messageBox` documents them.
static_assert(okayCancel == 3 && yesNo == 12 && yesNoCancel == 14);

constexpr Place places[] = {
    {okayCancel, 0.0F, okay},    {okayCancel, 0.2F, cancel}, {yesNo, 0.0F, yes},
    {yesNo, 0.2F, no},           {yesNoCancel, 0.0F, yes},   {yesNoCancel, 0.2F, no},
    {yesNoCancel, 0.4F, cancel},
};

constexpr const char* windowName = "__msgbox";

/// The parts of a box that is being built. Where there is no memory for all of them, none is left.
class BoxParts
{
public:
    BoxParts() = default;
    ~BoxParts()
    {
        for (std::size_t i = 0; i < count; ++i)
            delete parts[i];
    }
    BoxParts(const BoxParts&) = delete;
    BoxParts& operator=(const BoxParts&) = delete;

    /// A part. An answer frees the window and the buttons, and nothing the rest, nor a box that is
    /// open when the process ends.
    template <class Widget, class... Arguments>
    Widget* newPart(const Arguments&... arguments)
    {
        auto* const part = new Widget(arguments...);
        parts.at(count++) = part;
        return part;
    }

    /// The box is whole.
    void keep() { count = 0; }

private:
    std::array<GLWidget*, 6> parts{}; ///< window, label, frame and three buttons at the most
    std::size_t count = 0;
};

/// Adds what is below the text: a single button, or a frame with those that the flags ask for.
GLWidget* addAnswers(BoxParts& parts, GLWindow& window, Theme* theme, std::int32_t flags)
{
    if (flags == MESSAGE_OK) {
        auto* const button =
            parts.newPart<Button>(okay.name, &window, Vector(), theme, std::string(okay.caption));
        window.addChild(button);
        return button;
    }

    auto* const frame = parts.newPart<Frame>("__msgbox_frm", &window, Vector(), theme, false);
    window.addChild(frame);
    for (const auto& [boxFlags, x, answer] : places) {
        if (boxFlags == flags)
            frame->addChild(parts.newPart<Button>(answer.name, frame, Vector(x, 0.0F), theme,
                                                  std::string(answer.caption)));
    }
    return frame;
}

/// Meant: looked for when a box closes, though the label of a box is "__msgbox_message", so that it
/// stays in memory and registered, as the frame does, until the next box takes their names over.
/// `MessageBox.LeavesItsLabelAndItsFrameInTheRegistry` holds it.
constexpr const char* nameOfNothing = "__msgbox_msg";

bool contains(const std::vector<GLWidget*>& list, const GLWidget* widget)
{
    return std::find(list.begin(), list.end(), widget) != list.end();
}

/// What goes when a box is answered, each once: the window, if it is at the top level, and whatever
/// holds the names.
std::vector<GLWidget*> widgetsOfTheBox()
{
    std::vector<GLWidget*> result;
    const auto add = [&result](GLWidget* widget) {
        if (widget != nullptr && !contains(result, widget))
            result.push_back(widget);
    };
    if (contains(GLWidget::topLevel, GLWidget::find(windowName)))
        add(GLWidget::find(windowName));
    for (const Answer& answer : answers)
        add(GLWidget::find(answer.name));
    add(GLWidget::find(nameOfNothing));
    return result;
}
} // namespace

bool GLWidget::messageBox(const std::string& message, std::int32_t flags)
{
    // Meant: each call reads the theme anew, even when a box is open and nothing else happens. The
    // theme before stays in memory, since widgets may have it.
    // `MessageBox.ReadsTheThemeOnEveryCall` holds it.
    Theme* const theme = createTheme("messagebox");
    theme->read("messagebox.theme");
    if (find(windowName) != nullptr)
        return true;

    BoxParts parts;
    auto* const window =
        parts.newPart<GLWindow>(windowName, nullptr, Vector(), theme, "Message box", true);
    auto* const label =
        parts.newPart<Label>("__msgbox_message", window, Vector(0.0F, 0.2F), theme, message);
    window->addChild(label);
    GLWidget* const answerRow = addAnswers(parts, *window, theme, flags);
    topLevel.push_back(window);
    parts.keep();

    window->fitChildren();
    window->centreChild(answerRow, true, false);
    window->centreChild(label, true, false);
    const Vector rect = window->getRect();
    window->move({-(rect.z - rect.x) / 2.0F, -(rect.w - rect.y) / 2.0F});
    return true;
}

std::int32_t GLWidget::takeMessageResult()
{
    return std::exchange(messageResult, 0);
}

void GLWidget::pollMessageBox()
{
    std::int32_t given = 0;
    for (const Answer& answer : answers) {
        const GLWidget* const button = find(answer.name);
        if (button != nullptr && button->clicked)
            given = answer.value;
    }
    if (given == 0)
        return;

    // Meant: all by name alone, whoever built it; but of the window only what is at the top level.
    // `MessageBoxTeardown` holds it.
    const std::vector<GLWidget*> dead = widgetsOfTheBox();
    const std::set<GLWidget*> all = allWidgets();
    // From here on no memory is asked for. Where there was none, the next update comes here again.
    messageResult = given;
    std::erase(topLevel, find(windowName));
    letGoOf(dead, all);
    for (const GLWidget* widget : dead)
        delete widget;
    for (const Answer& answer : answers)
        widgets[answer.name] = nullptr;
    widgets[nameOfNothing] = nullptr;
    widgets[windowName] = nullptr;
}

std::set<GLWidget*> GLWidget::allWidgets()
{
    // Those that hang below one as well: a name may have been taken over.
    std::vector<GLWidget*> waiting = topLevel;
    for (const auto& [key, widget] : widgets)
        waiting.push_back(widget);

    std::set<GLWidget*> all;
    while (!waiting.empty()) {
        GLWidget* const widget = waiting.back();
        waiting.pop_back();
        if (widget == nullptr || !all.insert(widget).second)
            continue;
        waiting.insert(waiting.end(), widget->children.begin(), widget->children.end());
        const auto* const window = dynamic_cast<TabWindow*>(widget);
        if (window == nullptr)
            continue;
        for (const Tab& tab : window->tabs) {
            waiting.insert(waiting.end(), tab.widgets.begin(), tab.widgets.end());
            waiting.push_back(tab.button);
        }
    }
    return all;
}

void GLWidget::letGoOf(const std::vector<GLWidget*>& dead, const std::set<GLWidget*>& all)
{
    const auto isDead = [&dead](const GLWidget* widget) { return contains(dead, widget); };

    for (auto& [key, widget] : widgets)
        if (isDead(widget))
            widget = nullptr;
    std::erase_if(topLevel, isDead);

    for (GLWidget* const widget : all) {
        std::erase_if(widget->children, isDead);
        if (isDead(widget->parent))
            widget->parent = nullptr;
        auto* const window = dynamic_cast<TabWindow*>(widget);
        if (window == nullptr)
            continue;
        for (Tab& tab : window->tabs) {
            std::erase_if(tab.widgets, isDead);
            if (isDead(tab.button))
                tab.button = nullptr;
        }
    }
}
} // namespace tamor

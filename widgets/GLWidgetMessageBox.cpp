// The message box: the one piece of the GUI that is built and removed while the program runs.

#include "gui/GLWidget.h"
#include "widgets/Button.h"
#include "widgets/Frame.h"
#include "widgets/GLWindow.h"
#include "widgets/Label.h"

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

constexpr Answer okay = {1, "__msgbox_ok", "OK"};
constexpr Answer cancel = {2, "__msgbox_cancel", "Cancel"};
constexpr Answer yes = {4, "__msgbox_yes", "Yes"};
constexpr Answer no = {8, "__msgbox_no", "No"};

/// In the order in which they are asked: of two clicked in one frame the later one counts.
constexpr Answer answers[] = {okay, cancel, yes, no};

/// A button in the frame of a box with these flags. The distances do not depend on the captions.
struct Place
{
    std::int32_t flags;
    float x;
    Answer answer;
};

constexpr Place places[] = {
    {3, 0.0F, okay}, {3, 0.2F, cancel}, {12, 0.0F, yes},    {12, 0.2F, no},
    {14, 0.0F, yes}, {14, 0.2F, no},    {14, 0.4F, cancel},
};

constexpr const char* windowName = "__msgbox";

/// Adds what is below the text: a single button, or a frame with those that the flags ask for.
GLWidget* addAnswers(GLWindow& window, Theme* theme, std::int32_t flags)
{
    if (flags == okay.value) {
        auto* const button = new Button(okay.name, &window, Vector(), theme, okay.caption);
        window.addChild(button);
        return button;
    }

    auto* const frame = new Frame("__msgbox_frm", &window, Vector(), theme, false);
    window.addChild(frame);
    for (const auto& [boxFlags, x, answer] : places) {
        if (boxFlags == flags)
            frame->addChild(new Button(answer.name, frame, Vector(x, 0.0F), theme, answer.caption));
    }
    return frame;
}

/// Deletes the widget of this name, if there is one, and clears the name.
void deleteNamed(const std::string& name)
{
    delete std::exchange(GLWidget::widgets[name], nullptr);
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

    auto* const window = new GLWindow(windowName, nullptr, Vector(), theme, "Message box", true);
    topLevel.push_back(window);
    auto* const label = new Label("__msgbox_message", window, Vector(0.0F, 0.2F), theme, message);
    window->addChild(label);
    GLWidget* const answerRow = addAnswers(*window, theme, flags);

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
    bool isAnswered = false;
    for (const Answer& answer : answers) {
        GLWidget* const button = find(answer.name);
        if (button == nullptr || !button->wasClicked())
            continue;
        isAnswered = true;
        messageResult = answer.value;
    }
    if (!isAnswered)
        return;

    // Meant: the label is not named "__msgbox_msg", so that it stays in memory and registered, as
    // the frame does, until the next box takes their names over.
    // `MessageBox.LeavesItsLabelAndItsFrameInTheRegistry` holds it.
    if (const GLWidget* window = find(windowName))
        cutOff(*window);
    std::erase(topLevel, find(windowName));
    deleteNamed(windowName);
    for (const Answer& answer : answers)
        deleteNamed(answer.name);
    deleteNamed("__msgbox_msg");
}

void GLWidget::cutOff(const GLWidget& window)
{
    for (const auto& [key, widget] : widgets) {
        if (widget == nullptr || widget->parent != &window)
            continue;
        widget->parent = nullptr;
        widget->children.clear();
    }
}
} // namespace tamor

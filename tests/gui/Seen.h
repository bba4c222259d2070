/// \file
/// The fields of widgets, which are protected: a widget that a test builds is a `Seen<Class>`, and
/// one that it found is looked at through `seen`.
#pragma once

#include "gui/GLWidget.h"

#include <string>
#include <vector>

namespace tamor::test
{
/// A widget whose fields a test can read and write.
template <class Widget>
class Seen : public Widget
{
public:
    using Widget::Widget;

    using Widget::active;
    using Widget::children;
    using Widget::clicked;
    using Widget::depth;
    using Widget::dimensions;
    using Widget::elapsed;
    using Widget::fade;
    using Widget::glow;
    using Widget::hover;
    using Widget::lines;
    using Widget::mouse;
    using Widget::name;
    using Widget::parent;
    using Widget::position;
    using Widget::prevLeft;
    using Widget::prevMiddle;
    using Widget::prevRight;
    using Widget::selection;
    using Widget::text;
    using Widget::theme;
    using Widget::value;
};

/// The fields of a widget of any class.
struct SeenFields
{
    std::vector<GLWidget*>& children;
    std::vector<std::string>& lines;
    const std::string& name;
    std::string& text;
    GLWidget*& parent;
    Theme*& theme;
    Vector& position;
    Vector& dimensions;
    Vector& mouse;
    float& glow;
    bool& hover;
    bool& active;
    bool& clicked;
    bool& prevLeft;
};

/// The fields of a widget that the test did not build itself: `seen(*GLWidget::find("a")).text`.
inline SeenFields seen(GLWidget& widget)
{
    using Any = Seen<GLWidget>;
    return {widget.*&Any::children, widget.*&Any::lines,      widget.*&Any::name,
            widget.*&Any::text,     widget.*&Any::parent,     widget.*&Any::theme,
            widget.*&Any::position, widget.*&Any::dimensions, widget.*&Any::mouse,
            widget.*&Any::glow,     widget.*&Any::hover,      widget.*&Any::active,
            widget.*&Any::clicked,  widget.*&Any::prevLeft};
}

/// The names of the children, front to back.
inline std::vector<std::string> namesOfChildren(GLWidget& widget)
{
    std::vector<std::string> names;
    for (GLWidget* child : seen(widget).children)
        names.push_back(seen(*child).name);
    return names;
}
} // namespace tamor::test

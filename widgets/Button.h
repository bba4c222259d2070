/// \file
/// The press-to-act widget.
///
/// The folder widgets/ holds the widget classes, one a file, the message box that is made of them
/// (four operations of `GLWidget`, in GLWidgetMessageBox.cpp), and the table of the layout words
/// that build them. What all widgets share (the tree, the routing of input, themes and the layout
/// reader) is gui/'s.
#pragma once

#include "TamorExport.h"
#include "gui/GLWidget.h"

#include <cstdint>
#include <string>

namespace tamor
{
/// A plate with a caption, or a plate that shows the theme's texture.
///
/// It acts on the press, not on the release. The application reads the click with `wasClicked`,
/// once a frame. An unread click outlasts the release, and is taken back by the first buttons call
/// behind it that finds the pointer over the button.
///
/// | State          | Event                        | Next                                     |
/// |----------------|------------------------------|------------------------------------------|
/// | idle           | the pointer enters           | hover                                    |
/// | hover          | left press                   | hover, active, clicked                   |
/// | hover, active  | pointer anywhere, left down  | hover, active                            |
/// | hover, active  | left release                 | idle, until the next pointer event       |
class TAMOR_EXPORT Button : public GLWidget
{
public:
    /// A text button, as wide as its caption and one font width, and one and a half font heights
    /// high.
    Button(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
           const std::string& caption);

    /// An image button of exactly this size, which shows the theme's texture.
    Button(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
           Vector size);

    bool onMouseButtons(bool left, bool middle, bool right) override;
    bool render() override;
    std::string typeName() const override;
    bool deselect(GLWidget* chosen) override;

    /// OpenGL name of the texture, 0 for a text button. Drawn only while `text` is empty.
    std::uint32_t image = 0;
};
} // namespace tamor

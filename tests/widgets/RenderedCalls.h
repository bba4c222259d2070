/// \file
/// What a widget draws, as text that a test can compare.
#pragma once

#include "gui/GLWidget.h"

#include <string>

namespace tamor::test
{
/// The calls that `widget.render()` makes, a line each, with two foldings: a primitive is one line
/// of its vertices, each "x,y" and the texture coordinates in brackets if it has some of its own;
/// and what `Font::print` makes of one piece of text is one line such as
///     print "two/lines"
std::string callsOfRender(GLWidget& widget);

/// What a parent's drawing of its children makes of one: the label "ab", at (0, 0) of the parent.
inline constexpr const char* callsOfChildLabel = R"(glPushMatrix()
glPushMatrix()
glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)
glEnable(GL_BLEND)
glDisable(GL_TEXTURE_2D)
glDisable(GL_DEPTH_TEST)
glTranslatef(0.125, 0.1875, 0)
glColor3f(0.5, 0.25, 1)
glTranslatef(-0.0625, -0.104167, 0)
print "ab"
glPopMatrix()
glPopMatrix()
)";
} // namespace tamor::test

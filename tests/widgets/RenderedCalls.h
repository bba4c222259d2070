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
} // namespace tamor::test

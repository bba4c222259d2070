/// \file
/// Which line of a layout made which widget.
#pragma once

#include "gui/GLWidget.h"

#include <map>
#include <string>
#include <vector>

namespace tamor::view
{
/// A directive of a layout with its fields, as the engine's reader takes them.
struct LayoutStatement
{
    int line = 0; ///< of the directive's word, from 1
    std::string word;
    std::vector<std::string> fields; ///< a text without the blanks in front
};

/// The directives of a layout without a fault, in order.
std::vector<LayoutStatement> readStatements(const std::string& file);

/// The line that made each widget that the engine sees. A part of a widget, such as the button of a
/// list, has the line of the whole, and a tab's button that of its NTAB. Of several widgets with
/// the same name and kind the lines are given out in the order of the tree.
std::map<const GLWidget*, int> linesOfWidgets(const std::vector<LayoutStatement>& statements);
} // namespace tamor::view

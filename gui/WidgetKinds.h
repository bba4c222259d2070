/// \file
/// The kinds of widget that a layout can name: one row a kind.
///
/// The layout reader knows no widget class. It finds the row of a kind's word and calls its
/// function, so that a new class of widgets is one row in widgets/WidgetKinds.cpp and nothing here.
#pragma once

#include "TamorExport.h"
#include "gui/LineFormat.h"
#include "maths/Vector.h"

#include <iosfwd>
#include <span>
#include <string>
#include <string_view>

namespace tamor
{
class GLWidget;
class Theme;

/// What a layout says of every widget, whatever its kind.
struct WidgetPlace
{
    std::string name;           ///< the key in `GLWidget::widgets`
    GLWidget* parent = nullptr; ///< null for a top-level widget
    Vector position;            ///< in the parent's inner coordinates; z 0, w 1
    Theme* theme = nullptr;     ///< never null
};

/// One kind of widget.
struct WidgetKind
{
    /// Reads the kind's own fields, which begin behind the position, and creates the widget. It
    /// attaches the widget to nothing: that is the layout reader's part. What it leaves of the line
    /// is skipped.
    /// \return the widget, which the caller holds
    using Build = GLWidget* (*)(std::istream& fields, const WidgetPlace& place);

    /// As a layout writes it; capitals count.
    std::string_view word;

    /// Whether the widget joins its parent at once, or when all widgets have been read, so that
    /// containers stand behind the leaves in their parent's list.
    bool isDeferred = false;

    Build build = nullptr; ///< null in no row

    /// What `build` reads of a line that goes right. A button's caption "TEX" is followed by the
    /// picture's width and height, two numbers.
    std::span<const FieldFormat> fields;
};

/// All kinds. The order means nothing; a word that is in no row builds nothing.
TAMOR_EXPORT std::span<const WidgetKind> widgetKinds();
} // namespace tamor

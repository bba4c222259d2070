/// \file
/// Text that stands by itself.
#pragma once

#include "TamorExport.h"
#include "gui/GLWidget.h"

#include <string>

namespace tamor
{
/// Static text without a plate, of one line or more. The application changes it with `setCaption`,
/// which does not measure again.
class TAMOR_EXPORT Label : public GLWidget
{
public:
    /// As wide as the widest line and one font width. The height is one and a half font heights for
    /// each line end in the caption, but at least for one: two lines stand as high as one.
    /// \param caption   lines after the first run downward, below the label's own rectangle
    Label(const std::string& newName, GLWidget* newParent, Vector newPosition, Theme* newTheme,
          const std::string& caption);

    bool onMouseButtons(bool left, bool middle, bool right) override;
    bool render() override;
    std::string typeName() const override;
    bool deselect(GLWidget* chosen) override;
};
} // namespace tamor

/// \file
/// One choice of several.
#pragma once

#include "TamorExport.h"
#include "widgets/Checkbox.h"

#include <string>

namespace tamor
{
/// A tick of which only one is on among the children of one parent: the parent tells the others
/// that they are deselected. A `Textbox` among them belongs to the group. Without a parent nothing
/// ever unticks it.
///
/// | State | Event                            | Next                          |
/// |-------|----------------------------------|-------------------------------|
/// | off   | press over it                    | on, `fade` 1; siblings go off |
/// | on    | press over it                    | on                            |
/// | on    | `deselect`                       | off, `fade` 1                 |
/// | off   | `deselect`                       | off                           |
/// | any   | its parent adds a child, and it  | on, `fade` 0                  |
/// |       | is the first exclusive one there |                               |
class TAMOR_EXPORT Optionbox : public Checkbox
{
public:
    using Checkbox::Checkbox;

    bool onMouseButtons(bool left, bool middle, bool right) override;
    bool render() override;
    bool isExclusive() const override;
    std::string typeName() const override;
    /// Unticks. `chosen` is not looked at.
    bool deselect(GLWidget* chosen) override;
};
} // namespace tamor

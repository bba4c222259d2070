/// \file
/// A layout with its real widgets, read anew in place.
#pragma once

#include "tools/view/Inspector.h"
#include "tools/view/Subject.h"

#include <cstddef>
#include <string>

namespace tamor::view
{
/// The widgets of a layout. They are the GUI that the engine sees, and may be used as in a program.
class LayoutView : public Subject
{
public:
    /// \param newFile       its name in the working directory
    /// \param newShownName  what it is called where a line of it is told
    LayoutView(std::string newFile, std::string newShownName);

    bool isThere() const override;
    std::optional<check::FileKind> kind() const override { return check::FileKind::layout; }
    /// Builds the layout in a GUI that has read nothing, with the state of the widgets as it was.
    std::string read(const std::set<std::string>& changed) override;
    std::set<std::filesystem::path> files() const override;

    void takeKeys(const KeyboardState& keys) override;
    void takePointer(const MouseState& pointer) override;
    void takeWheel(int) override {}
    void update(std::int32_t milliseconds) override;
    void settle() override;
    void draw() override;
    void decorate(Overlay& overlay) override;

private:
    void leaveEarlierReading();

    std::string file;
    Inspector inspector;
    bool hasPointer = false;
    Vector pointerPlace; ///< in pixels
    // What earlier readings have left in memory, since the engine takes nothing back.
    int readings = 0;
    std::size_t leftWidgets = 0;
    std::size_t leftThemes = 0;
};
} // namespace tamor::view

/// \file
/// What a layout will ask of its reader, found without building anything: for tests that read
/// layouts of any bytes.
#pragma once

#include <cstdint>
#include <string>

namespace tamor::test
{
struct LayoutWalk
{
    /// Whether reading ends: a field that fails before the end of the file makes it go on for ever.
    bool ends = true;
    /// Whether a theme or a configuration lies in another folder, where anything may be.
    bool leavesFolder = false;
    std::int32_t largestTab = 0; ///< that is named or added to
    int solids = 0;              ///< lines "SOLID": each attaches all containers once more
    int containers = 0;

    /// Whether reading and drawing take the time and the memory that a file of its size should.
    bool isModest() const;
};

/// Walks the fields as the reader takes them.
LayoutWalk walkLayout(const std::string& text);
} // namespace tamor::test

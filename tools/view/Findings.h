/// \file
/// What the checker has to say of what is shown.
#pragma once

#include "tools/check/Check.h"

#include <cstddef>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace tamor::view
{
class Overlay;

/// The findings in a file and in the files that it names, as of the last look.
class Findings
{
public:
    /// \param newShownName  the file as the user wrote it; findings are named in the same way
    explicit Findings(std::string newShownName);

    /// Checks a file of the working directory.
    void check(const std::string& file, check::FileKind kind);

    bool hasErrors() const { return errors > 0; }

    /// The files in which something was found, by their names in the working directory.
    std::set<std::filesystem::path> files() const;

    /// Writes a line for each finding to the standard output stream.
    void print() const;
    /// Adds a window with the findings, errors first.
    void decorate(Overlay& overlay) const;

private:
    std::string shown(const std::string& file) const;

    std::string shownName;
    std::vector<check::Finding> findings;
    std::size_t errors = 0;
};
} // namespace tamor::view

/// \file
/// Directories that a test works in: another one, or one of its own that is gone afterwards.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tamor::test
{
/// Has the process work in a directory while it lives.
class DirectoryChange
{
public:
    explicit DirectoryChange(const std::filesystem::path& directory);
    ~DirectoryChange();
    DirectoryChange(const DirectoryChange&) = delete;
    DirectoryChange& operator=(const DirectoryChange&) = delete;

private:
    std::filesystem::path previous;
};

/// Makes an empty directory and, while it lives, has the process work in it.
class TemporaryDirectory
{
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    /// Writes a file of exactly these bytes. Returns its path, which is absolute.
    std::string write(const std::string& name, std::string_view bytes) const;

    const std::filesystem::path& path() const { return directory; }

private:
    std::filesystem::path directory;
    DirectoryChange change;
};
} // namespace tamor::test

/// \file
/// A directory of a test's own, which is gone afterwards.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tamor::test
{
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
    std::filesystem::path previous;
};
} // namespace tamor::test

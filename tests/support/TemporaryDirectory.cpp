#include "tests/support/TemporaryDirectory.h"

#include <cstdlib>
#include <fstream>

namespace tamor::test
{
namespace
{
std::filesystem::path makeDirectory()
{
    std::string name = (std::filesystem::temp_directory_path() / "tamor-test-XXXXXX").string();
    return mkdtemp(name.data());
}
} // namespace

DirectoryChange::DirectoryChange(const std::filesystem::path& directory)
    : previous(std::filesystem::current_path())
{
    std::filesystem::current_path(directory);
}

DirectoryChange::~DirectoryChange()
{
    std::error_code ignored;
    std::filesystem::current_path(previous, ignored);
}

TemporaryDirectory::TemporaryDirectory() : directory(makeDirectory()), change(directory) {}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code ignored;
    std::filesystem::remove_all(directory, ignored);
}

std::string TemporaryDirectory::write(const std::string& name, std::string_view bytes) const
{
    const std::filesystem::path file = directory / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    return file.string();
}
} // namespace tamor::test

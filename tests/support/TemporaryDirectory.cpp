#include "tests/support/TemporaryDirectory.h"

#include <cstdlib>
#include <fstream>

namespace tamor::test
{
TemporaryDirectory::TemporaryDirectory() : previous(std::filesystem::current_path())
{
    std::string name = (std::filesystem::temp_directory_path() / "tamor-test-XXXXXX").string();
    directory = mkdtemp(name.data());
    std::filesystem::current_path(directory);
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code ignored;
    std::filesystem::current_path(previous, ignored);
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

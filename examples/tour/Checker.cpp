#include "examples/tour/Checker.h"

#include <sys/wait.h>

#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace tour
{
namespace
{
/// The checker beside this program, where both are installed, or else where the build leaves it.
std::string findChecker()
{
    std::error_code error;
    const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", error);
    for (const char* place : {"tamor-check", "../../tools/check/tamor-check"}) {
        const std::filesystem::path path = own.parent_path() / place;
        if (access(path.c_str(), X_OK) == 0)
            return path.string();
    }
    return "";
}

/// A file that goes with this object.
class ScriptFile
{
public:
    explicit ScriptFile(const std::string& text)
    {
        std::string name = (std::filesystem::temp_directory_path() / "tour-XXXXXX").string();
        const int descriptor = mkstemp(name.data());
        if (descriptor < 0)
            return;
        close(descriptor);
        path = name;
        std::ofstream(path) << text;
    }
    ~ScriptFile() { std::remove(path.c_str()); }
    ScriptFile(const ScriptFile&) = delete;
    ScriptFile& operator=(const ScriptFile&) = delete;

    std::string path;
};
} // namespace

Verdict check(const std::string& script)
{
    const std::string checker = findChecker();
    if (checker.empty())
        return {false, "tamor-check is not there: the script was not checked"};
    const ScriptFile file(script);
    const std::string command = "'" + checker + "' --kind script '" + file.path + "' 2>/dev/null";
    std::FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return {false, "tamor-check did not start: the script was not checked"};
    std::array<char, 512> line{};
    Verdict verdict;
    while (std::fgets(line.data(), line.size(), pipe) != nullptr)
        if (verdict.words.empty())
            verdict.words = line.data();
    const int status = pclose(pipe);
    verdict.hasErrors = WIFEXITED(status) && WEXITSTATUS(status) > 1;
    // Line, column and what is wrong are enough: no name of a file, no line end.
    if (verdict.words.rfind(file.path + ":", 0) == 0)
        verdict.words.erase(0, file.path.size() + 1);
    else
        verdict.words.clear(); // only the sum of findings
    while (!verdict.words.empty() && verdict.words.back() == '\n')
        verdict.words.pop_back();
    return verdict;
}
} // namespace tour

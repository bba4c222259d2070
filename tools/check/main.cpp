// tamor-check: says what and where something is wrong with the files that people write for the
// engine, which itself says nothing.

#include "tools/CommandLine.h"
#include "tools/check/Check.h"
#include "tools/check/Output.h"
#include "tools/check/Source.h"
#include "tools/check/Words.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <optional>

namespace tamor::check
{
namespace
{
enum ExitStatus
{
    nothingFound = 0,
    warningsFound = 1,
    errorsFound = 2,
    failed = 3,
};

constexpr tools::Option options[] = {
    {"--format", "FORMAT", "text, one finding a line, or json"},
    {"--kind", "KIND",
     "take every file for this kind, whatever its name: layout, theme,\n"
     "                          config, script, ms3d, tga, png or glsl"},
    {"--codes", "", "list the codes of all findings"},
    {"--help", "", "show this"},
    {"--version", "", "show the version"},
};

constexpr std::string_view usage =
    "Usage: tamor-check [--format text|json] [--kind KIND] [--codes] FILE|DIRECTORY|- ...\n";

constexpr std::string_view introduction =
    "\n"
    "Checks files that are written for the engine, and says where they lose something,\n"
    "never finish loading or end the program. A DIRECTORY is a program's working\n"
    "directory: all its files, and what they name of each other. - is the standard input.\n"
    "\n";

constexpr std::string_view conclusion =
    "\n"
    "The exit status is 0 if nothing was found, 1 for warnings, 2 for errors, and 3 if a\n"
    "file could not be read or the call is wrong. NO_COLOR turns colours off.\n";

constexpr tools::Tool tool = {"tamor-check", usage, introduction, options, conclusion, failed};

void listCodes()
{
    for (const Code& code : codes()) {
        std::string name(code.name);
        name.resize(28, ' ');
        std::cout << (code.severity == Severity::error ? "error    " : "warning  ") << name
                  << code.summary << "\n";
    }
}

/// The files of one call, and what was found in them.
class Run
{
public:
    explicit Run(std::optional<FileKind> newKind) : forcedKind(newKind) {}

    void check(const std::string& operand)
    {
        std::error_code error;
        if (operand == "-")
            checkContent(operand, {std::istreambuf_iterator<char>(std::cin), {}});
        else if (std::filesystem::is_directory(operand, error))
            checkWholeDirectory(operand);
        else if (std::optional<std::string> text = readWhole(operand))
            checkContent(operand, std::move(*text));
        else
            complain(operand, "cannot be read");
    }

    std::vector<Finding> findings;
    std::size_t files = 0;
    bool hasFailed = false;

private:
    void checkContent(const std::string& name, std::string text)
    {
        std::optional<FileKind> kind = forcedKind ? forcedKind : kindOfName(name);
        if (!kind)
            kind = kindOfContent(text);
        if (!kind) {
            complain(name, "is of no kind that is known: name it with --kind");
            return;
        }
        append(checkText(name, std::move(text), *kind));
        ++files;
    }

    void checkWholeDirectory(const std::string& path)
    {
        std::optional<DirectoryFindings> found = checkDirectory(path);
        if (!found) {
            complain(path, "cannot be read");
            return;
        }
        append(std::move(found->findings));
        files += found->files;
    }

    void append(std::vector<Finding> found)
    {
        findings.insert(findings.end(), std::make_move_iterator(found.begin()),
                        std::make_move_iterator(found.end()));
    }

    void complain(const std::string& name, std::string_view what)
    {
        std::cerr << "tamor-check: " << name << " " << what << "\n";
        hasFailed = true;
    }

    std::optional<FileKind> forcedKind;
};

ExitStatus statusOf(const Run& run)
{
    if (run.hasFailed)
        return failed;
    const auto isError = [](const Finding& finding) {
        return finding.code->severity == Severity::error;
    };
    if (std::any_of(run.findings.begin(), run.findings.end(), isError))
        return errorsFound;
    return run.findings.empty() ? nothingFound : warningsFound;
}

bool wantsColour()
{
    const char* const noColour = std::getenv("NO_COLOR");
    return (noColour == nullptr || *noColour == '\0') && isatty(STDOUT_FILENO) == 1;
}

/// The last value of an option, or the other.
std::string valueOf(const tools::CommandLine& line, std::string_view option,
                    const std::string& otherwise)
{
    const std::vector<std::string> values = line.values(option);
    return values.empty() ? otherwise : values.back();
}

int run(const tools::CommandLine& line)
{
    const std::string format = valueOf(line, "--format", "text");
    if (format != "text" && format != "json")
        return refuse(tool, "no format '" + format + "': text or json");
    std::optional<FileKind> kind;
    const std::string kindWord = valueOf(line, "--kind", "");
    std::vector<std::string_view> words;
    for (const FileKindName& each : fileKinds()) {
        words.push_back(each.word);
        if (each.word == kindWord)
            kind = each.kind;
    }
    if (line.has("--kind") && !kind)
        return refuse(tool, "no kind '" + kindWord + "'" + didYouMean(kindWord, words));
    if (line.operands().empty())
        return refuse(tool, "nothing to check");

    Run run(kind);
    for (const std::string& operand : line.operands())
        run.check(operand);
    if (format == "json") {
        writeJSON(std::cout, run.findings);
    } else {
        writeText(std::cout, run.findings, wantsColour());
        writeSummary(std::cout, run.findings, run.files);
    }
    return statusOf(run);
}
} // namespace
} // namespace tamor::check

int main(int count, char** words)
{
    using namespace tamor::check;
    const tamor::tools::CommandLine line(options, count, words);
    if (const std::optional<int> status = answer(tool, line))
        return *status;
    if (line.has("--codes")) {
        listCodes();
        return 0;
    }
    return run(line);
}

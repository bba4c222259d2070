#include "tools/view/Findings.h"

#include "tools/check/Output.h"
#include "tools/view/Overlay.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace tamor::view
{
namespace
{
// As many as a window of 600 pixels has room for, if some of them take two lines.
constexpr std::size_t mostShown = 12;

bool isError(const check::Finding& finding)
{
    return finding.code->severity == check::Severity::error;
}

bool showsColours()
{
    const char* const refusal = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) != 0 && (refusal == nullptr || *refusal == '\0');
}

std::string counted(std::size_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}
} // namespace

Findings::Findings(std::string newShownName) : shownName(std::move(newShownName)) {}

void Findings::check(const std::string& file, check::FileKind kind)
{
    const auto found = check::checkFileOfDirectory(file, kind);
    findings = found ? found->findings : std::vector<check::Finding>();
    // What the demonstration asks for is another program's business.
    std::erase_if(findings,
                  [](const check::Finding& each) { return each.code->name == "demo-name"; });
    std::stable_partition(findings.begin(), findings.end(), isError);
    errors = static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), isError));
}

std::set<std::filesystem::path> Findings::files() const
{
    std::set<std::filesystem::path> result;
    for (const check::Finding& finding : findings)
        result.insert(finding.file);
    return result;
}

/// A file of the working directory as the user would have to write it.
std::string Findings::shown(const std::string& file) const
{
    return (std::filesystem::path(shownName).parent_path() / file).string();
}

void Findings::print() const
{
    std::vector<check::Finding> printed = findings;
    for (check::Finding& finding : printed)
        finding.file = shown(finding.file);
    check::writeText(std::cout, printed, showsColours());
    std::cout.flush();
}

void Findings::decorate(Overlay& overlay) const
{
    std::vector<TextLine> lines;
    for (const check::Finding& finding : findings) {
        if (lines.size() == mostShown) {
            lines.push_back(
                {"and " + std::to_string(findings.size() - mostShown) + " more", Ink::QUIET});
            break;
        }
        const Ink ink = isError(finding) ? Ink::ERROR : Ink::WARNING;
        lines.push_back({shown(finding.file) + ":" + std::to_string(finding.line) + ":" +
                             std::to_string(finding.column) + ": " + finding.message,
                         ink});
    }
    const std::size_t warnings = findings.size() - errors;
    std::string title = shownName + ": " + counted(errors, "error");
    if (warnings > 0)
        title += ", " + counted(warnings, "warning");
    overlay.addWindow(title, lines, Corner::BOTTOM_LEFT);
}
} // namespace tamor::view

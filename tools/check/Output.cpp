#include "tools/check/Output.h"

#include <algorithm>
#include <string>

namespace tamor::check
{
namespace
{
constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

std::string_view word(Severity severity)
{
    return severity == Severity::error ? "error" : "warning";
}

/// The length of the UTF-8 character at the front; 0 if there is none.
std::size_t characterLength(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const std::size_t length = byte(0) < 0x80   ? 1
                               : byte(0) < 0xC2 ? 0
                               : byte(0) < 0xE0 ? 2
                               : byte(0) < 0xF0 ? 3
                               : byte(0) < 0xF5 ? 4
                                                : 0;
    if (length > text.size())
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    }
    // Forms that are too long, surrogates, and what lies above the last character.
    const bool isNone =
        length > 2 && ((byte(0) == 0xE0 && byte(1) < 0xA0) || (byte(0) == 0xED && byte(1) > 0x9F) ||
                       (byte(0) == 0xF0 && byte(1) < 0x90) || (byte(0) == 0xF4 && byte(1) > 0x8F));
    return isNone ? 0 : length;
}

std::string jsonString(std::string_view text)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string result = "\"";
    while (!text.empty()) {
        const char c = text.front();
        const std::size_t length = characterLength(text);
        if (c == '"' || c == '\\') {
            result += {'\\', c};
        } else if (static_cast<unsigned char>(c) < 0x20) {
            result += "\\u00";
            result += digits[c / 16];
            result += digits[c % 16];
        } else {
            result += length == 0 ? replacementCharacter : text.substr(0, length);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result + '"';
}

std::string counted(std::size_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}
} // namespace

void writeText(std::ostream& stream, std::span<const Finding> findings, bool inColour)
{
    for (const Finding& finding : findings) {
        const bool isError = finding.code->severity == Severity::error;
        const char* const colour = !inColour ? "" : isError ? "\033[1;31m" : "\033[1;35m";
        const char* const bold = inColour ? "\033[1m" : "";
        const char* const plain = inColour ? "\033[0m" : "";
        stream << bold << finding.file << ":" << finding.line << ":" << finding.column << ": "
               << plain << colour << word(finding.code->severity) << ": " << plain
               << finding.message << " [" << finding.code->name << "]\n";
    }
}

void writeSummary(std::ostream& stream, std::span<const Finding> findings, std::size_t files)
{
    const auto isError = [](const Finding& finding) {
        return finding.code->severity == Severity::error;
    };
    const auto errors =
        static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), isError));
    stream << counted(errors, "error") << " and " << counted(findings.size() - errors, "warning")
           << " in " << counted(files, "file") << "\n";
}

void writeJSON(std::ostream& stream, std::span<const Finding> findings)
{
    stream << "[";
    const char* separator = "\n";
    for (const Finding& finding : findings) {
        stream << separator << "  {\"file\": " << jsonString(finding.file)
               << ", \"line\": " << finding.line << ", \"column\": " << finding.column
               << ", \"severity\": \"" << word(finding.code->severity) << "\", \"code\": \""
               << finding.code->name << "\", \"message\": " << jsonString(finding.message) << "}";
        separator = ",\n";
    }
    stream << (findings.empty() ? "]\n" : "\n]\n");
}
} // namespace tamor::check

/// \file
/// The command line of a tool: one table of options, from which reading and help are made.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamor::tools
{
/// One option, as a row of a tool's table.
struct Option
{
    std::string_view name;  ///< with its dashes: "--size"
    std::string_view value; ///< what help calls its value; empty for an option without one
    std::string_view help;
};

/// The words behind a program's name, sorted into options and operands. A value may follow its
/// option as the next word or behind "=". Behind "--" all words are operands, and so is "-".
class CommandLine
{
public:
    CommandLine(std::span<const Option> newOptions, int count, const char* const* words);

    bool has(std::string_view option) const;
    /// The option's values, in the order of the line.
    std::vector<std::string> values(std::string_view option) const;
    const std::vector<std::string>& operands() const { return operandWords; }

    /// What is wrong with the line, such as "no option '--siez'; did you mean '--size'?"; empty if
    /// nothing is.
    const std::string& fault() const { return faultText; }

private:
    struct Given
    {
        std::string_view name;
        std::string value;
    };

    void refuse(const std::string& word);

    std::span<const Option> options;
    std::vector<Given> given;
    std::vector<std::string> operandWords;
    std::string faultText;
};

/// What a tool is called, and what it says of itself. Its help is the usage, the introduction, a line
/// for each option, and the conclusion.
struct Tool
{
    std::string_view name;
    std::string_view usage;
    std::string_view introduction;
    std::span<const Option> options; ///< "--help" and "--version" among them
    std::string_view conclusion;
    int wrongCall; ///< its exit status for a call that it refuses
};

/// Prints what is wrong with a call, and the usage. Returns `wrongCall`.
int refuse(const Tool& tool, const std::string& fault);

/// Refuses a line that has a fault, and prints the help or the version if it asks for them.
/// \return the exit status; nothing if the line is the tool's to carry out
std::optional<int> answer(const Tool& tool, const CommandLine& line);
} // namespace tamor::tools

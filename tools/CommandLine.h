/// \file
/// The command line of a tool: one table of options, from which reading and help are made.
#pragma once

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

/// The options of a table, one a line, for a tool's help.
std::string describeOptions(std::span<const Option> options);
} // namespace tamor::tools

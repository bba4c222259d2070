#include "tools/CommandLine.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <numeric>

namespace tamor::tools
{
namespace
{
// A word that takes more changes than this is another word, not a misspelling.
constexpr std::size_t mostMisspelledLetters = 3;

constexpr std::size_t helpColumn = 26;

/// How many letters must be added, taken away or replaced to turn one word into the other.
std::size_t editDistance(std::string_view from, std::string_view to)
{
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); i++) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); j++) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

/// A line for each option.
std::string describe(std::span<const Option> options)
{
    std::string text;
    for (const Option& option : options) {
        std::string line = "  " + std::string(option.name);
        if (!option.value.empty())
            line += " " + std::string(option.value);
        line.resize(std::max(line.size() + 2, helpColumn), ' ');
        text += line + std::string(option.help) + "\n";
    }
    return text;
}
} // namespace

CommandLine::CommandLine(std::span<const Option> newOptions, int count, const char* const* words)
    : options(newOptions)
{
    for (int i = 1; i < count && faultText.empty(); i++) {
        const std::string word = words[i];
        if (word == "--") {
            operandWords.insert(operandWords.end(), words + i + 1, words + count);
            return;
        }
        if (word == "-" || !word.starts_with('-')) {
            operandWords.push_back(word);
            continue;
        }
        const std::size_t equals = word.find('=');
        const auto isNamed = [&](const Option& each) {
            return each.name == word.substr(0, equals);
        };
        const auto option = std::find_if(options.begin(), options.end(), isNamed);
        const bool hasValue = equals != std::string::npos;
        if (option == options.end())
            refuse(word.substr(0, equals));
        else if (option->value.empty() && hasValue)
            faultText = "'" + std::string(option->name) + "' takes no value";
        else if (option->value.empty())
            given.push_back({option->name, ""});
        else if (hasValue)
            given.push_back({option->name, word.substr(equals + 1)});
        else if (i + 1 < count)
            given.push_back({option->name, words[++i]});
        else
            faultText = "'" + word + "' needs a value: " + std::string(option->value);
    }
}

void CommandLine::refuse(const std::string& word)
{
    faultText = "no option '" + word + "'";
    std::size_t least = mostMisspelledLetters + 1;
    std::string_view nearest;
    for (const Option& option : options) {
        const std::size_t distance = editDistance(word, option.name);
        // A short word is near to every other short word.
        if (distance < least && distance < option.name.size() / 2) {
            least = distance;
            nearest = option.name;
        }
    }
    if (!nearest.empty())
        faultText += "; did you mean '" + std::string(nearest) + "'?";
}

bool CommandLine::has(std::string_view option) const
{
    return std::any_of(given.begin(), given.end(),
                       [&](const Given& each) { return each.name == option; });
}

std::vector<std::string> CommandLine::values(std::string_view option) const
{
    std::vector<std::string> result;
    for (const Given& each : given)
        if (each.name == option)
            result.push_back(each.value);
    return result;
}

int refuse(const Tool& tool, const std::string& fault)
{
    std::cerr << tool.name << ": " << fault << '\n' << tool.usage;
    return tool.wrongCall;
}

std::optional<int> answer(const Tool& tool, const CommandLine& line)
{
    if (!line.fault().empty())
        return refuse(tool, line.fault());
    if (line.has("--help"))
        std::cout << tool.usage << tool.introduction << describe(tool.options) << tool.conclusion;
    else if (line.has("--version"))
        std::cout << tool.name << " " TAMOR_VERSION "\n";
    else
        return std::nullopt;
    return EXIT_SUCCESS;
}
} // namespace tamor::tools

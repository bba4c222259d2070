#include "tools/script/Prompt.h"

#include "tools/check/Output.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <set>
#include <string_view>

namespace tamor::scripts
{
namespace
{
constexpr std::array<std::string_view, 5> keywords{"for", "func", "if", "return", "while"};

std::string trimmed(const std::string& text)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    const auto last = std::find_if_not(text.rbegin(), text.rend(), isBlank).base();
    return first < last ? std::string(first, last) : "";
}

/// What is open at the end of a text, and what it has been through.
struct Shape
{
    int parentheses = 0;
    int braces = 0;
    bool isInString = false;
    bool hasBlock = false;
};

Shape shapeOf(const std::string& text)
{
    Shape shape;
    for (std::size_t i = 0; i < text.size(); i++) {
        const char c = text[i];
        if (shape.isInString) {
            // An apostrophe takes the next character as it stands.
            i += c == '\'' ? 1 : 0;
            shape.isInString = c != '"';
            continue;
        }
        shape.isInString = c == '"';
        shape.parentheses += c == '(' ? 1 : c == ')' ? -1 : 0;
        shape.braces += c == '{' ? 1 : c == '}' ? -1 : 0;
        shape.hasBlock = shape.hasBlock || c == '{';
    }
    return shape;
}

bool beginsWithHeader(const std::string& text)
{
    return std::any_of(keywords.begin(), keywords.end(), [&](std::string_view keyword) {
        return keyword != "return" && text.starts_with(keyword);
    });
}
} // namespace

bool isWhole(const std::string& text)
{
    const std::string entry = trimmed(text);
    const Shape shape = shapeOf(entry);
    if (shape.isInString || shape.parentheses > 0 || shape.braces > 0)
        return false;
    if (entry.empty())
        return true;
    if (beginsWithHeader(entry) && !shape.hasBlock && entry.back() != ';')
        return false;
    // An operator waits for its right side, but "++" has none.
    const bool endsInOperator =
        std::string_view("=+*/%^<>&|,!").find(entry.back()) != std::string_view::npos;
    return !endsInOperator || entry.ends_with("++");
}

std::string finished(const std::string& text)
{
    const std::string entry = trimmed(text);
    const bool hasEnd = entry.empty() || entry.back() == ';' || entry.back() == '}';
    return hasEnd ? entry : entry + ";";
}

const Prompt::Command Prompt::commands[] = {
    {":tokens", "TEXT", "the tokens that a text is taken for", &Prompt::showTokens},
    {":vars", "", "all variables", &Prompt::showVariables},
    {":functions", "", "all functions", &Prompt::showFunctions},
    {":load", "FILE", "takes the functions of a file", &Prompt::loadFile},
    {":help", "", "this list", &Prompt::help},
    {":quit", "", "ends, as Ctrl-D does", &Prompt::leave},
};

Prompt::Prompt(Session& newSession, const WatchRequest& newRequest, bool newChecks)
    : session(newSession),
      request(newRequest),
      checks(newChecks),
      editor([this](const std::string& start) { return complete(start); })
{
    request.mayInterrupt = true;
    request.keepsValue = true;
}

void Prompt::run()
{
    while (!isLeaving) {
        std::string text;
        const LineEnd end = readEntry(text);
        if (end == LineEnd::END)
            return;
        const std::string entry = trimmed(text);
        if (end == LineEnd::INTERRUPTED || entry.empty())
            continue;
        editor.remember(entry);
        if (entry.front() == ':')
            obey(entry);
        else
            answer(entry);
    }
}

LineEnd Prompt::readEntry(std::string& text)
{
    std::string line;
    LineEnd end = editor.read("> ", line);
    text = line;
    while (end == LineEnd::LINE && !isWhole(text) && !text.starts_with(':')) {
        end = editor.read(". ", line);
        // What was begun when the input ended is not run.
        if (end == LineEnd::LINE)
            text += "\n" + line;
    }
    return end;
}

void Prompt::answer(const std::string& text)
{
    const std::string entry = finished(text);
    if (checks) {
        const std::vector<check::Finding> errors = errorsIn("prompt", entry);
        check::writeText(std::cerr, errors, false);
        if (!errors.empty())
            return;
    }
    switch (session.run("prompt", entry, request)) {
    case RunEnd::CUT_TEXT:
        std::cerr << "the text ends inside a string or an index" << std::endl;
        return;
    case RunEnd::INTERRUPTED:
        std::cerr << "interrupted" << std::endl;
        return;
    case RunEnd::WHOLE:
        break;
    }
    if (const std::optional<ScriptValue> value = session.takeValue())
        printValue(std::cout, *value) << std::endl;
}

void Prompt::obey(const std::string& line)
{
    const std::size_t blank = line.find(' ');
    const std::string word = line.substr(0, blank);
    const std::string argument = blank == std::string::npos ? "" : trimmed(line.substr(blank));
    const auto* const command =
        std::find_if(std::begin(commands), std::end(commands),
                     [&](const Command& each) { return each.name == word; });
    if (command == std::end(commands))
        std::cerr << "no command '" << word << "'; :help lists them" << std::endl;
    else
        (this->*command->act)(argument);
}

void Prompt::showTokens(const std::string& text)
{
    if (errorsIn("prompt", finished(text)).empty())
        session.printTokensOf(finished(text));
    else
        check::writeText(std::cerr, errorsIn("prompt", finished(text)), false);
    std::cout.flush();
}

void Prompt::showVariables(const std::string&)
{
    for (const auto& [name, value] : session.interpreter.variables)
        if (value.type != TYPE_NULL)
            printValue(std::cout << name << " = ", value) << std::endl;
}

void Prompt::showFunctions(const std::string&)
{
    for (const auto& [name, function] : session.interpreter.functions) {
        std::string parameters;
        for (const ScriptToken& token : function.parameters)
            parameters += token.kind == TOK_ARGEND ? ", " : token.name;
        if (!parameters.empty())
            parameters.resize(parameters.size() - 2);
        std::cout << name << "(" << parameters << ")" << std::endl;
    }
    for (const auto& [name, builtin] : session.interpreter.builtins)
        if (builtin != nullptr && name.front() != '#')
            std::cout << name << "(...), built in" << std::endl;
}

void Prompt::loadFile(const std::string& path)
{
    const std::optional<std::string> text = readScript(path);
    if (!text) {
        std::cerr << "cannot read '" << path << "'" << std::endl;
        return;
    }
    if (checks)
        check::writeText(std::cerr, errorsIn(path, *text), false);
    if (session.load(path) == RunEnd::CUT_TEXT)
        std::cerr << path << ": the text ends inside a string or an index" << std::endl;
}

void Prompt::help(const std::string&)
{
    std::cout
        << "A statement is run when it is whole; its \";\" may be left out. A value that it\n"
           "leaves is shown. Tab completes a name. Ctrl-C ends what runs, Ctrl-D the program.\n";
    for (const Command& command : commands) {
        std::string line = "  " + std::string(command.name) + " " + command.argument;
        line.resize(20, ' ');
        std::cout << line << command.help << "\n";
    }
    std::cout.flush();
}

std::vector<std::string> Prompt::complete(const std::string& start) const
{
    std::set<std::string> words(keywords.begin(), keywords.end());
    for (const Command& command : commands)
        words.insert(command.name);
    for (const auto& [name, function] : session.interpreter.functions)
        words.insert(name);
    for (const auto& [name, value] : session.interpreter.variables)
        words.insert(name);
    for (const auto& [name, builtin] : session.interpreter.builtins)
        words.insert(name);
    std::vector<std::string> result;
    for (const std::string& word : words)
        // Of the watch's functions, and of the values that calls have hidden, nobody need know.
        if (word.starts_with(start) && word.front() != '#' && !word.starts_with("::"))
            result.push_back(word);
    return result;
}
} // namespace tamor::scripts

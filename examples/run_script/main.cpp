// Hosts the script language: runs a script file, with some functions of the host's own to call.
//
//     run_script [--load LIBRARY]... [--tokens] FILE
//
// --load takes the functions from a file first and runs nothing of it; --tokens prints the token
// list of FILE to the standard output stream instead of running it. What a script prints goes to
// the standard error stream. The exit status is 2 where a file is missing or not named, else 0.
//
// The scripts may call sqrt(x), length(x), which counts an array's elements or a string's
// characters, and item(array, i), which gets at an element whose index is computed.
#include "script/ScriptInterpreter.h"

#include <cmath>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace
{
using namespace tamor;

// A built-in receives copies of the arguments, whatever their number and types, and looks at both
// before it uses them. For what makes no sense it gives TYPE_NULL, as the language itself does.

ScriptValue squareRoot(std::string, std::int32_t count, ScriptValue* values)
{
    ScriptValue result;
    if (count == 1 && values[0].type == TYPE_INT)
        result.setFloat(std::sqrt(static_cast<float>(values[0].number)));
    else if (count == 1 && values[0].type == TYPE_FLOAT)
        result.setFloat(std::sqrt(values[0].asFloat()));
    return result;
}

ScriptValue length(std::string, std::int32_t count, ScriptValue* values)
{
    if (count == 1 && values[0].type == TYPE_ARRAY)
        return {static_cast<int>(values[0].items.size())};
    if (count == 1 && values[0].type == TYPE_STRING)
        return {static_cast<int>(values[0].text.size())};
    return {};
}

ScriptValue item(std::string, std::int32_t count, ScriptValue* values)
{
    if (count != 2 || values[0].type != TYPE_ARRAY || values[1].type != TYPE_INT)
        return {};
    const auto index = static_cast<std::size_t>(values[1].number);
    return index < values[0].items.size() ? values[0].items[index] : ScriptValue();
}

struct Arguments
{
    std::vector<std::string> libraries;
    bool printsTokens = false;
    std::string file;
};

/// Reads the command line; the file stays empty where the line is no good.
Arguments readArguments(int count, char** words)
{
    Arguments arguments;
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--load" && i + 1 < count)
            arguments.libraries.emplace_back(words[++i]);
        else if (word == "--tokens")
            arguments.printsTokens = true;
        else if (arguments.file.empty() && !word.starts_with("--"))
            arguments.file = word;
        else
            return {};
    }
    return arguments;
}

/// The interpreter takes a file that cannot be read for an empty one, so a host that minds asks
/// first.
bool isReadable(const std::string& path)
{
    std::ifstream file(path);
    file.peek();
    return file.is_open() && !file.bad();
}

int refuse(const std::string& reason)
{
    std::cerr << reason << "\nusage: run_script [--load LIBRARY]... [--tokens] FILE\n";
    return 2;
}

void printTokensOf(ScriptInterpreter& interpreter, const std::string& path)
{
    std::ifstream file(path);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    std::vector<ScriptToken> list;
    parseText(interpreter, list, text);
    printTokens(std::cout, list);
}
} // namespace

int main(int count, char** words)
{
    const Arguments arguments = readArguments(count, words);
    if (arguments.file.empty())
        return refuse("run_script: no file is named");
    std::vector<std::string> files = arguments.libraries;
    files.push_back(arguments.file);
    for (const std::string& file : files)
        if (!isReadable(file))
            return refuse("run_script: cannot read '" + file + "'");

    ScriptInterpreter interpreter;
    interpreter.builtins["sqrt"] = squareRoot;
    interpreter.builtins["length"] = length;
    interpreter.builtins["item"] = item;

    for (const std::string& library : arguments.libraries)
        interpreter.loadFile(library);
    if (arguments.printsTokens)
        printTokensOf(interpreter, arguments.file);
    else
        interpreter.runFile(arguments.file);
    return 0;
}

// Hosts the script language: `run_script FILE`. What a script prints goes to the standard error
// stream.
//
// The host hands in the variable "file", the script's name, and the function length(x), which
// counts an array's elements or a string's characters. It takes back the variable "status", which
// is its exit status. tamor-script does more with a script: it traces and times it, and has a
// prompt.
#include "script/ScriptInterpreter.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace
{
using namespace tamor;

// A built-in receives copies of the arguments, whatever their number and types, and looks at both
// before it uses them. For what makes no sense it gives TYPE_NULL, as the language itself does.
ScriptValue length(std::string, std::int32_t count, ScriptValue* values)
{
    if (count == 1 && values[0].type == TYPE_ARRAY)
        return {static_cast<int>(values[0].items.size())};
    if (count == 1 && values[0].type == TYPE_STRING)
        return {static_cast<int>(values[0].text.size())};
    return {};
}

// The interpreter takes a file that cannot be read for an empty one, so a host that minds asks. A
// directory can be opened, and not every standard library finds it bad.
bool isReadable(const std::string& path)
{
    std::ifstream file(path);
    file.peek();
    return file.is_open() && !file.bad() && !std::filesystem::is_directory(path);
}
} // namespace

int main(int count, char** words)
{
    if (count != 2 || !isReadable(words[1])) {
        std::cerr << (count != 2 ? "usage: run_script FILE" : "run_script: cannot read the file")
                  << std::endl;
        return 2;
    }
    ScriptInterpreter interpreter;
    interpreter.builtins["length"] = length;
    interpreter.variables["file"] = ScriptValue(std::string(words[1]));
    interpreter.runFile(words[1]);

    const ScriptValue& status = interpreter.variables["status"];
    return status.type == TYPE_INT ? status.number : 0;
}

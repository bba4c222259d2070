/// \file
/// The interpreter of the script language, and all that a host needs of it.
///
///     ScriptInterpreter interpreter;
///     interpreter.builtins["beep"] = beep;          // a ScriptBuiltin of the host's own
///     interpreter.variables["speed"] = ScriptValue(3);
///     interpreter.loadFile("library.script");       // its functions only
///     interpreter.runFile("main.script");
///     printValue(std::cout, interpreter.variables["result"]);
#pragma once

#include "TamorExport.h"
#include "script/Evaluator.h"
#include "script/Parser.h"
#include "script/ScriptLimits.h"
#include "script/ScriptToken.h"
#include "script/ScriptValue.h"
#include "script/Tokenizer.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tamor
{
class ScriptInterpreter;

namespace script
{
class Machine;

/// What runs an interpreter's scripts; not for hosts.
Machine& machineOf(ScriptInterpreter& interpreter);
} // namespace script

/// A function that a script has defined.
struct ScriptFunction
{
    /// The names, each with a `TOK_ARGEND` behind it.
    std::vector<ScriptToken> parameters;
    /// The statements, with the braces around them.
    std::vector<ScriptToken> body;
};

/// One script world: its functions, its variables, and the built-in functions that it may call.
///
/// A host binds a built-in by assigning to `builtins`, and hands values in and out through
/// `variables`. It may change all of this at any time, also from a built-in while scripts run: edit,
/// replace and remove what the tables hold, parse texts, and run lists within runs. What runs goes
/// on with the body that it began with, and everything else is seen the next time it is looked at.
/// Only the entry that `currentFunction` points to must stay. Scripts remove nothing.
/// One interpreter belongs to one thread at a time.
class TAMOR_EXPORT ScriptInterpreter
{
public:
    /// Sets the variables "false" (0), "true" (1) and "pi", which scripts may overwrite, and the
    /// built-in "print".
    ScriptInterpreter();
    ~ScriptInterpreter();
    // A copy would go on defining the other's function.
    ScriptInterpreter(const ScriptInterpreter&) = delete;
    ScriptInterpreter& operator=(const ScriptInterpreter&) = delete;

    /// Runs a script file, up to its first zero byte. A file that cannot be read counts as empty,
    /// and nothing is printed.
    /// \return true
    bool runFile(const std::string& path);

    /// Takes the function definitions from a script file and leaves its statements alone; as
    /// `runFile` otherwise.
    /// \return true
    bool loadFile(const std::string& path);

    /// Braces that are open in the text, since the last "func".
    std::int32_t blockDepth = 0;
    /// The function that takes in what is parsed, in `functions`; or null.
    ScriptFunction* currentFunction = nullptr;
    /// What scripts have defined, by name.
    std::map<std::string, ScriptFunction> functions;
    /// Every variable there is: the language has one scope.
    std::map<std::string, ScriptValue> variables;
    /// May hold null pointers, under names that were called and are no built-ins.
    std::map<std::string, ScriptBuiltin> builtins;
    /// What a run may take: looked at when one begins, but not when it begins within another.
    ScriptLimits limits;
    /// The limit that the latest run, or the latest file's text, came to. What a script did until
    /// then stays done.
    ScriptLimit reachedLimit = ScriptLimit::NONE;

private:
    friend script::Machine& script::machineOf(ScriptInterpreter& interpreter);

    std::unique_ptr<script::Machine> machine;
};

/// The built-in "print": writes each value and a space, then a line end, to the standard error
/// stream.
/// \return `TYPE_INT` with the number of values
TAMOR_EXPORT ScriptValue builtinPrint(std::string name, std::int32_t count, ScriptValue* values);
} // namespace tamor

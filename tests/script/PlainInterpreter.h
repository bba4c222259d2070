/// \file
/// The script language once more, for the tests alone: as plain as the rules, one step after the
/// other, with a copy of every list and every value, and no thought of speed. What it and the
/// engine's interpreter make of one text must be the same.
#pragma once

#include "script/ScriptInterpreter.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tamor::test
{
/// Thrown where the rules leave the outcome open or let the process end: the text is no good for a
/// comparison.
struct NoOutcome
{
    const char* reason;
};

/// A function of the host's.
using PlainBuiltin = std::function<ScriptValue(std::vector<ScriptValue>& values)>;

struct PlainFunction
{
    std::vector<ScriptToken> parameters;
    std::vector<ScriptToken> body;
};

class PlainInterpreter
{
public:
    PlainInterpreter();

    /// Scans the text. Throws `std::out_of_range` as the engine does.
    void parse(std::vector<ScriptToken>& out, std::string text);
    ScriptValue evaluate(std::vector<ScriptToken> list);
    /// The list may be edited while it is run.
    ScriptValue run(const std::vector<ScriptToken>& list);

    int blockDepth = 0;
    PlainFunction* currentFunction = nullptr;
    std::map<std::string, PlainFunction> functions;
    std::map<std::string, ScriptValue> variables;
    /// The names that were looked up as built-ins, and what the host has bound to them.
    std::map<std::string, PlainBuiltin> builtins;
    /// What went to the standard error stream.
    std::string messages;

private:
    void emit(std::vector<ScriptToken>& out, const ScriptToken& token);
    void parseHeader(std::vector<ScriptToken>& out, std::string& text);
    void fillArguments(std::vector<ScriptToken>& args, std::string inner);
    ScriptValue* resolve(std::string path);
    void reduce(std::vector<ScriptToken>& list, std::size_t i);
    ScriptValue apply(ScriptValue& left, int kind, ScriptValue& right);
    ScriptValue call(const ScriptToken& token);
    bool bind(const std::vector<ScriptToken>& parameters, std::size_t i);
    void countStep();

    int steps = 0;
    int depth = 0;
};
} // namespace tamor::test

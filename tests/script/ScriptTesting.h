/// \file
/// Values in a word and scripts that are run at once: what the tests of the script language share.
#pragma once

#include "script/ScriptInterpreter.h"
#include "tests/script/ScriptDescriptions.h"

#include <string>
#include <string_view>
#include <vector>

namespace tamor::test
{
/// The description of the tokens of a text.
std::string parsed(const std::string& text);

/// A float value.
ScriptValue real(float number);

/// An array of these elements.
ScriptValue array(std::vector<ScriptValue> elements);

/// An interpreter of a test's own.
class Script
{
public:
    Script() = default;

    /// Parses and runs a text; the value of its list is kept in `value`.
    explicit Script(const std::string& text) { run(text); }

    void run(const std::string& text);

    /// The described value of a variable, or "none" where there is no such variable.
    std::string operator[](const std::string& name) const;

    /// The described value of an expression.
    std::string evaluated(const std::string& expression);

    ScriptInterpreter interpreter;
    ScriptValue value;
};

/// The described value of an expression in a new interpreter.
std::string evaluated(const std::string& expression);

/// Whether `body` ends the process: by a signal, by an exception that nothing catches, or by the
/// sanitisers' report of one of the two. It runs in a child process.
bool endsTheProcess(void (*body)());
} // namespace tamor::test

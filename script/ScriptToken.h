/// \file
/// The token record, of which a script's lists are made, and the printer of such lists.
#pragma once

#include "TamorExport.h"
#include "script/ScriptValue.h"

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace tamor
{
/// A plain function that a script calls by name: the name it was called by, the number of
/// arguments, and the first of that many values in a row, which are the function's to change.
using ScriptBuiltin = ScriptValue (*)(std::string name, std::int32_t count, ScriptValue* values);

/// What a token is. Kinds 0 to 19 are the rows of `scriptOperators`.
enum ScriptTokenKind : std::int32_t
{
    TOK_SEMICOLON = -2,   ///< ";", and behind each brace and each header of a control form
    TOK_ARGEND = -1,      ///< ends each piece of an argument list; a default token
    TOK_OPEN_BRACE = 21,  ///< "{"
    TOK_CLOSE_BRACE = 22, ///< "}"
    TOK_CALL = 23,        ///< a name with "(" behind it
    TOK_VARIABLE = 24,    ///< a variable path, such as `grid[3][4]`
    TOK_STRING = 25,      ///< a string literal
    TOK_NUMBER = 26,      ///< a number literal; as a result also an array or no value
    TOK_FUNC = 27,        ///< "func "
    TOK_IF = 28,          ///< "if"
    TOK_FOR = 29,         ///< "for"
    TOK_WHILE = 30,       ///< "while"
    TOK_RETURN = 31       ///< "return "
};

/// The rows of `scriptOperators`.
constexpr std::int32_t scriptOperatorCount = 20;

/// The operators; the row is the token's kind. The scanner takes the first row that matches, so a
/// row comes before its own beginnings, and the evaluator applies the rows from 2 down in order.
constexpr char scriptOperators[scriptOperatorCount][3] = {
    "(", ")",  "++", "--", "^", "*",  "/", "%",  "+",  "-",
    "!", "&&", "||", "<=", "<", ">=", ">", "==", "!=", "="};

/// One token of a list; a header or a call holds the list between its parentheses.
struct ScriptToken
{
    /// A `TOK_ARGEND`.
    ScriptToken() = default;
    /// Without value, name and arguments.
    explicit ScriptToken(std::int32_t newKind) : kind(newKind) {}
    /// With all but arguments, which are appended to `args`.
    ScriptToken(std::int32_t newKind, ScriptValue newValue, std::string newName)
        : kind(newKind), value(std::move(newValue)), name(std::move(newName))
    {}

    std::int32_t kind = TOK_ARGEND; ///< a `TOK_…`, or a row of `scriptOperators`
    /// The literal of a `TOK_STRING` or `TOK_NUMBER`; else `TYPE_NULL`.
    ScriptValue value;
    /// The path of a variable, the name of a call or a function; else empty.
    std::string name;
    /// The parenthesised text of a call or a header; else empty.
    std::vector<ScriptToken> args;
};

/// Writes a list for a developer's eye, and returns the stream. Variables are written as `>name< `,
/// separators as ";" and a line end, ends of arguments as "#".
TAMOR_EXPORT std::ostream& printTokens(std::ostream& stream, const std::vector<ScriptToken>& list);
} // namespace tamor

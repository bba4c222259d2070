#include "script/Parser.h"

#include "script/ScriptInterpreter.h"
#include "script/internal/Scanner.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tamor
{
namespace
{
/// One text, or one piece of an argument list, on its way into a list.
class Parser
{
public:
    Parser(ScriptInterpreter& owner, std::vector<ScriptToken>& list, std::string_view text)
        : interpreter(owner), out(list), length(text.size()), scanner(text)
    {}

    void parse()
    {
        while (!scanner.atEnd())
            parseItem();
    }

private:
    void parseItem();
    void parseNumber();
    void parseHeader();
    void parseName();
    void parseOther();
    bool parseOperator();
    void fillArguments(std::vector<ScriptToken>& args, std::string_view inner);
    ScriptToken& emit(std::int32_t kind);
    void makeRoom();

    ScriptInterpreter& interpreter;
    std::vector<ScriptToken>& out;
    std::size_t length;
    Scanner scanner;
};

/// For each character, the first row of the operators that begins with it.
constexpr std::array<std::uint8_t, 256> firstOperators = [] {
    std::array<std::uint8_t, 256> rows{};
    rows.fill(scriptOperatorCount);
    for (std::uint8_t row = scriptOperatorCount; row-- > 0;)
        rows[static_cast<unsigned char>(scriptOperators[row][0])] = row;
    return rows;
}();

/// Whether a word may be one of the keywords, which are looked for in names only.
bool mayBeKeyword(std::string_view text)
{
    return std::string_view("rfwi").find(text.front()) != std::string_view::npos;
}

/// Appends a token where tokens go at present: to the function being defined, or to the list.
ScriptToken& Parser::emit(std::int32_t kind)
{
    ScriptFunction* const function = interpreter.currentFunction;
    if (function == nullptr && out.size() == out.capacity())
        makeRoom();
    ScriptToken& token = (function != nullptr ? function->body : out).emplace_back();
    token.kind = kind;
    return token;
}

/// Makes room for what the rest of the text will give if it is like the text so far. To grow by
/// doubling takes a third of a long text's time.
void Parser::makeRoom()
{
    const std::size_t scanned = length - scanner.text().size();
    const std::size_t atLeast = 2 * out.size() + 4;
    if (scanned > 0)
        out.reserve(std::max(atLeast, out.size() * length / scanned));
}

/// The order of the tests is the language: the first that applies wins.
void Parser::parseItem()
{
    if (scanner.startsWith(SPACE_CHARACTER))
        return scanner.skipSpace();
    // Meant: every "-" at the front begins a number, so `a - 1` has no operator in it;
    // `ParseText.TakesEveryMinusAtTheFrontForANumber` holds it.
    if (scanner.startsWith(NUMBER_CHARACTER))
        return parseNumber();
    if (scanner.startsWith('"')) {
        std::string content = scanner.readStringLiteral();
        ScriptValue& value = emit(TOK_STRING).value;
        value.type = TYPE_STRING;
        value.text = std::move(content);
        return;
    }
    if (!scanner.startsWith(NAME_CHARACTER))
        return parseOther();
    if (!mayBeKeyword(scanner.text()))
        return parseName();
    if (scanner.skip("return ")) {
        emit(TOK_RETURN);
        return;
    }
    // Meant: keywords have no word boundary, so `format` begins with "for";
    // `ParseText.FindsKeywordsByPrefixAlone` holds it.
    if (scanner.startsWith("func ") || scanner.startsWith("while") || scanner.startsWith("for") ||
        scanner.startsWith("if"))
        return parseHeader();
    parseName();
}

void Parser::parseNumber()
{
    const float number = numberFromText(scanner.readNumberText());
    ScriptValue& value = emit(TOK_NUMBER).value;
    // 2^31 is the first float past the integers; the least integer is a float itself.
    const bool inRange = number >= -2147483648.0F && number < 2147483648.0F;
    if (inRange && static_cast<float>(static_cast<int>(number)) == number)
        value.setInt(static_cast<int>(number));
    else
        value.setFloat(number);
}

/// A control form or a function, up to its closing parenthesis.
void Parser::parseHeader()
{
    // Meant: tests one after the other on what is left, so `whileif(1)` is an "if", and no token at
    // all where no parenthesis follows; `ParseText.TestsKeywordsOneAfterTheOther` holds it.
    ScriptToken header;
    if (scanner.skip("while"))
        header.kind = TOK_WHILE;
    if (scanner.skip("func ")) {
        header.kind = TOK_FUNC;
        scanner.skipSpace();
        header.name = scanner.readVariablePath();
    }
    if (scanner.skip("for"))
        header.kind = TOK_FOR;
    if (scanner.skip("if"))
        header.kind = TOK_IF;
    scanner.skipSpace();
    if (!scanner.startsWith('('))
        return;

    const std::string_view inner = scanner.readParenthesised();
    if (header.kind != TOK_FUNC) {
        fillArguments(header.args, inner);
        emit(header.kind).args = std::move(header.args);
        emit(TOK_SEMICOLON);
        return;
    }
    // Meant: a second definition replaces the parameters and adds to the body;
    // `ParseText.AddsASecondDefinitionBehindTheFirst` holds it.
    ScriptFunction& function = interpreter.functions[header.name];
    function.keepRunningBody();
    interpreter.currentFunction = &function;
    interpreter.blockDepth = 0;
    fillArguments(header.args, inner);
    function.parameters = std::move(header.args);
}

/// A call or a variable.
void Parser::parseName()
{
    const std::string_view path = scanner.readVariablePath();
    scanner.skipSpace();
    if (!scanner.startsWith('(')) {
        emit(TOK_VARIABLE).name = path;
        return;
    }
    std::vector<ScriptToken> args;
    fillArguments(args, scanner.readParenthesised());
    if (args.empty())
        args.emplace_back();
    ScriptToken& call = emit(TOK_CALL);
    call.name = path;
    call.args = std::move(args);
}

void Parser::parseOther()
{
    if (parseOperator())
        return;
    if (scanner.skip(";")) {
        emit(TOK_SEMICOLON);
    } else if (scanner.skip("{")) {
        ++interpreter.blockDepth;
        emit(TOK_OPEN_BRACE);
        emit(TOK_SEMICOLON);
    } else if (scanner.skip("}")) {
        --interpreter.blockDepth;
        emit(TOK_CLOSE_BRACE);
        emit(TOK_SEMICOLON);
        if (interpreter.blockDepth == 0)
            interpreter.currentFunction = nullptr;
    } else {
        scanner.take(1);
    }
}

bool Parser::parseOperator()
{
    // Meant: "!" comes before "!=", which is therefore two tokens; so the table has it.
    // `ParseText.ReadsNotEqualAsTwoOperators` holds it.
    const auto front = static_cast<unsigned char>(scanner.text().front());
    for (std::int32_t row = firstOperators[front]; row < scriptOperatorCount; ++row) {
        if (scanner.skip(scriptOperators[row])) {
            emit(row);
            return true;
        }
    }
    return false;
}

/// Cuts parenthesised text at its commas and parses each piece, each followed by a `TOK_ARGEND`.
void Parser::fillArguments(std::vector<ScriptToken>& args, std::string_view inner)
{
    // Meant: every comma cuts, in a nested call and in a string too;
    // `ParseText.CutsArgumentsAtEveryComma` holds it.
    const bool hasComma = inner.find(',') != std::string_view::npos;
    if (!hasComma && Scanner(inner).isAllSpace())
        return;
    // A token every third character is usual, and each piece has its TOK_ARGEND.
    args.reserve(inner.size() / 3 + 2);
    ScriptFunction* const outerFunction = interpreter.currentFunction;
    for (bool more = true; more;) {
        const std::size_t comma = inner.find(',');
        more = comma != std::string_view::npos;
        interpreter.currentFunction = nullptr;
        Parser(interpreter, args, inner.substr(0, comma)).parse();
        interpreter.currentFunction = outerFunction;
        args.emplace_back();
        if (more)
            inner.remove_prefix(comma + 1);
    }
}
} // namespace

// The signature is the hosts'.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool parseText(ScriptInterpreter& interpreter, std::vector<ScriptToken>& out, std::string text)
{
    if (interpreter.currentFunction != nullptr)
        interpreter.currentFunction->keepRunningBody();
    Parser(interpreter, out, text).parse();
    return true;
}
} // namespace tamor

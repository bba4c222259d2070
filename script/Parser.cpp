#include "script/Parser.h"

#include "script/ScriptInterpreter.h"
#include "script/internal/Keywords.h"
#include "script/internal/Limits.h"
#include "script/internal/PositionWriter.h"
#include "script/internal/Scanner.h"
#include "script/internal/Stretches.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

namespace tamor
{
namespace
{
using script::headerKeywords;
using script::Keyword;
using script::returnKeyword;

/// One text on its way into a list.
class Parser
{
public:
    Parser(ScriptInterpreter& owner, std::vector<ScriptToken>& list, std::string_view wholeText,
           script::PositionWriter* writer)
        : interpreter(owner),
          out(list),
          target(&list),
          text(wholeText),
          stretches(wholeText),
          positions(writer),
          scanner(wholeText)
    {}

    void parseAll()
    {
        const std::size_t needed =
            out.size() + (interpreter.currentFunction == nullptr ? stretches.countTokens(text) : 0);
        // To grow a list by doubling takes half of a long text's time.
        // Room for a few tokens is made when they come, so that many short texts cost no more.
        if (needed > 2 * out.capacity())
            out.reserve(needed);
        parse();
    }

private:
    void parse()
    {
        for (scanner.skipSpace(); !scanner.atEnd(); scanner.skipSpace())
            parseItem();
    }

    void parseItem();
    void parseNumber();
    void parseHeader();
    void parseName();
    void parseOther();
    bool parseOperator();
    std::string_view readParenthesised();
    std::vector<ScriptToken> parseArguments(std::string_view inner);
    ScriptToken& emit(std::int32_t kind);
    ScriptToken& emitWithArguments(std::int32_t kind, std::vector<ScriptToken> args);

    /// The position in the text of something that begins at `at`.
    std::size_t positionOf(const char* at) const
    {
        return static_cast<std::size_t>(at - text.data());
    }

    ScriptInterpreter& interpreter;
    std::vector<ScriptToken>& out;
    /// The list, or that of the arguments that are being parsed.
    std::vector<ScriptToken>* target;
    std::string_view text;
    script::Stretches stretches;
    /// Null where nobody asks for positions.
    script::PositionWriter* positions;
    /// The rest of the text, or of the piece of an argument list that is being parsed.
    Scanner scanner;
    /// The argument lists around what is being parsed.
    std::uint32_t depth = 0;
};

constexpr auto operatorTexts = [] {
    std::array<std::string_view, scriptOperatorCount> texts;
    std::copy(std::begin(scriptOperators), std::end(scriptOperators), texts.begin());
    return texts;
}();

/// For each character, the first row of the operators that begins with it.
constexpr std::array<std::uint8_t, 256> firstOperators = [] {
    std::array<std::uint8_t, 256> rows{};
    rows.fill(scriptOperatorCount);
    for (std::uint8_t row = scriptOperatorCount; row-- > 0;)
        rows[static_cast<unsigned char>(operatorTexts[row].front())] = row;
    return rows;
}();

/// Whether a word may be one of the keywords, which are looked for in names only.
bool mayBeKeyword(std::string_view word)
{
    static constexpr auto begins = [] {
        std::array<bool, 256> letters{};
        for (const char letter : script::keywordLetters)
            letters[static_cast<unsigned char>(letter)] = true;
        return letters;
    }();
    return begins[static_cast<unsigned char>(word.front())];
}

/// Appends a token where tokens go at present: to the function being defined, or to the list.
ScriptToken& Parser::emit(std::int32_t kind)
{
    if (positions != nullptr)
        positions->emit(interpreter, target != &out);
    ScriptFunction* const function = interpreter.currentFunction;
    return (function != nullptr ? function->body : *target).emplace_back(kind);
}

ScriptToken& Parser::emitWithArguments(std::int32_t kind, std::vector<ScriptToken> args)
{
    ScriptToken& token = emit(kind);
    token.args = std::move(args);
    if (positions != nullptr)
        positions->attachArguments(token.args.size());
    return token;
}

/// What stands behind space. The order of the tests is the language: the first that applies wins.
void Parser::parseItem()
{
    if (positions != nullptr)
        positions->begin(positionOf(scanner.text().data()));
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
    if (scanner.skip(returnKeyword.text)) {
        emit(returnKeyword.kind);
        return;
    }
    // Meant: keywords have no word boundary, so `format` begins with "for";
    // `ParseText.FindsKeywordsByPrefixAlone` holds it.
    for (const Keyword& keyword : headerKeywords)
        if (scanner.startsWith(keyword.text))
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
    for (const Keyword& keyword : headerKeywords) {
        if (!scanner.skip(keyword.text))
            continue;
        header.kind = keyword.kind;
        if (keyword.kind == TOK_FUNC) {
            scanner.skipSpace();
            header.name = scanner.readVariablePath();
        }
    }
    scanner.skipSpace();
    if (!scanner.startsWith('('))
        return;

    const std::string_view inner = readParenthesised();
    if (header.kind != TOK_FUNC) {
        std::vector<ScriptToken> args = parseArguments(inner);
        emitWithArguments(header.kind, std::move(args));
        emit(TOK_SEMICOLON);
        return;
    }
    // Meant: a second definition replaces the parameters and adds to the body;
    // `ParseText.AddsASecondDefinitionBehindTheFirst` holds it.
    ScriptFunction& function = interpreter.functions[header.name];
    interpreter.currentFunction = &function;
    interpreter.blockDepth = 0;
    function.parameters = parseArguments(inner);
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
    std::vector<ScriptToken> args = parseArguments(readParenthesised());
    if (args.empty())
        args.emplace_back();
    emitWithArguments(TOK_CALL, std::move(args)).name = path;
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
        if (scanner.skip(operatorTexts[static_cast<std::size_t>(row)])) {
            emit(row);
            return true;
        }
    }
    return false;
}

/// What stands between the parenthesis at the front and the one that closes it. A text that ends
/// before that loses its last character.
std::string_view Parser::readParenthesised()
{
    // Meant: strings are not looked for, so a parenthesis inside quotes counts;
    // `ParseText.CountsAParenthesisInsideAString` holds it.
    const std::string_view rest = scanner.text();
    const std::size_t open = positionOf(rest.data());
    const std::size_t closing = stretches.closing(open);
    // A piece of an argument list may end before.
    const std::size_t length = closing - open < rest.size() ? closing - open + 1 : rest.size();
    const std::string_view stretch = scanner.take(length);
    return stretch.size() < 2 ? std::string_view() : stretch.substr(1, stretch.size() - 2);
}

/// Cuts parenthesised text at its commas and parses each piece, each followed by a `TOK_ARGEND`.
std::vector<ScriptToken> Parser::parseArguments(std::string_view inner)
{
    // Meant: every comma cuts, in a nested call and in a string too;
    // `ParseText.CutsArgumentsAtEveryComma` holds it.
    const auto commaIn = [&](std::string_view rest) {
        const std::size_t comma = stretches.comma(positionOf(rest.data()));
        return std::min(comma - positionOf(rest.data()), rest.size());
    };
    const std::uint32_t deepest = interpreter.limits.depth;
    if (++depth > deepest && deepest != 0) {
        script::reachLimit(interpreter, ScriptLimit::DEPTH, deepest);
        inner = {};
    }
    if (positions != nullptr)
        positions->beginArguments();
    const bool hasPieces =
        !inner.empty() && (commaIn(inner) < inner.size() || !Scanner(inner).isAllSpace());
    std::vector<ScriptToken> args;
    if (hasPieces)
        args.reserve(stretches.countTokens(inner) + 1);
    const Scanner behind = scanner;
    ScriptFunction* const outerFunction = interpreter.currentFunction;
    std::vector<ScriptToken>* const outerTarget = std::exchange(target, &args);
    for (bool more = hasPieces; more;) {
        const std::size_t length = commaIn(inner);
        more = length < inner.size();
        interpreter.currentFunction = nullptr;
        scanner = Scanner(inner.substr(0, length));
        parse();
        if (positions != nullptr)
            positions->begin(positionOf(inner.data() + length));
        interpreter.currentFunction = nullptr;
        emit(TOK_ARGEND);
        interpreter.currentFunction = outerFunction;
        inner.remove_prefix(more ? length + 1 : length);
    }
    target = outerTarget;
    scanner = behind;
    --depth;
    if (positions != nullptr)
        positions->endArguments();
    return args;
}
} // namespace

bool parseText(ScriptInterpreter& interpreter, std::vector<ScriptToken>& out, std::string text)
{
    Parser(interpreter, out, text, nullptr).parseAll();
    return true;
}

bool parseText(ScriptInterpreter& interpreter, std::vector<ScriptToken>& out, std::string text,
               ScriptPositions& positions)
{
    script::PositionWriter writer(text, positions, interpreter, out.size());
    Parser(interpreter, out, text, &writer).parseAll();
    return true;
}
} // namespace tamor

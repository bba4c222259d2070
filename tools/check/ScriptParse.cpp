#include "tools/check/ScriptParse.h"

#include "tools/check/ScriptArguments.h"
#include "tools/check/Words.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tamor::check
{
namespace
{
// Deeper than a person writes; the checker's own calls go as deep.
constexpr int deepest = 200;

constexpr long hugeArray = 1000000;

class ScriptParser
{
public:
    ScriptParser(Source& newSource, ParsedScript& newScript)
        : source(newSource), text(newSource.text()), script(newScript)
    {}

    void run();

private:
    bool isSpace(std::size_t i) const { return i < end && classes().space[byte(i)]; }
    bool isNumber(std::size_t i) const { return i < end && classes().number[byte(i)]; }
    bool isName(std::size_t i) const { return i < end && classes().name[byte(i)]; }
    unsigned char byte(std::size_t i) const { return static_cast<unsigned char>(text[i]); }
    char at(std::size_t i) const { return i < end ? text[i] : '\0'; }
    bool startsWith(std::string_view word) const
    {
        return text.substr(position, end - position).starts_with(word);
    }

    void parseRange(std::vector<PlacedToken>& out, std::size_t newBegin, std::size_t newEnd);
    void parseNext();
    void emit(std::int32_t kind, std::size_t begin, std::size_t tokenEnd);
    void emit(PlacedToken token);
    void skipSpace();
    void readNumber();
    void readString();
    void readPath();
    void readHeader();
    void checkIndex(std::size_t digits);
    bool readKeyword(std::string_view word, bool& isGlued);
    void readName();
    void readFunctionName(PlacedToken& token);
    void beginFunction(PlacedToken header);
    bool readOperator();
    void readBrace();
    void readArguments(PlacedToken& token);
    void splitArguments(PlacedToken& token, std::size_t begin, std::size_t innerEnd);
    void stop(std::string_view code, std::size_t offset, const std::string& message);

    Source& source;
    std::string_view text;
    ParsedScript& script;
    std::size_t position = 0;
    std::size_t end = 0;
    std::vector<PlacedToken>* out = nullptr;
    PlacedFunction* function = nullptr;
    std::vector<std::size_t> openBraces;
    std::size_t functionBraces = 0; ///< the braces that were open in front of the function
    std::size_t lastDropped = 0;    ///< behind the last character that disappeared
    int depth = 0;
    bool isStopped = false;
};

void ScriptParser::stop(std::string_view code, std::size_t offset, const std::string& message)
{
    source.report(code, offset, message);
    isStopped = true;
    script.isWhole = false;
}

void ScriptParser::run()
{
    const std::size_t zero = text.find('\0');
    if (zero != std::string_view::npos) {
        source.report("script-zero", zero, "a script ends at its first zero byte");
        text = text.substr(0, zero);
    }
    parseRange(script.list, 0, text.size());
    if (isStopped)
        return;
    for (const std::size_t brace : openBraces) {
        source.report("script-brace", brace, "this brace is never closed");
        script.isWhole = false;
    }
    if (function != nullptr && openBraces.empty()) {
        source.report("script-function-body", function->begin,
                      "the function has no block: it takes in all that follows");
        script.isWhole = false;
    }
}

void ScriptParser::parseRange(std::vector<PlacedToken>& newOut, std::size_t newBegin,
                              std::size_t newEnd)
{
    std::vector<PlacedToken>* const oldOut = std::exchange(out, &newOut);
    const std::size_t oldPosition = std::exchange(position, newBegin);
    const std::size_t oldEnd = std::exchange(end, newEnd);
    ++depth;
    if (depth > deepest)
        stop("script-deep", newBegin, "calls stand in each other too deeply");
    while (position < end && !isStopped)
        parseNext();
    --depth;
    out = oldOut;
    position = oldPosition;
    end = oldEnd;
}

void ScriptParser::parseNext()
{
    const char front = at(position);
    if (isSpace(position)) {
        ++position;
    } else if (isNumber(position)) {
        readNumber();
    } else if (front == '"') {
        readString();
    } else if (startsWith("return ")) {
        emit(TOK_RETURN, position, position + 6);
        position += 7;
    } else if (startsWith("func ") || startsWith("while") || startsWith("for") ||
               startsWith("if")) {
        readHeader();
    } else if (isName(position)) {
        readName();
    } else if (readOperator()) {
        return;
    } else if (front == ';') {
        emit(TOK_SEMICOLON, position, position + 1);
        ++position;
    } else if (front == '{' || front == '}') {
        readBrace();
    } else {
        // Carriage returns mean as much as spaces do, and a row of characters is one finding.
        if (front != '\r' && (lastDropped == 0 || lastDropped != position)) {
            source.report("script-character", position,
                          inQuotes(text.substr(position, 1)) + " means nothing and disappears" +
                              (front == '#' ? ": there are no remarks" : ""));
        }
        ++position;
        lastDropped = position;
    }
}

void ScriptParser::emit(std::int32_t kind, std::size_t begin, std::size_t tokenEnd)
{
    emit({kind, begin, tokenEnd, {}});
}

void ScriptParser::emit(PlacedToken token)
{
    (function != nullptr ? function->body : *out).push_back(std::move(token));
}

void ScriptParser::skipSpace()
{
    while (isSpace(position))
        ++position;
}

void ScriptParser::readNumber()
{
    const std::size_t begin = position;
    while (isNumber(position))
        ++position;
    const std::string_view number = text.substr(begin, position - begin);
    // A number's first characters decide, and the rest of the run is lost.
    const bool isBroken = number.find('-', 1) != std::string_view::npos ||
                          std::count(number.begin(), number.end(), '.') > 1;
    if (isBroken) {
        source.report("script-number", begin,
                      inQuotes(number) + " is read as one number, and what is behind its first "
                                         "part is lost: a - is no operator");
    }
    emit(TOK_NUMBER, begin, position);
}

void ScriptParser::readString()
{
    const std::size_t begin = position++;
    while (position < end && text[position] != '"')
        position += text[position] == '\'' ? 2 : 1;
    if (position >= end) {
        stop("script-string", begin, "the string is not finished: the program ends");
        return;
    }
    ++position;
    emit(TOK_STRING, begin, position);
}

void ScriptParser::readPath()
{
    const std::size_t begin = position;
    while (isName(position) || at(position) == '[') {
        const bool isIndex = at(position) == '[';
        while (at(position) == '[') {
            const std::size_t digits = ++position;
            while (isNumber(position))
                ++position;
            checkIndex(digits);
        }
        if (position >= end || (isIndex && text[position] == '"')) {
            stop("script-index", begin,
                 "the index is not finished, or no literal number: the program ends");
            return;
        }
        if (isIndex && (text[position] != ']' || text[position - 1] == '[')) {
            source.report("script-computed-index", begin,
                          "an index is a literal number: this is the whole array");
            lastDropped = position + 1;
            while (lastDropped < end && text[lastDropped] != ']' && isName(lastDropped))
                ++lastDropped;
        }
        ++position;
    }
}

/// Checks the number that reaches from `digits` to the position.
void ScriptParser::checkIndex(std::size_t digits)
{
    const std::string number(text.substr(digits, position - digits));
    const long index = std::strtol(number.c_str(), nullptr, 10);
    if (index < 0 || index >= hugeArray) {
        source.report("script-index-range", digits,
                      "an array grows up to its index: " + number + " takes all memory there is");
    }
}

bool ScriptParser::readKeyword(std::string_view word, bool& isGlued)
{
    if (!startsWith(word))
        return false;
    position += word.size();
    isGlued = isName(position) && word.back() != ' ';
    return true;
}

// One way serves all four: the tests go on on what is left of the text.
void ScriptParser::readHeader()
{
    PlacedToken token;
    token.begin = position;
    bool isGlued = false;
    if (readKeyword("while", isGlued))
        token.kind = TOK_WHILE;
    if (readKeyword("func ", isGlued)) {
        token.kind = TOK_FUNC;
        readFunctionName(token);
    }
    if (readKeyword("for", isGlued))
        token.kind = TOK_FOR;
    if (readKeyword("if", isGlued))
        token.kind = TOK_IF;
    const std::size_t keywordEnd = position;
    if (token.kind != TOK_FUNC)
        token.end = keywordEnd;
    skipSpace();
    if (isStopped)
        return;
    if (at(position) != '(') {
        const std::string word(text.substr(token.begin, keywordEnd - token.begin));
        if (isGlued) {
            source.report("script-keyword", token.begin,
                          "a name that begins with " + inQuotes(word) + " loses it");
        } else {
            source.report("script-header", token.begin,
                          inQuotes(word) + " without a parenthesis disappears");
        }
        return;
    }
    readArguments(token);
    if (token.kind == TOK_FUNC) {
        beginFunction(std::move(token));
        return;
    }
    const std::size_t begin = token.begin;
    emit(std::move(token));
    emit(TOK_SEMICOLON, begin, begin);
}

void ScriptParser::readFunctionName(PlacedToken& token)
{
    skipSpace();
    token.begin = position;
    readPath();
    token.end = position;
}

void ScriptParser::beginFunction(PlacedToken header)
{
    const std::string name(text.substr(header.begin, header.end - header.begin));
    if (function != nullptr || depth > 1) {
        source.report("script-nested", header.begin, "a function inside another ends that one");
        script.isWhole = false;
    }
    const auto [entry, isNew] = script.functions.try_emplace(name);
    if (!isNew) {
        source.report("script-twice", header.begin,
                      inQuotes(name) + " is defined above too: both bodies run, that one first");
    }
    function = &entry->second;
    function->begin = header.begin;
    function->parameters = std::move(header.args);
    functionBraces = openBraces.size();
    skipSpace();
    if (at(position) != '{' && at(position) != '\r') {
        source.report("script-function-body", header.begin,
                      "the function has no block: it takes in all that follows, up to a brace");
        script.isWhole = false;
    }
}

void ScriptParser::readName()
{
    PlacedToken token;
    token.begin = position;
    readPath();
    token.end = position;
    if (isStopped)
        return;
    skipSpace();
    token.kind = TOK_VARIABLE;
    if (at(position) == '(') {
        token.kind = TOK_CALL;
        readArguments(token);
        if (token.args.empty())
            token.args.push_back({TOK_ARGEND, position, position, {}});
    }
    emit(std::move(token));
}

bool ScriptParser::readOperator()
{
    for (std::int32_t kind = 0; kind < scriptOperatorCount; ++kind) {
        const std::string_view word = scriptOperators[kind];
        if (startsWith(word)) {
            emit(kind, position, position + word.size());
            position += word.size();
            return true;
        }
    }
    return false;
}

void ScriptParser::readBrace()
{
    const bool opens = at(position) == '{';
    const std::size_t begin = position++;
    if (depth > 1) {
        source.report("script-brace", begin, "a brace inside parentheses");
        script.isWhole = false;
    }
    emit(opens ? TOK_OPEN_BRACE : TOK_CLOSE_BRACE, begin, position);
    emit(TOK_SEMICOLON, begin, begin);
    if (opens) {
        openBraces.push_back(begin);
    } else if (openBraces.empty()) {
        source.report("script-brace", begin, "this brace closes nothing");
        script.isWhole = false;
    } else {
        openBraces.pop_back();
        if (function != nullptr && openBraces.size() == functionBraces)
            function = nullptr;
    }
}

void ScriptParser::readArguments(PlacedToken& token)
{
    const std::size_t begin = position + 1;
    int open = 1;
    std::size_t next = begin;
    for (; open > 0 && next < end; ++next)
        open += text[next] == '(' ? 1 : text[next] == ')' ? -1 : 0;
    const std::size_t innerEnd = std::max(next - 1, begin);
    const std::size_t soundEnd = open == 0 ? innerEnd : end;
    if (const std::optional<ArgumentFault> fault =
            faultOfArguments(text.substr(0, end), begin, soundEnd))
        stop(fault->code, fault->offset, fault->message);
    else if (open != 0)
        stop("script-paren", position, "this parenthesis is never closed");
    else
        splitArguments(token, begin, innerEnd);
    position = next;
}

void ScriptParser::splitArguments(PlacedToken& token, std::size_t begin, std::size_t innerEnd)
{
    const std::string_view inner = text.substr(begin, innerEnd - begin);
    const bool isBlank = std::all_of(inner.begin(), inner.end(), [](char c) {
        return classes().space[static_cast<unsigned char>(c)];
    });
    if (isBlank)
        return;
    PlacedFunction* const outer = std::exchange(function, nullptr);
    std::size_t pieceBegin = begin;
    while (!isStopped) {
        const std::size_t comma =
            std::min(text.substr(0, innerEnd).find(',', pieceBegin), innerEnd);
        parseRange(token.args, pieceBegin, comma);
        token.args.push_back({TOK_ARGEND, comma, comma, {}});
        if (comma == innerEnd)
            break;
        pieceBegin = comma + 1;
    }
    function = outer;
}
} // namespace

ParsedScript parseScript(Source& source)
{
    ParsedScript script;
    ScriptParser(source, script).run();
    return script;
}
} // namespace tamor::check

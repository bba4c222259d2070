#include "tests/script/PlainInterpreter.h"

#include "tests/support/PlainNumber.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <sstream>

namespace tamor::test
{
namespace
{
const char* const operators[20] = {"(", ")",  "++", "--", "^", "*",  "/", "%",  "+",  "-",
                                   "!", "&&", "||", "<=", "<", ">=", ">", "==", "!=", "="};

bool isOneOf(const std::string& text, const std::string& characters)
{
    return !text.empty() && characters.find(text[0]) != std::string::npos;
}

bool isSpace(const std::string& text)
{
    return isOneOf(text, " \t\n");
}

bool isNumber(const std::string& text)
{
    return isOneOf(text, "0123456789.-");
}

bool isName(const std::string& text)
{
    return isOneOf(text, "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ-_:");
}

bool begins(const std::string& text, const std::string& prefix)
{
    return text.find(prefix) == 0;
}

std::string takeFront(std::string& text)
{
    std::string front = text.substr(0, 1);
    text = text.substr(1); // throws past the end
    return front;
}

void drop(std::string& text, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        takeFront(text);
}

std::string takeWhile(std::string& text, bool (*test)(const std::string&))
{
    std::string taken;
    while (test(text))
        taken += takeFront(text);
    return taken;
}

bool allSpace(std::string text)
{
    takeWhile(text, isSpace);
    return text.empty();
}

std::string takePath(std::string& text)
{
    std::string path;
    while (isName(text) || begins(text, "[")) {
        while (begins(text, "[")) {
            path += takeFront(text);
            path += takeWhile(text, isNumber);
        }
        path += takeFront(text);
    }
    return path;
}

std::string takeString(std::string& text)
{
    std::string content;
    takeFront(text);
    while (!begins(text, "\"")) {
        if (begins(text, "'"))
            takeFront(text);
        content += takeFront(text);
    }
    takeFront(text);
    return content;
}

std::string takeParenthesised(std::string& text)
{
    std::size_t end = 1;
    int depth = 1;
    while (depth != 0 && end < text.size()) {
        if (text[end] == '(')
            depth = depth + 1;
        if (text[end] == ')')
            depth = depth - 1;
        end = end + 1;
    }
    std::string stretch = text.substr(0, end);
    text = text.substr(end);
    if (stretch.size() < 2)
        return "";
    return stretch.substr(1, stretch.size() - 2);
}

ScriptValue numberValue(const std::string& text)
{
    std::istringstream stream(text);
    float number = 0;
    takePlainNumber(stream, number);
    ScriptValue value;
    const double wide = number;
    if (wide > -2147483649.0 && wide < 2147483648.0 && std::trunc(wide) == wide)
        value.setInt(static_cast<int>(number));
    else
        value.setFloat(number);
    return value;
}

bool isControl(int kind)
{
    return kind == TOK_IF || kind == TOK_FOR || kind == TOK_WHILE;
}

// ---------------------------------------------------------------------------------------- Values

bool holdsNumber(const ScriptValue& value)
{
    return value.type == TYPE_INT || value.type == TYPE_FLOAT;
}

long double wide(const ScriptValue& value)
{
    return value.type == TYPE_INT ? static_cast<long double>(value.number)
                                  : static_cast<long double>(value.asFloat());
}

float narrow(const ScriptValue& value)
{
    return value.type == TYPE_INT ? static_cast<float>(value.number) : value.asFloat();
}

ScriptValue floatOf(long double number)
{
    ScriptValue value;
    value.setFloat(static_cast<float>(number));
    return value;
}

/// The integer of which the lower 32 bits are those of `number`.
ScriptValue intOf(std::int64_t number)
{
    return {static_cast<std::int32_t>(static_cast<std::uint32_t>(number))};
}

int cut(float number)
{
    if (!(number >= -2147483648.0F && number < 2147483648.0F))
        throw NoOutcome{"a float that no integer holds"};
    return static_cast<int>(number);
}

int cut(const ScriptValue& value)
{
    return value.type == TYPE_INT ? value.number : cut(value.asFloat());
}

bool truth(const ScriptValue& value)
{
    if (value.type == TYPE_INT)
        return value.number != 0;
    if (value.type == TYPE_FLOAT)
        return value.asFloat() != 0;
    return value.type == TYPE_STRING && value.text == "true";
}

bool same(const ScriptValue& a, const ScriptValue& b)
{
    if (a.type != b.type)
        return false;
    if (a.type == TYPE_INT)
        return a.number == b.number;
    if (a.type == TYPE_FLOAT)
        return a.asFloat() == b.asFloat();
    if (a.type == TYPE_STRING)
        return a.text == b.text;
    if (a.type == TYPE_ARRAY) {
        bool all = a.items.size() == b.items.size();
        for (std::size_t i = 0; all && i < a.items.size(); ++i)
            all = same(a.items[i], b.items[i]);
        return all;
    }
    return true;
}

bool less(const ScriptValue& a, const ScriptValue& b)
{
    if (a.type == TYPE_INT && b.type == TYPE_INT)
        return a.number < b.number;
    return narrow(a) < narrow(b);
}

std::string print(const ScriptValue& value)
{
    std::ostringstream stream;
    if (value.type == TYPE_NULL)
        stream << "NULL";
    if (value.type == TYPE_INT)
        stream << value.number;
    if (value.type == TYPE_STRING)
        stream << value.text;
    if (value.type == TYPE_FLOAT)
        stream << value.asFloat();
    if (value.type == TYPE_ARRAY) {
        stream << "Array {";
        for (std::size_t i = 0; i < value.items.size(); ++i)
            stream << " [" << i << "]=" << print(value.items[i]);
        stream << " }";
    }
    return stream.str();
}

/// Whether one value is somewhere inside another.
bool holds(const ScriptValue& outer, const ScriptValue& inner)
{
    for (const ScriptValue& item : outer.items)
        if (&item == &inner || holds(item, inner))
            return true;
    return false;
}

std::size_t sizeOf(const ScriptValue& value)
{
    std::size_t size = 1;
    for (const ScriptValue& item : value.items)
        size += sizeOf(item);
    return size;
}

ScriptValue sum(const ScriptValue& a, const ScriptValue& b)
{
    if (a.type == TYPE_INT && b.type == TYPE_INT)
        return intOf(std::int64_t{a.number} + b.number);
    if (holdsNumber(a) && holdsNumber(b))
        return floatOf(wide(a) + wide(b));
    if (a.type != TYPE_STRING && b.type != TYPE_STRING)
        return {};
    if (a.type == TYPE_ARRAY || b.type == TYPE_ARRAY)
        return {std::string()};
    if (print(a).size() + print(b).size() > 5000)
        throw NoOutcome{"a string that takes much memory"};
    return {print(a) + print(b)};
}

ScriptValue difference(const ScriptValue& a, const ScriptValue& b)
{
    if (a.type == TYPE_INT && b.type == TYPE_INT)
        return intOf(std::int64_t{a.number} - b.number);
    if (holdsNumber(a) && holdsNumber(b))
        return floatOf(wide(a) - wide(b));
    return {};
}

ScriptValue product(const ScriptValue& a, const ScriptValue& b)
{
    if (a.type == TYPE_INT && b.type == TYPE_INT)
        return intOf(std::int64_t{a.number} * b.number);
    if (holdsNumber(a) && holdsNumber(b))
        return floatOf(wide(a) * wide(b));
    return {};
}

ScriptValue quotient(const ScriptValue& a, const ScriptValue& b)
{
    if (holdsNumber(a) && holdsNumber(b))
        return floatOf(wide(a) / wide(b));
    return {};
}

ScriptValue rest(const ScriptValue& a, const ScriptValue& b)
{
    if (!holdsNumber(a) || !holdsNumber(b))
        return {};
    if (cut(b) == 0 || cut(b) == -1)
        throw NoOutcome{"a division that traps"};
    return {cut(a) % cut(b)};
}

ScriptValue powerOf(const ScriptValue& a, const ScriptValue& b)
{
    if (!holdsNumber(a) || !holdsNumber(b))
        return {};
    const float result = powf(narrow(a), narrow(b));
    if (a.type == TYPE_INT && b.type == TYPE_INT)
        return {cut(result)};
    return floatOf(result);
}
} // namespace

PlainInterpreter::PlainInterpreter()
{
    variables["false"] = ScriptValue(0);
    variables["true"] = ScriptValue(1);
    variables["pi"].setFloat(static_cast<float>(3.141592653589793));
    builtins["print"] = [this](const std::vector<ScriptValue>& values) -> ScriptValue {
        for (const ScriptValue& value : values)
            messages += print(value) + " ";
        messages += "\n";
        return {static_cast<int>(values.size())};
    };
}

// --------------------------------------------------------------------------------------- Scanning

void PlainInterpreter::emit(std::vector<ScriptToken>& out, const ScriptToken& token)
{
    if (currentFunction != nullptr)
        currentFunction->body.push_back(token);
    else
        out.push_back(token);
}

void PlainInterpreter::parse(std::vector<ScriptToken>& out, std::string text)
{
    while (!text.empty()) {
        if (isSpace(text)) {
            takeFront(text);
            continue;
        }
        if (isNumber(text)) {
            const ScriptValue value = numberValue(takeWhile(text, isNumber));
            emit(out, ScriptToken(TOK_NUMBER, value, ""));
            continue;
        }
        if (begins(text, "\"")) {
            emit(out, ScriptToken(TOK_STRING, ScriptValue(takeString(text)), ""));
            continue;
        }
        if (begins(text, "return ")) {
            drop(text, 7);
            emit(out, ScriptToken(TOK_RETURN, {}, ""));
            continue;
        }
        if (begins(text, "func ") || begins(text, "while") || begins(text, "for") ||
            begins(text, "if")) {
            parseHeader(out, text);
            continue;
        }
        if (isName(text)) {
            const std::string path = takePath(text);
            takeWhile(text, isSpace);
            if (!begins(text, "(")) {
                emit(out, ScriptToken(TOK_VARIABLE, {}, path));
                continue;
            }
            ScriptToken token(TOK_CALL, {}, path);
            fillArguments(token.args, takeParenthesised(text));
            if (token.args.empty())
                token.args.push_back(ScriptToken());
            emit(out, token);
            continue;
        }
        bool found = false;
        for (int row = 0; row < 20 && !found; ++row) {
            if (begins(text, operators[row])) {
                emit(out, ScriptToken(row, {}, ""));
                drop(text, std::string(operators[row]).size());
                found = true;
            }
        }
        if (found)
            continue;
        const std::string front = takeFront(text);
        if (front == ";")
            emit(out, ScriptToken(TOK_SEMICOLON, {}, ""));
        if (front == "{") {
            blockDepth = blockDepth + 1;
            emit(out, ScriptToken(TOK_OPEN_BRACE, {}, ""));
            emit(out, ScriptToken(TOK_SEMICOLON, {}, ""));
        }
        if (front == "}") {
            blockDepth = blockDepth - 1;
            emit(out, ScriptToken(TOK_CLOSE_BRACE, {}, ""));
            emit(out, ScriptToken(TOK_SEMICOLON, {}, ""));
            if (blockDepth == 0)
                currentFunction = nullptr;
        }
    }
}

void PlainInterpreter::parseHeader(std::vector<ScriptToken>& out, std::string& text)
{
    ScriptToken token;
    if (begins(text, "while")) {
        drop(text, 5);
        token.kind = TOK_WHILE;
    }
    if (begins(text, "func ")) {
        drop(text, 5);
        token.kind = TOK_FUNC;
        takeWhile(text, isSpace);
        token.name = takePath(text);
    }
    if (begins(text, "for")) {
        drop(text, 3);
        token.kind = TOK_FOR;
    }
    if (begins(text, "if")) {
        drop(text, 2);
        token.kind = TOK_IF;
    }
    takeWhile(text, isSpace);
    if (!begins(text, "("))
        return;
    const std::string inner = takeParenthesised(text);
    if (token.kind == TOK_FUNC) {
        currentFunction = &functions[token.name];
        blockDepth = 0;
    }
    fillArguments(token.args, inner);
    if (token.kind == TOK_FUNC) {
        functions[token.name].parameters = token.args;
        return;
    }
    emit(out, token);
    emit(out, ScriptToken(TOK_SEMICOLON, {}, ""));
}

void PlainInterpreter::fillArguments(std::vector<ScriptToken>& args, std::string inner)
{
    int commas = 0;
    for (const char c : inner)
        if (c == ',')
            commas = commas + 1;
    int pieces = commas + 1;
    if (commas == 0 && allSpace(inner))
        pieces = 0;
    for (int i = 0; i < pieces; ++i) {
        const std::size_t comma = inner.find(',');
        const std::string piece = inner.substr(0, comma);
        if (comma != std::string::npos)
            inner = inner.substr(comma + 1);
        PlainFunction* const saved = currentFunction;
        currentFunction = nullptr;
        parse(args, piece);
        currentFunction = saved;
        args.push_back(ScriptToken());
    }
}

// ------------------------------------------------------------------------------------- Evaluation

void PlainInterpreter::countStep()
{
    steps = steps + 1;
    if (steps > 800)
        throw NoOutcome{"too many steps"};
}

ScriptValue* PlainInterpreter::resolve(std::string path)
{
    if (!isName(path))
        return nullptr;
    ScriptValue* result = nullptr;
    bool found = false;
    while (!allSpace(path)) {
        if (isName(path)) {
            result = &variables[takeWhile(path, isName)];
            found = true;
            continue;
        }
        if (!begins(path, "["))
            return nullptr;
        if (!found)
            break;
        takeFront(path);
        takeWhile(path, isSpace);
        if (!isNumber(path))
            break;
        std::istringstream stream(takeWhile(path, isNumber));
        int index = 0;
        if (!(stream >> index))
            index = 0;
        if (index < 0 || index > 100)
            throw NoOutcome{"an index that takes much memory"};
        result = &result->arrayElement(static_cast<unsigned>(index));
        while (isSpace(path) || begins(path, "]"))
            takeFront(path);
    }
    return found ? result : nullptr;
}

ScriptValue PlainInterpreter::evaluate(std::vector<ScriptToken> list)
{
    countStep();
    const std::vector<ScriptToken> original = list;
    while (!list.empty() && list.back().kind == TOK_ARGEND)
        list.pop_back();
    while (!list.empty() && (list[0].kind == TOK_OPEN_BRACE || list[0].kind == TOK_CLOSE_BRACE)) {
        blockDepth = blockDepth + (list[0].kind == TOK_OPEN_BRACE ? 1 : -1);
        list.erase(list.begin());
    }
    if (list.empty())
        return {};
    if (list.size() == 1) {
        const ScriptToken& token = list[0];
        if (token.kind == TOK_NUMBER || token.kind == TOK_STRING)
            return token.value;
        if (token.kind == TOK_VARIABLE) {
            const ScriptValue* const slot = resolve(token.name);
            return slot != nullptr ? *slot : ScriptValue();
        }
        if (token.kind == TOK_FUNC)
            return {};
        if (token.kind == TOK_CALL)
            return call(token);
    }

    bool changed = list.size() != original.size();
    for (std::size_t p = 0; p < list.size(); ++p) {
        if (list[p].kind != 0)
            continue;
        int count = 0;
        std::size_t n = 0;
        for (;; ++n) {
            if (p + n >= list.size())
                throw NoOutcome{"a group that nothing closes"};
            if (list[p + n].kind == 0)
                count = count + 1;
            if (list[p + n].kind == 1)
                count = count - 1;
            if (count == 0)
                break;
        }
        std::vector<ScriptToken> inner(n);
        for (std::size_t k = 0; k + 1 < n; ++k)
            inner[k] = list[p + 1 + k];
        const ScriptValue value = evaluate(inner);
        const auto at = list.begin() + static_cast<std::ptrdiff_t>(p);
        list.erase(at, at + static_cast<std::ptrdiff_t>(n) + 1);
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(p),
                    ScriptToken(value.type == TYPE_STRING ? TOK_STRING : TOK_NUMBER, value, ""));
        changed = true;
    }
    for (int kind = 2; kind <= 19; ++kind) {
        for (int i = static_cast<int>(list.size()) - 1; i >= 0; --i) {
            const std::size_t index = static_cast<std::size_t>(i);
            if (index < list.size() && list[index].kind == kind) {
                reduce(list, index);
                changed = true;
            }
        }
    }
    if (!changed)
        throw NoOutcome{"a list that cannot be reduced"};
    return evaluate(list);
}

void PlainInterpreter::reduce(std::vector<ScriptToken>& list, std::size_t i)
{
    ScriptToken left;
    ScriptToken right;
    if (i > 0)
        left = list[i - 1];
    if (i + 1 < list.size())
        right = list[i + 1];
    if (list.size() < 2)
        throw NoOutcome{"an operator alone"};
    if ((left.kind >= 2 && left.kind <= 19) || (right.kind >= 2 && right.kind <= 19))
        throw NoOutcome{"an operator beside an operator"};

    ScriptValue leftValue = evaluate({left});
    ScriptValue rightValue = evaluate({right});
    ScriptValue* rightPlace = &rightValue;
    ScriptValue* leftPlace = &leftValue;
    if (right.kind == TOK_VARIABLE && resolve(right.name) != nullptr)
        rightPlace = resolve(right.name);
    if (left.kind == TOK_VARIABLE && resolve(left.name) != nullptr)
        leftPlace = resolve(left.name);
    const ScriptValue result = apply(*leftPlace, list[i].kind, *rightPlace);

    const std::size_t q = i == 0 ? 0 : i - 1;
    for (std::size_t j = q; list.size() - 2 > j; ++j) {
        const ScriptToken moved = list[j + 2];
        list[j] = moved;
    }
    list[q] = ScriptToken(result.type == TYPE_STRING ? TOK_STRING : TOK_NUMBER, result, "");
    list.pop_back();
    list.pop_back();
}

ScriptValue PlainInterpreter::apply(ScriptValue& left, int kind, ScriptValue& right)
{
    ScriptValue result;
    switch (kind) {
    case 2:
    case 3:
        if (left.type == TYPE_NULL) {
            const bool leftGoes = holds(right, left);
            right = kind == 2 ? sum(right, 1) : difference(right, 1);
            result = right;
            if (leftGoes)
                return result;
        }
        if (right.type == TYPE_NULL) {
            left = kind == 2 ? sum(left, 1) : difference(left, 1);
            result = left;
        }
        return result;
    case 4:
        return powerOf(left, right);
    case 5:
        return product(left, right);
    case 6:
        return quotient(left, right);
    case 7:
        return rest(left, right);
    case 8:
        return sum(left, right);
    case 9:
        return difference(left, right);
    case 10:
        return {truth(right) ? 0 : 1};
    case 11:
        return {truth(left) && truth(right) ? 1 : 0};
    case 12:
        return {truth(left) || truth(right) ? 1 : 0};
    case 13:
        return {truth(left) && !truth(right) ? 0 : 1};
    case 14:
        if (!holdsNumber(left) || !holdsNumber(right))
            return {};
        return {less(left, right) ? 1 : 0};
    case 15:
        return {!truth(left) && truth(right) ? 0 : 1};
    case 16:
        return {holdsNumber(left) && holdsNumber(right) && less(right, left) ? 1 : 0};
    case 17:
        return {same(left, right) ? 1 : 0};
    case 18:
        return {truth(left) == truth(right) ? 0 : 1};
    default:
        if (sizeOf(right) > 1000)
            throw NoOutcome{"an array that takes much memory"};
        const ScriptValue copy = right;
        left = copy;
        return left;
    }
}

ScriptValue PlainInterpreter::call(const ScriptToken& token)
{
    depth = depth + 1;
    if (depth > 50)
        throw NoOutcome{"calls too deep"};
    std::vector<ScriptValue> values;
    std::vector<ScriptToken> piece;
    for (const ScriptToken& argument : token.args) {
        if (argument.kind != TOK_ARGEND) {
            piece.push_back(argument);
            continue;
        }
        if (!piece.empty())
            values.push_back(evaluate(piece));
        piece.clear();
    }
    ScriptValue result;
    if (builtins[token.name]) {
        const PlainBuiltin builtin = builtins[token.name];
        result = builtin(values);
        depth = depth - 1;
        return result;
    }
    const std::vector<ScriptToken> parameters = functions[token.name].parameters;
    const std::vector<ScriptToken> body = functions[token.name].body;
    if (body.empty()) {
        messages += "cannot find reference to " + token.name + "\n";
        depth = depth - 1;
        return {};
    }
    for (std::size_t i = 0; i + 1 < parameters.size() && i < values.size(); i = i + 2) {
        if (!bind(parameters, i))
            break;
        const std::string name = parameters[i].name;
        variables["::" + name] = ScriptValue(variables[name]);
        variables[name] = values[i];
    }
    result = run(body);
    // By then the host may have given the function other parameters, or have removed it.
    std::vector<ScriptToken> present = parameters;
    if (functions.count(token.name) > 0)
        present = functions[token.name].parameters;
    for (std::size_t i = 0; i + 1 < present.size() && i < values.size(); i = i + 2) {
        if (!bind(present, i))
            break;
        const std::string name = present[i].name;
        variables[name] = ScriptValue(variables["::" + name]);
    }
    depth = depth - 1;
    return result;
}

/// Whether the parameter can be bound; says so where it cannot.
bool PlainInterpreter::bind(const std::vector<ScriptToken>& parameters, std::size_t i)
{
    if (parameters[i].kind == TOK_VARIABLE)
        return true;
    messages += "token " + std::to_string(i) + " is not a variable name\n";
    return false;
}

// ------------------------------------------------------------------------------------- Statements

ScriptValue PlainInterpreter::run(const std::vector<ScriptToken>& list)
{
    const auto tokenAt = [&](std::size_t at) -> const ScriptToken& {
        if (at >= list.size())
            throw NoOutcome{"past the end of a list"};
        return list[at];
    };
    ScriptValue last;
    std::vector<ScriptToken> statement;
    for (std::size_t it = 0; it < list.size(); ++it) {
        countStep();
        if (list[it].kind == TOK_RETURN)
            return tokenAt(it + 1).value;
        if (list[it].kind != TOK_SEMICOLON) {
            statement.push_back(list[it]);
            continue;
        }
        if (statement.size() != 1 || !isControl(statement[0].kind)) {
            const ScriptValue value = evaluate(statement);
            if (truth(value))
                last = value;
            statement.clear();
            continue;
        }
        const ScriptToken header = statement[0];
        const std::size_t headerAt = it - 1;
        statement.clear();
        if (header.kind == TOK_IF) {
            if (truth(evaluate(header.args)))
                continue;
            it = it + 1;
            if (tokenAt(it).kind == TOK_OPEN_BRACE) {
                it = it + 1;
                for (int braces = 1; braces > 0; ++it) {
                    if (tokenAt(it).kind == TOK_OPEN_BRACE)
                        braces = braces + 1;
                    if (tokenAt(it).kind == TOK_CLOSE_BRACE)
                        braces = braces - 1;
                }
            }
            continue;
        }
        std::size_t end = it + 1;
        if (tokenAt(end).kind == TOK_OPEN_BRACE) {
            end = end + 1;
            for (int braces = 1; braces > 0; ++end) {
                if (tokenAt(end).kind == TOK_OPEN_BRACE)
                    braces = braces + 1;
                if (tokenAt(end).kind == TOK_CLOSE_BRACE)
                    braces = braces - 1;
            }
        } else {
            end = end + 1;
        }
        const std::vector<ScriptToken> body(list.begin() + static_cast<std::ptrdiff_t>(it),
                                            list.begin() + static_cast<std::ptrdiff_t>(end));
        std::vector<ScriptToken> clauses[3];
        std::size_t clause = 0;
        for (const ScriptToken& token : header.args) {
            if (header.kind == TOK_FOR && token.kind == TOK_SEMICOLON)
                clause = clause + 1;
            else if (clause < 3)
                clauses[clause].push_back(token);
        }
        // A `for` has taken its clauses apart; a `while` looks at its header again each time.
        const auto condition = [&]() -> std::vector<ScriptToken> {
            if (header.kind == TOK_FOR)
                return clauses[1];
            return headerAt < list.size() ? list[headerAt].args : std::vector<ScriptToken>();
        };
        if (header.kind == TOK_FOR)
            evaluate(clauses[0]);
        while (same(evaluate(condition()), 1)) {
            const ScriptValue value = run(body);
            if (truth(value))
                last = value;
            if (header.kind == TOK_FOR)
                evaluate(clauses[2]);
        }
        it = end;
    }
    return last;
}
} // namespace tamor::test

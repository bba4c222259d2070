#include "tests/script/ProgramGenerator.h"

#include <string_view>

namespace tamor::test
{
std::string Generator::oneOf(const Words& words)
{
    return words[static_cast<std::size_t>(below(static_cast<int>(words.size())))];
}

std::string Generator::soup(int length)
{
    static constexpr std::string_view alphabet = "ab-_:[]()09. \t\n\r\"'{};,+=!<x\x80";
    std::string text;
    for (int i = 0; i < length; ++i)
        text += alphabet[static_cast<std::size_t>(below(static_cast<int>(alphabet.size())))];
    return text;
}

Words Generator::program()
{
    Words words;
    if (oneIn(2))
        function(words);
    statements(words, 2);
    if (oneIn(3))
        function(words);
    statements(words, 2);
    return words;
}

void Generator::disturb(Words& words)
{
    for (int i = below(4); i > 0 && words.size() > 2; --i) {
        const auto at = static_cast<std::size_t>(below(static_cast<int>(words.size()) - 1));
        switch (below(4)) {
        case 0:
            words.erase(words.begin() + static_cast<std::ptrdiff_t>(at));
            break;
        case 1:
            words.insert(words.begin() + static_cast<std::ptrdiff_t>(at), words[at]);
            break;
        case 2:
            std::swap(words[at], words[at + 1]);
            break;
        default:
            words[at] =
                oneOf({"(", ")",     "{",       "}",  ";",     ",",   "!",      "++",   "=", "a",
                       "1", "\"x\"", "return ", "if", "while", "for", "func f", "a[0]", "f", "-1"});
        }
    }
}

std::string Generator::joined(const Words& words)
{
    std::string text;
    for (const std::string& word : words) {
        text += word;
        if (!word.empty() && std::string_view("(){};,=").find(word.back()) == std::string::npos)
            text += oneIn(9) ? "\n" : " ";
    }
    return text;
}

void Generator::expression(Words& words, int depth)
{
    operand(words, depth);
    for (int i = below(3); i > 0; --i) {
        words.push_back(
            oneOf({"+", "+", "*", "/", "%", "^", "<", ">", "<=", ">=", "==", "&&", "||", "="}));
        operand(words, depth);
    }
}

void Generator::operand(Words& words, int depth)
{
    switch (depth > 0 ? below(10) : below(7)) {
    case 0:
    case 1:
    case 2:
        words.push_back(oneOf({"0", "1", "2", "3", "7", ".5", "2.25", "-1", "-1.5"}));
        break;
    case 3:
        words.push_back(oneOf({"\"x\"", "\"true\"", "\"\"", "\"it''s\"", "\"1\""}));
        break;
    case 7:
        words.push_back("(");
        expression(words, depth - 1);
        words.push_back(")");
        break;
    case 8:
        call(words, depth - 1);
        break;
    default:
        words.push_back(path());
    }
}

std::string Generator::path()
{
    return oneOf({"a", "a", "b", "s", "s", "n", "pi", "a[0]", "a[1]", "a[0][1]", "b[2]", "a[i]",
                  "::p", "a[0]b[1]", "unknown"});
}

void Generator::call(Words& words, int depth)
{
    if (callsHost && oneIn(3)) {
        words.insert(words.end(), {"act", "(", std::to_string(below(12)), ")"});
        return;
    }
    words.push_back(oneOf({"f", "f", "g", "print"}));
    words.push_back("(");
    for (int i = below(5); i > 0; --i) {
        // A nested call has no comma that would not cut the outer one.
        if (depth > 0 && oneIn(4))
            words.push_back(callsHost && oneIn(2) ? "act(" + std::to_string(below(12)) + ")"
                                                  : "f()");
        else
            expression(words, 0);
        if (i > 1)
            words.push_back(",");
    }
    words.push_back(")");
}

void Generator::statement(Words& words, int depth)
{
    const std::string counter = depth == 2 ? "i" : depth == 1 ? "k" : "m";
    switch (depth > 0 ? below(12) : below(7)) {
    case 0:
    case 1:
        words.insert(words.end(), {path(), "="});
        expression(words, 2);
        break;
    case 2: {
        const std::string target = path();
        words.insert(words.end(), {target, "=", target, "+"});
        operand(words, 1);
        break;
    }
    case 3:
        expression(words, 2);
        break;
    case 4:
        call(words, 1);
        break;
    case 5:
        words.insert(words.end(), {path(), "++"});
        break;
    case 7:
    case 8:
        words.insert(words.end(), {"if", "("});
        expression(words, 1);
        words.insert(words.end(), {")", "{"});
        statements(words, depth - 1);
        words.push_back("}");
        return;
    case 9:
        words.insert(words.end(),
                     {counter, "=", "0", ";", "while", "(", counter, "<", "3", ")", "{"});
        statements(words, depth - 1);
        words.insert(words.end(), {counter, "=", counter, "+", "1", ";", "}"});
        return;
    case 10:
        words.insert(words.end(), {"for", "(", counter, "=", "0", ";", counter, "<", "3", ";",
                                   counter, "=", counter, "+", "1", ")", "{"});
        statements(words, depth - 1);
        words.push_back("}");
        return;
    case 11:
        words.insert(words.end(), {"if", "("});
        expression(words, 1);
        words.push_back(")");
        call(words, 0);
        break;
    default:
        if (oneIn(8))
            words.insert(words.end(), {"return ", oneOf({"1", "\"true\"", "0", "a"})});
        else
            words.push_back(path());
    }
    words.push_back(";");
}

void Generator::statements(Words& words, int depth)
{
    for (int i = 1 + below(4); i > 0; --i)
        statement(words, depth);
}

void Generator::function(Words& words)
{
    words.push_back(oneIn(2) ? "func f" : "func g");
    words.push_back("(");
    words.push_back(oneOf({"", "p", "a", "p , q", "n , p , a", "3"}));
    words.insert(words.end(), {")", "{"});
    statements(words, 1);
    if (oneIn(2))
        words.insert(words.end(), {"return ", oneOf({"1", "\"r\"", "p"}), ";"});
    words.push_back("}");
}
} // namespace tamor::test

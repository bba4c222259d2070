// Ties the checker to the script engine: of 10,000 wrong scripts, those without an error are parsed
// as the checker parses them, and none of them ends the program.

#include "script/ScriptInterpreter.h"
#include "tools/check/Check.h"
#include "tools/check/ScriptParse.h"

#include "tests/tools/check/Findings.h"
#include "tests/tools/check/Mutation.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace tamor::test
{
namespace
{
constexpr std::uint32_t fileCount = 10000;

const std::string script = "a = 1; b = 2.5;\n"
                           "grid[3][4] = \"it is\" + 3;\n"
                           "func twice(n) { result = n * 2; if (n > 3) { return 7; } }\n"
                           "func seven() { return 7; }\n"
                           "if (a == 1) { print(\"one\"); }\n"
                           "for (i = 0; i < 3; i++) { twice(i); print(i, result); }\n"
                           "while (a < 5) { a = a + 1; if (a > 3) { a = 9; } }\n"
                           "c = (a + b) * 2 / (7 % 4);\n"
                           "d = (a > 1) && (b < 3);\n"
                           "print(twice(4), seven());\n"
                           "if (d) twice(2);\n"
                           "x++;\n";

const std::vector<std::string> words = {
    "a",  "1",    "-1", "(",         ")", "{",  "}",  "=", "==",   "+",       "!",    ";",
    "\"", "func", "if", "return 5;", "<", "++", "x1", ",", "else", "while (", "a[1]", "f(2)"};

/// A list in words: kinds, names and what stands between parentheses.
std::string described(const std::vector<ScriptToken>& list)
{
    std::string text;
    for (const ScriptToken& token : list) {
        text += std::to_string(token.kind) + token.name;
        if (!token.args.empty())
            text += "<" + described(token.args) + ">";
        text += " ";
    }
    return text;
}

std::string described(const std::string& source, const std::vector<check::PlacedToken>& list)
{
    std::string text;
    for (const check::PlacedToken& token : list) {
        const bool isNamed = token.kind == TOK_VARIABLE || token.kind == TOK_CALL;
        text += std::to_string(token.kind);
        text += isNamed ? source.substr(token.begin, token.end - token.begin) : "";
        if (!token.args.empty())
            text += "<" + described(source, token.args) + ">";
        text += " ";
    }
    return text;
}

void expectSameTokens(const std::string& text)
{
    check::Source source("a.script", text);
    const check::ParsedScript parsed = check::parseScript(source);
    ScriptInterpreter interpreter;
    std::vector<ScriptToken> list;
    parseText(interpreter, list, text);

    EXPECT_EQ(described(text, parsed.list), described(list));
    ASSERT_EQ(parsed.functions.size(), interpreter.functions.size());
    for (const auto& [name, function] : parsed.functions) {
        const ScriptFunction& other = interpreter.functions[name];
        EXPECT_EQ(described(text, function.parameters), described(other.parameters)) << name;
        EXPECT_EQ(described(text, function.body), described(other.body)) << name;
    }
}

/// Runs a script in a copy of this process, for a tenth of a second at most. Returns the signal
/// that ended it, or 0; SIGPROF says that it went on for ever.
int signalOf(const std::string& text)
{
    const pid_t child = fork();
    if (child == 0) {
        const rlimit stack{2 << 20, 2 << 20};
        const rlimit none{0, 0};
        setrlimit(RLIMIT_STACK, &stack);
        setrlimit(RLIMIT_CORE, &none);
        const itimerval timer{{0, 0}, {0, 100000}};
        setitimer(ITIMER_PROF, &timer, nullptr);
        dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
        ScriptInterpreter interpreter;
        std::vector<ScriptToken> list;
        parseText(interpreter, list, text);
        runTokens(interpreter, list);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

TEST(CheckedScripts, WithoutAnErrorAreParsedAlikeAndDoNotEndTheProgram)
{
    ASSERT_FALSE(hasError(check::checkText("a.script", script, check::FileKind::script)));
    std::uint32_t withoutError = 0;
    for (std::uint32_t seed = 1; seed <= fileCount && !HasFailure(); ++seed) {
        const std::string text = mutate(script, seed, words);
        const std::vector<check::Finding> findings =
            check::checkText("a.script", text, check::FileKind::script);
        if (hasError(findings))
            continue;
        ++withoutError;
        SCOPED_TRACE("seed " + std::to_string(seed) + ":\n" + text);
        expectSameTokens(text);
        const int number = signalOf(text);
        // Values decide how deep a function calls itself, what is divided by, and whether a loop
        // ends: no text tells.
        const bool isOfValues =
            number == SIGFPE || number == SIGPROF || hasCode(findings, "script-recursion");
        EXPECT_TRUE(number == 0 || isOfValues) << "ended by signal " << number;
    }
    EXPECT_GT(withoutError, fileCount / 20);
}
} // namespace
} // namespace tamor::test

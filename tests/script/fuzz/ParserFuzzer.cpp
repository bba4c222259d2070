// Feeds the scanner and the parser with any bytes: nothing may be read past the text, and short
// texts must give the lists of the plain interpreter. What was parsed is run within limits. With libFuzzer's own main this is the fuzzer;
// with ReplayCorpus.cpp it runs the kept corpus, as ctest does.
#include "tests/script/PlainInterpreter.h"
#include "tests/script/ScriptDescriptions.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{
using namespace tamor;

/// The plain interpreter takes a quadratic time.
constexpr std::size_t longestCompared = 400;
/// What a run may take: it ends where the texts of nobody in particular would go on for ever.
constexpr ScriptLimits limits = {5000, 1000000, 50};
/// A parenthesis may be parsed within a parenthesis, so the time grows with the square at worst.
constexpr std::size_t longest = 4096;

std::string engineLists(const std::string& text)
{
    try {
        ScriptInterpreter interpreter;
        std::vector<ScriptToken> list;
        parseText(interpreter, list, text);
        return test::described(list) + test::describedFunctions(interpreter.functions);
    } catch (const std::out_of_range&) {
        return "past the end";
    }
}

/// Runs a text, without seeing what it prints. A remainder by 0 would end the process.
void runWithinLimits(const std::string& text)
{
    if (text.find('%') != std::string::npos)
        return;
    std::cerr.setstate(std::ios::failbit);
    try {
        ScriptInterpreter interpreter;
        interpreter.limits = limits;
        std::vector<ScriptToken> list;
        parseText(interpreter, list, text);
        runTokens(interpreter, list);
    } catch (const std::out_of_range&) {
        // The text ends too early.
    }
    std::cerr.clear();
}

std::string plainLists(const std::string& text)
{
    try {
        test::PlainInterpreter interpreter;
        std::vector<ScriptToken> list;
        interpreter.parse(list, text);
        return test::described(list) + test::describedFunctions(interpreter.functions);
    } catch (const std::out_of_range&) {
        return "past the end";
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size > longest)
        return 0;
    const std::string text(data, data + size);
    const std::string lists = engineLists(text);
    if (size <= longestCompared && lists != plainLists(text)) {
        std::fprintf(stderr, "the lists differ from the plain interpreter's\n");
        std::abort();
    }
    runWithinLimits(text);
    return 0;
}

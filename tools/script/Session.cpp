#include "tools/script/Session.h"

#include "tools/check/Check.h"
#include "tools/check/ScriptParse.h"
#include "tools/check/Source.h"
#include "tools/script/HostFunctions.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <stdexcept>
#include <utility>

namespace tamor::scripts
{
namespace
{
/// What stands between two places of a text, as one line.
std::string onOneLine(std::string_view text)
{
    std::string line;
    for (const char c : text) {
        const bool isBlank = c == ' ' || c == '\n' || c == '\t' || c == '\r';
        if (!isBlank)
            line += c;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    while (!line.empty() && line.back() == ' ')
        line.pop_back();
    return line;
}

/// The statement of each token of a list.
TokenPlaces placesOf(const check::Source& source, const std::vector<check::PlacedToken>& list)
{
    TokenPlaces places;
    std::size_t start = 0;
    for (std::size_t i = 0; i < list.size(); i++) {
        if (list[i].kind != TOK_SEMICOLON)
            continue;
        const std::size_t begin = list[start].begin;
        // The separator behind a header is none of the text: a header goes up to what follows.
        const bool isHeader = list[start].kind >= TOK_IF && list[start].kind <= TOK_WHILE;
        const std::size_t last = isHeader && i + 1 < list.size() ? i + 1 : i;
        const std::size_t end = std::max(begin, list[last].begin);
        const std::string line = source.name() + ":" + std::to_string(source.placeOf(begin).line);
        const std::string text = onOneLine(source.text().substr(begin, end - begin));
        for (; start <= i; start++)
            places.push_back({line, text});
    }
    return places;
}
} // namespace

Session::Session(const WatchRequest& newRequest) : usualRequest(newRequest), watch(interpreter)
{
    addHostFunctions(interpreter);
}

/// Parses as the engine does, and puts into the new tokens what the request asks for.
std::vector<ScriptToken> Session::parse(const std::string& name, const std::string& text,
                                        const WatchRequest& request)
{
    std::map<std::string, std::size_t> sizes;
    for (const auto& [functionName, function] : interpreter.functions)
        sizes[functionName] = function.body.size();
    std::vector<ScriptToken> list;
    parseText(interpreter, list, text);
    if (!request.traces && !request.times && !request.mayInterrupt && !request.keepsValue)
        return list;

    check::ParsedScript placed;
    check::Source source(name, text);
    if (request.traces)
        placed = check::parseScript(source);
    WatchRequest inFunctions = request;
    inFunctions.keepsValue = false;
    for (auto& [functionName, function] : interpreter.functions)
        watch.rewrite(function.body, sizes[functionName],
                      placesOf(source, placed.functions[functionName].body), inFunctions);
    watch.rewrite(list, 0, placesOf(source, placed.list), request);
    return list;
}

RunEnd Session::load(const std::string& path)
{
    try {
        parse(path, readScript(path).value_or(""), usualRequest);
    } catch (const std::out_of_range&) {
        return RunEnd::CUT_TEXT;
    }
    return RunEnd::WHOLE;
}

RunEnd Session::run(const std::string& name, const std::string& text)
{
    return run(name, text, usualRequest);
}

RunEnd Session::run(const std::string& name, const std::string& text, const WatchRequest& request)
{
    watch.reset();
    try {
        std::vector<ScriptToken> list = parse(name, text, request);
        runTokens(interpreter, list);
    } catch (const std::out_of_range&) {
        return RunEnd::CUT_TEXT;
    } catch (const Interrupted&) {
        return RunEnd::INTERRUPTED;
    }
    return RunEnd::WHOLE;
}

void Session::printTokensOf(const std::string& text)
{
    std::vector<ScriptToken> list;
    parseText(interpreter, list, text);
    printTokens(std::cout, list);
}

void Session::printTimes() const
{
    std::vector<std::pair<std::string, CallCount>> rows(watch.calls().begin(), watch.calls().end());
    std::stable_sort(rows.begin(), rows.end(),
                     [](const auto& a, const auto& b) { return a.second.time > b.second.time; });
    std::fprintf(stderr, "%12s %12s  function\n", "calls", "ms");
    for (const auto& [name, count] : rows) {
        const double milliseconds = std::chrono::duration<double, std::milli>(count.time).count();
        std::fprintf(stderr, "%12llu %12.3f  %s\n", static_cast<unsigned long long>(count.calls),
                     milliseconds, name.c_str());
    }
}

std::vector<check::Finding> errorsIn(const std::string& name, const std::string& text)
{
    std::vector<check::Finding> findings = check::checkText(name, text, check::FileKind::script);
    std::erase_if(findings, [](const check::Finding& each) {
        return each.code->severity != check::Severity::error;
    });
    return findings;
}

std::optional<std::string> readScript(const std::string& path)
{
    // A directory can be opened, and not every standard library finds it bad.
    std::ifstream file(path);
    file.peek();
    if (!file.is_open() || file.bad() || std::filesystem::is_directory(path))
        return std::nullopt;
    std::string text;
    std::getline(file, text, '\0');
    return text;
}
} // namespace tamor::scripts

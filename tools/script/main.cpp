/// \file
/// Runs scripts, and asks for statements where none is named: `tamor-script FILE`.
#include "tools/CommandLine.h"
#include "tools/check/Output.h"
#include "tools/script/Interrupt.h"
#include "tools/script/Prompt.h"
#include "tools/script/Session.h"

#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace
{
using namespace tamor;
using namespace tamor::scripts;

constexpr tools::Option options[] = {
    {"--load", "LIBRARY", "take the functions of a file first; may be given again"},
    {"-e", "TEXT", "run this text and show the value that it leaves"},
    {"--tokens", "", "print the tokens of the file or the text and run nothing"},
    {"--trace", "", "print each statement with its line, and what it gives"},
    {"--time", "", "print the time and the count of each function's calls"},
    {"--no-check", "", "do not show what the checker has against it"},
    {"--help", "", "print this and end"},
    {"--version", "", "print the version and end"},
};

constexpr const char* usage = "Usage: tamor-script [--load LIBRARY]... [--tokens] [--trace] "
                              "[--time] [--no-check] [FILE | -e TEXT]\n";

constexpr const char* introduction =
    "\n"
    "Without FILE it asks for statements; :help tells how. Scripts print to the standard\n"
    "error stream. They may call sqrt(x), length(x) and item(array, i).\n"
    "\n";

constexpr tools::Tool tool = {"tamor-script", usage, introduction, options, "", 2};

void showErrors(const std::string& name, const std::string& text)
{
    check::writeText(std::cerr, errorsIn(name, text), false);
}

/// Runs a file or a text.
int run(const tools::CommandLine& line, Session& session, const std::string& name,
        const std::string& text)
{
    if (!line.has("--no-check"))
        showErrors(name, text);
    if (session.run(name, text) == RunEnd::WHOLE)
        return EXIT_SUCCESS;
    std::cerr << "tamor-script: " << name << ": the text ends inside a string or an index\n";
    return EXIT_FAILURE;
}

int loadLibraries(const tools::CommandLine& line, Session& session)
{
    for (const std::string& library : line.values("--load")) {
        const std::optional<std::string> text = readScript(library);
        if (!text)
            return refuse(tool, "cannot read '" + library + "'");
        if (!line.has("--no-check"))
            showErrors(library, *text);
        session.load(library);
    }
    return EXIT_SUCCESS;
}

int work(const tools::CommandLine& line)
{
    WatchRequest request;
    request.traces = line.has("--trace");
    request.times = line.has("--time");
    Session session(request);
    if (const int failure = loadLibraries(line, session))
        return failure;

    const std::vector<std::string> texts = line.values("-e");
    const std::vector<std::string>& files = line.operands();
    std::optional<std::string> text;
    if (!files.empty()) {
        text = readScript(files.front());
        if (!text)
            return refuse(tool, "cannot read '" + files.front() + "'");
    } else if (!texts.empty()) {
        text = texts.back();
    }

    int status = EXIT_SUCCESS;
    if (text && line.has("--tokens")) {
        session.printTokensOf(*text);
    } else if (!files.empty()) {
        status = run(line, session, files.front(), *text);
    } else if (text) {
        Prompt(session, request, !line.has("--no-check")).answer(*text);
    } else {
        catchInterrupts();
        Prompt(session, request, !line.has("--no-check")).run();
    }
    if (request.times)
        session.printTimes();
    return status;
}
} // namespace

int main(int count, char** words)
{
    const tools::CommandLine line(options, count, words);
    if (const std::optional<int> status = answer(tool, line))
        return *status;
    const std::size_t named = line.operands().size() + line.values("-e").size();
    if (named > 1)
        return refuse(tool, "more than one file or text is named");
    if (named == 0 && line.has("--tokens"))
        return refuse(tool, "no file is named for --tokens");
    return work(line);
}

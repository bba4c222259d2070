#include "tools/script/LineEditor.h"

#include "tools/script/Interrupt.h"

#include <editline/readline.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <iostream>

namespace tamor::scripts
{
namespace
{
// What stands between words. A name of a script may have a "-", a "_" or a ":" in it.
constexpr const char* wordBreaks = " \t\n\"'(){}[];,+*/%^!&|<>=";

Completer completer;
std::vector<std::string> found;

/// Gives the words that were found one by one, and then null; libedit frees them.
char* nextFound(const char* start, int calls)
{
    static std::size_t next = 0;
    if (calls == 0) {
        found = completer(start);
        next = 0;
    }
    return next < found.size() ? strdup(found[next++].c_str()) : nullptr;
}

char** complete(const char* start, int, int)
{
    // Files are no words of a script.
    rl_attempted_completion_over = 1;
    return rl_completion_matches(start, nextFound);
}
} // namespace

LineEditor::LineEditor(Completer newCompleter) : isTerminal(isatty(STDIN_FILENO) != 0)
{
    completer = std::move(newCompleter);
    if (!isTerminal)
        return;
    rl_initialize();
    using_history();
    rl_attempted_completion_function = complete;
    rl_completer_word_break_characters = const_cast<char*>(wordBreaks);
    rl_completion_append_character = '\0';
}

LineEditor::~LineEditor()
{
    completer = nullptr;
}

LineEnd LineEditor::read(const std::string& prompt, std::string& line)
{
    if (!isTerminal)
        return std::getline(std::cin, line) ? LineEnd::LINE : LineEnd::END;
    takeInterrupt();
    char* const typed = readline(prompt.c_str());
    if (typed == nullptr) {
        std::cout << std::endl;
        return takeInterrupt() ? LineEnd::INTERRUPTED : LineEnd::END;
    }
    line = typed;
    std::free(typed);
    return LineEnd::LINE;
}

void LineEditor::remember(const std::string& statement)
{
    if (isTerminal)
        add_history(statement.c_str());
}
} // namespace tamor::scripts

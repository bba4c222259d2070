/// \file
/// Lines that a user types, with editing, history and completion.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tamor::scripts
{
/// What reading a line came to.
enum class LineEnd
{
    LINE,
    INTERRUPTED, ///< Ctrl-C
    END,         ///< Ctrl-D, or the end of the input
};

/// Gives all words that begin with `start`.
using Completer = std::function<std::vector<std::string>(const std::string& start)>;

/// The standard input stream as lines. Where it is a terminal, libedit edits them, keeps a history
/// and completes names with the tab key; otherwise no prompt is written.
///
/// There is one in a process, since libedit calls plain functions.
class LineEditor
{
public:
    explicit LineEditor(Completer newCompleter);
    ~LineEditor();
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;

    /// Reads a line, without its end.
    LineEnd read(const std::string& prompt, std::string& line);

    /// Adds to the history; a statement of several lines is one entry.
    void remember(const std::string& statement);

private:
    bool isTerminal;
};
} // namespace tamor::scripts

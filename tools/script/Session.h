/// \file
/// One script world and what a tool does in it.
#pragma once

#include "script/ScriptInterpreter.h"
#include "tools/check/Finding.h"
#include "tools/script/Watch.h"

#include <optional>
#include <string>
#include <vector>

namespace tamor::scripts
{
/// How a run ended.
enum class RunEnd
{
    WHOLE,
    CUT_TEXT, ///< the text ends inside a string or an index: nothing was run
    INTERRUPTED,
};

/// An interpreter with the host's functions, which loads and runs texts and may watch them.
class Session
{
public:
    /// \param newRequest  what is asked of every text; without anything texts run as in any host
    explicit Session(const WatchRequest& newRequest);

    /// Takes a file's functions and leaves its statements alone.
    RunEnd load(const std::string& path);

    /// Runs a text.
    /// \param name  what its lines are told by
    RunEnd run(const std::string& name, const std::string& text);

    /// Runs a text with another request than that of all texts.
    RunEnd run(const std::string& name, const std::string& text, const WatchRequest& request);

    /// The tokens of a text, as the engine prints them. Functions of it are defined.
    void printTokensOf(const std::string& text);

    /// Prints the time and the number of the calls of each function, the longest first.
    void printTimes() const;

    std::optional<ScriptValue> takeValue() { return watch.takeValue(); }

    ScriptInterpreter interpreter;

private:
    std::vector<ScriptToken> parse(const std::string& name, const std::string& text,
                                   const WatchRequest& request);

    WatchRequest usualRequest;
    Watch watch;
};

/// The errors that the checker finds in a script; warnings are left out.
std::vector<check::Finding> errorsIn(const std::string& name, const std::string& text);

/// A file's text up to its first zero byte, as the engine reads it; nothing if it cannot be read.
std::optional<std::string> readScript(const std::string& path);
} // namespace tamor::scripts

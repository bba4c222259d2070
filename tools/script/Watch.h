/// \file
/// Watching a script run, without a change to the engine: calls of functions that report are put
/// into the token lists before they run.
#pragma once

#include "script/ScriptInterpreter.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tamor::scripts
{
/// What a watch puts into a list.
struct WatchRequest
{
    bool traces = false;       ///< each statement, with its line and what it gives
    bool times = false;        ///< each call
    bool mayInterrupt = false; ///< a test in the condition of each loop
    bool keepsValue = false;   ///< of the list's last statement
};

/// A statement of a text, as a trace calls it.
struct StatementPlace
{
    std::string line; ///< such as "ball.script:12"
    std::string text;
};

/// Where each token of a list stands: the number of its statement, which is the same for all tokens
/// up to a separator. Empty where that is not known.
using TokenPlaces = std::vector<StatementPlace>;

/// Thrown through the evaluator when a script is interrupted.
struct Interrupted
{};

/// The calls of one function.
struct CallCount
{
    std::uint64_t calls = 0;
    std::chrono::nanoseconds time{0}; ///< with those of the functions that it called
};

/// One interpreter's watch. There is one in a process, since built-in functions are plain.
///
/// The names of its functions are none that a script can spell. What a list does is not changed by
/// it: a statement is replaced by a call that evaluates it and gives its value, and what is added
/// gives no value.
class Watch
{
public:
    /// Binds the watch's functions.
    explicit Watch(ScriptInterpreter& interpreter);
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// Rewrites a list from the token `from` on.
    /// \param places  of those tokens, in their order
    void rewrite(std::vector<ScriptToken>& list, std::size_t from, const TokenPlaces& places,
                 const WatchRequest& request);

    /// Forgets what calls a run that was given up has begun.
    void reset();

    /// \return the value that was kept, once
    std::optional<ScriptValue> takeValue();
    const std::map<std::string, CallCount>& calls() const { return counts; }

    /// Has the next test throw, or no longer so. May be called by a signal handler.
    static void interrupt(bool isAsked);

private:
    class Rewriter;

    struct RunningCall
    {
        std::size_t name;
        std::chrono::steady_clock::time_point start;
    };

    static ScriptValue begin(std::string, std::int32_t, ScriptValue* values);
    static ScriptValue gives(std::string, std::int32_t, ScriptValue* values);
    static ScriptValue start(std::string, std::int32_t, ScriptValue* values);
    static ScriptValue stop(std::string, std::int32_t, ScriptValue* values);
    static ScriptValue test(std::string, std::int32_t count, ScriptValue* values);
    static ScriptValue keep(std::string, std::int32_t count, ScriptValue* values);

    static Watch* instance;

    std::vector<StatementPlace> statements;
    std::vector<std::string> names; ///< of the functions that are called
    std::map<std::string, CallCount> counts;
    std::vector<RunningCall> running;
    std::optional<ScriptValue> keptValue;
};
} // namespace tamor::scripts

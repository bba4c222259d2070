/// \file
/// Words for a programmer: a record of calls, fatal signals by name, and an assertion.
///
/// Everything is written to the standard error stream. Nothing here depends on other code.
#pragma once

#include "TamorExport.h"

#include <cstdint>
#include <list>
#include <string>

namespace tamor
{
/// The names of the calls that are under way, as far as code pushes them.
struct CallStack
{
    std::list<std::string> frames; ///< oldest first
    bool enabled = false;          ///< while false, `pushCall` and `popCall` do nothing
};

/// The record of the process.
extern TAMOR_EXPORT CallStack callStack;

/// Starts the record.
TAMOR_EXPORT void enableCallStack();

/// Appends `name`, if the record is enabled.
TAMOR_EXPORT void pushCall(const std::string& name);

/// Removes the newest name, if the record is enabled; a pop too many does nothing.
TAMOR_EXPORT void popCall();

/// Prints the names, newest first, each as its number, " -> " and the name; the oldest is number 1.
/// \return true
TAMOR_EXPORT bool dumpCallStack();

/// Has `signalHandler` called for the signals 3, 1, 2, 4, 6 and 11.
/// \return true
TAMOR_EXPORT bool installSignalHandlers();

/// Prints, for a signal from 1 to 30, a line such as
///     Caught signal SIGINT - Terminal interrupt (ANSI)
/// and in any case the line
///     Stack Trace:
/// and ends the process with the exit status 1 by `exit`. What runs at the exit has ten seconds, and
/// then the process is ended with the same status: the signal may have come while a library held a
/// lock that its part of the exit waits for.
[[noreturn]] void signalHandler(int signal);

/// Does nothing if `condition` is true. Otherwise prints "Assert failed: " and `message`, and ends
/// the process with the exit status 0.
/// \return `condition`
TAMOR_EXPORT bool assertTrue(const std::string& message, bool condition);
} // namespace tamor

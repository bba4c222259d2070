/// \file
/// The prompt of the script language.
#pragma once

#include "tools/script/LineEditor.h"
#include "tools/script/Session.h"

#include <string>
#include <vector>

namespace tamor::scripts
{
/// Whether a text is a whole entry: nothing is open in it, and no header waits for its block.
bool isWhole(const std::string& text);

/// An entry with the ";" at its end that a user may leave out.
std::string finished(const std::string& text);

/// Reads statements, runs them, and shows the values that they leave.
///
/// Values and answers go to the standard output stream; the standard error stream has what scripts
/// print and what is wrong.
class Prompt
{
public:
    /// \param newSession  outlives the prompt
    /// \param newRequest  what is asked of every statement
    /// \param newChecks   whether statements that the checker refuses are not run
    Prompt(Session& newSession, const WatchRequest& newRequest, bool newChecks);

    /// Reads and answers until the input ends or the user asks to leave.
    void run();

    /// Runs one entry, and shows the value that it leaves.
    void answer(const std::string& text);

private:
    struct Command
    {
        const char* name;
        const char* argument;
        const char* help;
        void (Prompt::*act)(const std::string& argument);
    };

    static const Command commands[];

    LineEnd readEntry(std::string& text);
    void obey(const std::string& line);
    void showTokens(const std::string& text);
    void showVariables(const std::string&);
    void showFunctions(const std::string&);
    void loadFile(const std::string& path);
    void help(const std::string&);
    void leave(const std::string&) { isLeaving = true; }
    std::vector<std::string> complete(const std::string& start) const;

    Session& session;
    WatchRequest request;
    bool checks;
    bool isLeaving = false;
    LineEditor editor;
};
} // namespace tamor::scripts

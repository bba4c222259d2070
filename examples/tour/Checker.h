/// \file
/// What `tamor-check` knows of a script.
#pragma once

#include <string>

namespace tour
{
struct Verdict
{
    bool hasErrors = false;
    std::string words; ///< the first finding in a line, empty if there is none
};

/// Has the program `tamor-check` look at a script. Where there is none, it says so.
Verdict check(const std::string& script);
} // namespace tour

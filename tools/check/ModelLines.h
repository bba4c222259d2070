/// \file
/// The lines of a model file as the engine's line reader gives them, and where they are.
#pragma once

#include "tools/check/Source.h"

#include <string>
#include <string_view>

namespace tamor::check
{
/// Goes through a model file line by line, and reports what becomes of the lines.
class ModelLines
{
public:
    explicit ModelLines(Source& newSource) : source(newSource) {}

    /// Goes to the next line that counts.
    /// \return false, after a report, if there is none: the reader would go on with the last line
    bool next();

    /// Has the next `next` give the same line once more.
    void again() { isGivenAgain = true; }

    /// The line, without its last character.
    const std::string& line() const { return content; }
    std::size_t offset() const { return begin; }

    /// Reports what is left of the file and is not read.
    void reportRest();

private:
    bool advance();

    Source& source;
    std::size_t at = 0;
    std::size_t begin = 0;
    std::string_view piece;
    std::string content;
    bool isSkipped = false; ///< the last piece does not count
    bool isGivenAgain = false;
};
} // namespace tamor::check

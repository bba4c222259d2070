/// \file
/// An end for readings that would have none.
#pragma once

#include <string>

namespace tamor::view
{
/// Ends the process with status 1, and a line that says so, if it lives for five seconds: by then a
/// reader of the engine waits for something that its file does not have.
class ReadingLimit
{
public:
    /// \param file  what is read, as the line is to call it
    explicit ReadingLimit(const std::string& file);
    ~ReadingLimit();
    ReadingLimit(const ReadingLimit&) = delete;
    ReadingLimit& operator=(const ReadingLimit&) = delete;
};
} // namespace tamor::view

/// \file
/// A file that is checked, and the findings that are made in it.
#pragma once

#include "tools/check/Finding.h"

#include <string>
#include <string_view>
#include <vector>

namespace tamor::check
{
/// A place in a file; both count from 1.
struct Place
{
    std::size_t line = 1;
    std::size_t column = 1;
};

/// What a file names of others: another program's business until a whole directory is checked.
struct Reference
{
    enum class Kind : std::uint8_t
    {
        configuration,
        theme,
        texture,
        font,
    };

    Kind kind = Kind::theme;
    std::string path; ///< as the file says
    std::size_t offset = 0;
    std::string reason; ///< who asks for it, if the file does not name it itself
};

/// A file's text, its findings and its references.
class Source
{
public:
    Source(std::string newName, std::string newText);

    const std::string& name() const { return fileName; }
    std::string_view text() const { return content; }

    /// The line and the column of a byte; that behind the last one is a place too.
    Place placeOf(std::size_t offset) const;

    /// Adds a finding of the named code at a byte of the text.
    void report(std::string_view code, std::size_t offset, std::string message);

    /// The same in a file that is no text, where a place means nothing.
    void report(std::string_view code, std::string message) { report(code, 0, std::move(message)); }

    /// What `didYouMean` says, for the first words of a file: a file in which everything is
    /// misspelled takes no longer than others.
    std::string guess(std::string_view word, const std::vector<std::string_view>& candidates);
    bool canGuess() const { return guessesLeft > 0; }

    std::vector<Finding> findings;
    std::vector<Reference> references;
    std::vector<std::string> widgetNames; ///< of a layout
    float fontWidth = 0.0F;               ///< of a theme that was read so far
    float fontHeight = 0.0F;              ///< likewise

private:
    std::string fileName;
    std::string content;
    std::vector<std::size_t> lineStarts;
    std::size_t guessesLeft = 100000; ///< words that may still be compared
};

/// Reports a text's carriage returns, which the readers take for blanks or for letters, once.
void reportCarriageReturn(Source& source, std::string_view code, const std::string& harm);
} // namespace tamor::check

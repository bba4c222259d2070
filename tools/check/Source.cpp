#include "tools/check/Source.h"

#include "tools/check/Words.h"

#include <algorithm>
#include <utility>

namespace tamor::check
{
Source::Source(std::string newName, std::string newText)
    : fileName(std::move(newName)), content(std::move(newText)), lineStarts{0}
{
    for (std::size_t at = content.find('\n'); at != std::string::npos;
         at = content.find('\n', at + 1))
        lineStarts.push_back(at + 1);
}

Place Source::placeOf(std::size_t offset) const
{
    const auto next = std::upper_bound(lineStarts.begin(), lineStarts.end(), offset);
    return {static_cast<std::size_t>(next - lineStarts.begin()), offset - *(next - 1) + 1};
}

void Source::report(std::string_view code, std::size_t offset, std::string message)
{
    const Place place = placeOf(std::min(offset, content.size()));
    findings.push_back({fileName, place.line, place.column, &codeNamed(code), std::move(message)});
}

std::string Source::guess(std::string_view word, const std::vector<std::string_view>& candidates)
{
    if (guessesLeft == 0)
        return "";
    guessesLeft -= std::min(guessesLeft, candidates.size());
    return didYouMean(word, candidates);
}

void reportCarriageReturn(Source& source, std::string_view code, const std::string& harm)
{
    const std::size_t at = source.text().find("\r\n");
    if (at != std::string_view::npos)
        source.report(code, at, "the lines end in carriage returns: " + harm);
}
} // namespace tamor::check

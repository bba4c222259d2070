#include "script/internal/Stretches.h"

#include <algorithm>

namespace tamor::script
{
std::size_t Stretches::closing(std::size_t open)
{
    if (pairs.empty() || open < pairs.front().first || open >= scannedEnd)
        scan(open);
    return std::lower_bound(pairs.begin(), pairs.end(), std::pair{open, std::size_t{0}})->second;
}

/// Walks from a "(" to the ")" that closes it, or to the end of the text.
void Stretches::scan(std::size_t open)
{
    pairs.clear();
    openPairs.clear();
    scannedEnd = open;
    do {
        if (text[scannedEnd] == '(') {
            openPairs.push_back(pairs.size());
            pairs.emplace_back(scannedEnd, std::string_view::npos);
        } else if (text[scannedEnd] == ')') {
            pairs[openPairs.back()].second = scannedEnd;
            openPairs.pop_back();
        }
        ++scannedEnd;
    } while (!openPairs.empty() && scannedEnd < text.size());
}

std::size_t Stretches::comma(std::size_t from)
{
    if (from < commaFrom || from > commaAt) {
        commaFrom = from;
        commaAt = text.find(',', from);
    }
    return commaAt;
}
} // namespace tamor::script

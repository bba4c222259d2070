/// \file
/// A host that has set a locale of its own.
#pragma once

#include <locale>

namespace tamor::test
{
/// As long as it lives, 0.5 is "0,5" and 1000 is "1.000": to C's functions, to new streams and to
/// the standard error stream. The locale is made here, so none need be installed.
class CommaLocale
{
public:
    CommaLocale();
    ~CommaLocale();
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

private:
    std::locale globalBefore;
    std::locale errorsBefore;
};
} // namespace tamor::test

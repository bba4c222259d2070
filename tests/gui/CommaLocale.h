/// \file
/// A host that has set a locale of its own.
#pragma once

#include <iostream>
#include <locale>

namespace tamor::test
{
/// As long as it lives, the program's locale writes and reads 0.5 as "0,5" and 1000 as "1.000", for
/// new streams and for the standard error stream.
class CommaLocale
{
public:
    CommaLocale()
    {
        const std::locale commas(std::locale::classic(), new Punctuation);
        globalBefore = std::locale::global(commas);
        errorsBefore = std::cerr.imbue(commas);
    }
    ~CommaLocale()
    {
        std::locale::global(globalBefore);
        std::cerr.imbue(errorsBefore);
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

private:
    class Punctuation : public std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::locale globalBefore;
    std::locale errorsBefore;
};
} // namespace tamor::test

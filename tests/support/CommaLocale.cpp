#include "tests/support/CommaLocale.h"

#include "tests/support/TemporaryDirectory.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace tamor::test
{
namespace
{
/// The numbers of a locale as the C library keeps them in a file.
constexpr std::string_view numericFile("\x14\x11\x03\x20\x06\0\0\0" // its mark, six entries
                                       "\x20\0\0\0\x22\0\0\0"       // where each of them stands
                                       "\x24\0\0\0\x28\0\0\0"
                                       "\x2C\0\0\0\x30\0\0\0"
                                       ",\0"          // 32: the decimal point
                                       ".\0"          // 34: what parts thousands
                                       "\3\3\0\0"     // 36: digits in a group
                                       ",\0\0\0"      // 40: the point as a wide character
                                       ".\0\0\0"      // 44: and what parts thousands
                                       "UTF-8\0\0\0", // 48: the characters' code
                                       56);

class Punctuation : public std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};
} // namespace

CommaLocale::CommaLocale()
{
    const std::locale commas(std::locale::classic(), new Punctuation);
    globalBefore = std::locale::global(commas);
    errorsBefore = std::cerr.imbue(commas);

    const TemporaryDirectory directory;
    directory.write("comma/LC_NUMERIC", numericFile);
    setenv("LOCPATH", directory.path().c_str(), 1);
    const bool isSet = std::setlocale(LC_NUMERIC, "comma") != nullptr;
    unsetenv("LOCPATH");
    if (!isSet) {
        std::fputs("the C library does not take the locale of the tests\n", stderr);
        std::exit(2);
    }
}

CommaLocale::~CommaLocale()
{
    std::setlocale(LC_NUMERIC, "C");
    std::locale::global(globalBefore);
    std::cerr.imbue(errorsBefore);
}
} // namespace tamor::test

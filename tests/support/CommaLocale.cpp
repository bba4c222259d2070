#include "tests/support/CommaLocale.h"

#include "tests/support/TemporaryDirectory.h"

#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <iostream>
#include <string>
#include <string_view>

namespace tamor::test
{
namespace
{
/// The numbers of a locale as the C library keeps them in a file, whose words are in the order of
/// the processor's bytes.
std::string numericFile()
{
    std::string file;
    const auto add = [&file](std::initializer_list<std::uint32_t> words) {
        for (const std::uint32_t word : words)
            file.append(reinterpret_cast<const char*>(&word), sizeof word);
    };
    add({0x20031114, 6});                // its mark, six entries
    add({32, 34, 36, 40, 44, 48});       // where each of them stands
    file += std::string_view(",\0"       // 32: the decimal point
                             ".\0"       // 34: what parts thousands
                             "\3\3\0\0", // 36: digits in a group
                             8);
    add({',', '.'});                            // 40, 44: both as wide characters
    file += std::string_view("UTF-8\0\0\0", 8); // 48: the characters' code
    return file;
}

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
    directory.write("comma/LC_NUMERIC", numericFile());
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

/// \file
/// What a call prints, where thousands of calls are compared.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace tamor::test
{
/// Makes the call, and returns what it writes to `std::cerr`, which is kept in memory: a file for
/// each of thousands of calls, as `CapturedErrors` has, takes longer than all of them.
template <typename Call>
std::string printedBy(Call call)
{
    std::ostringstream errors;
    const struct Restored
    {
        std::streambuf* before;
        ~Restored() { std::cerr.rdbuf(before); }
    } restored{std::cerr.rdbuf(errors.rdbuf())};
    call();
    return errors.str();
}
} // namespace tamor::test

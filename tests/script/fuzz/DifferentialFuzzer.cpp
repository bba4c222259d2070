// Runs the programs of a row of seeds with the engine's interpreter and with the plain one, for as
// long as wanted:
//
//     tamor-script-differential FIRST COUNT
//
// It ends with status 1 at the first difference, which it prints.
#include "tests/script/Differential.h"

#include <cstdio>
#include <cstdlib>

int main(int count, char** words)
{
    if (count != 3)
        return 2;
    const auto first = static_cast<unsigned>(std::strtoul(words[1], nullptr, 10));
    const auto programs = static_cast<unsigned>(std::strtoul(words[2], nullptr, 10));
    unsigned compared = 0;
    for (unsigned seed = first; seed != first + programs; ++seed) {
        const tamor::test::ProgramComparison comparison = tamor::test::compareProgram(seed);
        compared += comparison.hasOutcome ? 1 : 0;
        if (!comparison.difference.empty()) {
            std::printf("seed %u differs\n%s\n", seed, comparison.difference.c_str());
            return 1;
        }
    }
    std::printf("%u programs, %u of them with an outcome, no difference\n", programs, compared);
    return 0;
}

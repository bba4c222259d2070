// The engine's interpreter beside the plain one on whole programs. fuzz/ has a program that goes on
// with as many more as are wanted.
#include "tests/script/Differential.h"

#include <gtest/gtest.h>

namespace tamor::test
{
namespace
{
/// A quarter of the seeds, so that the quarters may run beside each other.
class Differential : public testing::TestWithParam<unsigned>
{};
} // namespace

TEST_P(Differential, HasThePlainOutcomeWhateverTheHostDoesMeanwhile)
{
    constexpr unsigned programs = 5000;
    int comparedPrograms = 0;
    for (unsigned seed = GetParam(); seed < GetParam() + programs; ++seed) {
        const ProgramComparison comparison = compareProgram(seed);
        ASSERT_EQ(comparison.difference, "") << "seed " << seed;
        comparedPrograms += comparison.hasOutcome;
    }
    EXPECT_GT(comparedPrograms, 1500);
}

INSTANTIATE_TEST_SUITE_P(Programs, Differential, testing::Values(1U, 5001U, 10001U, 15001U));
} // namespace tamor::test

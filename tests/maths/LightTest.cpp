#include "maths/Light.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace tamor
{
namespace
{
TEST(Light, NumbersStartAtTheFirstLightOfOpenGL)
{
    const Light first;
    const Light second;

    EXPECT_EQ(first.number, 0x4000U);
    EXPECT_EQ(second.number, 0x4001U);
}

TEST(Light, ANewLightTakesTheLowestFreeNumber)
{
    auto first = std::make_unique<Light>();
    const Light second;
    first.reset();

    const Light third;

    EXPECT_EQ(third.number, 0x4000U);
}

TEST(Light, ACopyHasTheSameNumberAndGivesItBackToo)
{
    const Light first;
    {
        const Light copy = first; // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_EQ(copy.number, first.number);
    }

    const Light second;
    EXPECT_EQ(second.number, first.number);
}

TEST(Light, TakesTheNumberOfOneThatIsAssigned)
{
    const Light first;
    Light second;
    const std::uint32_t ownNumber = second.number;
    second = first;

    EXPECT_EQ(second.number, 0x4000U);
    second.number = ownNumber; // which it gives back, for the tests to come
}

TEST(Light, NumbersEndAfter3377)
{
    std::vector<std::unique_ptr<Light>> lights;
    lights.reserve(3377);
    for (int count = 0; count < 3377; ++count)
        lights.push_back(std::make_unique<Light>());
    EXPECT_EQ(lights.back()->number, 0x4000U + 3376U);

    {
        const Light oneTooMany;
        EXPECT_EQ(oneTooMany.number, 0U);
    }

    // A light without a number gives none back.
    const Light stillTooMany;
    EXPECT_EQ(stillTooMany.number, 0U);
}
} // namespace
} // namespace tamor

#include "maths/Vector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <type_traits>

namespace tamor
{
namespace
{
void expectComponents(Vector v, float x, float y, float z, float w)
{
    EXPECT_FLOAT_EQ(v.x, x);
    EXPECT_FLOAT_EQ(v.y, y);
    EXPECT_FLOAT_EQ(v.z, z);
    EXPECT_FLOAT_EQ(v.w, w);
}

TEST(Vector, StartsAtTheOriginWithWeightOne)
{
    expectComponents(Vector(), 0, 0, 0, 1);
    expectComponents(Vector(2), 2, 0, 0, 1);
    expectComponents(Vector(2, 3), 2, 3, 0, 1);
    expectComponents(Vector(2, 3, 4), 2, 3, 4, 1);
    expectComponents(Vector(2, 3, 4, 5), 2, 3, 4, 5);
}
} // namespace
} // namespace tamor

#include "maths/Vector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

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

TEST(Vector, ArithmeticActsOnThreeComponentsAndKeepsTheLeftWeight)
{
    const Vector a(6, 8, 10, 0.5F);
    const Vector b(1, 2, 5, 7);

    expectComponents(Vector() + Vector(1, 2, 3), 1, 2, 3, 1);
    expectComponents(a + b, 7, 10, 15, 0.5F);
    expectComponents(a - b, 5, 6, 5, 0.5F);
    expectComponents(a * b, 6, 16, 50, 0.5F);
    expectComponents(a / b, 6, 4, 2, 0.5F);
    expectComponents(Vector(1, 2, 3, 0.5F) * 2.0F, 2, 4, 6, 0.5F);
    expectComponents(a / 2.0F, 3, 4, 5, 0.5F);
    expectComponents(-a, -6, -8, -10, 0.5F);
}

TEST(Vector, AssignmentCopiesTheWeightTooAndGivesACopy)
{
    Vector a;
    const Vector b(1, 2, 3, 4);

    (a = b) += Vector(10, 10, 10);

    expectComponents(a, 1, 2, 3, 4);
}

TEST(Vector, ChangingOperationsChangeTheVectorAndGiveACopy)
{
    Vector sum(1, 2, 3, 4);
    Vector quotient(2, 4, 6, 4);

    expectComponents(sum += Vector(1, 1, 1, 9), 2, 3, 4, 4);
    expectComponents(quotient /= 2.0F, 1, 2, 3, 4);

    expectComponents(sum, 2, 3, 4, 4);
    expectComponents(quotient, 1, 2, 3, 4);
}

TEST(Vector, CrossProductIsRightHandedWithWeightOne)
{
    expectComponents(Vector(1, 0, 0).cross(Vector(0, 1, 0)), 0, 0, 1, 1);
    expectComponents(Vector(1, 2, 3, 9).cross(Vector(4, 5, 6, 9)), -3, 6, -3, 1);
}

TEST(Vector, LengthLeavesOutTheWeight)
{
    EXPECT_EQ(Vector(1, 2, 2, 100).lengthSquared(), 9.0F);
    EXPECT_EQ(Vector(1, 2, 2, 100).length(), 3.0F);
}

TEST(Vector, NormaliseDividesByTheLength)
{
    Vector v(3, 0, 4);

    expectComponents(v.normalise(), 0.6F, 0, 0.8F, 1);
    expectComponents(v, 0.6F, 0, 0.8F, 1);
}

TEST(Vector, NormaliseDividesByTheWeightFirst)
{
    expectComponents(Vector(2, 0, 0, 2).normalise(), 1, 0, 0, 1);
    expectComponents(Vector(2, 0, 0, -2).normalise(), -1, 0, 0, 1);
}

TEST(Vector, NormaliseOfTheZeroVectorGivesNoNumbers)
{
    Vector zero(0, 0, 0);
    zero.normalise();

    EXPECT_TRUE(std::isnan(zero.x));
    EXPECT_TRUE(std::isnan(zero.y));
    EXPECT_TRUE(std::isnan(zero.z));
    EXPECT_EQ(zero.w, 1.0F);
}

TEST(Vector, ToArrayGivesOneArrayForAllVectors)
{
    const float* first = Vector(1, 2, 3, 4).toArray();
    const float* second = Vector(5, 6, 7, 8).toArray();

    EXPECT_EQ(first, second);
    EXPECT_EQ(first[0], 5.0F);
    EXPECT_EQ(first[1], 6.0F);
    EXPECT_EQ(first[2], 7.0F);
    EXPECT_EQ(first[3], 8.0F);
}

TEST(Vector, WritesItsFourComponentsInTheStreamsFormat)
{
    std::ostringstream stream;
    stream << Vector(1, 0.71F, -0.16F);

    EXPECT_EQ(stream.str(), "(1, 0.71, -0.16, 1)");
}
} // namespace
} // namespace tamor

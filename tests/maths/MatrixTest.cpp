#include "maths/Matrix.h"

#include <gtest/gtest.h>

namespace tamor
{
namespace
{
constexpr float pi = 3.14159265F;

/// What a rotation by single-precision sines and cosines of values up to 1 leaves of an exact 0.
constexpr float rounding = 1e-6F;

void expectPoint(Vector point, float x, float y, float z)
{
    EXPECT_NEAR(point.x, x, rounding);
    EXPECT_NEAR(point.y, y, rounding);
    EXPECT_NEAR(point.z, z, rounding);
    EXPECT_EQ(point.w, 1.0F);
}

TEST(Matrix, StartsAsTheIdentity)
{
    EXPECT_EQ(Matrix().m, (std::array<float, 16>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
}

TEST(Matrix, ProductIsThatOfColumnMajorAffineMatrices)
{
    Matrix a;
    a.m = {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 10, 0, 11, 12, 13, 1};
    Matrix b;
    b.m = {2, 0, 1, 0, 0, 3, 1, 0, 1, 1, 1, 0, 1, 2, 3, 1};

    // Worked out by hand: column j of the product is a's columns weighted by column j of b.
    EXPECT_EQ((a * b).m,
              (std::array<float, 16>{9, 12, 16, 0, 19, 23, 28, 0, 12, 15, 19, 0, 41, 48, 58, 1}));
}

TEST(Matrix, ProductIgnoresTheBottomRowOfTheRightOperand)
{
    Matrix a;
    a.translate(1, 2, 3);
    Matrix b;
    b.translate(4, 5, 6);
    Matrix odd = b;
    odd.m[3] = 5;
    odd.m[7] = 6;
    odd.m[11] = 7;
    odd.m[15] = 8;

    EXPECT_EQ((a * odd).m, (a * b).m);
}

TEST(Matrix, ProductKeepsTheBottomRowOfTheLeftOperand)
{
    Matrix a;
    a.m[3] = 5;
    a.m[15] = 2;

    const Matrix product = a * Matrix();

    EXPECT_EQ(product.m[3], 5.0F);
    EXPECT_EQ(product.m[15], 2.0F);
}

TEST(Matrix, TranslationsAddUp)
{
    Matrix matrix;
    matrix.translate(1, 2, 3);
    matrix.translate(1, 1, 1);

    expectPoint(matrix.transformPoint(0, 0, 0), 2, 3, 4);
}

TEST(Matrix, TranslationComesBehindAnEarlierRotation)
{
    Matrix matrix;
    matrix.rotate(0, 0, pi / 2);
    matrix.translate(1, 0, 0);

    expectPoint(matrix.transformPoint(0, 0, 0), 0, 1, 0);
}

TEST(Matrix, RotationByNothingLeavesAMatrixAsItIs)
{
    Matrix matrix;
    matrix.translate(1, 2, 3);
    const Matrix before = matrix;

    matrix.rotate(0, 0, 0);

    EXPECT_EQ(matrix.m, before.m);
}

TEST(Matrix, RotationTurnsAboutEachAxis)
{
    Matrix aboutX;
    aboutX.rotate(pi / 2, 0, 0);
    Matrix aboutY;
    aboutY.rotate(0, pi / 2, 0);
    Matrix aboutZ;
    aboutZ.rotate(0, 0, pi / 2);

    expectPoint(aboutX.transformPoint(0, 1, 0), 0, 0, 1);
    expectPoint(aboutY.transformPoint(0, 0, 1), 1, 0, 0);
    expectPoint(aboutZ.transformPoint(1, 0, 0), 0, 1, 0);
}

TEST(Matrix, RotationTurnsAPointAboutXFirstAndZLast)
{
    Matrix matrix;
    matrix.rotate(pi / 2, 0, pi / 2);

    // y goes to z about x, where the turn about z leaves it; the other order would give -x.
    expectPoint(matrix.transformPoint(0, 1, 0), 0, 0, 1);
}

TEST(Matrix, RotationAboutThreeAxesHasTheseElements)
{
    Matrix matrix;
    matrix.rotate(0.3F, -0.8F, 1.9F);

    // From the sines and cosines of the three angles, worked out with more digits.
    const std::array<float, 16> expected = {
        -0.2252380F, 0.6592936F,  0.7173561F, 0, -0.8354998F, -0.5094595F, 0.2058909F, 0,
        0.5012065F,  -0.5529764F, 0.6655893F, 0, 0,           0,           0,          1};
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_NEAR(matrix.m[i], expected[i], rounding) << i;
}

TEST(Matrix, RotationAboutThreeAxesComesBehindWhatTheMatrixWas)
{
    Matrix matrix;
    matrix.m = {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 5, 6, 7, 1};
    matrix.rotate(0.3F, -0.8F, 1.9F);

    // The first row is scaled by 2, the second by 3, the third by 4.
    Matrix rotation;
    rotation.rotate(0.3F, -0.8F, 1.9F);
    EXPECT_EQ(matrix.m[0], 2 * rotation.m[0]);
    EXPECT_EQ(matrix.m[5], 3 * rotation.m[5]);
    EXPECT_EQ(matrix.m[10], 4 * rotation.m[10]);
    EXPECT_EQ(matrix.m[4], 2 * rotation.m[4]);
    EXPECT_EQ(matrix.m[12], 5.0F);
}

TEST(Matrix, RotationActsBeforeAnEarlierTranslation)
{
    Matrix matrix;
    matrix.translate(1, 0, 0);
    matrix.rotate(0, 0, pi / 2);

    expectPoint(matrix.transformPoint(1, 0, 0), 1, 1, 0);
}

TEST(Matrix, PointsIgnoreTheBottomRow)
{
    Matrix matrix;
    matrix.m[3] = 9;
    matrix.m[15] = 9;

    expectPoint(matrix.transformPoint(1, 2, 3), 1, 2, 3);
}
} // namespace
} // namespace tamor

/// \file
/// Comparing vectors in tests, in words that help when they differ.
#pragma once

#include "maths/Vector.h"

#include <gmock/gmock.h>

namespace tamor::test
{
MATCHER_P4(IsVector, x, y, z, w, "")
{
    return arg.x == static_cast<float>(x) && arg.y == static_cast<float>(y) &&
           arg.z == static_cast<float>(z) && arg.w == static_cast<float>(w);
}

/// Exactly x, y and z, and `w` 1.
template <typename X, typename Y, typename Z>
auto isVector(X x, Y y, Z z)
{
    return IsVector(x, y, z, 1);
}

/// x, y and z within one millionth, which is what sines of float angles are off by, and `w` 1.
MATCHER_P3(isNear, x, y, z, "")
{
    const Vector difference =
        arg - Vector(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
    return difference.length() < 1e-6F && arg.w == 1.0F;
}
} // namespace tamor::test

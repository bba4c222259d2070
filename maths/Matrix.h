/// \file
/// The 4 by 4 matrix, in OpenGL's layout.
#pragma once

#include "TamorExport.h"
#include "maths/Vector.h"

#include <array>

namespace tamor
{
/// An affine transformation: 16 floats in column-major order, the translation in `m[12]` to
/// `m[14]`. Vectors are columns, so a matrix acts from the left. Angles are in radians.
class TAMOR_EXPORT Matrix
{
public:
    /// The identity.
    constexpr Matrix() = default;

    /// The product of two affine matrices.
    ///
    /// Meant: the bottom row of `b` is not read but taken to be 0, 0, 0, 1, since every matrix of
    /// the engine is affine; `Matrix.ProductIgnoresTheBottomRowOfTheRightOperand` holds it.
    Matrix operator*(Matrix b) const;

    /// Becomes itself times a translation.
    void translate(float x, float y, float z);

    /// Becomes itself times the rotation about x, then y, then z (applied to a point in that
    /// order).
    void rotate(float x, float y, float z);

    /// The point through the matrix, with `w` 1. The bottom row is not read.
    Vector transformPoint(float x, float y, float z) const
    {
        return {x * m[0] + y * m[4] + z * m[8] + m[12], x * m[1] + y * m[5] + z * m[9] + m[13],
                x * m[2] + y * m[6] + z * m[10] + m[14]};
    }

    /// Takes OpenGL's current modelview matrix. Returns a copy of it.
    Matrix loadModelview();

    /// Multiplies OpenGL's current matrix by this one, from the right. Returns a copy of this one.
    Matrix multiplyModelview() const;

    /// Column by column, as OpenGL reads it; a new matrix is the identity.
    std::array<float, 16> m = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
};
} // namespace tamor

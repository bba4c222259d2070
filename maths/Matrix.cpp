#include "maths/Matrix.h"

#include <GL/gl.h>

#include <cmath>

namespace tamor
{
Matrix Matrix::operator*(Matrix b) const
{
    Matrix r;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const std::size_t j = 4 * column;
            r.m[j + row] = m[row] * b.m[j] + m[4 + row] * b.m[j + 1] + m[8 + row] * b.m[j + 2];
        }
        r.m[12 + row] =
            m[row] * b.m[12] + m[4 + row] * b.m[13] + m[8 + row] * b.m[14] + m[12 + row];
    }
    return r;
}

void Matrix::translate(float x, float y, float z)
{
    Matrix translation;
    translation.m[12] = x;
    translation.m[13] = y;
    translation.m[14] = z;
    *this = *this * translation;
}

void Matrix::rotate(float x, float y, float z)
{
    const float cx = std::cos(x);
    const float sx = std::sin(x);
    const float cy = std::cos(y);
    const float sy = std::sin(y);
    const float cz = std::cos(z);
    const float sz = std::sin(z);

    Matrix rotation;
    rotation.m[0] = cy * cz;
    rotation.m[1] = cy * sz;
    rotation.m[2] = -sy;
    rotation.m[4] = sx * sy * cz - cx * sz;
    rotation.m[5] = sx * sy * sz + cx * cz;
    rotation.m[6] = sx * cy;
    rotation.m[8] = cx * sy * cz + sx * sz;
    rotation.m[9] = cx * sy * sz - sx * cz;
    rotation.m[10] = cx * cy;
    *this = *this * rotation;
}

Matrix Matrix::loadModelview()
{
    glGetFloatv(GL_MODELVIEW_MATRIX, m.data());
    return *this;
}

Matrix Matrix::multiplyModelview() const
{
    glMultMatrixf(m.data());
    return *this;
}
} // namespace tamor

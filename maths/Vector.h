/// \file
/// Four floats that serve as point, direction, rectangle and colour alike.
///
/// The folder maths/ holds the value types and helpers that everything else uses: vectors and
/// matrices, a few operations on strings and files, and the thin layer where engine types meet
/// OpenGL's state. It knows nothing of windows, events or images.
#pragma once

#include "TamorExport.h"

#include <cmath>
#include <iosfwd>

namespace tamor
{
/// A point or direction (x, y, z), a rectangle (x1, y1, x2, y2) or a colour (red, green, blue,
/// alpha).
///
/// Arithmetic acts on x, y and z in single precision, and the result keeps the left operand's `w`,
/// so that `w` stays 1 through all ordinary use.
class TAMOR_EXPORT Vector
{
public:
    constexpr Vector() = default;
    constexpr explicit Vector(float newX) : x(newX) {} ///< y and z are 0, `w` is 1
    /// What is not given is 0, and `w` is 1.
    constexpr Vector(float newX, float newY, float newZ = 0.0F, float newW = 1.0F)
        : x(newX), y(newY), z(newZ), w(newW)
    {}
    /// Takes all four components.
    constexpr Vector(const Vector&) = default;
    ~Vector() = default;

    /// Copies all four components, `w` included. Returns a copy, as every changing operation here
    /// does.
    constexpr Vector operator=(const Vector& other)
    {
        x = other.x;
        y = other.y;
        z = other.z;
        w = other.w;
        return *this;
    }

    /// \name Component by component
    /// \{

    /// Nothing is tested: a division by 0 gives an infinity, or what is not a number.
    constexpr Vector operator+(Vector b) const { return {x + b.x, y + b.y, z + b.z, w}; }
    constexpr Vector operator-(Vector b) const { return {x - b.x, y - b.y, z - b.z, w}; }
    constexpr Vector operator*(Vector b) const { return {x * b.x, y * b.y, z * b.z, w}; }
    constexpr Vector operator/(Vector b) const { return {x / b.x, y / b.y, z / b.z, w}; }
    constexpr Vector operator*(float s) const { return {x * s, y * s, z * s, w}; }
    constexpr Vector operator/(float s) const { return {x / s, y / s, z / s, w}; }
    constexpr Vector operator-() const { return {-x, -y, -z, w}; }
    constexpr Vector operator+=(Vector b) { return *this = *this + b; }
    constexpr Vector operator/=(float s) { return *this = *this / s; }
    /// \}

    /// The cross product, with `w` 1.
    constexpr Vector cross(Vector b) const
    {
        return {y * b.z - z * b.y, z * b.x - x * b.z, x * b.y - y * b.x, 1.0F};
    }

    constexpr float lengthSquared() const { return x * x + y * y + z * z; } ///< `w` does not count
    float length() const { return std::sqrt(lengthSquared()); }             ///< `w` does not count

    /// Divides x, y and z by `w`, sets `w` to 1, and divides x, y and z by the length. The zero
    /// vector gives not-a-number components. Returns a copy of the result.
    Vector normalise()
    {
        *this = *this / w;
        w = 1.0F;
        return *this = *this / length();
    }

    /// The four components as an array, to hand to `glLightfv` and the like.
    ///
    /// The array is one for the whole program: it is good until the next call on any vector.
    float* toArray() const;

    float x = 0.0F; ///< red, of a colour
    float y = 0.0F; ///< green, of a colour
    float z = 0.0F; ///< blue, of a colour
    float w = 1.0F; ///< alpha, of a colour
};

static_assert(sizeof(Vector) == 16);

/// Writes "(x, y, z, w)" in the stream's own float format.
TAMOR_EXPORT std::ostream& operator<<(std::ostream& stream, Vector vector);
} // namespace tamor

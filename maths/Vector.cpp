#include "maths/Vector.h"

#include <ostream>

namespace tamor
{
float* Vector::toArray() const
{
    static float components[4];
    components[0] = x;
    components[1] = y;
    components[2] = z;
    components[3] = w;
    return components;
}

std::ostream& operator<<(std::ostream& stream, Vector vector)
{
    return stream << "(" << vector.x << ", " << vector.y << ", " << vector.z << ", " << vector.w
                  << ")";
}
} // namespace tamor

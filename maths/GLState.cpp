#include "maths/GLState.h"

#include <GL/gl.h>

namespace tamor
{
bool bindTexture(const std::uint32_t& id)
{
    glBindTexture(GL_TEXTURE_2D, id);
    return true;
}
} // namespace tamor

/// \file
/// OpenGL's extensions and later versions, under GLee's names.
///
/// GLee is no longer packaged; GLEW is, and does the same job. This header keeps GLee's two names
/// that the engine uses over it. `glGenBuffers`, `glCreateShader` and the rest are called as usual.
/// It must come before every other OpenGL header.
#pragma once

#include <GL/glew.h>

/// Whether the driver offers vertex buffer objects; true or false from `GLeeInit` on.
#define GLEE_ARB_vertex_buffer_object (GLEW_ARB_vertex_buffer_object != 0)

namespace tamor
{
/// Looks up the functions of the current context. To be called once, when the window is open.
/// \return whether that worked
inline bool GLeeInit()
{
    glewExperimental = GL_TRUE;
    return glewInit() == GLEW_OK;
}
} // namespace tamor

/// \file
/// Binding a texture by its id. (The modelview matrix is exchanged by `Matrix`.)
#pragma once

#include "TamorExport.h"

#include <cstdint>

namespace tamor
{
/// Makes the texture with the OpenGL name `id` the current two-dimensional one; 0 is none.
/// \return true
TAMOR_EXPORT bool bindTexture(const std::uint32_t& id);
} // namespace tamor

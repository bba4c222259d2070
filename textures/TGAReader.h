/// \file
/// The reader of TGA files: run-length encoded true colour, and nothing else.
#pragma once

#include "TamorExport.h"
#include "textures/Image.h"

namespace tamor
{
/// Fills `image` from a run-length encoded true-colour TGA file of 24 or 32 bits a pixel.
///
/// | Offset | Bytes | Field          | Use                                                    |
/// |--------|-------|----------------|--------------------------------------------------------|
/// | 2      | 1     | Image type     | must be 10                                             |
/// | 12     | 2     | Width          | little-endian                                          |
/// | 14     | 2     | Height         | little-endian                                          |
/// | 16     | 1     | Bits per pixel | 24: alpha is 1; 32; any other leaves the pixels as the |
/// |        |       |                | memory was                                             |
/// | 18     | rest  | Packets        | read until there are width x height pixels             |
///
/// All else is passed over: rows stay in file order whatever the origin, and an ID field or a
/// colour map is taken for packets. A short file gives its last bytes over and over.
///
/// On success the old pixels are freed and the caller owns the new array.
/// \param key  of which only the path is used
/// \return false, with `image` untouched, after printing one of these lines:
///         Error loading texture tga file '<path>'
///         Please use compressed TGAs
///         <path>: Too large for the memory
TAMOR_EXPORT bool readTGA(Image& image, TextureKey key);
} // namespace tamor

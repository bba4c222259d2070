/// \file
/// One texture a file, however many ask for it, and the choice of an image's reader by its name.
#pragma once

#include "TamorExport.h"
#include "textures/Image.h"

#include <cstdint>
#include <vector>

namespace tamor
{
/// A texture that was asked for.
struct TextureEntry
{
    TextureKey key;       ///< what was asked for
    std::uint32_t id = 0; ///< its OpenGL name
};

/// All textures asked for, oldest first. Nothing is ever removed.
extern TAMOR_EXPORT std::vector<TextureEntry> textureRegistry;

/// How many holders each texture has, by OpenGL name. Bookkeeping: nothing decides by it.
extern TAMOR_EXPORT std::vector<std::uint16_t> textureRefCounts;

/// Sets `id` to the texture for `key`, loading it on the first request.
///
/// A file that cannot be read is registered like any other, with whatever the image held when the
/// reader gave up, and is not tried again.
/// \param id  the caller's texture so far, 0 for none
/// \return true. Prints one of, on a request for a key that is known:
///         reassigning this texture
///         not reloading texture
TAMOR_EXPORT bool assignTexture(std::uint32_t& id, const TextureKey& key);

/// Fills `image` from the file at `key.path`: a path with "tga" anywhere in it through `readTGA`,
/// otherwise one with "png" through `readPNG`.
///
/// The substring decides, not the extension: "tgaskin.png" goes to `readTGA`, and "MAP.TGA" to
/// none.
///
/// `readPNG` may give up behind the size that the file states: then the image has that size and its
/// old pixels, which may be fewer. Whoever goes on with such an image compares the two first.
/// \return whether the reader succeeded. Any other path prints
///         <path>: Unsupported texture format
TAMOR_EXPORT bool loadImage(Image& image, TextureKey key);
} // namespace tamor

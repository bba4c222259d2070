/// \file
/// The reader of PNG files: eight bits a channel, red, green, blue and alpha, not interlaced.
#pragma once

#include "TamorExport.h"
#include "textures/Image.h"

#include <cstddef>
#include <cstdint>

namespace tamor
{
/// A whole file as 16-bit words, with a cursor that yields the file's bytes in their order.
///
/// A plain record, which does not own its words.
struct TAMOR_EXPORT PNGWordStream
{
    /// The next byte; 0 behind the words that there are.
    std::uint8_t readByte();

    /// The next four bytes, the first one on top.
    std::uint32_t readLong();

    /// Each in the processor's order: the high byte came first in the file.
    std::uint16_t* words = nullptr;
    /// The word that the cursor stands in.
    std::uint32_t wordIndex = 0;
    /// 0 when the cursor stands at that word's high byte, 1 at its low byte.
    std::uint32_t lowByteNext = 0;
    /// How many words there are, for a stream that is to stay inside them.
    std::uint32_t wordLimit = UINT32_MAX;
};

/// Fills `image` from a PNG file of eight bits a channel with alpha, not interlaced.
///
/// Chunks are walked to the end of the file, those behind IEND too; only IHDR and IDAT are looked
/// at, and no check sum is. No row is turned over. The last byte of a file of odd size is not
/// counted.
///
/// Nearly every well-formed picture ends in the line on decompression: see the source. Pixels that a
/// short file leaves without data are 0, and take no memory.
///
/// On success the old pixels are freed and the caller owns the new array.
/// \param key  of which only the path is used
/// \return false after printing one of these lines; from the third on `image` has the size that
///         the file states, and its old pixels, which may be fewer:
///         Error opening <path>
///         <path> is not a valid png file - header invalid
///         Unsupported format of PNG. Make sure it is RGBA, non-interlaced.
///         Invalid compression format.
///         Could not decompress PNG data. Error code: <code of zlib>
///         unsupported filter format at byte <offset>: <filter type>
///         <path>: Too large for the memory
TAMOR_EXPORT bool readPNG(Image& image, TextureKey key);
} // namespace tamor

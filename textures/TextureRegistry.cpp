#include "textures/TextureRegistry.h"

#include "textures/PNGReader.h"
#include "textures/TGAReader.h"

#include <GL/gl.h>

#include <algorithm>
#include <iostream>

namespace tamor
{
std::vector<TextureEntry> textureRegistry;
std::vector<std::uint16_t> textureRefCounts;

namespace
{
// A failed reader's size beyond this is nonsense, and no array is made for it.
constexpr std::size_t largestFailedPicture = std::size_t{1} << 26; // pixels

/// The counter of a texture. The list grows up to it.
std::uint16_t& refCount(std::uint32_t id)
{
    if (textureRefCounts.size() <= id)
        textureRefCounts.resize(std::size_t{id} + 1);
    return textureRefCounts[id];
}

/// Goes over from one texture that the caller holds to another.
void exchangeTexture(std::uint32_t& id, std::uint32_t newId)
{
    if (glIsTexture(id) == GL_TRUE)
        refCount(id)--;
    id = newId;
    if (glIsTexture(id) == GL_TRUE)
        refCount(id)++;
}

void storeEntry(const TextureKey& key, std::uint32_t id)
{
    bool wasFound = false;
    for (TextureEntry& entry : textureRegistry) {
        if (entry.key == key) {
            entry.id = id;
            wasFound = true;
        }
    }
    if (!wasFound)
        textureRegistry.push_back({key, id});
}

bool readByName(Image& image, const TextureKey& key)
{
    if (key.path.find("tga") != std::string::npos)
        return readTGA(image, key);
    if (key.path.find("png") != std::string::npos)
        return readPNG(image, key);
    std::cerr << key.path << ": Unsupported texture format" << std::endl;
    return false;
}

/// A reader that gives up may leave a new size with the pixels of the old one. Gives the image an
/// array of that size, all 0; or, where the size is nonsense, its old size back.
void matchPixelsToSize(Image& image, std::int32_t oldWidth, std::int32_t oldHeight)
{
    if (image.width == oldWidth && image.height == oldHeight)
        return;
    const std::size_t count = image.pixelCount();
    if (count == 0 || count > largestFailedPicture) {
        image.width = oldWidth;
        image.height = oldHeight;
        return;
    }
    image.allocate(image.width, image.height);
    std::fill_n(image.pixels, count * 4, 0.0F);
}
} // namespace

bool assignTexture(std::uint32_t& id, const TextureKey& key)
{
    const auto entry =
        std::find_if(textureRegistry.begin(), textureRegistry.end(),
                     [&](const TextureEntry& candidate) { return candidate.key == key; });
    if (entry != textureRegistry.end()) {
        if (entry->id == id) {
            std::cerr << "reassigning this texture" << std::endl;
            return true;
        }
        exchangeTexture(id, entry->id);
        std::cerr << "not reloading texture" << std::endl;
        return true;
    }

    // Meant: a failed read stops nothing, so that the file gets a texture and is not tried again;
    // `AssignTextureGLTest.RegistersAFileThatCannotBeRead` holds it.
    id = 0;
    Image image;
    loadImage(image, key);
    uploadTexture(id, image, key);
    storeEntry(key, id);
    refCount(id)++;
    return true;
}

bool loadImage(Image& image, TextureKey key)
{
    const std::int32_t oldWidth = image.width;
    const std::int32_t oldHeight = image.height;
    if (readByName(image, key))
        return true;
    matchPixelsToSize(image, oldWidth, oldHeight);
    return false;
}
} // namespace tamor

#include "textures/TextureRegistry.h"

#include "maths/Memory.h"
#include "textures/PNGReader.h"
#include "textures/TGAReader.h"
#include "textures/internal/Pixels.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>

namespace tamor
{
std::vector<TextureEntry> textureRegistry;
std::vector<std::uint16_t> textureRefCounts;

namespace
{
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

struct Freeing
{
    void operator()(void* memory) const { std::free(memory); }
};

/// Uploads an image with the size that a failed reader left and more pixels than it has: all 0, in
/// memory that is only taken where it is written. What the memory does not hold is not uploaded.
void uploadUnread(std::uint32_t& id, Image image, const TextureKey& key)
{
    const bool isHeld = memoryHolds(saturatingProduct(image.pixelCount(), floatPixelSize));
    const std::unique_ptr<void, Freeing> zeros(
        isHeld ? std::calloc(image.pixelCount(), floatPixelSize) : nullptr);
    image.pixels = static_cast<float*>(zeros.get());
    if (image.pixels == nullptr)
        image.width = image.height = 0;
    uploadTexture(id, image, key);
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
    const std::size_t pixelsHeld = image.pixelCount();
    if (!loadImage(image, key) && image.pixelCount() > pixelsHeld)
        uploadUnread(id, image, key);
    else
        uploadTexture(id, image, key);
    textureRegistry.push_back({key, id});
    refCount(id)++;
    return true;
}

bool loadImage(Image& image, TextureKey key)
{
    if (key.path.find("tga") != std::string::npos)
        return readTGA(image, key);
    if (key.path.find("png") != std::string::npos)
        return readPNG(image, key);
    std::cerr << key.path << ": Unsupported texture format" << std::endl;
    return false;
}
} // namespace tamor

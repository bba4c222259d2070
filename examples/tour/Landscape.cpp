#include "platform/GLee.h"

#include "examples/tour/Landscape.h"

#include "generator/MeshGenerator.h"
#include "textures/TextureRegistry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <tuple>

namespace tour
{
using namespace tamor;

namespace
{
constexpr int divisions = 128;
constexpr int points = divisions + 1;             // along an edge
constexpr int texels = 512;                       // along an edge of the texture
constexpr const char* pictureFile = "crater.tga"; // `points` pixels along an edge

float mix(float a, float b, float t)
{
    return a + (b - a) * t;
}

/// 0 below `from`, 1 above `to`, smooth between.
float smoothStep(float from, float to, float value)
{
    const float t = std::clamp((value - from) / (to - from), 0.0F, 1.0F);
    return t * t * (3.0F - 2.0F * t);
}

TerrainMesh makeMesh(const LandSettings& settings, const Image& picture)
{
    const float size = settings.size;
    switch (settings.source) {
    case Source::noise:
        // The finer, the rougher.
        return noiseTerrain(points, 7, 0.34F, 1.0F, 0.5F, mix(0.28F, 0.56F, settings.roughness),
                            size, size, size);
    case Source::picture:
        if (picture.width == points && picture.height == points)
            return imageTerrain(picture, size, size, size);
        break;
    case Source::fractal:
        break;
    }
    std::srand(settings.seed); // the seed is the terrain
    return fractalTerrain(divisions, 1.0F, mix(0.40F, 0.60F, settings.roughness), size, size, size);
}

/// An image of one colour.
Image plain(const Vector& colour)
{
    Image image;
    image.clear(texels, texels);
    image.scroll(texels, 0, 0, 0, colour, false); // all of it is the fill
    return image;
}

/// A layer of the ground: dark and light by the grain.
Image makeLayer(const Vector& dark, const Vector& light, const Image& grain)
{
    Image layer = plain(light);
    layer.blend(7, 0, grain); // times the grain's luminance
    Image shade = plain(dark);
    shade.blend(9, 0, grain); // times 1 - that
    layer.blend(1, 1, shade); // the sum
    delete[] shade.pixels;
    return layer;
}
// How far a layer covers what is below it, 0 to 1, by the height and the steepness of the ground. The
// grain, 0 to 1, frays its edges.

float everywhere(float, float, float)
{
    return 1.0F;
}

float deep(float height, float, float)
{
    return 1.0F - smoothStep(-5.0F, -0.4F, height);
}

float meadow(float height, float, float grain)
{
    return smoothStep(0.8F, 2.2F, height + 2.6F * (grain - 0.5F));
}

float wood(float height, float, float grain)
{
    return 0.85F * smoothStep(4.0F, 13.0F, height + 22.0F * (grain - 0.55F));
}

float rock(float height, float steepness, float grain)
{
    return std::max(smoothStep(0.24F, 0.40F, steepness + 0.35F * (grain - 0.5F)),
                    0.9F * smoothStep(17.0F, 24.0F, height + 9.0F * (grain - 0.5F)));
}

float snow(float height, float steepness, float grain)
{
    return smoothStep(25.0F, 29.0F, height + 8.0F * (grain - 0.5F)) *
           (1.0F - smoothStep(0.42F, 0.60F, steepness));
}

struct Layer
{
    Vector dark;
    Vector light;
    float (*cover)(float height, float steepness, float grain);
};

/// From the lowest to the uppermost.
const std::array layers = {
    Layer{{0.60F, 0.52F, 0.36F}, {0.90F, 0.82F, 0.62F}, everywhere},
    Layer{{0.05F, 0.20F, 0.24F}, {0.10F, 0.34F, 0.37F}, deep},
    Layer{{0.25F, 0.38F, 0.12F}, {0.58F, 0.66F, 0.28F}, meadow},
    Layer{{0.12F, 0.24F, 0.10F}, {0.30F, 0.44F, 0.18F}, wood},
    Layer{{0.30F, 0.28F, 0.27F}, {0.62F, 0.58F, 0.54F}, rock},
    Layer{{0.80F, 0.84F, 0.90F}, {1.0F, 1.0F, 1.0F}, snow},
};
} // namespace

Landscape::~Landscape()
{
    delete[] grain.pixels; // no image frees its pixels
    delete[] heights.pixels;
}

void Landscape::load()
{
    takeFirstBuffers();
    // Once, as every reading leaves memory behind that nothing frees; `fileTerrain` would read it each
    // time.
    if (!std::filesystem::exists(pictureFile))
        std::cerr << pictureFile << " is missing: a fractal stands in for it" << std::endl;
    else if (loadImage(heights, {pictureFile, 0}))
        heights.blur(4);

    grain.clear(texels, texels);
    grain.perlin(7, 0.09F, 1.0F, 0.5F, 0.72F);
    grain.normalise();
    // From near it is to be seen less than in the texture.
    Image fine;
    fine.clear(texels, texels);
    for (std::size_t texel = 0; texel < fine.pixelCount(); texel++)
        for (std::size_t channel = 0; channel < 3; channel++)
            fine.pixels[4 * texel + channel] = 0.5F + 0.5F * (grain.pixels[4 * texel] - 0.5F);
    uploadTexture(grainTexture, fine, {"", TextureKey::FLOAT_PIXELS});
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_MIRRORED_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_MIRRORED_REPEAT);
    delete[] fine.pixels;
}

void Landscape::make(const LandSettings& settings)
{
    made = settings;
    auto model = std::make_unique<Model>();
    putIntoModel(*model, makeMesh(settings, heights));
    ground.take(std::move(model));
    shape();
    paint();
}

/// Makes an island of whatever heights there are: the highest as high as it is to be, the rim below
/// the sea.
void Landscape::shape()
{
    std::vector<Vertex>& vertices = ground.model().vertices;
    float low = vertices.front().position.y;
    float high = low;
    for (const Vertex& vertex : vertices) {
        low = std::min(low, vertex.position.y);
        high = std::max(high, vertex.position.y);
    }
    const float range = std::max(high - low, 0.001F);
    const bool isPicture = made.source == Source::picture;
    for (std::size_t n = 0; n < vertices.size(); n++) {
        // From -1 to 1, whichever generator made the point.
        const std::size_t row = n / points;
        const std::size_t column = n % points;
        const float x = 2.0F * static_cast<float>(row) / divisions - 1.0F;
        const float z = 2.0F * static_cast<float>(column) / divisions - 1.0F;
        const float rise = (vertices[n].position.y - low) / range;
        // A picture has no roughness of its own.
        const float rough =
            isPicture ? 0.09F * made.roughness *
                            Image::interpolatedNoise(11.0F * (x + 1.0F), 11.0F * (z + 1.0F))
                      : 0.0F;
        const float rim = isPicture ? 1.0F : 1.0F - smoothStep(0.35F, 0.98F, std::hypot(x, z));
        const float share = rim * std::pow(std::max(rise + rough, 0.0F), 1.25F);
        vertices[n].position = Vector(x * made.size / 2.0F, seaBed + share * (made.height - seaBed),
                                      z * made.size / 2.0F);
        vertices[n].normal = Vector(); // `computeNormals` adds to what is there
        vertices[n].v = (x + 1.0F) / 2.0F;
        vertices[n].u = (z + 1.0F) / 2.0F;
    }
    ground.model().computeNormals(false);
    ground.changed();
}

/// The texture: sand, meadow, rock and snow, one above the other, each as far as its alpha says.
/// That follows height and steepness, frayed by the grain.
void Landscape::paint()
{
    std::vector<float> levels;
    std::vector<float> uprights;
    // In cells of the mesh, at the middle of a texel.
    const auto cell = [](int texel) {
        return divisions * (static_cast<float>(texel) + 0.5F) / texels;
    };
    for (int texel = 0; texel < texels * texels; texel++) {
        const int texelRow = texel / texels;
        const float row = cell(texelRow);
        const float column = cell(texel % texels);
        levels.push_back(between(row, column, [](const Vertex& v) { return v.position.y; }));
        uprights.push_back(between(row, column, [](const Vertex& v) { return v.normal.y; }));
    }
    Image mixed;
    for (const Layer& layer : layers) {
        Image next = makeLayer(layer.dark, layer.light, grain);
        for (std::size_t texel = 0; texel < next.pixelCount(); texel++)
            next.pixels[4 * texel + 3] =
                layer.cover(levels[texel], 1.0F - uprights[texel], grain.pixels[4 * texel]);
        if (mixed.pixels != nullptr)
            next.blend(2, 4, mixed); // over what there is, by its own alpha
        delete[] mixed.pixels;
        mixed = next;
    }
    mixed.clamp(); // a channel above 1 would wrap round

    if (texture != 0)
        glDeleteTextures(1, &texture);
    // As floats, since the bytes of any other upload stay in memory for good.
    uploadTexture(texture, mixed, {"", TextureKey::FLOAT_PIXELS});
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    delete[] mixed.pixels;

    Material material;
    material.transparency = 1.0F;
    material.diffuse = {1.0F, 1.0F, 1.0F};
    material.textureId = texture;
    ground.model().materials = {material};
    for (Face& face : ground.model().faces)
        face.material = 0;
}

/// The texture is coarse from near, so the grain lies over it in a second unit, many times over.
void Landscape::draw(Way way)
{
    constexpr float timesAUnit = 0.06F;
    glActiveTexture(GL_TEXTURE1);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, grainTexture);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_COMBINE);
    glTexEnvi(GL_TEXTURE_ENV, GL_COMBINE_RGB, GL_MODULATE);
    glTexEnvf(GL_TEXTURE_ENV, GL_RGB_SCALE, 2.0F);
    for (const auto& [coordinate, enable, plane] :
         {std::tuple(GL_S, GL_TEXTURE_GEN_S, Vector(timesAUnit, 0.0F, 0.0F, 0.0F)),
          std::tuple(GL_T, GL_TEXTURE_GEN_T, Vector(0.0F, 0.0F, timesAUnit, 0.0F))}) {
        glTexGeni(static_cast<GLenum>(coordinate), GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR);
        glTexGenfv(static_cast<GLenum>(coordinate), GL_OBJECT_PLANE, plane.toArray());
        glEnable(static_cast<GLenum>(enable));
    }
    glActiveTexture(GL_TEXTURE0);

    ground.draw(way);

    glActiveTexture(GL_TEXTURE1);
    glDisable(GL_TEXTURE_GEN_S);
    glDisable(GL_TEXTURE_GEN_T);
    glDisable(GL_TEXTURE_2D);
    glActiveTexture(GL_TEXTURE0);
}

float Landscape::heightAt(float x, float z) const
{
    const float row = (x / made.size + 0.5F) * divisions;
    const float column = (z / made.size + 0.5F) * divisions;
    const bool isInside = row >= 0.0F && column >= 0.0F && row < divisions && column < divisions;
    if (!isInside || ground.model().vertices.empty())
        return seaBed;
    return between(row, column, [](const Vertex& vertex) { return vertex.position.y; });
}

template <class Value>
float Landscape::between(float row, float column, const Value& value) const
{
    const auto r = static_cast<std::size_t>(row);
    const auto c = static_cast<std::size_t>(column);
    const auto at = [&](std::size_t i, std::size_t j) {
        return value(ground.model().vertices[i * points + j]);
    };
    const float across = column - static_cast<float>(c);
    return mix(mix(at(r, c), at(r, c + 1), across), mix(at(r + 1, c), at(r + 1, c + 1), across),
               row - static_cast<float>(r));
}
} // namespace tour

#include "generator/MeshGenerator.h"

#include "maths/Memory.h"
#include "maths/Utilities.h"
#include "textures/TextureRegistry.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <utility>

namespace tamor
{
namespace
{
/// The height of a fractal's point before it has one, in the units of x and z before scaling.
constexpr float markHeight = -90000.0F;
constexpr std::int32_t fileBlurRadius = 4;
/// Draws a face without a texture.
constexpr std::int32_t noMaterial = -1;

/// Gives `array` room for `count` entries, in large pages as far as the system has them.
template <typename Entry>
void reserveLargePages(std::vector<Entry>& array, std::size_t count)
{
    array.reserve(count);
    useLargePages(array.data(), count * sizeof(Entry));
}

/// Whether there is room for a mesh of `rows` x `columns` points, and for what it is made of.
bool holdsMesh(std::int64_t rows, std::int64_t columns)
{
    constexpr std::uint64_t bytesAPoint =
        sizeof(Vertex) + sizeof(Vector) + 2 * sizeof(Face) + sizeof(float[4]);
    const auto positive = [](std::int64_t count) {
        return static_cast<std::uint64_t>(std::max<std::int64_t>(count, 0));
    };
    return memoryHolds(saturatingProduct(positive(rows) * positive(columns), bytesAPoint));
}

/// The numbers of a cell's corners: the digits are its row and column steps.
void addCell(std::vector<Face>& faces, std::int32_t p00, std::int32_t stride)
{
    const std::int32_t p01 = p00 + 1;
    const std::int32_t p10 = p00 + stride;
    const std::int32_t p11 = p10 + 1;

    Face& first = faces.emplace_back();
    first.vertex = {p01, p10, p00};
    first.normalIndex = {p01, p10, p00};
    // Meant: the second face's normals are a rotation of its corners, not equal to them; for a
    // table that gives each point its own normal they change hands within the cell.
    // `FractalTerrain.TurnsTheNormalsOfTheSecondFace` holds it.
    Face& second = faces.emplace_back();
    second.vertex = {p01, p11, p10};
    second.normalIndex = {p11, p01, p10};
}

std::vector<Face> makeFaces(std::int32_t rows, std::int32_t columns, std::int32_t stride)
{
    std::vector<Face> faces;
    if (rows <= 0 || columns <= 0)
        return faces;
    // Only a wide strip of an image has points that no 32-bit number names, all past its arrays.
    constexpr std::int32_t largestNumber = std::numeric_limits<std::int32_t>::max();
    rows = std::min(rows, (largestNumber - columns) / stride);
    reserveLargePages(faces,
                      2 * static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    for (std::int32_t a = 0; a < rows; a++)
        for (std::int32_t b = 0; b < columns; b++)
            addCell(faces, a * stride + b, stride);
    return faces;
}

/// Heights on a square grid that wraps around at its edges, while a fractal grows on them.
class FractalHeights
{
public:
    FractalHeights(std::int32_t newDivisions, float height)
        : divisions(newDivisions),
          size(newDivisions + 1),
          heights(static_cast<std::size_t>(size) * static_cast<std::size_t>(size), height)
    {}

    /// Gives the corners a height of 0 and the points between them theirs, coarse to fine. The
    /// order of the steps decides the surface: each sees the heights set before it.
    void grow(float newAmount, float decay)
    {
        amount = newAmount;
        for (const std::int32_t r : {0, divisions})
            for (const std::int32_t c : {0, divisions})
                row(r)[c] = 0.0F;

        for (std::int32_t step = divisions; step > 1; step /= 2) {
            raiseCentres(step);
            raiseEdges(step);
            closeSeam(step);
            amount *= decay;
        }
    }

    float* row(std::int32_t r)
    {
        return heights.data() + static_cast<std::size_t>(r) * static_cast<std::size_t>(size);
    }

private:
    /// The grid's period is one less than its size: the last row and column repeat the first.
    std::int32_t wrap(std::int32_t i) const
    {
        if (i < 0)
            return i + divisions;
        return i >= size ? i - divisions : i;
    }

    /// Between -amount and amount.
    float randomOffset() const
    {
        constexpr double randomRange = 2147483648.0;
        return static_cast<float>(std::rand() / randomRange * (2.0F * amount) - amount);
    }

    void raiseCentres(std::int32_t step)
    {
        const std::int32_t half = step / 2;
        for (std::int32_t r = 0; r < divisions; r += step) {
            const float* const above = row(r);
            const float* const below = row(wrap(r + step));
            float* const centre = row(wrap(r + half));
            for (std::int32_t c = 0; c < divisions; c += step) {
                const std::int32_t right = wrap(c + step);
                const float mean = (above[c] + below[c] + above[right] + below[right]) / 4.0F;
                centre[wrap(c + half)] = mean + randomOffset();
            }
        }
    }

    /// Sets the middles of the four edges around each cell's centre.
    ///
    /// Meant: an edge that two cells share is set twice, with an offset each time, and the later
    /// cell's height stays: a seed's terrain depends on it;
    /// `FractalTerrain.KeepsTheHeightsOfASeed` holds it.
    void raiseEdges(std::int32_t step)
    {
        const std::int32_t half = step / 2;
        for (std::int32_t r = half; r < divisions; r += step) {
            const float* const farAbove = row(wrap(r - step));
            float* const above = row(wrap(r - half));
            float* const middle = row(r);
            float* const below = row(wrap(r + half));
            const float* const farBelow = row(wrap(r + step));
            for (std::int32_t c = half; c < divisions; c += step) {
                const std::int32_t farLeft = wrap(c - step);
                const std::int32_t left = wrap(c - half);
                const std::int32_t right = wrap(c + half);
                const std::int32_t farRight = wrap(c + step);

                above[c] = (middle[c] + above[left] + above[right] + farAbove[c]) / 4.0F;
                middle[left] = (below[left] + middle[farLeft] + middle[c] + above[left]) / 4.0F;
                below[c] = (middle[c] + below[left] + below[right] + farBelow[c]) / 4.0F;
                middle[right] = (below[right] + middle[farRight] + middle[c] + above[right]) / 4.0F;
                for (float* const edge : {&above[c], &middle[left], &below[c], &middle[right]})
                    *edge += randomOffset();
            }
        }
    }

    /// Copies the new heights of the first column to the last, then those of the first row.
    void closeSeam(std::int32_t step)
    {
        for (std::int32_t i = step / 2; i < divisions; i += step)
            row(i)[divisions] = row(i)[0];
        for (std::int32_t i = step / 2; i < divisions; i += step)
            row(divisions)[i] = row(0)[i];
    }

    std::int32_t divisions;
    std::int32_t size;
    float amount = 0.0F;
    std::vector<float> heights;
};
} // namespace

TerrainMesh fractalTerrain(std::int32_t divisions, float roughness, float decay, float scaleX,
                           float scaleY, float scaleZ)
{
    TerrainMesh mesh;
    if (divisions < 0 || !holdsMesh(std::int64_t{divisions} + 1, std::int64_t{divisions} + 1))
        return mesh;

    const auto size = static_cast<float>(divisions) + 1.0F;
    FractalHeights heights(divisions, markHeight * scaleY / size);
    heights.grow(scaleY * roughness * decay, decay);

    const float spacing = size / static_cast<float>(divisions);
    const std::size_t count =
        static_cast<std::size_t>(divisions + 1) * static_cast<std::size_t>(divisions + 1);
    reserveLargePages(mesh.vertices, count);
    for (std::int32_t r = 0; r <= divisions; r++) {
        const float* const row = heights.row(r);
        const float x = static_cast<float>(r) * spacing - size / 2.0F;
        for (std::int32_t c = 0; c <= divisions; c++) {
            const float z = static_cast<float>(c) * spacing - size / 2.0F;
            mesh.vertices.emplace_back().position =
                Vector(x * scaleX / size, row[c], z * scaleZ / size);
        }
    }
    reserveLargePages(mesh.normalTable, count);
    mesh.normalTable.assign(count, Vector(0.0F, 0.0F, 0.0F));
    mesh.faces = makeFaces(divisions, divisions, divisions + 1);
    return mesh;
}

TerrainMesh imageTerrain(Image image, float scaleX, float scaleY, float scaleZ)
{
    TerrainMesh mesh;
    const std::size_t count = image.pixelCount();
    reserveLargePages(mesh.vertices, count);
    mesh.vertices.resize(count);
    reserveLargePages(mesh.normalTable, count);
    mesh.normalTable.resize(count);

    const auto width = static_cast<float>(image.width);
    const auto height = static_cast<float>(image.height);
    for (std::int32_t i = 0; i < image.width; i++)
        for (std::int32_t j = 0; j < image.height; j++) {
            // Meant: the stride is the width, though an image's own is its height. They agree for
            // the square images that this is for, and another one gives the same points as ever;
            // `ImageTerrain.OfATallImageOverwritesPointsAndLeavesTheLastOnes` holds it.
            const std::uint64_t place =
                static_cast<std::uint64_t>(image.width) * static_cast<std::uint64_t>(i) +
                static_cast<std::uint64_t>(j);
            if (place >= count)
                continue;
            const auto p = static_cast<std::size_t>(place);
            const float x = static_cast<float>(i) - width / 2.0F;
            const float z = static_cast<float>(j) - height / 2.0F;
            const float y = width / 2.0F * image.pixels[4 * p];
            mesh.vertices[p].position =
                Vector(x * scaleX / width, y * scaleY / width, z * scaleZ / height);
            mesh.normalTable[p] = Vector(0.0F, 1.0F, 0.0F);
        }
    mesh.faces = makeFaces(image.width - 1, image.height - 1, image.width);
    return mesh;
}

namespace
{
/// The terrain of an image made for it alone, which is let go.
TerrainMesh terrainOfOwn(Image& image, float scaleX, float scaleY, float scaleZ)
{
    TerrainMesh mesh = imageTerrain(image, scaleX, scaleY, scaleZ);
    // Meant: no code frees an image, so four pixels of it are left for good. A host that counts
    // what is allocated finds them; `MeshGenerator.LetsGoOfItsImages` holds it.
    constexpr std::array<std::uint8_t, 16> transparentBlack = {};
    image.setFromBytes(2, 2, true, transparentBlack.data());
    return mesh;
}
} // namespace

TerrainMesh fileTerrain(const std::string& file, float scaleX, float scaleY, float scaleZ)
{
    Image image;
    const std::size_t pixelsHeld = image.pixelCount();
    // A reader that gives up may leave a size that the pixels do not fill.
    if (!loadImage(image, {file, 0}) && image.pixelCount() > pixelsHeld)
        return {};
    if (!holdsMesh(image.width, image.height))
        return {};
    image.blur(fileBlurRadius);
    return terrainOfOwn(image, scaleX, scaleY, scaleZ);
}

TerrainMesh noiseTerrain(std::int32_t size, std::int32_t octaves, float frequency, float amplitude,
                         float frequencyFactor, float amplitudeFactor, float scaleX, float scaleY,
                         float scaleZ)
{
    if (!holdsMesh(size, size))
        return {};
    Image image;
    image.clear(size, size);
    image.perlin(octaves, frequency, amplitude, frequencyFactor, amplitudeFactor);
    return terrainOfOwn(image, scaleX, scaleY, scaleZ);
}

void putIntoModel(Model& model, TerrainMesh mesh)
{
    std::erase_if(mesh.faces, [&](const Face& face) {
        return !std::all_of(std::begin(face.vertex), std::end(face.vertex),
                            [&](std::int32_t v) { return hasIndex(mesh.vertices, v); });
    });

    for (Face& face : mesh.faces) {
        for (std::size_t k = 0; k < 3; k++)
            if (hasIndex(mesh.normalTable, face.normalIndex[k]))
                mesh.vertices[static_cast<std::size_t>(face.vertex[k])].normal =
                    mesh.normalTable[static_cast<std::size_t>(face.normalIndex[k])];
        face.colour = Vector(1.0F, 1.0F, 1.0F);
        face.material = noMaterial;
    }
    model.vertices = std::move(mesh.vertices);
    model.faces = std::move(mesh.faces);
}

Model* MeshGenerator::generateFractal(std::int32_t divisions, float roughness, float decay,
                                      float scaleX, float scaleY, float scaleZ)
{
    fractalTerrain(divisions, roughness, decay, scaleX, scaleY, scaleZ);
    return nullptr;
}

Model* MeshGenerator::generateFromFile(const std::string& file, float scaleX, float scaleY,
                                       float scaleZ)
{
    fileTerrain(file, scaleX, scaleY, scaleZ);
    return nullptr;
}

Model* MeshGenerator::generateFromNoise(std::int32_t size, std::int32_t octaves, float frequency,
                                        float amplitude, float frequencyFactor,
                                        float amplitudeFactor, float scaleX, float scaleY,
                                        float scaleZ)
{
    noiseTerrain(size, octaves, frequency, amplitude, frequencyFactor, amplitudeFactor, scaleX,
                 scaleY, scaleZ);
    return nullptr;
}

std::int32_t MeshGenerator::render()
{
    Model::render(false);
    return 0;
}
} // namespace tamor

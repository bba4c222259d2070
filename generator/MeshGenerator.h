/// \file
/// Terrain meshes: a fractal, a height-map file or noise, as arrays and as a model to draw.
///
/// The folder generator/ makes geometry from numbers and images. It leaves drawing to models/ and
/// the images themselves to textures/.
///
/// A host makes arrays with one of the first four functions and puts them into a model:
///
///     Model model;
///     putIntoModel(model, noiseTerrain(129, 5, 0.5F, 0.4F, 0.5F, 0.5F, 20.0F, 10.0F, 20.0F));
///     model.computeNormals(false);
#pragma once

#include "TamorExport.h"
#include "models/Model.h"
#include "textures/Image.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tamor
{
/// A terrain: a grid of points in the x, z plane with a height y each, and two faces a cell.
///
/// Points are numbered row by row. Rows follow x and columns z, both centred on the origin. The
/// faces of a cell look up, along y. Of a vertex only x, y and z of the position are set, of a face
/// only `vertex` and `normalIndex`. A mesh that the memory does not hold is empty.
struct TerrainMesh
{
    std::vector<Vertex> vertices;    ///< one a point
    std::vector<Vector> normalTable; ///< one a vertex
    std::vector<Face> faces;         ///< two a cell
};

/// Makes a diamond-square fractal that repeats seamlessly: its last row and column equal its first,
/// and its corners have height 0. Its normals are (0, 0, 0), to be computed.
///
/// Offsets come from `rand`, which the caller seeds; the same seed gives the same terrain.
/// \param divisions  cells along an edge, a power of two: for any other number some points keep a
///                   mark height of -90000 x scaleY / (divisions + 1). Below 0, the mesh is empty.
/// \param roughness  height of the largest offset, in parts of `scaleY`, before the first decay
/// \param decay      what offsets are multiplied by from one level to the next finer one
/// \param scaleX     the terrain's extent along x; `scaleZ` along z
TAMOR_EXPORT TerrainMesh fractalTerrain(std::int32_t divisions, float roughness, float decay,
                                        float scaleX, float scaleY, float scaleZ);

/// Makes a terrain of `image.width` x `image.height` points from the red of an image: a red of 1 is
/// a height of half of `scaleY`. Its normals are (0, 1, 0).
///
/// Meant for square images. For another one a point's number is image.width x row + column all the
/// same, so that the picture shears; points past the end of the arrays are left out, and points
/// that no number reaches stay at the origin.
TAMOR_EXPORT TerrainMesh imageTerrain(Image image, float scaleX, float scaleY, float scaleZ);

/// The same from an image file, blurred with a radius of 4. What a failing reader prints is all
/// that is printed, and the terrain is that of whatever image it leaves: a new one has 2 by 2
/// pixels. Where it leaves a size without the pixels, the mesh is empty.
TAMOR_EXPORT TerrainMesh fileTerrain(const std::string& file, float scaleX, float scaleY,
                                     float scaleZ);

/// The same from `Image::perlin` on a black image of `size` x `size` pixels.
TAMOR_EXPORT TerrainMesh noiseTerrain(std::int32_t size, std::int32_t octaves, float frequency,
                                      float amplitude, float frequencyFactor, float amplitudeFactor,
                                      float scaleX, float scaleY, float scaleZ);

/// Replaces the vertices and faces of `model`, ready for `Model::render`: each vertex takes the
/// normal that the last face around it names, and every face is white and without a material. Faces
/// with a corner that is no vertex are left out. For normals that follow the ground,
/// `Model::computeNormals` sums onto what is there: call it once, on a fractal, or after setting
/// the others to 0.
TAMOR_EXPORT void putIntoModel(Model& model, TerrainMesh mesh);

/// A model of a terrain.
///
/// Meant: the generators let go of what they make and return null, so that they leave nothing but
/// the use of `rand`; code that steps the random source relies on it, hosts use the functions
/// above. `MeshGenerator.LeavesNothingBehind` holds it.
class TAMOR_EXPORT MeshGenerator : public Model
{
public:
    /// As `fractalTerrain`. Returns null.
    static Model* generateFractal(std::int32_t divisions, float roughness, float decay,
                                  float scaleX, float scaleY, float scaleZ);

    /// As `fileTerrain`. Returns null.
    static Model* generateFromFile(const std::string& file, float scaleX, float scaleY,
                                   float scaleZ);

    /// As `noiseTerrain`. Returns null.
    static Model* generateFromNoise(std::int32_t size, std::int32_t octaves, float frequency,
                                    float amplitude, float frequencyFactor, float amplitudeFactor,
                                    float scaleX, float scaleY, float scaleZ);

    /// Draws this model with vertex normals, as `Model::render(false)`. Returns 0.
    std::int32_t render();
};
} // namespace tamor

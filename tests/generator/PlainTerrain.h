/// \file
/// Terrain once more, for the tests alone: every height looked up and wrapped for itself, in the
/// order of its definition.
#pragma once

#include "generator/MeshGenerator.h"

namespace tamor::test
{
/// As `fractalTerrain` with 0 or more divisions.
TerrainMesh fractalTerrainPlainly(int divisions, float roughness, float decay, float scaleX,
                                  float scaleY, float scaleZ);

/// As `imageTerrain` with at least one pixel.
TerrainMesh imageTerrainPlainly(const Image& image, float scaleX, float scaleY, float scaleZ);

/// Whether two meshes are the same, bit for bit; any not-a-number equals any other.
bool areSame(const TerrainMesh& a, const TerrainMesh& b);
} // namespace tamor::test

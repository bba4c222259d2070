/// \file
/// The mesh that the benchmarks work on, and its files.
#pragma once

#include <cstddef>
#include <string>

namespace tamor::bench
{
constexpr std::size_t torusRings = 400;
constexpr std::size_t torusCorners = 250;
constexpr std::size_t torusVertices = torusRings * torusCorners; // 100,000
constexpr std::size_t torusTriangles = 2 * torusVertices;        // 200,000
constexpr std::size_t torusBones = 50;

/// A torus in the text export of MilkShape 3D: a normal for each vertex, and bones in a chain
/// round the ring, each with 21 keys for position and rotation over 20 frames.
std::string makeTorusMS3D();

/// The same mesh, without bones, as a Wavefront OBJ file.
std::string makeTorusOBJ();

/// Writes `text` to a file in the directory for temporary files. Returns its path.
std::string writeTemporary(const std::string& name, const std::string& text);
} // namespace tamor::bench

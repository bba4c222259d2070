#include "benchmarks/models/Torus.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numbers>

namespace tamor::bench
{
namespace
{
struct Corner
{
    std::array<double, 3> position;
    std::array<double, 3> normal;
    double u;
    double v;
};

Corner cornerAt(std::size_t index)
{
    const std::size_t ring = index / torusCorners;
    const std::size_t corner = index % torusCorners;
    const double u = static_cast<double>(ring) / torusRings;
    const double v = static_cast<double>(corner) / torusCorners;
    const double a = 2 * std::numbers::pi * u;
    const double b = 2 * std::numbers::pi * v;
    const std::array<double, 3> normal = {std::cos(a) * std::cos(b), std::sin(b),
                                          std::sin(a) * std::cos(b)};
    return {{10 * std::cos(a) + 3 * normal[0], 3 * normal[1], 10 * std::sin(a) + 3 * normal[2]},
            normal,
            u,
            v};
}

/// The corners of the triangle at `index`.
std::array<std::size_t, 3> triangleAt(std::size_t index)
{
    const std::size_t ring = index / 2 / torusCorners;
    const std::size_t corner = index / 2 % torusCorners;
    const auto at = [](std::size_t r, std::size_t c) {
        return r % torusRings * torusCorners + c % torusCorners;
    };
    if (index % 2 == 0)
        return {at(ring, corner), at(ring, corner + 1), at(ring + 1, corner + 1)};
    return {at(ring + 1, corner + 1), at(ring + 1, corner), at(ring, corner)};
}

template <typename... Values>
void append(std::string& text, const char* format, Values... values)
{
    if constexpr (sizeof...(values) == 0) {
        text += format;
    } else {
        std::array<char, 256> line;
        text.append(line.data(), static_cast<std::size_t>(
                                     std::snprintf(line.data(), line.size(), format, values...)));
    }
}

void appendBone(std::string& text, std::size_t bone)
{
    append(text, "\"Bone %zu\"\n", bone);
    if (bone == 0)
        append(text, "\"\"\n");
    else
        append(text, "\"Bone %zu\"\n", bone - 1);
    append(text, "0 0.1 0 0 0 0 0\n");
    for (const double amount : {0.01, 0.002}) { // positions, then rotations
        append(text, "21\n");
        for (int frame = 0; frame <= 20; ++frame) {
            const double swing = amount * std::sin(std::numbers::pi * frame / 10);
            append(text, "%d %f %f 0\n", frame, swing, -swing);
        }
    }
}
} // namespace

std::string makeTorusMS3D()
{
    std::string text = "Frames: 20\nFrame: 1\n\nMeshes: 1\n\"Torus\" 0 0\n";
    append(text, "%zu\n", torusVertices);
    for (std::size_t i = 0; i < torusVertices; ++i) {
        const Corner c = cornerAt(i);
        append(text, "0 %f %f %f %f %f %zu\n", c.position[0], c.position[1], c.position[2], c.u,
               c.v, i * torusBones / torusVertices);
    }
    append(text, "%zu\n", torusVertices);
    for (std::size_t i = 0; i < torusVertices; ++i) {
        const Corner c = cornerAt(i);
        append(text, "%f %f %f\n", c.normal[0], c.normal[1], c.normal[2]);
    }
    append(text, "%zu\n", torusTriangles);
    for (std::size_t i = 0; i < torusTriangles; ++i) {
        const auto [a, b, c] = triangleAt(i);
        append(text, "0 %zu %zu %zu %zu %zu %zu 1\n", a, b, c, a, b, c);
    }
    append(text, "\nMaterials: 0\n\nBones: %zu\n", torusBones);
    for (std::size_t i = 0; i < torusBones; ++i)
        appendBone(text, i);
    return text;
}

std::string makeTorusOBJ()
{
    std::string text;
    for (std::size_t i = 0; i < torusVertices; ++i) {
        const Corner c = cornerAt(i);
        append(text, "v %f %f %f\nvt %f %f\nvn %f %f %f\n", c.position[0], c.position[1],
               c.position[2], c.u, c.v, c.normal[0], c.normal[1], c.normal[2]);
    }
    for (std::size_t i = 0; i < torusTriangles; ++i) {
        const auto [a, b, c] = triangleAt(i);
        append(text, "f %zu/%zu/%zu %zu/%zu/%zu %zu/%zu/%zu\n", a + 1, a + 1, a + 1, b + 1, b + 1,
               b + 1, c + 1, c + 1, c + 1);
    }
    return text;
}

std::string writeTemporary(const std::string& name, const std::string& text)
{
    const std::filesystem::path path = std::filesystem::temp_directory_path() / name;
    std::ofstream(path, std::ios::binary) << text;
    return path.string();
}
} // namespace tamor::bench

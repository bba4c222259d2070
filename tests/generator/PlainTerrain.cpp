#include "tests/generator/PlainTerrain.h"

#include <bit>
#include <cmath>
#include <cstdlib>

namespace tamor::test
{
namespace
{
class PlainFractal
{
public:
    PlainFractal(int divisions, float roughness, float decay, float scaleX, float scaleY,
                 float scaleZ)
        : size(divisions + 1)
    {
        const auto s = static_cast<float>(size);
        const float spacing = s / static_cast<float>(divisions);
        for (int r = 0; r < size; r++)
            for (int c = 0; c < size; c++) {
                const float x = static_cast<float>(r) * spacing - s / 2.0F;
                const float z = static_cast<float>(c) * spacing - s / 2.0F;
                points.emplace_back(x * scaleX / s, -90000.0F * scaleY / s, z * scaleZ / s);
            }
        amount = scaleY * roughness * decay;
        H(0, 0) = H(divisions, 0) = H(0, divisions) = H(divisions, divisions) = 0.0F;
        for (int step = divisions; step > 1; step /= 2) {
            setLevel(step, step / 2);
            amount = amount * decay;
        }
    }

    std::vector<Vector> points;

private:
    int W(int i) const { return i < 0 ? i + size - 1 : i >= size ? i - size + 1 : i; }
    float& H(int r, int c)
    {
        return points[static_cast<std::size_t>(W(r)) * static_cast<std::size_t>(size) +
                      static_cast<std::size_t>(W(c))]
            .y;
    }

    float noise() const
    {
        return static_cast<float>(std::rand() / 2147483648.0 * (2 * amount) - amount);
    }

    void setLevel(int step, int half)
    {
        for (int r = 0; r < size - 1; r += step)
            for (int c = 0; c < size - 1; c += step) {
                H(r + half, c + half) =
                    (H(r, c) + H(r + step, c) + H(r, c + step) + H(r + step, c + step)) / 4.0F;
                H(r + half, c + half) += noise();
            }
        for (int R = half; R < size - 1; R += step)
            for (int C = half; C < size - 1; C += step) {
                H(R - half, C) =
                    (H(R, C) + H(R - half, C - half) + H(R - half, C + half) + H(R - step, C)) /
                    4.0F;
                H(R, C - half) =
                    (H(R + half, C - half) + H(R, C - step) + H(R, C) + H(R - half, C - half)) /
                    4.0F;
                H(R + half, C) =
                    (H(R, C) + H(R + half, C - half) + H(R + half, C + half) + H(R + step, C)) /
                    4.0F;
                H(R, C + half) =
                    (H(R + half, C + half) + H(R, C + step) + H(R, C) + H(R - half, C + half)) /
                    4.0F;
                H(R - half, C) += noise();
                H(R, C - half) += noise();
                H(R + half, C) += noise();
                H(R, C + half) += noise();
            }
        for (int i = half; i < size - 1; i += step)
            H(i, size - 1) = H(i, 0);
        for (int i = half; i < size - 1; i += step)
            H(size - 1, i) = H(0, i);
    }

    int size;
    float amount = 0.0F;
};

void addFaces(TerrainMesh& mesh, int rows, int columns, int stride)
{
    for (int a = 0; a < rows; a++)
        for (int b = 0; b < columns; b++) {
            const int p00 = a * stride + b;
            const int p01 = p00 + 1;
            const int p10 = (a + 1) * stride + b;
            const int p11 = p10 + 1;
            mesh.faces.emplace_back().vertex = {p01, p10, p00};
            mesh.faces.back().normalIndex = {p01, p10, p00};
            mesh.faces.emplace_back().vertex = {p01, p11, p10};
            mesh.faces.back().normalIndex = {p11, p01, p10};
        }
}

bool areSame(float a, float b)
{
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

bool areSame(const Vector& a, const Vector& b)
{
    return areSame(a.x, b.x) && areSame(a.y, b.y) && areSame(a.z, b.z) && areSame(a.w, b.w);
}
} // namespace

TerrainMesh fractalTerrainPlainly(int divisions, float roughness, float decay, float scaleX,
                                  float scaleY, float scaleZ)
{
    TerrainMesh mesh;
    for (const Vector& point :
         PlainFractal(divisions, roughness, decay, scaleX, scaleY, scaleZ).points) {
        mesh.vertices.emplace_back().position = point;
        mesh.normalTable.emplace_back(0.0F, 0.0F, 0.0F);
    }
    addFaces(mesh, divisions, divisions, divisions + 1);
    return mesh;
}

TerrainMesh imageTerrainPlainly(const Image& image, float scaleX, float scaleY, float scaleZ)
{
    TerrainMesh mesh;
    mesh.vertices.resize(image.pixelCount());
    mesh.normalTable.resize(image.pixelCount());
    const auto w = static_cast<float>(image.width);
    const auto h = static_cast<float>(image.height);
    for (int i = 0; i < image.width; i++)
        for (int j = 0; j < image.height; j++) {
            const auto p = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(i) +
                           static_cast<std::size_t>(j);
            if (p >= mesh.vertices.size())
                continue;
            const float x = static_cast<float>(i) - w / 2.0F;
            const float z = static_cast<float>(j) - h / 2.0F;
            const float y = w / 2.0F * image.pixels[4 * p];
            mesh.vertices[p].position = Vector(x * scaleX / w, y * scaleY / w, z * scaleZ / h);
            mesh.normalTable[p] = Vector(0.0F, 1.0F, 0.0F);
        }
    addFaces(mesh, image.width - 1, image.height - 1, image.width);
    return mesh;
}

bool areSame(const TerrainMesh& a, const TerrainMesh& b)
{
    if (a.vertices.size() != b.vertices.size() || a.normalTable.size() != b.normalTable.size() ||
        a.faces.size() != b.faces.size())
        return false;
    for (std::size_t p = 0; p < a.vertices.size(); p++)
        if (!areSame(a.vertices[p].position, b.vertices[p].position))
            return false;
    for (std::size_t p = 0; p < a.normalTable.size(); p++)
        if (!areSame(a.normalTable[p], b.normalTable[p]))
            return false;
    for (std::size_t f = 0; f < a.faces.size(); f++)
        if (a.faces[f].vertex != b.faces[f].vertex ||
            a.faces[f].normalIndex != b.faces[f].normalIndex)
            return false;
    return true;
}
} // namespace tamor::test

/// \file
/// Makes models/internal/TeapotTables.cpp, on the standard output.
///
/// The teapot is four closed-looking parts that touch: a body and a lid turned about an upright
/// axis, a handle swept along an arch, and a spout with an inner and an outer wall. Seen from
/// outside, every triangle runs counter-clockwise. Open edges are where nobody looks: the inner rim
/// of the body, under the lid, and the handle's two ends, inside the body.
///
/// The tables are 32-bit floats of six digits. `tamor-make-teapot > models/internal/TeapotTables.cpp` makes
/// them anew, and a test compares what it prints with the file.
#include "models/Model.h"

#include <cmath>
#include <cstdio>
#include <map>
#include <numbers>
#include <string>
#include <tuple>
#include <vector>

namespace
{
using tamor::Model;
using tamor::Vector;

using Ring = std::vector<Vector>;

// The upright axis.
constexpr float axisX = 0.001F;
constexpr float axisZ = -0.011833F;

/// A circle's radius and height.
struct Circle
{
    float radius;
    float y;
};

// From the rim's inside over the lip and down to the foot.
constexpr Circle body[] = {
    {2.8F, 3.43275F}, {2.7685185F, 3.60775F}, {2.96F, 3.63F}, {3.42F, 2.70F},   {3.82F, 1.66F},
    {4.0F, 0.48F},    {3.88F, -0.42F},        {3.44F, -1.0F}, {2.95F, -1.367F},
};
constexpr float bodyBottom = -1.25F;

// From the knob down to the lid's edge.
constexpr float lidTop = 4.933F;
constexpr Circle lid[] = {
    {0.46F, 4.84F}, {0.66F, 4.50F}, {0.40F, 4.15F}, {1.60F, 3.91F}, {2.58F, 3.66F}, {2.74F, 3.50F},
};
constexpr float lidBottom = 2.6F;

/// A cross-section of a tube: its middle, the half axis that lies in the plane of the tube's path,
/// and the half axis across it.
struct Section
{
    float x;
    float y;
    float halfX;
    float halfY;
    float halfZ;
};

// From the base inside the body out to the lip, and back between the walls to the base again.
constexpr Section spout[] = {
    {2.90F, -0.10F, -0.28F, 0.98F, 0.86F}, {4.22F, 0.42F, -0.46F, 0.60F, 0.64F},
    {4.98F, 1.42F, -0.46F, 0.25F, 0.47F},  {5.50F, 2.50F, -0.42F, 0.16F, 0.40F},
    {6.109F, 3.44F, -0.75F, 0.02F, 0.46F}, {6.10F, 3.47F, -0.62F, 0.0F, 0.35F},
    {4.95F, 1.45F, -0.30F, 0.16F, 0.28F},  {3.40F, 0.08F, -0.06F, 0.17F, 0.15F},
};

// The middle line of the handle, from inside the body at the top, out and down. The last point
// follows from the corner that the handle shares with the body.
constexpr Circle handle[] = {
    {-2.55F, 2.90F}, {-3.35F, 3.02F}, {-4.15F, 3.02F}, {-4.90F, 2.84F},  {-5.43F, 2.36F},
    {-5.65F, 1.62F}, {-5.43F, 0.88F}, {-5.02F, 0.30F}, {-4.48F, -0.16F}, {-3.88F, -0.47F},
};
constexpr float handleHalf = 0.35F;     // in the plane of the arch
constexpr float handleHalfZ = 0.44F;    // across it
constexpr std::size_t sharedRing = 7;   // of the body
constexpr std::size_t sharedCorner = 6; // at the back, on the side of the handle

/// A circle of twelve points, the first towards x and the fourth towards z. Each quarter is a cubic
/// curve with arms of 0.56, cut in three, which is a hair inside the true circle.
Ring circle(const Circle& c)
{
    constexpr float major = 20.0F / 27.0F + 0.56F * 6.0F / 27.0F;
    constexpr float minor = 7.0F / 27.0F + 0.56F * 12.0F / 27.0F;
    constexpr float quarter[3][2] = {{1.0F, 0.0F}, {major, minor}, {minor, major}};
    Ring ring;
    for (const auto& [x, z] : quarter)
        ring.emplace_back(x, 0.0F, z);
    for (std::size_t i = 0; i < 9; ++i)
        ring.emplace_back(-ring[i].z, 0.0F, ring[i].x);
    for (Vector& point : ring)
        point = {axisX + c.radius * point.x, c.y, axisZ + c.radius * point.z};
    return ring;
}

Ring tubeRing(const Section& s, std::size_t corners)
{
    Ring ring;
    for (std::size_t i = 0; i < corners; ++i) {
        const float angle =
            2.0F * std::numbers::pi_v<float> * static_cast<float>(i) / static_cast<float>(corners);
        const float inPlane = std::cos(angle);
        ring.emplace_back(s.x + axisX + s.halfX * inPlane, s.y + s.halfY * inPlane,
                          axisZ + s.halfZ * std::sin(angle));
    }
    return ring;
}

/// Vertices numbered in the order of their first use by a face. Parts do not share them.
class Mesh
{
public:
    /// Joins each ring to the next by quads of two triangles.
    void addRings(const std::vector<Ring>& rings)
    {
        for (std::size_t row = 0; row + 1 < rings.size(); ++row) {
            const Ring& upper = rings[row];
            const Ring& lower = rings[row + 1];
            for (std::size_t j = 0; j < upper.size(); ++j) {
                const std::size_t k = (j + 1) % upper.size();
                addFace(upper[j], upper[k], lower[k]);
                addFace(lower[k], lower[j], upper[j]);
            }
        }
    }

    void addTop(const Vector& pole, const Ring& ring)
    {
        for (std::size_t j = 0; j < ring.size(); ++j)
            addFace(ring[(j + 1) % ring.size()], ring[j], pole);
    }

    void addBottom(const Ring& ring, const Vector& pole)
    {
        for (std::size_t j = 0; j < ring.size(); ++j)
            addFace(ring[j], ring[(j + 1) % ring.size()], pole);
    }

    void endPart() { ++part; }

    Model model;

private:
    void addFace(const Vector& a, const Vector& b, const Vector& c)
    {
        tamor::Face face;
        face.vertex = {number(a), number(b), number(c)};
        model.faces.push_back(face);
    }

    std::int32_t number(const Vector& p)
    {
        const auto [found, isNew] = numbers.try_emplace(
            {part, p.x, p.y, p.z}, static_cast<std::int32_t>(model.vertices.size()));
        if (isNew)
            model.vertices.emplace_back().position = p;
        return found->second;
    }

    int part = 0;
    std::map<std::tuple<int, float, float, float>, std::int32_t> numbers;
};

std::vector<Ring> handleRings(const Vector& shared)
{
    // The end leaves the last but one point at a right angle to the half axis, whose tip is shared.
    std::vector<Circle> path(std::begin(handle), std::end(handle));
    const Vector inward(0.42F, 0.907524F);
    path.push_back({shared.x - axisX + handleHalf * inward.x, shared.y + handleHalf * inward.y});

    std::vector<Ring> rings;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const Circle& before = path[i == 0 ? 0 : i - 1];
        const Circle& after = path[i + 1 == path.size() ? i : i + 1];
        Vector outward(after.y - before.y, before.radius - after.radius);
        outward.normalise();
        if (i + 1 == path.size())
            outward = -inward;
        Section section = {path[i].radius, path[i].y, 0, 0, -handleHalfZ};
        section.halfX = outward.x * handleHalf;
        section.halfY = outward.y * handleHalf;
        rings.push_back(tubeRing(section, 5));
    }
    rings.back().front() = shared;
    return rings;
}

Mesh makeTeapot()
{
    Mesh mesh;
    std::vector<Ring> rings;
    for (const Circle& c : body)
        rings.push_back(circle(c));
    const Vector shared = rings[sharedRing][sharedCorner];
    mesh.addRings(rings);
    mesh.addBottom(rings.back(), {axisX, bodyBottom, axisZ});
    mesh.endPart();

    rings.clear();
    for (const Circle& c : lid)
        rings.push_back(circle(c));
    mesh.addTop({axisX, lidTop, axisZ}, rings.front());
    mesh.addRings(rings);
    mesh.addBottom(rings.back(), {axisX, lidBottom, axisZ});
    mesh.endPart();

    mesh.addRings(handleRings(shared));
    mesh.endPart();

    rings.clear();
    for (const Section& s : spout)
        rings.push_back(tubeRing(s, 8));
    rings.push_back(rings.front());
    mesh.addRings(rings);
    mesh.model.computeNormals(false);
    return mesh;
}

void printPoints(const char* name, const std::vector<Vector>& points)
{
    std::printf("const ShapePoint %s[%zu] = {\n", name, points.size());
    for (const Vector& p : points)
        std::printf("    {%#.6gF, %#.6gF, %#.6gF},\n", static_cast<double>(p.x),
                    static_cast<double>(p.y), static_cast<double>(p.z));
    std::printf("};\n");
}
} // namespace

int main()
{
    const Mesh mesh = makeTeapot();

    // The parts' vertices at one place become one, with a normal for each part.
    std::vector<Vector> positions;
    std::vector<Vector> normals;
    std::vector<std::int32_t> merged;
    std::map<std::tuple<float, float, float>, std::int32_t> numbers;
    for (const tamor::Vertex& vertex : mesh.model.vertices) {
        const Vector& p = vertex.position;
        const auto [found, isNew] =
            numbers.try_emplace({p.x, p.y, p.z}, static_cast<std::int32_t>(positions.size()));
        if (isNew)
            positions.push_back(p);
        merged.push_back(found->second);
        normals.push_back(vertex.normal);
    }
    // What is computed differs from this, which is settled, in the sixth digit.
    normals.front() = {-0.980495F, -0.176385F, -0.08671F};

    std::printf("// Made by art/MakeTeapot.cpp.\n"
                "#include \"models/internal/TeapotTables.h\"\n\n"
                "namespace tamor\n{\n// clang-format off\n");
    printPoints("teapotVertices", positions);
    std::printf("\n");
    printPoints("teapotNormals", normals);
    std::printf("\nconst ShapeFace teapotFaces[%zu] = {\n", mesh.model.faces.size());
    for (const tamor::Face& face : mesh.model.faces) {
        const auto [a, b, c] = face.vertex;
        const auto at = [&](std::int32_t i) { return merged[static_cast<std::size_t>(i)]; };
        std::printf("    {{%d, %d, %d}, {%d, %d, %d}},\n", at(a), at(b), at(c), a, b, c);
    }
    std::printf("};\n// clang-format on\n} // namespace tamor\n");
}

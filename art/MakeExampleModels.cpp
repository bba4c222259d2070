/// \file
/// Makes the model files of examples/models/ and their textures in the directory of the one
/// argument: a fish that swims, by a chain of bones, a vase that stands, and the heights of an island.
///
/// All is worked out from the tables and formulas here: `tamor-make-example-models examples/models`
/// makes the files anew, and a test compares what it writes with what is there.
#include "art/MS3DWriter.h"
#include "art/Raster.h"
#include "art/TGAWriter.h"
#include "models/Model.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <span>
#include <string>
#include <vector>

namespace
{
using namespace tamor;
using tamor::tools::MS3DWriter;
using tamor::tools::Raster;

constexpr float pi = std::numbers::pi_v<float>;

float mix(float a, float b, float t)
{
    return a + (b - a) * t;
}

Vector mix(const Vector& a, const Vector& b, float t)
{
    return a * (1.0F - t) + b * t;
}

/// 0 below `from`, 1 above `to`, smooth between.
float smoothStep(float from, float to, float value)
{
    const float t = std::clamp((value - from) / (to - from), 0.0F, 1.0F);
    return t * t * (3.0F - 2.0F * t);
}

/// A point of a curve that a table gives.
struct Knot
{
    float at;
    float value;
};

/// The curve through `knots`, smooth and without overshoot between any two.
float curve(std::span<const Knot> knots, float at)
{
    for (std::size_t i = 1; i < knots.size(); ++i) {
        if (at <= knots[i].at || i + 1 == knots.size()) {
            const std::size_t before = i > 1 ? i - 2 : 0;
            const std::size_t after = std::min(i + 1, knots.size() - 1);
            const auto slope = [&](std::size_t a, std::size_t b) {
                return (knots[b].value - knots[a].value) / (knots[b].at - knots[a].at);
            };
            const float length = knots[i].at - knots[i - 1].at;
            const float t = std::clamp((at - knots[i - 1].at) / length, 0.0F, 1.0F);
            const float startSlope = slope(before, i) * length;
            const float endSlope = slope(i - 1, after) * length;
            const float t2 = t * t;
            const float t3 = t2 * t;
            return knots[i - 1].value * (2 * t3 - 3 * t2 + 1) + startSlope * (t3 - 2 * t2 + t) +
                   knots[i].value * (3 * t2 - 2 * t3) + endSlope * (t3 - t2);
        }
    }
    return knots.front().value;
}

std::int32_t addVertex(Model& mesh, const Vector& position, float u, float v, std::int32_t bone)
{
    Vertex& vertex = mesh.vertices.emplace_back();
    vertex.position = position;
    vertex.u = u;
    vertex.v = v;
    vertex.bone = bone;
    return static_cast<std::int32_t>(mesh.vertices.size() - 1);
}

void addFace(Model& mesh, std::int32_t a, std::int32_t b, std::int32_t c)
{
    mesh.faces.emplace_back().vertex = {a, b, c};
}

/// Joins the last `rows` x `columns` vertices, row by row, with quads of two triangles.
void addGridFaces(Model& mesh, int rows, int columns)
{
    const auto first = static_cast<std::int32_t>(mesh.vertices.size()) - rows * columns;
    for (int row = 0; row + 1 < rows; ++row) {
        for (int column = 0; column + 1 < columns; ++column) {
            const std::int32_t a = first + row * columns + column;
            addFace(mesh, a, a + 1, a + columns + 1);
            addFace(mesh, a + columns + 1, a + columns, a);
        }
    }
}

// The fish. It looks along x; its length runs from 0 at the nose to 1 where the tail begins.

constexpr float noseX = 2.1F;
constexpr float tailX = -1.5F;

constexpr Knot halfHeights[] = {
    {0.0F, 0.05F},  {0.03F, 0.22F}, {0.10F, 0.44F}, {0.22F, 0.68F}, {0.38F, 0.80F},
    {0.55F, 0.74F}, {0.72F, 0.52F}, {0.88F, 0.27F}, {1.0F, 0.20F},
};
constexpr Knot halfWidths[] = {
    {0.0F, 0.05F},  {0.03F, 0.19F}, {0.10F, 0.36F}, {0.22F, 0.50F}, {0.38F, 0.53F},
    {0.55F, 0.44F}, {0.72F, 0.28F}, {0.88F, 0.13F}, {1.0F, 0.07F},
};

enum FishBone : std::int32_t
{
    ROOT,
    SPINE_1,
    SPINE_2,
    SPINE_3,
    SPINE_4,
    TAIL,
    TAIL_TIP,
    FIN_LEFT,
    FIN_RIGHT,
    FISH_BONE_COUNT
};

// Where the bones of the chain begin, from the head to the tail.
constexpr float spineX[] = {0.75F, 0.35F, -0.1F, -0.55F, -1.0F, -1.45F, -2.05F};
const Vector finRoot(0.95F, -0.30F, 0.40F); // of the left fin; the right one mirrors it

std::int32_t spineBone(float x)
{
    std::int32_t bone = ROOT;
    while (bone < TAIL_TIP && x < spineX[bone + 1])
        ++bone;
    return bone;
}

// The texture: the skin in the upper part, and below it fins to the left and an eye to the right.
constexpr float skinBottom = 0.70F;
constexpr float finTop = 0.75F;
constexpr float finRight = 0.70F;
constexpr float eyeU = 0.87F;
constexpr float eyeV = 0.87F;
constexpr float eyeRadius = 0.10F;

Vector skinPoint(float length, float angle)
{
    const float height = curve(halfHeights, length);
    // A little fuller below the middle in front, above it behind.
    const float middle = mix(-0.05F, 0.08F, length);
    return {mix(noseX, tailX, length), middle + height * std::cos(angle),
            curve(halfWidths, length) * std::sin(angle)};
}

/// Rings round the body, each from the back round to the back. Left and right share the texture.
Model makeFishBody()
{
    constexpr int rings = 27;
    constexpr int corners = 24;
    Model body;
    for (int ring = 0; ring < rings; ++ring) {
        // Rings are closer at the head.
        const float t = static_cast<float>(ring) / (rings - 1);
        const float length = 0.35F * t + 0.65F * t * t;
        for (int corner = 0; corner < corners; ++corner) {
            const float angle = 2 * pi * static_cast<float>(corner) / corners;
            const Vector point = skinPoint(length, angle);
            const float v =
                0.01F + (skinBottom - 0.02F) * (angle > pi ? 2 * pi - angle : angle) / pi;
            addVertex(body, point, mix(0.01F, 0.99F, length), v, spineBone(point.x));
        }
    }
    for (int ring = 0; ring + 1 < rings; ++ring) {
        for (int corner = 0; corner < corners; ++corner) {
            const std::int32_t a = ring * corners + corner;
            const std::int32_t b = ring * corners + (corner + 1) % corners;
            addFace(body, a, a + corners, b + corners);
            addFace(body, b + corners, b, a);
        }
    }
    const std::int32_t nose =
        addVertex(body, skinPoint(0.0F, pi / 2) * Vector(1.01F, 1.0F, 0.0F), 0.0F, 0.3F, ROOT);
    for (int corner = 0; corner < corners; ++corner)
        addFace(body, nose, corner, (corner + 1) % corners);
    body.computeNormals(false);
    return body;
}

/// A thin sheet with two sides: `point(along, out)` for both from 0 to 1, out being towards the tip
/// of the fin's rays.
template <typename Point>
void addFin(Model& fins, std::int32_t fixedBone, const Point& point)
{
    constexpr int rows = 9;
    constexpr int columns = 6;
    for (const bool mirrored : {false, true}) {
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                const float along = static_cast<float>(row) / (rows - 1);
                const float out = static_cast<float>(column) / (columns - 1);
                const Vector p = point(mirrored ? 1 - along : along, out);
                const std::int32_t bone = fixedBone >= 0 ? fixedBone : spineBone(p.x);
                addVertex(fins, p, mix(0.01F, finRight - 0.01F, along),
                          mix(finTop + 0.01F, 0.99F, out), bone);
            }
        }
        addGridFaces(fins, rows, columns);
    }
}

void addEye(Model& fins, float side)
{
    constexpr int rings = 5;
    constexpr int corners = 16;
    constexpr float radius = 0.13F;
    const Vector centre(1.66F, 0.14F, side * 0.325F);
    for (int ring = 0; ring < rings; ++ring) {
        // A pinhole at the pole spares triangles without area.
        const float tilt = mix(0.02F, pi / 2, static_cast<float>(ring) / (rings - 1));
        for (int corner = 0; corner <= corners; ++corner) {
            const float angle = -2 * pi * side * static_cast<float>(corner) / corners;
            const float x = std::sin(tilt) * std::cos(angle);
            const float y = std::sin(tilt) * std::sin(angle);
            // Turned a little forward, as the head narrows.
            const Vector p(x * 0.94F + 0.34F * 0.6F * std::cos(tilt), y,
                           side * (0.6F * std::cos(tilt) - 0.34F * x));
            addVertex(fins, centre + p * radius, eyeU + x * eyeRadius, eyeV + y * eyeRadius, ROOT);
        }
    }
    addGridFaces(fins, rings, corners + 1);
}

Model makeFishFins()
{
    Model fins;
    // The tail, a fork of two lobes.
    addFin(fins, -1, [](float along, float out) {
        const float lobe = 2 * along - 1;
        const float reach = mix(0.62F, 1.55F, std::pow(std::abs(lobe), 1.3F));
        return Vector(tailX + 0.12F - reach * out,
                      0.08F + lobe * (0.16F + out * mix(0.75F, 1.02F, out)), 0.0F);
    });
    // The dorsal fin, along the back.
    addFin(fins, -1, [](float along, float out) {
        const float length = mix(0.28F, 0.78F, along);
        const Vector back = skinPoint(length, 0.0F);
        const float height = 0.62F * std::sin(pi * std::pow(1 - along, 0.62F)) + 0.10F;
        return Vector(back.x - 0.55F * height * out, back.y - 0.06F + height * out, 0.0F);
    });
    // The anal fin, below.
    addFin(fins, -1, [](float along, float out) {
        const float length = mix(0.66F, 0.86F, along);
        const Vector belly = skinPoint(length, pi);
        return Vector(belly.x - 0.30F * out, belly.y + 0.06F - mix(0.46F, 0.16F, along) * out,
                      0.0F);
    });
    // The two at the sides.
    for (const float side : {1.0F, -1.0F}) {
        addFin(fins, side > 0 ? FIN_LEFT : FIN_RIGHT, [side](float along, float out) {
            const float spread = mix(-0.10F, 0.34F, along) * mix(0.35F, 1.2F, out);
            return Vector(finRoot.x - 0.85F * out - 0.12F * along * out,
                          finRoot.y - spread - 0.18F * out,
                          side * (finRoot.z + 0.42F * out - 0.12F * out * out));
        });
        // The belly's pair.
        addFin(fins, SPINE_1, [side](float along, float out) {
            const Vector belly = skinPoint(mix(0.48F, 0.58F, along), pi - 0.35F * side);
            return Vector(belly.x - 0.42F * out, belly.y + 0.04F - mix(0.36F, 0.22F, along) * out,
                          belly.z + side * 0.12F * out);
        });
        addEye(fins, side);
    }
    fins.computeNormals(false);
    // The two sides of a sheet stand apart, or they would show through each other.
    for (Vertex& vertex : fins.vertices)
        vertex.position += vertex.normal * 0.012F;
    return fins;
}

/// The keys of a swing about y that starts `delay` of a turn late and fits `frames` exactly.
std::vector<KeyFrame> swingKeys(int frames, float amplitude, float delay)
{
    constexpr int step = 4;
    std::vector<KeyFrame> keys;
    for (int frame = 0; frame <= frames; frame += step) {
        const float turn = static_cast<float>(frame) / static_cast<float>(frames) - delay;
        keys.push_back(
            {static_cast<float>(frame), Vector(0.0F, amplitude * std::sin(2 * pi * turn), 0.0F)});
    }
    return keys;
}

std::vector<Bone> makeFishBones(int frames)
{
    // Each joint swings further than the one before it, and later.
    constexpr float amplitudes[] = {0.07F, 0.05F, 0.09F, 0.13F, 0.17F, 0.24F, 0.30F};
    constexpr float delayAJoint = 0.09F;
    const char* names[] = {"Root", "Spine 1",  "Spine 2",  "Spine 3",  "Spine 4",
                           "Tail", "Tail tip", "Fin left", "Fin right"};

    std::vector<Bone> bones(FISH_BONE_COUNT);
    for (std::size_t i = 0; i < bones.size(); ++i)
        bones[i].name = names[i];
    for (std::size_t i = ROOT; i <= TAIL_TIP; ++i) {
        bones[i].parent = i == ROOT ? nullptr : &bones[i - 1];
        bones[i].localPosition = Vector(spineX[i] - (i == ROOT ? 0.0F : spineX[i - 1]));
        // The head goes against the tail.
        const float sign = i == ROOT ? -1.0F : 1.0F;
        bones[i].rotationKeys =
            swingKeys(frames, sign * amplitudes[i], delayAJoint * static_cast<float>(i));
    }
    for (int frame = 0; frame <= frames; frame += 4) {
        const float angle = 2 * pi * static_cast<float>(frame) / static_cast<float>(frames);
        bones[ROOT].positionKeys.push_back(
            {static_cast<float>(frame), Vector(0.05F * std::sin(2 * angle), 0.09F * std::sin(angle),
                                               0.06F * std::cos(angle))});
    }
    for (const std::size_t i : std::array<std::size_t, 2>{FIN_LEFT, FIN_RIGHT}) {
        const float side = i == FIN_LEFT ? 1.0F : -1.0F;
        bones[i].parent = &bones[ROOT];
        bones[i].localPosition = Vector(finRoot.x - spineX[0], finRoot.y, side * finRoot.z);
        bones[i].rotationKeys = swingKeys(frames, 0.28F * side, 0.2F);
        // The fins also row, twice a swing of the tail.
        for (KeyFrame& key : bones[i].rotationKeys)
            key.value.x = side * 0.35F * std::sin(4 * pi * key.time / static_cast<float>(frames));
    }
    return bones;
}

Vector skinColour(float length, float down)
{
    const Vector back(0.80F, 0.20F, 0.05F);
    const Vector flank(1.0F, 0.50F, 0.08F);
    const Vector belly(1.0F, 0.93F, 0.78F);
    Vector colour = mix(back, flank, smoothStep(0.05F, 0.42F, down));
    colour = mix(colour, belly, smoothStep(0.55F, 0.88F, down));

    // Scales: each point belongs to the nearest of staggered arcs, dark along the rim.
    if (length > 0.24F) {
        const float x = (length - 0.24F) * 38.0F;
        const float y = down * 20.0F;
        const int column = static_cast<int>(x);
        const float offset = column % 2 == 0 ? 0.0F : 0.5F;
        const float dx = x - static_cast<float>(column);
        const float dy = y + offset - std::floor(y + offset) - 0.5F;
        const float rim = std::sqrt(dx * dx * 0.7F + dy * dy * 1.9F);
        const float strength = 0.26F * (1 - smoothStep(0.75F, 0.95F, down));
        colour = colour * (1.0F + 0.08F - strength * smoothStep(0.45F, 0.85F, rim));
    }
    // The gill cover's edge, and the mouth.
    const float gill = 0.215F + 0.05F * std::sin(pi * std::clamp(down, 0.0F, 1.0F));
    if (down > 0.22F && down < 0.86F)
        colour = colour * (1.0F - 0.40F * (1 - smoothStep(0.0F, 0.014F, std::abs(length - gill))));
    const float mouth = std::abs(down - 0.60F - 0.4F * length);
    if (length < 0.055F)
        colour = colour * (1.0F - 0.55F * (1 - smoothStep(0.0F, 0.035F, mouth)));
    return colour;
}

Vector finColour(float along, float out)
{
    const Vector root(0.95F, 0.38F, 0.06F);
    const Vector tip(1.0F, 0.80F, 0.42F);
    const float ray = std::abs(std::sin(along * pi * 11.0F));
    return mix(root, tip, smoothStep(0.1F, 1.0F, out)) *
           mix(0.72F, 1.0F, smoothStep(0.1F, 0.6F, ray));
}

Vector eyeColour(float distance)
{
    if (distance < 0.50F)
        return {0.03F, 0.03F, 0.05F};
    return distance < 0.62F ? Vector(0.95F, 0.70F, 0.15F) : Vector(0.97F, 0.95F, 0.90F);
}

Raster makeFishTexture()
{
    Raster raster(256, 256);
    raster.fill([](float u, float v) -> Vector {
        if (v < skinBottom + 0.02F)
            return skinColour(u, v / skinBottom);
        if (u < finRight + 0.02F)
            return finColour(u / finRight, (v - finTop) / (1 - finTop));
        // A small light above the pupil.
        if (std::hypot(u - eyeU - 0.02F, v - eyeV - 0.025F) < 0.013F)
            return {1.0F, 1.0F, 1.0F};
        return eyeColour(std::hypot(u - eyeU, v - eyeV) / eyeRadius);
    });
    return raster;
}

// The vase. Its texture runs once round, and from the foot up to the lip and down the inside.

struct Turn
{
    float radius;
    float y;
};

constexpr Turn vaseProfile[] = {
    {0.01F, -2.0F},  {0.70F, -2.0F},  {0.86F, -1.97F}, {0.88F, -1.88F}, {0.80F, -1.78F},
    {0.86F, -1.62F}, {1.12F, -1.22F}, {1.34F, -0.76F}, {1.46F, -0.26F}, {1.44F, 0.22F},
    {1.28F, 0.66F},  {1.00F, 1.02F},  {0.72F, 1.30F},  {0.58F, 1.54F},  {0.56F, 1.72F},
    {0.64F, 1.88F},  {0.80F, 1.98F},  {0.84F, 2.02F},  {0.80F, 2.05F},  {0.70F, 1.99F},
    {0.55F, 1.86F},  {0.47F, 1.70F},  {0.49F, 1.52F},  {0.64F, 1.24F},  {0.90F, 0.96F},
};

Model makeVase()
{
    constexpr int corners = 40;
    constexpr auto rows = static_cast<int>(std::size(vaseProfile));
    Model vase;
    for (int row = 0; row < rows; ++row) {
        const Turn& turn = vaseProfile[row];
        for (int corner = 0; corner <= corners; ++corner) {
            const float round = static_cast<float>(corner) / corners;
            const float angle = -2 * pi * round;
            addVertex(vase, {turn.radius * std::cos(angle), turn.y, turn.radius * std::sin(angle)},
                      round, static_cast<float>(row) / (rows - 1), -1);
        }
    }
    addGridFaces(vase, rows, corners + 1);
    vase.computeNormals(false);
    // The seam's two sides share a normal.
    for (int row = 0; row < rows; ++row) {
        Vertex* const first = &vase.vertices[static_cast<std::size_t>(row) * (corners + 1)];
        Vector sum = first[0].normal + first[corners].normal;
        sum.normalise();
        first[0].normal = sum;
        first[corners].normal = sum;
    }
    return vase;
}

Vector vaseColour(float u, float v)
{
    const Vector clay(0.93F, 0.88F, 0.76F);
    const Vector blue(0.10F, 0.27F, 0.52F);
    const Vector rust(0.72F, 0.30F, 0.16F);
    const auto wave = [&](float times) { return u * times - std::floor(u * times); };

    Vector colour = clay;
    if (v > 0.80F)
        colour = blue * 0.6F; // the inside
    else if (v > 0.64F || v < 0.17F || (v > 0.225F && v < 0.245F))
        colour = blue;
    else if (v > 0.605F || v < 0.205F)
        colour = rust;
    else if (v > 0.50F && v < 0.565F) // a zigzag round the shoulder
        colour = std::abs((v - 0.50F) / 0.065F - std::abs(2 * wave(20) - 1)) < 0.30F ? blue : clay;
    else if (v > 0.27F && v < 0.47F) { // flowers round the belly
        const float x = (wave(8) - 0.5F) * 1.15F;
        const float y = (v - 0.37F) * 11.0F;
        const float distance = std::hypot(x, y);
        const float petal = 0.30F + 0.15F * std::cos(6 * std::atan2(x, y));
        if (distance < 0.11F)
            colour = rust;
        else if (distance > 0.15F && distance < petal)
            colour = blue;
    }
    return colour;
}

Raster makeVaseTexture()
{
    Raster raster(512, 512);
    raster.fill(vaseColour);
    return raster;
}

// The heights of an island: a ring of mountains round a lake, open to one side.

Vector craterHeight(float u, float v)
{
    const float x = 2 * u - 1;
    const float y = 2 * v - 1;
    const float turn = std::atan2(y, x);
    const float distance = std::hypot(x, y);
    const float ring = 0.46F + 0.05F * std::sin(3 * turn) + 0.03F * std::sin(7 * turn + 1);
    const float gap = smoothStep(0.15F, 0.75F, std::abs(turn - 1.1F));
    const float wall = std::exp(-std::pow((distance - ring) / 0.17F, 2.0F));
    const float shore = 0.34F * (1 - smoothStep(0.45F, 0.92F, distance));
    const float height =
        shore + 0.50F * wall * gap - 0.16F * (1 - smoothStep(0.1F, 0.3F, distance));
    return Vector(1.0F, 1.0F, 1.0F) * (height * (1 - smoothStep(0.75F, 0.98F, distance)));
}

Raster makeCraterHeights()
{
    Raster raster(129, 129);
    raster.fill(craterHeight);
    return raster;
}

Material makeMaterial(const Vector& diffuse, const std::string& texture)
{
    Material material;
    material.ambient = diffuse * 0.2F;
    material.diffuse = diffuse;
    material.specular = {0.3F, 0.3F, 0.3F};
    material.shininess = 24.0F;
    material.transparency = 1.0F;
    material.texture = texture;
    return material;
}

bool write(const Raster& raster, const std::string& path)
{
    return tools::writeTGA(path, raster.width, raster.height, 3, raster.bytes);
}
} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 2) {
        std::fprintf(stderr, "usage: tamor-make-example-models DIRECTORY\n");
        return 2;
    }
    const std::string directory = arguments[1];
    constexpr int frames = 60;

    MS3DWriter fish(frames);
    fish.addMesh("Body", 0, makeFishBody());
    fish.addMesh("Fins", 1, makeFishFins());
    fish.addMaterial("Skin", makeMaterial({1.0F, 1.0F, 1.0F}, "fish.tga"));
    fish.addMaterial("Fins", makeMaterial({1.0F, 0.6F, 0.2F}, ""));
    fish.setBones(makeFishBones(frames));

    MS3DWriter vase(1);
    vase.addMesh("Vase", 0, makeVase());
    vase.addMaterial("Glaze", makeMaterial({1.0F, 1.0F, 1.0F}, "vase.tga"));

    const bool written =
        fish.write(directory + "/fish.ms3d") && write(makeFishTexture(), directory + "/fish.tga") &&
        vase.write(directory + "/vase.ms3d") && write(makeVaseTexture(), directory + "/vase.tga") &&
        write(makeCraterHeights(), directory + "/crater.tga");
    return written ? 0 : 1;
}

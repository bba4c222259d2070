#include "platform/GLee.h"

#include "examples/tour/Shapes.h"

#include "textures/Image.h"

#include <array>
#include <cmath>
#include <numbers>

namespace tour
{
using namespace tamor;

namespace
{
constexpr float pi = std::numbers::pi_v<float>;
constexpr int sides = 14; // of a cone

// A model has one material, so its colours are in a texture, a column each.
enum Colour : std::int32_t
{
    BARK,
    LEAF,
    LIGHT_LEAF,
    STONE,
    DARK_STONE,
    ROOF,
    PLASTER,
    WOOD,
    SAIL,
    COLOUR_COUNT = 16
};

const std::array<Vector, COLOUR_COUNT> colours = {
    Vector(0.38F, 0.27F, 0.18F), Vector(0.13F, 0.33F, 0.17F), Vector(0.24F, 0.46F, 0.20F),
    Vector(0.70F, 0.67F, 0.61F), Vector(0.46F, 0.43F, 0.40F), Vector(0.62F, 0.27F, 0.20F),
    Vector(0.90F, 0.87F, 0.79F), Vector(0.45F, 0.32F, 0.21F), Vector(0.95F, 0.92F, 0.84F)};

/// Adds corners and faces to a model whose parts belong to bones, or to none.
class Builder
{
public:
    explicit Builder(std::uint32_t palette) : model(std::make_unique<Model>())
    {
        Material& material = model->materials.emplace_back();
        material.diffuse = {1.0F, 1.0F, 1.0F};
        material.transparency = 1.0F;
        material.textureId = palette;
    }

    std::int32_t corner(const Vector& position, Colour colour)
    {
        Vertex& vertex = model->vertices.emplace_back();
        vertex.position = position;
        vertex.u = (static_cast<float>(colour) + 0.5F) / static_cast<float>(COLOUR_COUNT);
        vertex.v = 0.5F;
        vertex.bone = bone;
        return static_cast<std::int32_t>(model->vertices.size() - 1);
    }

    void face(std::int32_t a, std::int32_t b, std::int32_t c)
    {
        model->faces.emplace_back().vertex = {a, b, c};
    }

    /// A tube round the y axis, a cone if one radius is 0. Each end may be closed.
    void tube(float bottom, float bottomRadius, float top, float topRadius, Colour colour)
    {
        ring(bottom, bottomRadius, top, topRadius, colour);
        if (topRadius > 0.0F)
            ring(top, topRadius, top, 0.0F, colour);
        if (bottomRadius > topRadius)
            ring(bottom, 0.0F, bottom, bottomRadius, colour);
    }

    /// A board with two sides, from `a` along `along` and `across`.
    void board(const Vector& a, const Vector& along, const Vector& across, Colour colour)
    {
        for (const bool isBack : {false, true}) {
            const std::int32_t p = corner(a, colour);
            const std::int32_t q = corner(a + along, colour);
            const std::int32_t r = corner(a + along + across, colour);
            const std::int32_t s = corner(a + across, colour);
            isBack ? face(p, r, q) : face(p, q, r);
            isBack ? face(p, s, r) : face(p, r, s);
        }
    }

    std::unique_ptr<Model> finish()
    {
        model->computeNormals(false);
        model->restVertices = model->vertices; // which no shape has, and bones need
        model->prepare(0);
        return std::move(model);
    }

    std::unique_ptr<Model> model;
    std::int32_t bone = -1; ///< of the corners to come

private:
    void ring(float bottom, float bottomRadius, float top, float topRadius, Colour colour)
    {
        const auto first = static_cast<std::int32_t>(model->vertices.size());
        for (int side = 0; side <= sides; side++) {
            const float angle = 2.0F * pi * static_cast<float>(side) / sides;
            const Vector out(std::cos(angle), 0.0F, -std::sin(angle));
            corner(out * bottomRadius + Vector(0.0F, bottom), colour);
            corner(out * topRadius + Vector(0.0F, top), colour);
        }
        for (std::int32_t side = first; side < first + 2 * sides; side += 2) {
            if (bottomRadius > 0.0F)
                face(side, side + 2, side + 1);
            if (topRadius > 0.0F)
                face(side + 1, side + 2, side + 3);
        }
    }
};
} // namespace

std::uint32_t makePalette()
{
    Image image;
    image.clear(COLOUR_COUNT, COLOUR_COUNT);
    for (std::size_t n = 0; n < image.pixelCount(); n++) {
        const Vector& colour = colours[n % COLOUR_COUNT];
        image.pixels[4 * n] = colour.x;
        image.pixels[4 * n + 1] = colour.y;
        image.pixels[4 * n + 2] = colour.z;
    }
    std::uint32_t texture = 0;
    uploadTexture(texture, image, {"", 0});
    // A smaller picture would mix the columns.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    delete[] image.pixels;
    return texture;
}

std::unique_ptr<Model> makeTree(std::uint32_t palette)
{
    Builder tree(palette);
    tree.tube(-1.0F, 0.34F, 2.0F, 0.20F, BARK);
    tree.tube(1.3F, 1.75F, 4.0F, 0.25F, LEAF);
    tree.tube(2.9F, 1.40F, 5.4F, 0.18F, LEAF);
    tree.tube(4.4F, 1.00F, 6.9F, 0.0F, LIGHT_LEAF);
    return tree.finish();
}

std::unique_ptr<Model> makeTower(std::uint32_t palette)
{
    Builder tower(palette);
    tower.tube(-2.0F, 2.3F, 0.9F, 2.1F, DARK_STONE);
    tower.tube(0.9F, 1.95F, 9.0F, 1.65F, STONE);
    tower.tube(9.0F, 1.7F, 9.7F, 2.3F, DARK_STONE);
    tower.tube(9.7F, 2.3F, 10.9F, 2.3F, STONE);
    tower.tube(10.9F, 2.6F, 14.6F, 0.0F, ROOF);
    tower.tube(14.2F, 0.09F, 15.8F, 0.06F, WOOD);
    for (const float height : {3.2F, 6.4F})
        tower.board({-0.3F, height, 1.98F - 0.037F * height}, {0.6F, 0.0F, 0.0F},
                    {0.0F, 1.1F, -0.03F}, DARK_STONE);
    return tower.finish();
}

std::unique_ptr<Model> makeWindmill(std::uint32_t palette)
{
    constexpr float hubHeight = 7.6F;
    constexpr float hubDepth = 1.75F;
    Builder mill(palette);
    mill.tube(-2.0F, 2.35F, 0.8F, 2.15F, DARK_STONE);
    mill.tube(0.8F, 2.05F, 7.0F, 1.35F, PLASTER);
    mill.tube(7.0F, 1.75F, 9.6F, 0.0F, ROOF);
    mill.board({-0.45F, 0.8F, 2.07F}, {0.9F, 0.0F, 0.0F}, {0.0F, 1.7F, -0.17F}, WOOD);

    // The sails, as they hang from their bone, at the hub.
    mill.bone = 0;
    for (int sail = 0; sail < 4; sail++) {
        const float angle = pi / 2.0F * static_cast<float>(sail) + 0.3F;
        const Vector out(std::cos(angle), std::sin(angle));
        const Vector side(-std::sin(angle), std::cos(angle), 0.16F);
        const Vector hub(0.0F, hubHeight, hubDepth);
        mill.board(hub - side * 0.08F, out * 5.4F, side * 0.16F, WOOD);
        mill.board(hub + out * 1.1F + side * 0.1F, out * 4.1F, side * 1.0F, SAIL);
    }

    auto* const hub = new Bone; // the model drops it, whoever has the model deletes it
    hub->name = "\"Hub\"";
    hub->localPosition = {0.0F, hubHeight, hubDepth};
    hub->position = hub->localPosition;
    constexpr int framesAKey = 24;
    for (int key = 0; key <= 4; key++)
        hub->rotationKeys.push_back({static_cast<float>(framesAKey * key),
                                     Vector(0.0F, 0.0F, pi / 2.0F * static_cast<float>(key))});
    mill.model->bones = {hub};
    mill.model->rootBones = {hub};
    mill.model->frameCount = 4 * framesAKey;
    for (std::size_t n = 0; n < mill.model->vertices.size(); n++)
        if (mill.model->vertices[n].bone == 0)
            hub->attached.push_back(static_cast<std::int32_t>(n));
    return mill.finish();
}
} // namespace tour

#include "platform/GLee.h"

#include "examples/tour/Things.h"

#include "examples/tour/Guides.h"
#include "examples/tour/Screen.h"
#include "examples/tour/Shapes.h"
#include "models/ModelFactory.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

namespace tour
{
using namespace tamor;

namespace
{
constexpr float framesASecond = 24.0F;

enum KindIndex : std::size_t
{
    TREE,
    TOWER,
    WINDMILL,
    TEAPOT,
    VASE,
    FISH
};

std::unique_ptr<Model> loadModel(const std::string& file)
{
    if (!std::filesystem::exists(file)) {
        std::cerr << file << " is missing" << std::endl;
        return std::make_unique<Model>(); // which draws nothing
    }
    return std::unique_ptr<Model>(createModel(file));
}
} // namespace

void Things::load()
{
    const std::uint32_t palette = makePalette();
    const auto take = [&](std::size_t index, const char* name, std::unique_ptr<Model> model,
                          float scale, float shine, bool swims) {
        Kind& kind = kinds[index];
        kind.name = name;
        kind.scale = scale;
        kind.shine = shine;
        kind.swims = swims;
        for (const Vertex& vertex : model->vertices) {
            const Vector& p = vertex.position;
            kind.low = {std::min(kind.low.x, p.x), std::min(kind.low.y, p.y),
                        std::min(kind.low.z, p.z)};
            kind.high = {std::max(kind.high.x, p.x), std::max(kind.high.y, p.y),
                         std::max(kind.high.z, p.z)};
        }
        kind.drawable.take(std::move(model));
    };
    take(TREE, "tree", makeTree(palette), 1.0F, 0.0F, false);
    take(TOWER, "tower", makeTower(palette), 1.2F, 0.05F, false);
    take(WINDMILL, "windmill", makeWindmill(palette), 1.15F, 0.05F, false);
    take(TEAPOT, "teapot", std::unique_ptr<Model>(createModel("teapot")), 0.34F, 0.7F, false);
    take(VASE, "vase", loadModel("vase.ms3d"), 0.95F, 0.5F, false);
    take(FISH, "fish", loadModel("fish.ms3d"), 0.7F, 0.35F, true);
    loadProgram(toon, "toon.vert", "toon.frag");
}

float Things::nextRandom()
{
    random = random * 1664525U + 1013904223U;
    return static_cast<float>(random >> 8U) / 16777216.0F;
}

void Things::addSomewhere(const std::string& kind, const Landscape& land, float scale)
{
    for (int attempt = 0; attempt < 60; attempt++) {
        const float x = (nextRandom() - 0.5F) * 0.7F * land.size();
        const float z = (nextRandom() - 0.5F) * 0.7F * land.size();
        const float height = land.heightAt(x, z);
        const float slope = std::max(std::abs(land.heightAt(x + 2.0F, z) - height),
                                     std::abs(land.heightAt(x, z + 2.0F) - height));
        if (height < 1.2F || height > 15.0F || slope > 1.0F)
            continue;
        const int number = add(kind, x, z, land);
        if (number < 0)
            return;
        Thing& thing = all[static_cast<std::size_t>(number)];
        // Towers and mills look south, where the tour begins.
        thing.heading = (thing.kind == TREE ? 360.0F : 50.0F) * nextRandom();
        thing.scale = scale * (0.75F + 0.5F * nextRandom());
        return;
    }
}

void Things::populate(const Landscape& land)
{
    all.clear();
    random = 20;
    const auto addAll = [&](const char* kind, int count, float scale) {
        for (int n = 0; n < count; n++)
            addSomewhere(kind, land, scale);
    };
    addAll("windmill", 1, 1.25F);
    addAll("tower", 2, 1.0F);
    addAll("teapot", 3, 1.0F);
    addAll("vase", 4, 1.0F);
    addAll("tree", 46, 1.0F);
    for (int n = 0; n < 6; n++) {
        const float x = 14.0F * static_cast<float>(n % 3) - 10.0F + 5.0F * nextRandom();
        const int number = add("fish", x, 12.0F * nextRandom(), land);
        if (number < 0)
            return;
        all[static_cast<std::size_t>(number)].heading = 70.0F + 20.0F * nextRandom();
    }
}

int Things::add(const std::string& kind, float x, float z, const Landscape& land)
{
    const auto* const found = std::find_if(kinds.begin(), kinds.end(),
                                           [&](const Kind& each) { return each.name == kind; });
    if (found == kinds.end() || all.size() >= mostThings)
        return -1;
    Thing thing;
    thing.kind = static_cast<std::size_t>(found - kinds.begin());
    thing.place = {x, 0.0F, z};
    if (found->swims)
        thing.place.y = std::max(land.heightAt(x, z), 0.0F) + 6.0F;
    if (thing.kind == TEAPOT)
        thing.colour = {0.78F, 0.45F, 0.30F};
    all.push_back(thing);
    return static_cast<int>(all.size() - 1);
}

const Thing* Things::first(const std::string& kind) const
{
    for (const Thing& thing : all)
        if (kinds[thing.kind].name == kind)
            return &thing;
    return nullptr;
}

float Things::footOf(const Thing& thing, const Landscape& land) const
{
    const float ground =
        kinds[thing.kind].swims ? 0.0F : land.heightAt(thing.place.x, thing.place.z);
    return ground + thing.place.y;
}

void Things::place(const Thing& thing, const Landscape& land) const
{
    const Kind& kind = kinds[thing.kind];
    // What has its origin in its middle stands on its lowest point.
    const float foot = thing.kind == VASE || thing.kind == TEAPOT ? -kind.low.y : 0.0F;
    const float scale = kind.scale * thing.scale;
    glTranslatef(thing.place.x, footOf(thing, land) + foot * scale, thing.place.z);
    // A fish looks along x, all others along z.
    glRotatef(thing.heading - (kind.swims ? 90.0F : 0.0F), 0.0F, 1.0F, 0.0F);
    glScalef(scale, scale, scale);
}

void Things::draw(const Settings& settings, const Landscape& land, float seconds)
{
    // All of a kind move alike, so that a pose is worked out once.
    for (Kind& kind : kinds)
        kind.drawable.pose(seconds * framesASecond);

    const bool withToon = settings.usesToon && toon.program != 0;
    for (const Thing& thing : all) {
        Kind& kind = kinds[thing.kind];
        const Model& model = kind.drawable.model();
        const bool isTextured = !model.materials.empty() && model.materials.front().textureId != 0;
        glPushMatrix();
        place(thing, land);
        if (isTextured)
            glEnable(GL_TEXTURE_2D);
        else
            glDisable(GL_TEXTURE_2D);
        setMaterial(thing.colour, kind.shine);
        if (withToon) {
            toon.use();
            toon.setUniform("textured", isTextured ? 1.0F : 0.0F);
        }
        kind.drawable.draw(settings.way);
        if (withToon)
            glUseProgram(0); // `ShaderProgram` has no way back
        if (settings.showsBones)
            drawBones(model);
        if (settings.showsBounds)
            drawBounds(kind.low, kind.high);
        glPopMatrix();
    }
    glEnable(GL_TEXTURE_2D);
}
} // namespace tour

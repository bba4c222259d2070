#include "platform/GLee.h"

#include "examples/tour/Water.h"

#include "examples/tour/Screen.h"
#include "generator/MeshGenerator.h"

#include <cmath>

namespace tour
{
using namespace tamor;

namespace
{
constexpr int points = 49;      // along an edge
constexpr float size = 1000.0F; // of the sheet, which goes with the camera
constexpr float sheetStep = size / points;
} // namespace

void Water::load()
{
    // A flat grid is a terrain from a black image.
    Image black;
    black.clear(points, points);
    auto model = std::make_unique<Model>();
    putIntoModel(*model, imageTerrain(black, size, 0.0F, size));
    delete[] black.pixels;
    sheet.take(std::move(model));
    loadProgram(waves, "water.vert", "water.frag");
}

void Water::draw(const Sky& sky, const Vector& eye, float seconds, bool withWaves)
{
    // In whole steps, so that the waves stay where they are.
    sheet.model().position = Vector(sheetStep * std::round(eye.x / sheetStep), 0.0F,
                                    sheetStep * std::round(eye.z / sheetStep));
    const Vector deep = sky.horizon * 0.30F + sky.zenith * 0.42F;
    glDisable(GL_TEXTURE_2D);
    drawBed(deep);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    if (withWaves && waves.program != 0) {
        waves.use();
        waves.setUniform("time", seconds);
        waves.setUniform("eye", eye.x, eye.y, eye.z);
        waves.setUniform("towardsLight", sky.towardsLight.x, sky.towardsLight.y,
                         sky.towardsLight.z);
        waves.setUniform("sunlight", sky.sunlight.x, sky.sunlight.y, sky.sunlight.z);
        waves.setUniform("horizon", sky.horizon.x, sky.horizon.y, sky.horizon.z);
        waves.setUniform("zenith", sky.zenith.x, sky.zenith.y, sky.zenith.z);
        sheet.draw(Way::buffers);
        glUseProgram(0); // `ShaderProgram` has no way back
    } else {
        Vector colour = deep;
        colour.w = 0.86F;
        setMaterial(colour);
        sheet.draw(Way::buffers);
    }
    glDisable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
}

/// The ground of the sea round the island.
void Water::drawBed(const Vector& colour)
{
    sheet.model().position.y = Landscape::seaBed;
    setMaterial(colour);
    sheet.draw(Way::buffers);
    sheet.model().position.y = 0.0F;
}
} // namespace tour

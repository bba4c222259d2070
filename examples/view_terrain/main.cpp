/// \file
/// Flies over a terrain:
///
///     tamor-view-terrain fractal SEED [--screenshot FILE]
///     tamor-view-terrain image PATH [--screenshot FILE]      a square TGA or PNG height map
///     tamor-view-terrain noise [--screenshot FILE]
///
/// Keys: W, A, S, D, space and left Control fly, dragging with the left button looks round, Escape
/// ends. With `--screenshot` one frame is drawn and written to FILE as a PPM picture.
#include "platform/GLee.h"

#include "examples/Host.h"
#include "generator/MeshGenerator.h"
#include "maths/Light.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace
{
using namespace tamor;

constexpr float extent = 400.0F;
constexpr float waterLevel = -6.0F;
const Vector skyColour(0.66F, 0.78F, 0.90F);

/// The terrain that the command line asks for.
TerrainMesh makeTerrain(const std::string& kind, const std::string& argument)
{
    if (kind == "fractal") {
        std::srand(static_cast<unsigned>(std::atoi(argument.c_str())));
        return fractalTerrain(256, 1.1F, 0.52F, extent, 80.0F, extent);
    }
    if (kind == "image") {
        // Heights of an image begin at 0: this lets the sea in.
        TerrainMesh mesh = fileTerrain(argument, extent, 110.0F, extent);
        for (Vertex& vertex : mesh.vertices)
            vertex.position.y -= 24.0F;
        return mesh;
    }
    return noiseTerrain(257, 7, 0.17F, 1.0F, 0.5F, 0.42F, extent, 130.0F, extent);
}

/// Sand by the water, then grass, rock where it is steep, and snow.
Vector groundColour(float height, float steepness)
{
    if (height < waterLevel + 1.5F)
        return {0.76F, 0.69F, 0.50F};
    if (steepness > 0.45F)
        return {0.44F, 0.40F, 0.37F};
    if (height > 24.0F)
        return {0.94F, 0.95F, 0.98F};
    const float share = (height - waterLevel) / 40.0F;
    return {0.24F + 0.25F * share, 0.42F + 0.06F * share, 0.17F + 0.16F * share};
}

class TerrainViewer : public EventCatcher
{
public:
    TerrainViewer(const ObjectRef<Kernel>& kernel, TerrainMesh mesh, std::string newScreenshot)
        : screenshot(std::move(newScreenshot))
    {
        // The arrays become a model; what lights and colours it is up to the host.
        putIntoModel(terrain, std::move(mesh));
        for (Vertex& vertex : terrain.vertices)
            vertex.normal = Vector();
        terrain.computeNormals(false);
        for (Face& face : terrain.faces) {
            const Vertex& corner = terrain.vertices[static_cast<std::size_t>(face.vertex[0])];
            face.colour = groundColour(corner.position.y, 1.0F - face.normal.y);
        }
        kernel->addCatcher(this,
                           1 << CLASS_GRAPHICS | 1 << CLASS_UPDATE | 1 << CLASS_RENDER |
                               1 << CLASS_MOUSE | 1 << CLASS_KEYBOARD,
                           0);
    }

    bool handleEvent(Event event) override
    {
        fly(camera, event);
        if (event.kind == EV_LOAD_GRAPHICS_RESOURCES)
            setUpScene();
        if (event.kind == EV_RENDER) {
            draw();
            return goesOnAfterFrame(screenshot);
        }
        return isNotEscape(event);
    }

private:
    void setUpScene()
    {
        camera.reset(0.04F, 0.3F);
        camera.setPosition(Vector(0.0F, 46.0F, 0.47F * extent));
        camera.rotation.x = 14.0F;

        glEnable(GL_DEPTH_TEST);
        glEnable(GL_COLOR_MATERIAL);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(sun.number);
        sun.setDiffuse({1.0F, 0.94F, 0.82F});
        sun.setAmbient({0.22F, 0.25F, 0.33F});
        glEnable(GL_FOG);
        glFogi(GL_FOG_MODE, GL_LINEAR);
        glFogf(GL_FOG_START, 0.3F * extent);
        glFogf(GL_FOG_END, 1.25F * extent);
        glFogfv(GL_FOG_COLOR, skyColour.toArray());
    }

    void draw()
    {
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        gluPerspective(55.0, 4.0 / 3.0, 1.0, 2.0 * extent);
        glMatrixMode(GL_MODELVIEW);
        glClearColor(skyColour.x, skyColour.y, skyColour.z, 1.0F);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        camera.apply();
        sun.setPosition({-0.6F, 0.55F, 0.35F}, false);

        glEnable(GL_LIGHTING);
        glPushMatrix(); // drawing leaves the model's transform on the matrix
        terrain.render(false);
        glPopMatrix();
        // The arrays that drawing leaves enabled would override the colour of the water.
        glDisableClientState(GL_COLOR_ARRAY);
        drawWater();
    }

    static void drawWater()
    {
        constexpr float half = extent / 2.0F;
        glDisable(GL_LIGHTING);
        glEnable(GL_BLEND);
        glColor4f(0.16F, 0.36F, 0.50F, 0.72F);
        glBegin(GL_QUADS);
        for (const Vector& corner :
             {Vector(-half, -half), Vector(-half, half), Vector(half, half), Vector(half, -half)})
            glVertex3f(corner.x, waterLevel, corner.y);
        glEnd();
        glDisable(GL_BLEND);
    }

    Model terrain;
    FPSCamera camera;
    Light sun;
    std::string screenshot;
};
} // namespace

int main(int argumentCount, char** arguments)
{
    std::vector<std::string> words(arguments + 1, arguments + argumentCount);
    const std::string screenshot = takeScreenshotOption(words);
    const bool isNoise = words.size() == 1 && words[0] == "noise";
    if (!isNoise && (words.size() != 2 || (words[0] != "fractal" && words[0] != "image"))) {
        std::fprintf(stderr, "usage: tamor-view-terrain fractal SEED | image PATH | noise "
                             "[--screenshot FILE]\n");
        return 2;
    }
    return runHost<TerrainViewer>(makeTerrain(words.front(), words.back()), screenshot);
}

#include "generator/MeshGenerator.h"

#include "platform/GLee.h"
#include "tests/support/GLRecorder.h"
#include "tests/support/TestWindow.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamor
{
namespace
{
using MeshGeneratorGLTest = test::WindowTest;

TEST_F(MeshGeneratorGLTest, RendersItselfWithVertexNormals)
{
    MeshGenerator generator;
    putIntoModel(generator, fractalTerrain(1, 0.0F, 0.5F, 2.0F, 1.0F, 2.0F));
    generator.computeNormals(false);
    generator.setRenderMode(1, false, false);
    const test::GLRecorder recorder;

    EXPECT_EQ(generator.render(), 0);

    // Six corners, each with its own normal, then two points a corner for the normals' lines.
    const std::vector<std::string> normals = recorder.calls({"glNormal3f"});
    EXPECT_EQ(normals, std::vector<std::string>(6, "glNormal3f(0, 1, 0)"));
    EXPECT_EQ(recorder.calls({"glVertex3f"}).size(), 6U + 12U);
}

TEST_F(MeshGeneratorGLTest, DrawsATerrainThatLooksUp)
{
    MeshGenerator generator;
    putIntoModel(generator, fractalTerrain(1, 0.0F, 0.5F, 2.0F, 1.0F, 2.0F));
    generator.computeNormals(false);
    generator.setRenderMode(1, false, false);
    // The viewer looks straight down on the terrain, along OpenGL's own first light.
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    glRotatef(90.0F, 1.0F, 0.0F, 0.0F);

    generator.render();

    // 0.8 of the light scattered, and 0.2 of an ambient light of 0.2.
    EXPECT_EQ(picture().at(300, 200), (test::Pixel{214, 214, 214}));
}
} // namespace
} // namespace tamor

#include "platform/GLee.h"

#include "models/ModelFactory.h"
#include "tests/support/Picture.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/TestWindow.h"

#include <gtest/gtest.h>

#include <GL/glu.h>

#include <memory>
#include <ostream>

using namespace tamor;
using namespace tamor::test;

namespace
{
struct Scene
{
    const char* name;
    const char* model;
    float distance; ///< of the viewer
    float time;     ///< in frames
    int mode;       ///< as `Model::setRenderMode` takes it

    friend void PrintTo(const Scene& scene, std::ostream* stream) { *stream << scene.name; }
};

class ModelPicturesGLTest : public WindowTest, public testing::WithParamInterface<Scene>
{
protected:
    static void lightTheScene(float distance)
    {
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        gluPerspective(45.0, 4.0 / 3.0, 0.5, 100.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        const float towardsTheLight[] = {0.4F, 0.8F, 0.9F, 0.0F};
        glLightfv(GL_LIGHT0, GL_POSITION, towardsTheLight);
        for (const int capability : {GL_DEPTH_TEST, GL_NORMALIZE, GL_LIGHT0})
            glEnable(static_cast<GLenum>(capability));
        glTranslatef(0.0F, 0.0F, -distance);
        glRotatef(20.0F, 1.0F, 0.0F, 0.0F);
        glRotatef(-30.0F, 0.0F, 1.0F, 0.0F);
    }

    static void draw(Model& model, float time)
    {
        glClearColor(0.2F, 0.2F, 0.2F, 1.0F);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glEnable(GL_LIGHTING);
        glEnable(GL_TEXTURE_2D);
        glPushMatrix();
        model.update(time);
        model.render(false);
        glPopMatrix();
    }
};

TEST_P(ModelPicturesGLTest, LookRight)
{
    const Scene& scene = GetParam();
    const std::unique_ptr<Model> model = [&scene] {
        const DirectoryChange toTheTextures("../../examples/models");
        return std::unique_ptr<Model>(createModel(scene.model));
    }();
    model->setRenderMode(scene.mode, false, false);
    lightTheScene(scene.distance);

    // Buffers show the pose of the drawing before.
    draw(*model, scene.time);
    draw(*model, scene.time);

    EXPECT_TRUE(matchesGolden(picture(), std::string("goldens/") + scene.name + ".png"));
}

INSTANTIATE_TEST_SUITE_P(Scenes, ModelPicturesGLTest,
                         testing::Values(Scene{"CubeByBuffers", "cube", 6, 0, 2},
                                         Scene{"CubeImmediately", "cube", 6, 0, 1},
                                         Scene{"TeapotByBuffers", "teapot", 18, 0, 2},
                                         Scene{"TeapotImmediately", "teapot", 18, 0, 1},
                                         Scene{"FishByBuffersAtFrame0", "fish.ms3d", 7, 0, 2},
                                         Scene{"FishByBuffersAtFrame21", "fish.ms3d", 7, 21, 2},
                                         Scene{"FishByBuffersAtFrame45", "fish.ms3d", 7, 45, 2},
                                         Scene{"FishImmediatelyAtFrame0", "fish.ms3d", 7, 0, 1},
                                         Scene{"FishImmediatelyAtFrame21", "fish.ms3d", 7, 21, 1},
                                         Scene{"FishImmediatelyAtFrame45", "fish.ms3d", 7, 45, 1},
                                         Scene{"VaseByBuffers", "vase.ms3d", 7, 0, 2}),
                         [](const auto& scene) { return scene.param.name; });
} // namespace

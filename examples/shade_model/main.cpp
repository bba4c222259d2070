/// \file
/// Draws a turning model under a GLSL program of one's own:
///
///     tamor-shade-model MODEL VERTEX_SHADER FRAGMENT_SHADER [--screenshot FILE]
///
/// MODEL is "teapot", "cube" or the path of a ".ms3d" file. The program may have the uniforms
/// `time`, in seconds, and `light`, a direction; `glaze.vert` and `glaze.frag` beside this file
/// have both. Escape ends. With `--screenshot` the frame of second 2 is written to FILE as a PPM
/// picture.
#include "platform/GLee.h"

#include "examples/Host.h"
#include "models/ModelFactory.h"
#include "shaders/ShaderProgram.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace
{
using namespace tamor;

class ShadedModel : public EventCatcher
{
public:
    ShadedModel(const ObjectRef<Kernel>& kernel, const std::vector<std::string>& newFiles,
                std::string newScreenshot)
        : files(newFiles), screenshot(std::move(newScreenshot))
    {
        kernel->addCatcher(
            this, 1 << CLASS_GRAPHICS | 1 << CLASS_UPDATE | 1 << CLASS_RENDER | 1 << CLASS_KEYBOARD,
            0);
    }

    bool handleEvent(Event event) override
    {
        switch (event.kind) {
        case EV_LOAD_GRAPHICS_RESOURCES:
            load();
            return true;
        case EV_UPDATE:
            seconds += static_cast<float>(event.delta) / 1000.0F;
            return true;
        case EV_RENDER:
            if (!screenshot.empty())
                seconds = 2.0F;
            draw();
            return goesOnAfterFrame(screenshot);
        default:
            return isNotEscape(event);
        }
    }

private:
    void load()
    {
        model.reset(createModel(files[0]));
        // Shaders exist once the window is open. Both loads come before the link.
        shader.loadVertexShader(files[1]);
        shader.loadFragmentShader(files[2]);
        shader.link();

        glEnable(GL_DEPTH_TEST);
        glClearColor(0.10F, 0.11F, 0.14F, 1.0F);
    }

    void draw()
    {
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        gluPerspective(40.0, 4.0 / 3.0, 1.0, 100.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glTranslatef(0.0F, -1.6F, -17.0F);
        glRotatef(24.0F, 1.0F, 0.0F, 0.0F);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);

        // Uniforms go to the program in use.
        shader.use();
        shader.setUniform("time", seconds);
        shader.setUniform("light", -0.5F, 0.8F, 0.6F);
        model->rotation.y = 0.4F * seconds;
        model->render(false);
        // There is no way back in `ShaderProgram`: a host that goes on without shaders says so.
        glUseProgram(0);
    }

    std::vector<std::string> files; ///< the model and the two shaders
    std::string screenshot;
    std::unique_ptr<Model> model;
    ShaderProgram shader;
    float seconds = 0.0F;
};
} // namespace

int main(int argumentCount, char** arguments)
{
    std::vector<std::string> words(arguments + 1, arguments + argumentCount);
    const std::string screenshot = takeScreenshotOption(words);
    if (words.size() != 3) {
        std::fprintf(stderr, "usage: tamor-shade-model MODEL VERTEX_SHADER FRAGMENT_SHADER "
                             "[--screenshot FILE]\n");
        return 2;
    }
    return runHost<ShadedModel>(words, screenshot);
}

/// \file
/// Shows a model: `tamor-view-model MODEL [--screenshot FILE]`.
///
/// MODEL is "teapot", "cube" or the path of a ".ms3d" file. Keys: W, A, S, D, space and left
/// Control fly, dragging with the left button looks round; F turns flat shading on and off, B
/// buffers (else immediate mode, which shows normals); Escape ends. With `--screenshot` one frame
/// is drawn and written to FILE as a PPM picture.
#include "platform/GLee.h"

#include "examples/Host.h"
#include "maths/Light.h"
#include "models/ModelFactory.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace
{
using namespace tamor;

constexpr float framesASecond = 24.0F;

class Viewer : public EventCatcher
{
public:
    Viewer(const ObjectRef<Kernel>& kernel, std::string newModelName, std::string newScreenshot)
        : modelName(std::move(newModelName)), screenshot(std::move(newScreenshot))
    {
        const std::int32_t classes = 1 << CLASS_GRAPHICS | 1 << CLASS_UPDATE | 1 << CLASS_RENDER |
                                     1 << CLASS_MOUSE | 1 << CLASS_KEYBOARD;
        kernel->addCatcher(this, classes, 0);
    }

    bool handleEvent(Event event) override
    {
        fly(camera, event);
        switch (event.kind) {
        case EV_LOAD_GRAPHICS_RESOURCES:
            load();
            return true;
        case EV_KEYBOARD:
            changeRenderMode(event.keyboard);
            return isNotEscape(event);
        case EV_UPDATE:
            time += static_cast<float>(event.delta) * framesASecond / 1000.0F;
            return true;
        case EV_RENDER:
            draw();
            return goesOnAfterFrame(screenshot);
        default:
            return true;
        }
    }

private:
    void load()
    {
        // A file names its textures relative to the working directory.
        const std::filesystem::path path(modelName);
        if (path.has_parent_path())
            std::filesystem::current_path(path.parent_path());
        model.reset(createModel(path.filename().string()));
        // Loading gives no normals to faces, which flat shading takes.
        model->computeNormals(true);
        model->rotation.y = -0.45F;
        standBack();

        glEnable(GL_DEPTH_TEST);
        glEnable(GL_NORMALIZE);
        glEnable(light.number);
        glEnable(fill.number);
        light.setDiffuse({0.95F, 0.93F, 0.88F});
        light.setSpecular({0.6F, 0.6F, 0.6F});
        fill.setDiffuse({0.22F, 0.27F, 0.36F});
    }

    /// Puts the camera where all of the model is in view, a little above it.
    void standBack()
    {
        Vector low;
        Vector high;
        for (const Vertex& vertex : model->vertices) {
            const Vector& p = vertex.position;
            low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
            high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
        }
        const Vector centre = (low + high) / 2.0F;
        const float distance = (high - low).length() * 1.3F;
        camera.reset(0.0006F * distance, 0.3F);
        camera.setPosition(centre + Vector(0.0F, 0.3F * distance, 0.95F * distance));
        camera.rotation.x = 17.5F;
    }

    void changeRenderMode(const KeyboardState& keys)
    {
        if (keys.pressed['f'] != 0) {
            isFlat = !isFlat;
            model->setRenderMode(model->renderMode, isFlat, true);
        }
        if (keys.pressed['b'] != 0)
            model->setRenderMode(model->renderMode == 1 ? 2 : 1, isFlat, false);
    }

    void draw()
    {
        glClearColor(0.13F, 0.16F, 0.20F, 1.0F);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glMatrixMode(GL_MODELVIEW);
        camera.apply();
        light.setPosition({0.4F, 0.8F, 0.9F}, false);
        fill.setPosition({-0.8F, 0.1F, 0.3F}, false);

        // Drawing leaves these as the model needed them, and its transform on the matrix.
        glEnable(GL_LIGHTING);
        glEnable(GL_TEXTURE_2D);
        setMaterial();
        glPushMatrix();
        // A model without frames must not be given a time.
        const auto length = static_cast<float>(model->frameCount);
        model->update(length > 0.0F ? std::fmod(time, length) : 0.0F);
        model->render(isFlat);
        glPopMatrix();
    }

    /// Drawing sets a colour only; under lighting the host sets the material.
    void setMaterial() const
    {
        Material material;
        material.diffuse = {0.80F, 0.48F, 0.30F};
        material.specular = {0.5F, 0.5F, 0.5F};
        material.shininess = 40.0F;
        if (!model->materials.empty())
            material = model->materials.front();
        glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, material.diffuse.toArray());
        glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, material.specular.toArray());
        glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, material.shininess);
    }

    std::string modelName;
    std::string screenshot;
    std::unique_ptr<Model> model;
    FPSCamera camera;
    Light light;
    Light fill;
    float time = 0.0F; ///< in frames of the animation
    bool isFlat = false;
};
} // namespace

int main(int argumentCount, char** arguments)
{
    std::vector<std::string> words(arguments + 1, arguments + argumentCount);
    const std::string screenshot = takeScreenshotOption(words);
    if (words.size() != 1) {
        std::fprintf(stderr, "usage: tamor-view-model MODEL [--screenshot FILE]\n");
        return 2;
    }
    return runHost<Viewer>(words[0], screenshot);
}

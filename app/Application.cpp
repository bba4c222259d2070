#include "app/Application.h"

#include "gui/GLWidget.h"
#include "kernel/Diagnostics.h"
#include "models/Model.h"
#include "platform/GLRender.h"
#include "platform/SDLInput.h"

#include <GL/gl.h>
#include <SDL_keysym.h>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <locale>
#include <sstream>

namespace tamor
{
namespace
{
constexpr std::int32_t subscription = 1 << CLASS_WINDOW | 1 << CLASS_GRAPHICS | 1 << CLASS_SETUP |
                                      1 << CLASS_UPDATE | 1 << CLASS_RENDER | 1 << CLASS_MOUSE |
                                      1 << CLASS_KEYBOARD;
constexpr std::int32_t priority = 500;

constexpr std::int32_t reportInterval = 5000; // milliseconds

/// The entry of "combo1" that ends the program.
constexpr std::uint32_t quitSelection = 3;

const Vector gravity(0.0F, -9.8F, 0.0F); // units a second, squared
constexpr float dragFactor = 0.1F;

/// Sets the text of the widget `name`, if there is one.
void setCaption(const char* name, const std::string& caption)
{
    if (GLWidget* widget = GLWidget::find(name))
        widget->setCaption(caption);
}

/// Takes the clear colour from the three colour sliders, if all are there.
void applyColourSliders()
{
    GLWidget* const red = GLWidget::find("red");
    GLWidget* const green = GLWidget::find("green");
    GLWidget* const blue = GLWidget::find("blue");
    if (red != nullptr && green != nullptr && blue != nullptr)
        glClearColor(red->getValue(), green->getValue(), blue->getValue(), 0.0F);
}

/// Shows the value of `slider` in `label`, with two decimals, behind `words`. The numbers of the
/// demonstration are those of the C locale, whatever locale a host has set.
void showSliderValue(GLWidget* slider, GLWidget* label, const std::string& words)
{
    char digits[64];
    const std::to_chars_result result =
        std::to_chars(digits, digits + sizeof digits, static_cast<double>(slider->getValue()),
                      std::chars_format::fixed, 2);
    label->setCaption(words + std::string(digits, result.ptr));
}

void showSliderValues()
{
    GLWidget* const slider1 = GLWidget::find("horz1");
    GLWidget* const label1 = GLWidget::find("horzl1");
    if (slider1 != nullptr && label1 != nullptr)
        showSliderValue(slider1, label1, "Slider 1: ");

    // Meant: the second label asks for the first slider and then shows the second; a layout that
    // has "horz1" and "horzl2" must have "horz2" as well, and one that has not is let off.
    // `ApplicationUpdateGLTest.TheSecondLabelAsksForTheFirstSlider` holds it.
    GLWidget* const slider2 = GLWidget::find("horz2");
    GLWidget* const label2 = GLWidget::find("horzl2");
    if (slider1 != nullptr && label2 != nullptr && slider2 != nullptr)
        showSliderValue(slider2, label2, "Slider 2: ");
}

/// Whether the user asked for the end through a widget.
bool isEndWanted()
{
    GLWidget* const exitButton = GLWidget::find("exitbut");
    if (exitButton != nullptr && exitButton->isActive())
        return true;
    GLWidget* const choice = GLWidget::find("combo1");
    return choice != nullptr && choice->getSelection() == quitSelection;
}

void showMessageAnswer()
{
    const char* words = nullptr;
    switch (GLWidget::takeMessageResult()) {
    case MESSAGE_OK:
        words = "YOU CLICKED OK LOL";
        break;
    case MESSAGE_CANCEL:
        words = "YOU CLICKED CANCEL LOL";
        break;
    case MESSAGE_YES:
        words = "YOU CLICKED YES LOL";
        break;
    case MESSAGE_NO:
        words = "YOU CLICKED NO LOL";
        break;
    default:
        return;
    }
    setCaption("status", std::string("Status: ") + words);
}

void openMessageBoxes()
{
    struct Message
    {
        const char* button;
        const char* text;
        std::int32_t flags;
    };
    static constexpr Message messages[] = {
        {"redbut", "Pell wanted this to do something, so it does something.",
         MESSAGE_OK | MESSAGE_CANCEL},
        {"greenbut", "Pell also wanted this to do something, so it does something.",
         MESSAGE_YES | MESSAGE_NO},
        {"bluebut", "Pell also wanted this to do something, so it does something.",
         MESSAGE_CANCEL | MESSAGE_YES | MESSAGE_NO},
        {"quill",
         "This is a test of the emergency broadcast system.\n"
         "If it had been a real emergency, you would be dead by now.",
         MESSAGE_OK},
    };
    for (const Message& message : messages) {
        GLWidget* const button = GLWidget::find(message.button);
        if (button != nullptr && button->wasClicked())
            GLWidget::messageBox(message.text, message.flags);
    }
}
} // namespace

Application::Application() = default;

bool Application::run()
{
    installSignalHandlers();
    kernel = new Kernel;
    // The order of registration is the order of delivery: input first, then the window, then this.
    new SDLInput(kernel, false);
    new GLRender(kernel);
    kernel->addCatcher(ObjectRef<EventCatcher>(this), subscription, priority);
    kernel->run();
    return true;
}

bool Application::handleEvent(Event event)
{
    switch (event.kind) {
    case EV_LOAD_GRAPHICS_RESOURCES:
        glClearColor(0, 0, 0, 0);
        GLWidget::loadLayout("my.gui");
        return true;
    case EV_INITIAL_SETUP:
        setUpScene();
        return true;
    case EV_UPDATE: {
        if (update(event.delta))
            return true;
        Event quit;
        quit.kind = EV_QUIT;
        kernel->sendEvent(ObjectRef<EventCatcher>(), quit);
        return false;
    }
    case EV_RENDER: {
        Event done;
        done.kind = EV_RENDER_DONE;
        renderFrame(true);
        return kernel->sendEvent(ObjectRef<EventCatcher>(this), done);
    }
    case EV_MOUSE:
        return handleMouse(event.mouse);
    case EV_KEYBOARD:
        return handleKeyboard(event.keyboard);
    case EV_RELEASE_RESOURCES:
        return GLWidget::release();
    default:
        return true;
    }
}

void Application::setUpScene()
{
    std::srand(static_cast<unsigned>(std::time(nullptr)));
    origin[0] = 0.0F;
    origin[1] = 0.0F;
    origin[2] = 3600.0F;

    constexpr float mass = 10.0F;
    for (const Vector& position :
         {Vector(-3, 15, 0), Vector(3, 15, 0), Vector(-3, 10, 0), Vector(3, 10, 0)})
        objects.push_back({position, Vector(), mass});
}

bool Application::handleMouse(const MouseState& mouse)
{
    camera.look(static_cast<float>(mouse.dx), static_cast<float>(mouse.dy),
                static_cast<float>(mouse.dz));
    GLWidget::mouseMoved(Vector(static_cast<float>(mouse.x), static_cast<float>(mouse.y)));
    GLWidget::mouseButtons(mouse.left != 0, mouse.middle != 0, mouse.right != 0);
    return true;
}

bool Application::handleKeyboard(const KeyboardState& newKeyboard)
{
    keyboard = newKeyboard;
    if (keyboard.held[SDLK_ESCAPE] != 0)
        return false;
    GLWidget::keysChanged(keyboard.pressed.data());
    return true;
}

bool Application::update(std::int32_t delta)
{
    ++frameCount;
    frameTime += delta;
    moveCamera(delta);
    applyColourSliders();
    showSliderValues();
    if (isEndWanted())
        return false;
    showMessageAnswer();
    openMessageBoxes();
    if (frameTime > reportInterval)
        reportFrameRate();
    moveObjects(delta);
    GLWidget::updateAll(delta);
    return true;
}

bool Application::renderFrame(bool)
{
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
    glClearColor(0, 0, 1, 1);
    GLWidget::renderAll();
    return true;
}

void Application::viewFromFace(std::int32_t face, std::int32_t, std::int32_t direction)
{
    const auto isIndexInto = [](const auto& list, std::int32_t index) {
        return index >= 0 && static_cast<std::size_t>(index) < list.size();
    };
    if (model == nullptr || !isIndexInto(model->faces, face))
        return;
    const Face& seen = model->faces[static_cast<std::size_t>(face)];
    Vector corners[3];
    for (std::size_t corner = 0; corner < 3; ++corner) {
        if (!isIndexInto(model->vertices, seen.vertex[corner]))
            return;
        corners[corner] = model->vertices[static_cast<std::size_t>(seen.vertex[corner])].position;
    }
    const Vector centre = (corners[0] + corners[1] + corners[2]) / 3.0F;

    constexpr float isLevelAbove = 0.9999F;
    faceNormal = seen.normal;
    faceSide =
        std::abs(faceNormal.y) > isLevelAbove ? Vector(1, 0, 0) : faceNormal.cross(Vector(0, 1, 0));
    faceUp = faceSide.cross(faceNormal);

    switch (direction) {
    case 0:
        camera.lookAt(centre, centre + faceNormal, faceUp);
        break;
    case 1:
        camera.lookAt(centre, centre + faceSide, faceUp);
        break;
    case 2:
        camera.lookAt(centre, centre - faceUp, faceNormal);
        break;
    case 3:
        camera.lookAt(centre, centre - faceSide, faceUp);
        break;
    case 4:
        camera.lookAt(centre, centre + faceUp, -faceNormal);
        break;
    default:
        break;
    }
}

/// The move comes before the frame's own time is set, so it uses the time of the frame before.
void Application::moveCamera(std::int32_t delta)
{
    const auto isHeld = [this](SDLKey key) { return keyboard.held[key] != 0; };
    camera.move(isHeld(SDLK_w), isHeld(SDLK_s), isHeld(SDLK_SPACE),
                (keyboard.modifiers & KMOD_LCTRL) != 0, isHeld(SDLK_a), isHeld(SDLK_d));
    camera.setFrameTime(static_cast<float>(delta));
}

/// Meant: the drag is the square of each component of the velocity and so always points along the
/// positive axis: it brakes a fall and would speed up a climb.
/// `ApplicationUpdateGLTest.DragAlwaysPointsAlongThePositiveAxis` holds it.
void Application::moveObjects(std::int32_t delta)
{
    const float dt = static_cast<float>(static_cast<double>(delta) / 1000.0);
    for (PhysicsObject& object : objects) {
        Vector force;
        force += gravity * object.mass;
        force += object.velocity * object.velocity * dragFactor;
        const Vector acceleration = force / object.mass;
        object.position += object.velocity * dt + acceleration / 2.0F * dt * dt;
        object.velocity += acceleration * dt;
    }
}

void Application::reportFrameRate()
{
    const double rate = frameCount * 1000.0 / frameTime;
    setCaption("fps", "FPS: " + std::to_string(static_cast<std::int32_t>(rate)));
    std::ostringstream line;
    line.imbue(std::locale::classic());
    line << frameCount << " frames in " << static_cast<float>(frameTime / 1000.0)
         << " seconds = " << static_cast<float>(rate) << " FPS";
    std::cerr << line.str() << std::endl;
    frameCount = 0;
    frameTime = 0;
}
} // namespace tamor

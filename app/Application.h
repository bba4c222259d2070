/// \file
/// The demonstration.
///
/// The folder app/ holds the program's entry and its one catcher, which assembles the running
/// system: the kernel, the input, the window, the GUI of "my.gui", a camera and four falling
/// objects. It starts no models, scripts, shaders or terrain.
#pragma once

#include "TamorExport.h"
#include "camera/FPSCamera.h"
#include "kernel/Kernel.h"
#include "maths/Light.h"
#include "maths/Vector.h"
#include "shaders/ShaderProgram.h"
#include "textures/Font.h"

#include <cstdint>
#include <vector>

namespace tamor
{
class Model;

/// A body that falls. Distances are in world units.
struct PhysicsObject
{
    Vector position;   ///< y is up
    Vector velocity;   ///< units a second
    float mass = 0.0F; ///< the more, the less it is braked; never 0 when it is moved
};

/// Runs the demonstration: draws the GUI, reads its widgets by name, reports the frame rate.
///
/// Members that nothing uses are part of the class as designed: building them has effects, such as
/// the light number that is taken.
class TAMOR_EXPORT Application : public EventCatcher
{
public:
    Application();

    /// Installs the signal handlers, builds the kernel, the input and the window, registers all
    /// three catchers, and runs the kernel until the end.
    /// \return true, also after a failed start
    bool run();

    /// Loads "my.gui", sets up the scene, hands input to GUI and camera, and draws.
    /// \return false to end the program: from `EV_KEYBOARD` while Escape is held, from `EV_UPDATE`
    ///         when `update` asks for it
    bool handleEvent(Event event) override;

    /// One frame of the demonstration. Prints the frame rate every five seconds, as
    ///     <frames> frames in <seconds> seconds = <rate> FPS
    /// \param delta  milliseconds
    /// \return false to ask for the end
    bool update(std::int32_t delta);

    /// Clears the window and draws the GUI. The clear colour that `update` chose is used and then
    /// replaced by blue.
    /// \param clearFlag  not used
    /// \return true
    bool renderFrame(bool clearFlag);

    /// Takes the camera to the centre of a face of `model` and turns it: 0 away from the face, 1 to
    /// its side, 2 down, 3 to the other side, 4 up. The demonstration does not call it.
    ///
    /// Nothing happens without a model, or for a face that is not there; any other `direction`
    /// leaves the camera alone.
    /// \param face      index into the model's faces
    /// \param reserved  not used
    void viewFromFace(std::int32_t face, std::int32_t reserved, std::int32_t direction);

    Model* model = nullptr;    ///< for `viewFromFace`; not owned
    FPSCamera camera;          ///< moved by the keys and the mouse; nothing is drawn from it
    Light light;               ///< takes a number; nothing uses it
    Font font;                 ///< nothing uses it
    std::uint32_t texture = 0; ///< nothing uses it
    KeyboardState keyboard;    ///< as of the latest `EV_KEYBOARD`
    ShaderProgram shader;      ///< nothing uses it
    Vector faceNormal;         ///< scratch of `viewFromFace`
    Vector faceSide;           ///< scratch of `viewFromFace`
    Vector faceUp;             ///< scratch of `viewFromFace`
    std::vector<PhysicsObject> objects; ///< four, from `EV_INITIAL_SETUP` on
    std::int32_t frameCount = 0;        ///< frames since the last report
    std::int32_t frameTime = 0;         ///< milliseconds since the last report
    /// Set by `EV_INITIAL_SETUP`; nothing reads it.
    float origin[3] = {0.0F, 0.0F, 0.0F};
    ObjectRef<Kernel> kernel; ///< empty until `run`

private:
    void setUpScene();
    bool handleMouse(const MouseState& mouse);
    bool handleKeyboard(const KeyboardState& newKeyboard);
    void moveCamera(std::int32_t delta);
    void moveObjects(std::int32_t delta);
    void reportFrameRate();
};
} // namespace tamor

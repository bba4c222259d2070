/// \file
/// Keyboard and mouse.
#pragma once

#include "TamorExport.h"
#include "kernel/Kernel.h"

#include <array>
#include <cstdint>

namespace tamor
{
/// What is known of one key index.
struct KeyRecord
{
    /// The states of a key.
    enum State : std::int32_t
    {
        UP = 0,        ///< not held
        PRESSED = 1,   ///< since the last frame
        HELD = 2,      ///< waiting for the repeat to begin
        REPEATING = 3, ///< held long enough
    };

    std::int32_t state = UP;     ///< a `State`
    std::int32_t holdTime = 0;   ///< milliseconds in state `HELD`
    std::int32_t repeatTime = 0; ///< milliseconds since the last repeat; grows in all states
    std::int32_t reserved = 0;   ///< not used
};

static_assert(sizeof(KeyRecord) == 16);

/// Turns SDL's events into `EV_KEYBOARD`, sent each frame, and `EV_MOUSE`, sent in a frame in which
/// the mouse did something, and does its own key repeat in frame time.
///
/// A key has two indices: its symbol, and the character that SDL reports for it, which is 0 for
/// none. Key-down sets both records and key-up clears both, without pairing the two: where SDL
/// reports no character on key-up, the record of the character stays set.
class TAMOR_EXPORT SDLInput : public EventCatcher
{
public:
    /// Registers itself for the classes resources, window, update and render done.
    /// \param newGrabMouse  whether the pointer is hidden and taken back to (200, 200) each frame
    SDLInput(const ObjectRef<Kernel>& newKernel, bool newGrabMouse);

    /// `EV_LOAD_RESOURCES`: starts SDL's joystick subsystem, the one that this class starts and
    /// closes. \return false if that failed, after printing
    ///     SDL_Init() failed. SDL Error: <SDL's words>
    /// `EV_UPDATE`: reads SDL's events and sends its own. \return false if a receiver did.
    /// `EV_RELEASE_RESOURCES`: closes the joystick subsystem.
    bool handleEvent(Event event) override;

    ObjectRef<Kernel> kernel;             ///< which events are sent by
    bool grabMouse;                       ///< as given to the constructor
    std::int32_t lastX = -1;              ///< the pointer at the last `EV_MOUSE`; -1 before any
    std::int32_t lastY = -1;              ///< the pointer at the last `EV_MOUSE`; -1 before any
    bool buttonLeft = false;              ///< held
    bool buttonMiddle = false;            ///< held
    bool buttonRight = false;             ///< held
    std::int32_t mouseX = 0;              ///< the pointer as SDL told it last
    std::int32_t mouseY = 0;              ///< the pointer as SDL told it last
    std::array<KeyRecord, keyCount> keys; ///< by symbol and by character, as `KeyboardState` is

private:
    bool initialise();
    bool pollInput(std::int32_t delta);
    bool readEvents();
    bool sendMouse(Event& event);
    void setKey(std::uint32_t index, bool isDown);
    void setButton(std::uint32_t button, bool isDown);
};
} // namespace tamor

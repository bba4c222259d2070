#include "tools/view/Subject.h"

#include <SDL.h>

namespace tamor::view
{
int zoomOf(const KeyboardState& keys)
{
    const bool zoomsIn =
        keys.pressed['+'] != 0 || keys.pressed['='] != 0 || keys.pressed[SDLK_KP_PLUS] != 0;
    const bool zoomsOut = keys.pressed['-'] != 0 || keys.pressed[SDLK_KP_MINUS] != 0;
    return (zoomsIn ? 1 : 0) - (zoomsOut ? 1 : 0);
}
} // namespace tamor::view

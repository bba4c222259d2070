#include "platform/internal/EventQueue.h"

namespace tamor
{
void putBackEvents(std::vector<SDL_Event>& events, Uint8 lastPolledType)
{
    if (events.empty() || lastPolledType == SDL_VIDEOEXPOSE)
        return;
    SDL_PeepEvents(events.data(), static_cast<int>(events.size()), SDL_ADDEVENT, 0);
}
} // namespace tamor

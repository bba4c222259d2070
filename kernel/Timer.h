/// \file
/// The source of frame times.
#pragma once

#include "TamorExport.h"
#include "kernel/MMObject.h"

#include <cstdint>

namespace tamor
{
/// Counts milliseconds since it was built.
class TAMOR_EXPORT Timer : public MMObject
{
public:
    /// Starts SDL's timer subsystem unless it runs. If that fails the timer counts all the same,
    /// after printing
    ///     SDL_InitSubSystem() failed. SDL Error: <SDL's words>
    Timer();

    /// Milliseconds since construction.
    std::uint32_t getTicks() const;

    std::uint32_t startTicks; ///< `SDL_GetTicks` at construction
};
} // namespace tamor

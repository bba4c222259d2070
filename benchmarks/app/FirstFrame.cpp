/// \file
/// Ends a program, with the status 0, at the end of its TAMOR_SWAPS-th swap of buffers. To be
/// preloaded.
#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>

extern "C" void SDL_GL_SwapBuffers()
{
    static int swaps = 0;
    reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "SDL_GL_SwapBuffers"))();
    const char* const wanted = std::getenv("TAMOR_SWAPS");
    if (wanted != nullptr && ++swaps == std::atoi(wanted))
        _exit(0);
}

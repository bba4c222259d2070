/// \file
/// Records a run of the demonstration and plays it again: `tamor-replay --record FILE` or
/// `tamor-replay --play FILE`.
///
/// It wants the demonstration's working directory, such as build/release/data. What is played is the
/// recorded run frame by frame: the same input, the same times, and so the same pictures.
#include "app/Application.h"
#include "kernel/Diagnostics.h"
#include "platform/GLRender.h"
#include "platform/InputPlayer.h"
#include "platform/InputRecorder.h"
#include "platform/SDLInput.h"

#include <cstdio>
#include <string>
#include <vector>

namespace
{
using namespace tamor;

/// The demonstration, as the catcher of a kernel that it does not run by itself.
void addDemonstration(const ObjectRef<Kernel>& kernel)
{
    const ObjectRef<Application> application = new Application;
    application->kernel = kernel;
    const std::int32_t classes = 1 << CLASS_WINDOW | 1 << CLASS_GRAPHICS | 1 << CLASS_SETUP |
                                 1 << CLASS_UPDATE | 1 << CLASS_RENDER | 1 << CLASS_MOUSE |
                                 1 << CLASS_KEYBOARD;
    kernel->addCatcher(application.get(), classes, 0);
}

/// Who registers first is served first: the recorder writes what the input and the window let
/// through to the demonstration.
bool record(const std::string& file)
{
    const ObjectRef<Kernel> kernel = new Kernel;
    new SDLInput(kernel, false);
    new GLRender(kernel);
    new InputRecorder(kernel, file);
    addDemonstration(kernel);
    return kernel->run();
}

/// The player stands in for the input, and runs the kernel.
bool play(const std::string& file)
{
    const ObjectRef<Kernel> kernel = new Kernel;
    const ObjectRef<InputPlayer> player = new InputPlayer(kernel, file);
    new GLRender(kernel);
    addDemonstration(kernel);
    return player->run();
}
} // namespace

int main(int argumentCount, char** arguments)
{
    const std::vector<std::string> words(arguments + 1, arguments + argumentCount);
    const bool isToRecord = words.size() == 2 && words[0] == "--record";
    const bool isToPlay = words.size() == 2 && words[0] == "--play";
    if (!isToRecord && !isToPlay) {
        std::fprintf(stderr, "usage: tamor-replay --record FILE | --play FILE\n");
        return 2;
    }
    enableCallStack();
    installSignalHandlers();
    const bool hasRun = isToRecord ? record(words[1]) : play(words[1]);
    collectAll();
    return hasRun ? 0 : 1;
}

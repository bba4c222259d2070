/// \file
/// tamor-start-recorder FILE: writes the OpenGL calls of the demonstration's start to FILE, as far as
/// the swap that shows the first frame that was drawn. To be run beside the demonstration's data.
#include "app/Application.h"
#include "benchmarks/support/CallWriter.h"

#include <cstdlib>

namespace
{
/// The window swaps before this program draws: its second `EV_RENDER` finds the first picture shown.
class RecordedApplication : public tamor::Application
{
public:
    explicit RecordedApplication(const char* newFile) : file(newFile) {}

    bool handleEvent(tamor::Event event) override
    {
        if (event.kind == tamor::EV_RENDER && ++frames == 2)
            std::_Exit(tamor::bench::writeCalls(recorder.records(), file) ? 0 : 1);
        return tamor::Application::handleEvent(event);
    }

private:
    const char* file;
    int frames = 0;
    tamor::test::GLRecorder recorder;
};
} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 2)
        return 1;
    const tamor::ObjectRef<tamor::Application> application(new RecordedApplication(arguments[1]));
    application->run();
    return 1;
}

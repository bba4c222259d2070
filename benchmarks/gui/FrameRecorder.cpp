// tamor-gui-frame-recorder COUNT FILE: writes the OpenGL calls of one frame with COUNT widgets to
// FILE. It is a program of its own because the recorder stands in front of every OpenGL function of
// the program that it is in, which the measured program must not have.

#include "benchmarks/gui/Scene.h"
#include "benchmarks/support/CallWriter.h"

#include <cstdlib>

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 3)
        return 2;
    tamor::bench::openScene();
    tamor::bench::loadScene(tamor::bench::layoutOf(std::atoi(arguments[1])));
    // The animations of the first frames are over before the frame that counts.
    for (int frame = 0; frame < 100; ++frame)
        tamor::bench::drawFrame();

    const tamor::test::GLRecorder recorder;
    tamor::bench::drawFrame();

    return tamor::bench::writeCalls(recorder.records(), arguments[2]) ? 0 : 1;
}

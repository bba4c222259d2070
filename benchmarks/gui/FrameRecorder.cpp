// tamor-gui-frame-recorder COUNT FILE: writes the OpenGL calls of one frame with COUNT widgets to
// FILE. It is a program of its own because the recorder stands in front of every OpenGL function of
// the program that it is in, which the measured program must not have.

#include "benchmarks/gui/Scene.h"
#include "tests/support/GLRecorder.h"

#include <cstdlib>
#include <fstream>

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

    std::ofstream file(arguments[2], std::ios::binary);
    for (const tamor::test::RecordedCall& call : recorder.records()) {
        const std::string text = call.describe(call);
        file << text.substr(0, text.find('(')) << ' ' << call.data.size() << ' ';
        file.write(reinterpret_cast<const char*>(call.arguments.data()),
                   static_cast<std::streamsize>(call.arguments.size()));
        file.write(reinterpret_cast<const char*>(call.data.data()),
                   static_cast<std::streamsize>(call.data.size()));
    }
    return file.good() ? 0 : 1;
}

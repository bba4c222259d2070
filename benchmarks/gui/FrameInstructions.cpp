// Draws one frame of 1,000 widgets with no window and so with no driver: every OpenGL call returns
// at once. It is for counting what the engine itself does, on a machine that is busy with other
// things too. This prints instructions a widget:
//
//   valgrind --tool=callgrind --callgrind-out-file=frame.out
//            --toggle-collect='tamor::bench::drawFrame()' ./tamor-gui-frame-instructions
//   callgrind_annotate --threshold=100 frame.out | grep 'instructions]' | tr -d , |
//            awk '{ sum += $1 } END { print sum / 1000 }'

#include "benchmarks/gui/Scene.h"

int main()
{
    tamor::bench::workInOwnDirectory();
    tamor::bench::loadScene(tamor::bench::layoutOf(1000));
    tamor::bench::drawFrame();
}

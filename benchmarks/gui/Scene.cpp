#include "benchmarks/gui/Scene.h"

#include "gui/GLWidget.h"

#include <SDL.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>

namespace tamor::bench
{
namespace
{
constexpr const char* theme =
    "1 1 1\n1 0.71 0.16\n0.8 0.8 0.8\n0.3 0.3 0.3\n1\n0.8\n2\n0.005\n0.1\n"
    "0.003\n0.04 0.05\n0.7 1\n0.005 -0.005 0\n0.1\nNULL\n1\n";

constexpr const char* configuration =
    TAMOR_TEST_FONT "\nnone\n"
                    "0 0.5 0.25 0.75\n0.25 0.5 0.5 0.75\n0 0.75 0.25 1\n"
                    "0.25 0.75 0.5 1\n0.5 0.75 0.75 1\n0.005\n";

void write(const char* file, const std::string& text)
{
    std::ofstream(file) << text;
}

// What the GUI prints of each widget goes nowhere: the terminal is not what is measured.
void silenceErrors()
{
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDERR_FILENO);
    close(nowhere);
}
} // namespace

void workInOwnDirectory()
{
    std::string directory = (std::filesystem::temp_directory_path() / "tamor-gui-XXXXXX").string();
    std::filesystem::current_path(mkdtemp(directory.data()));
    for (const char* file : {"default.theme", "combo_button.theme", "tabwin_button.theme"})
        write(file, theme);
    write("gui.conf", configuration);
    silenceErrors();
}

void openScene()
{
    // Without threads of the driver's own, the processor time of this one is all there is.
    for (const auto& [name, value] : {std::pair{"GALLIUM_NOOP", "1"},
                                      {"LIBGL_ALWAYS_SOFTWARE", "1"},
                                      {"GALLIUM_THREAD", "0"},
                                      {"LP_NUM_THREADS", "0"},
                                      {"SDL_VIDEODRIVER", "x11"}})
        setenv(name, value, 1);
    if (SDL_Init(SDL_INIT_VIDEO | SDL_INIT_NOPARACHUTE) != 0 ||
        SDL_SetVideoMode(800, 600, 24, SDL_OPENGL) == nullptr) {
        std::fprintf(stderr, "no window: %s; run this by scripts/bench\n", SDL_GetError());
        std::exit(2);
    }

    workInOwnDirectory();
    GLWidget::readConfig("gui.conf");
}

void loadScene(const std::string& layout)
{
    GLWidget::widgets.clear();
    GLWidget::topLevel.clear();
    write("my.gui", layout);
    GLWidget::loadLayout("my.gui");
}

void drawFrame()
{
    GLWidget::mouseMoved({400.0F, 300.0F});
    GLWidget::mouseButtons(false, false, false);
    GLWidget::updateAll(16);
    GLWidget::renderAll();
}
} // namespace tamor::bench

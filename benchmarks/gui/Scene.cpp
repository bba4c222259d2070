#include "benchmarks/gui/Scene.h"

#include "benchmarks/support/NoOpWindow.h"
#include "gui/GLWidget.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

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
    openNoOpWindow();
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

bool isSceneDrawn()
{
    return !feedbackOf(drawFrame).empty();
}
} // namespace tamor::bench

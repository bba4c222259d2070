/// \file
/// Shows what is written for the engine while it is being written: `tamor-view FILE`.
#include "platform/SDLInput.h"
#include "tools/CommandLine.h"
#include "tools/view/LayoutView.h"
#include "tools/view/ModelView.h"
#include "tools/view/PictureView.h"
#include "tools/view/Viewer.h"
#include "tools/view/VirtualDisplay.h"
#include "tools/view/Window.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

namespace
{
using namespace tamor;
using namespace tamor::view;

constexpr tools::Option options[] = {
    {"--size", "WIDTHxHEIGHT", "the window's size in pixels, otherwise 800x600"},
    {"--no-reload", "", "do not read the file again when it changes"},
    {"--screenshot", "FILE.png", "draw one frame, write it and end"},
    {"--help", "", "print this and end"},
    {"--version", "", "print the version and end"},
};

constexpr const char* usage = "Usage: tamor-view [--size WIDTHxHEIGHT] [--no-reload] "
                              "[--screenshot FILE.png] FILE\n";

constexpr const char* keys = R"(
FILE is a layout (.gui), a model (.ms3d, or the words teapot and cube) or a picture (.tga, .png).
It is read again whenever it or a file that it names changes.

Keys of all:  F1 what is told, F5 read again, Escape ends
Layouts:      F1 inspector (a click prints the widget's line), F2 outlines, F3 grid
Models:       drag turns, wheel + - zoom, space plays and pauses, comma and full stop step,
              w wireframe, b bones, n normals
Pictures:     wheel + - zoom, 0 fits, drag moves, r g b a one channel, c all
)";

constexpr tools::Tool tool = {"tamor-view", usage, "\n", options, keys, 2};

struct Size
{
    int width = 800;
    int height = 600;
};

bool readSize(Size& size, const std::string& text)
{
    constexpr int largest = 16384;
    int end = 0;
    const int fields = std::sscanf(text.c_str(), "%dx%d%n", &size.width, &size.height, &end);
    return fields == 2 && static_cast<std::size_t>(end) == text.size() && size.width > 0 &&
           size.height > 0 && size.width <= largest && size.height <= largest;
}

/// Goes to the directory of the file, since a file names others from where it is used.
void enterDirectoryOf(ViewRequest& request)
{
    if (!request.screenshot.empty())
        request.screenshot = std::filesystem::absolute(request.screenshot).string();
    const std::filesystem::path path(request.shownName);
    request.file = path.filename().string();
    std::error_code ignored;
    if (path.has_parent_path())
        std::filesystem::current_path(path.parent_path(), ignored);
}

/// What a name's ending says; all else is a layout.
std::unique_ptr<Subject> makeSubject(const ViewRequest& request)
{
    const std::string& file = request.file;
    if (file.ends_with(".ms3d") || request.shownName == "teapot" || request.shownName == "cube")
        return std::make_unique<ModelView>(file);
    if (file.ends_with(".tga") || file.ends_with(".png"))
        return std::make_unique<PictureView>(file);
    return std::make_unique<LayoutView>(file, request.shownName);
}

int show(ViewRequest request, const Size& size)
{
    std::unique_ptr<Subject> subject = makeSubject(request);
    if (!subject->isThere()) {
        std::cerr << "tamor-view: " << request.shownName << ": no such file\n";
        return EXIT_FAILURE;
    }
    const ObjectRef<Kernel> kernel = new Kernel;
    const ObjectRef<Wheel> wheel = new Wheel(kernel);
    const ObjectRef<EventCatcher> input = new SDLInput(kernel, false);
    const ObjectRef<EventCatcher> window =
        new Window(kernel, size.width, size.height, request.shownName + " - tamor-view");
    const ObjectRef<Viewer> viewer =
        new Viewer(kernel, wheel, std::move(subject), std::move(request));
    const bool hasOpened = kernel->run();
    const bool isShown = hasOpened && !viewer->hasFailed();
    collectAll();
    return isShown ? EXIT_SUCCESS : EXIT_FAILURE;
}
} // namespace

int main(int count, char** words)
{
    const tools::CommandLine line(options, count, words);
    if (const std::optional<int> status = answer(tool, line))
        return *status;
    if (line.operands().size() != 1)
        return refuse(tool,
                      line.operands().empty() ? "no file is named" : "more than one file is named");

    Size size;
    for (const std::string& text : line.values("--size"))
        if (!readSize(size, text))
            return refuse(tool, "'" + text + "' is no size; write it as 800x600");
    ViewRequest request;
    request.shownName = line.operands().front();
    request.reloads = !line.has("--no-reload");
    for (const std::string& file : line.values("--screenshot"))
        request.screenshot = file;

    VirtualDisplay display;
    if (!hasDisplay()) {
        const std::string reason = request.screenshot.empty()
                                       ? "there is no display: set DISPLAY, or take a --screenshot"
                                       : display.start(size.width, size.height);
        if (!reason.empty()) {
            std::cerr << "tamor-view: " << reason << '\n';
            return EXIT_FAILURE;
        }
    }
    enterDirectoryOf(request);
    return show(std::move(request), size);
}

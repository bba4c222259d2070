/// \file
/// A tour of the engine: a GUI over an island.
///
///     tamor-tour [--size WIDTHxHEIGHT] [--trip] [--pictures DIRECTORY] [--help] [--version]
///
/// W, A, S, D, space and left Control fly, dragging beside the panel looks round, Tab hides the
/// panel, Escape ends. When nothing is touched for half a minute a round trip begins, with `--trip`
/// at once. With `--pictures` ten pictures are drawn, written to DIRECTORY as PPM files, and that is
/// all.
#include "examples/tour/Pictures.h"
#include "examples/tour/Tour.h"
#include "platform/GLRender.h"
#include "platform/SDLInput.h"

#include <GL/gl.h>
#include <SDL.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace
{
using namespace tamor;

constexpr const char* usage =
    "Usage: tamor-tour [--size WIDTHxHEIGHT] [--trip] [--pictures DIRECTORY]\n";

constexpr const char* help = R"(
Shows what the Tamor engine can do: an island, the things on it and a panel over it.

  --size WIDTHxHEIGHT    the window's size in pixels, otherwise 1280x800
  --trip                 begin with the round trip
  --pictures DIRECTORY   write ten pictures there, as PPM files, and end
  --help                 print this and end
  --version              print the version and end
)";

struct Options
{
    int width = 1280;
    int height = 800;
    bool asksForHelp = false;
    bool asksForVersion = false;
    bool beginsTrip = false;
    std::string pictures; ///< a directory, empty for none
};

bool readOptions(const std::vector<std::string>& words, Options& options)
{
    for (std::size_t n = 0; n < words.size(); n++) {
        const bool hasValue = n + 1 < words.size();
        char rest = 0;
        if (words[n] == "--trip")
            options.beginsTrip = true;
        else if (words[n] == "--help")
            options.asksForHelp = true;
        else if (words[n] == "--version")
            options.asksForVersion = true;
        else if (words[n] == "--pictures" && hasValue)
            options.pictures = std::filesystem::absolute(words[++n]).string();
        else if (words[n] == "--size" && hasValue &&
                 std::sscanf(words[n + 1].c_str(), "%dx%d%c", &options.width, &options.height,
                             &rest) == 2 &&
                 options.width > 0 && options.height > 0)
            n++;
        else
            return false;
    }
    return true;
}

/// The engine's window in a size of our own.
class Window : public GLRender
{
public:
    Window(const ObjectRef<Kernel>& kernel, const Options& newOptions)
        : GLRender(kernel), options(newOptions)
    {}

    bool handleEvent(Event event) override
    {
        if (event.kind == EV_OPEN_WINDOW) {
            askForSmoothEdges();
            event.window.width = options.width;
            event.window.height = options.height;
            event.window.title = "Tamor Tour";
        }
        return GLRender::handleEvent(event);
    }

private:
    /// SDL takes such wishes once its video has started, which the engine does only if nobody has. A
    /// machine that does not grant them opens no window, so that is tried out here.
    void askForSmoothEdges() const
    {
        if (SDL_InitSubSystem(SDL_INIT_VIDEO | SDL_INIT_NOPARACHUTE) < 0)
            return; // which the engine then says
        SDL_GL_SetAttribute(SDL_GL_MULTISAMPLEBUFFERS, 1);
        SDL_GL_SetAttribute(SDL_GL_MULTISAMPLESAMPLES, 4);
        if (SDL_SetVideoMode(options.width, options.height, 0, SDL_OPENGL) != nullptr &&
            (!isDrawnByProcessor() || !options.pictures.empty()))
            return;
        SDL_QuitSubSystem(SDL_INIT_VIDEO); // and with it the wishes
    }

    /// Then smooth edges take twice the time; pictures have it.
    static bool isDrawnByProcessor()
    {
        const GLubyte* const name = glGetString(GL_RENDERER);
        const std::string renderer = name == nullptr ? "" : reinterpret_cast<const char*>(name);
        return renderer.find("llvmpipe") != std::string::npos ||
               renderer.find("softpipe") != std::string::npos;
    }

    Options options;
};

/// Layout, themes, models and scripts are beside the program that was built, and in a folder of their
/// own where it is installed.
void enterDirectory()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    std::filesystem::path data = program.parent_path() / "data";
    if (!std::filesystem::exists(data))
        data = program.parent_path() / TOUR_INSTALLED_DATA;
    std::filesystem::current_path(data, error);
    if (error)
        std::fprintf(stderr, "%s: %s\n", data.c_str(), error.message().c_str());
}
} // namespace

int main(int argumentCount, char** arguments)
{
    Options options;
    if (!readOptions({arguments + 1, arguments + argumentCount}, options)) {
        std::fputs(usage, stderr);
        return 2;
    }
    if (options.asksForHelp || options.asksForVersion) {
        std::printf("%s%s", options.asksForHelp ? usage : "tamor-tour " TOUR_VERSION "\n",
                    options.asksForHelp ? help : "");
        return 0;
    }
    enterDirectory();
    const ObjectRef<Kernel> kernel = new Kernel;
    const ObjectRef<EventCatcher> input = new SDLInput(kernel, false);
    const ObjectRef<EventCatcher> window = new Window(kernel, options);
    auto* const tour = new tour::Tour(kernel);
    const ObjectRef<EventCatcher> catcher = tour;
    if (options.beginsTrip)
        tour->beginTrip();
    if (!options.pictures.empty())
        new tour::Pictures(kernel, *tour, options.pictures);
    const bool hasRun = kernel->run();
    collectAll();
    return hasRun ? 0 : 1;
}

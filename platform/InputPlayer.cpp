#include "platform/InputPlayer.h"

#include "platform/internal/InputLines.h"

#include <SDL.h>

#include <fstream>
#include <iostream>
#include <string>
#include <utility>

namespace tamor
{
namespace
{
constexpr std::int32_t subscription = 1 << CLASS_RESOURCES | 1 << CLASS_WINDOW |
                                      1 << CLASS_GRAPHICS | 1 << CLASS_SETUP | 1 << CLASS_UPDATE |
                                      1 << CLASS_RENDER;
constexpr std::int32_t priority = 500;

constexpr const char* noRecording = "this is no recorded input";

/// Takes what the user does out of SDL's queue, which would be full of it soon.
void forgetRealInput()
{
    SDL_PumpEvents();
    SDL_Event event;
    while (SDL_PeepEvents(&event, 1, SDL_GETEVENT, SDL_KEYEVENTMASK | SDL_MOUSEEVENTMASK) > 0) {
    }
}
} // namespace

InputPlayer::InputPlayer(const ObjectRef<Kernel>& newKernel, std::string newPath)
    : kernel(newKernel), loop(new Kernel), path(std::move(newPath))
{
    loop->addCatcher(this, subscription, priority);
}

bool InputPlayer::run()
{
    // Catchers may ask their kernel for it.
    loop->timer = new Timer;
    kernel->timer = loop->timer;
    return loop->run();
}

bool InputPlayer::handleEvent(Event event)
{
    switch (event.kind) {
    case EV_LOAD_RESOURCES:
        return readFile() && kernel->handleEvent(event);
    case EV_UPDATE:
        return playFrame(event);
    case EV_RENDER:
        event.delta = delta;
        return kernel->handleEvent(event);
    case EV_RELEASE_RESOURCES:
        // It comes once for each of its two classes, and the kernel serves both at the first.
        loop->removeCatcher(this);
        return kernel->handleEvent(event);
    default:
        return kernel->handleEvent(event);
    }
}

/// Sends the input of the next frame, then the update. The recorded run ended in a frame without an
/// update: then this one ends there, too.
bool InputPlayer::playFrame(Event& event)
{
    forgetRealInput();
    Event input;
    while (nextLine < lines.size()) {
        readInput(lines[nextLine++], input);
        if (input.kind == EV_UPDATE) {
            delta = input.delta;
            event.delta = delta;
            return kernel->handleEvent(event);
        }
        if (!kernel->sendEvent(ObjectRef<EventCatcher>(), input))
            return false;
    }
    return false;
}

bool InputPlayer::readFile()
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::cerr << "Error reading input file '" << path << "'" << std::endl;
        return false;
    }
    const char* problem = nullptr;
    std::size_t number = 0;
    Event event;
    std::string line;
    while (problem == nullptr && std::getline(file, line)) {
        ++number;
        if (file.eof())
            problem = "the line is cut short";
        else if (number == 1)
            problem = line == recordingTitle ? nullptr : noRecording;
        else
            problem = readInput(lines.emplace_back(line), event);
    }
    if (number == 0) {
        number = 1;
        problem = noRecording;
    }
    if (problem == nullptr)
        return true;
    std::cerr << "Error reading input file '" << path << "', line " << std::to_string(number)
              << ": " << problem << std::endl;
    return false;
}
} // namespace tamor

#include "tools/view/Viewer.h"

#include "tools/view/PNGFile.h"
#include "tools/view/ReadingLimit.h"

#include <GL/gl.h>
#include <SDL.h>

#include <chrono>
#include <fstream>
#include <iostream>

namespace tamor::view
{
namespace
{
// The engine's loop has no limit of its own. The viewer waits this long in each frame, and less
// when a file changes.
constexpr std::chrono::milliseconds pause(8);
} // namespace

Viewer::Viewer(const ObjectRef<Kernel>& kernel, const ObjectRef<Wheel>& newWheel,
               std::unique_ptr<Subject> newSubject, ViewRequest newRequest)
    : EventCatcher(ObjectRef<EventCatcher>()),
      wheel(newWheel),
      subject(std::move(newSubject)),
      request(std::move(newRequest))
{
    const std::int32_t classes = 1 << CLASS_GRAPHICS | 1 << CLASS_UPDATE | 1 << CLASS_RENDER |
                                 1 << CLASS_MOUSE | 1 << CLASS_KEYBOARD;
    kernel->addCatcher(this, classes, 0);
}

bool Viewer::handleEvent(Event event)
{
    switch (event.kind) {
    case EV_LOAD_GRAPHICS_RESOURCES:
        return start();
    case EV_KEYBOARD:
        return takeKeys(event.keyboard);
    case EV_MOUSE:
        subject->takePointer(event.mouse);
        return true;
    case EV_UPDATE:
        update(event.delta);
        return true;
    case EV_RENDER:
        return draw();
    default:
        return true;
    }
}

bool Viewer::start()
{
    glClearColor(0.16F, 0.18F, 0.21F, 1.0F);
    const bool isRead = readSubject({});
    if (!request.screenshot.empty())
        subject->settle();
    failed = !isRead;
    return true;
}

bool Viewer::readSubject(const std::set<std::string>& changed)
{
    // What is not there the engine's readers wait for, or take for empty.
    if (!subject->isThere()) {
        std::cerr << "tamor-view: " << request.shownName << ": no such file" << std::endl;
        watchFiles();
        return false;
    }
    const auto before = std::chrono::steady_clock::now();
    std::string words;
    {
        const ReadingLimit limit(request.shownName);
        words = subject->read(changed);
    }
    const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - before);
    std::cout << request.shownName << ": read in " << time.count() << " ms: " << words << std::endl;
    watchFiles();
    return true;
}

void Viewer::watchFiles()
{
    if (request.reloads)
        watcher.watch(subject->files());
}

bool Viewer::takeKeys(const KeyboardState& keys)
{
    if (keys.pressed[SDLK_F5] != 0)
        readSubject({});
    subject->takeKeys(keys);
    return keys.held[SDLK_ESCAPE] == 0;
}

void Viewer::update(std::int32_t milliseconds)
{
    const std::set<std::string> changed = watcher.wait(pause);
    if (!changed.empty())
        readSubject(changed);
    if (const int notches = wheel->take())
        subject->takeWheel(notches);
    if (request.screenshot.empty())
        subject->update(milliseconds);
}

bool Viewer::draw()
{
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    subject->draw();
    overlay.clear();
    subject->decorate(overlay);
    overlay.draw();
    if (request.screenshot.empty())
        return true;
    if (failed)
        return false;

    const std::string fault = writePNG(pictureOfBackBuffer(), request.screenshot);
    if (!fault.empty()) {
        std::cerr << "tamor-view: " << request.screenshot << ": " << fault << std::endl;
        failed = true;
    }
    return false;
}
} // namespace tamor::view

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
    : wheel(newWheel),
      subject(std::move(newSubject)),
      request(std::move(newRequest)),
      findings(request.shownName)
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
    const auto before = std::chrono::steady_clock::now();
    awaited.insert(changed.begin(), changed.end());
    if (!checkSubject()) {
        watchFiles();
        return false;
    }
    std::string words;
    {
        const ReadingLimit limit(request.shownName);
        words = subject->read(awaited);
    }
    awaited.clear();
    const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - before);
    std::cout << request.shownName << ": read in " << time.count() << " ms: " << words << std::endl;
    watchFiles();
    return true;
}

/// What is not there the engine's readers wait for, or take for empty; what has errors may keep
/// them for ever.
/// \return whether the file can be read
bool Viewer::checkSubject()
{
    isMissing = !subject->isThere();
    if (isMissing) {
        std::cout << request.shownName << ": no such file" << std::endl;
        return false;
    }
    const std::optional<check::FileKind> kind = subject->kind();
    isHeldBack = false;
    if (!kind)
        return true;
    findings.check(request.file, *kind);
    findings.print();
    isHeldBack = findings.hasErrors() && !subject->isShownWithErrors();
    return !isHeldBack;
}

void Viewer::watchFiles()
{
    if (!request.reloads)
        return;
    std::set<std::filesystem::path> files = subject->files();
    files.merge(findings.files());
    watcher.watch(files);
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
    if (request.screenshot.empty()) {
        overlay.clear();
        subject->decorate(overlay);
        if (isMissing)
            overlay.addWindow(request.shownName, {{"no such file", Ink::ERROR}},
                              Corner::BOTTOM_LEFT);
        else if (isHeldBack)
            findings.decorate(overlay);
        overlay.draw();
        return true;
    }
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

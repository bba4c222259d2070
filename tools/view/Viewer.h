/// \file
/// The viewer as a catcher of the engine's events.
#pragma once

#include "tools/view/FileWatcher.h"
#include "tools/view/Findings.h"
#include "tools/view/Overlay.h"
#include "tools/view/Subject.h"
#include "tools/view/Window.h"

#include <memory>
#include <set>
#include <string>

namespace tamor::view
{
/// What the command line asks of the viewer.
struct ViewRequest
{
    std::string file;       ///< in the working directory
    std::string shownName;  ///< as the user wrote it
    std::string screenshot; ///< the file to write; empty to open a window to work with
    bool reloads = true;
};

/// Shows a subject: reads it when the window is open and when its files change, passes input on to
/// it, and draws it with what is to be told above it.
///
/// What the viewer has to say it writes to the standard output stream; the standard error stream is
/// the engine's.
class Viewer : public EventCatcher
{
public:
    Viewer(const ObjectRef<Kernel>& kernel, const ObjectRef<Wheel>& newWheel,
           std::unique_ptr<Subject> newSubject, ViewRequest newRequest);

    bool handleEvent(Event event) override;

    /// Whether what was asked for could not be shown or written.
    bool hasFailed() const { return failed; }

private:
    bool start();
    bool readSubject(const std::set<std::string>& changed);
    bool checkSubject();
    void watchFiles();
    bool takeKeys(const KeyboardState& keys);
    void update(std::int32_t milliseconds);
    bool draw();

    ObjectRef<Wheel> wheel;
    std::unique_ptr<Subject> subject;
    ViewRequest request;
    FileWatcher watcher;
    Findings findings;
    bool isMissing = false;
    bool isHeldBack = false; ///< the file has errors, and what is shown is older
    Overlay overlay;
    std::set<std::string> awaited; ///< files that have changed since the last reading
    bool failed = false;
};
} // namespace tamor::view

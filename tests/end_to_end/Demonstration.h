/// \file
/// The real demonstration, run on a display of its own and worked from outside: its pointer and its
/// keyboard through xdotool, its pixels and its frames through the X server.
///
/// The folder tests/end_to_end/ proves what a user meets. Its tests know the program by its window,
/// its error stream and its end, and nothing of its code.
#pragma once

#include "tests/support/ChildProcess.h"
#include "tests/support/Picture.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/VirtualDisplay.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tamor::test
{
/// A place in the window: pixels from its top left corner.
struct Place
{
    int x = 0;
    int y = 0;
};

/// The working directory of a run: a copy of the built one, which the test may spoil.
class WorkingDirectory
{
public:
    WorkingDirectory();

    std::string path() const { return directory.path().string(); }
    std::string read(const std::string& name) const;
    void write(const std::string& name, const std::string& text) const;
    void remove(const std::string& name) const;

private:
    TemporaryDirectory directory;
};

/// The program from its start to its end.
///
/// The operations that wait do so for at most half a minute, and until the program has ended.
class Demonstration
{
public:
    /// Starts the program, through `wrapper` if that is not empty, or another `program` with its
    /// arguments that opens the same window.
    explicit Demonstration(const WorkingDirectory& directory, std::vector<std::string> wrapper = {},
                           std::map<std::string, std::string> environment = {},
                           const std::vector<std::string>& program = {TAMOR_DEMO_PROGRAM});

    /// Runs `body` instead, in a copy of this process. The working directory is this process's.
    explicit Demonstration(const std::function<int()>& body);

    ~Demonstration();
    Demonstration(const Demonstration&) = delete;
    Demonstration& operator=(const Demonstration&) = delete;

    /// Waits until the window is there and has shown something. The pointer stands where no widget
    /// is. False if that did not happen.
    bool opens();

    /// Waits until the window has shown `count` new frames. Two are enough for any input to be
    /// read, four for it to be drawn and shown as well.
    bool waitForFrames(int count = 4);

    /// Waits until `condition` holds.
    bool shows(const std::function<bool()>& condition);

    /// Waits until the error stream holds `text`.
    bool prints(const std::string& text);

    Pixel pixel(Place place) const;
    Picture picture(Place corner, int width, int height) const;

    /// Moves the pointer, presses and lets go of its left button, each for so many frames.
    void moveTo(Place place, int frames = 4);
    void press(int frames = 4);
    void letGo();

    /// Moves, presses and lets go, each seen by the program; the last is shown as well.
    void click(Place place);

    /// Turns the wheel by one notch.
    void turnWheel(bool awayFromTheUser);

    /// Presses, moves in `steps` equal steps and lets go.
    void drag(Place from, Place to, int steps = 8);

    /// Presses and lets go of keys by the names that xdotool knows, such as "a", "Return".
    void holdKey(const std::string& key);
    void letGoOfKey(const std::string& key);
    void type(const std::string& key);

    /// Types the letters of `text`, each seen by the program.
    void typeAll(const std::string& text);

    /// Asks the window to close, as a window manager does.
    void closeWindow() const;

    /// The window's title and its corner on the screen.
    std::string title() const;
    Place corner() const;

    void signal(int number) const { process->signal(number); }
    bool isRunning() { return process->isRunning(); }
    ProcessEnd end(std::chrono::seconds limit = std::chrono::seconds(30))
    {
        return process->wait(limit);
    }
    std::string output() const { return process->output(); }
    std::string errors() const { return process->errors(); }
    pid_t id() const { return process->id(); }

private:
    struct Connection;

    void send(const std::vector<std::string>& words) const;
    void turnKey(const char* way, const std::string& key, int frames);
    bool findWindow();

    VirtualDisplay display;
    std::unique_ptr<Connection> connection;
    std::unique_ptr<ChildProcess> process;
};
} // namespace tamor::test

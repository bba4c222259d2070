#include "tests/end_to_end/Demonstration.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/Xdamage.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace tamor::test
{
WorkingDirectory::WorkingDirectory()
{
    std::filesystem::copy(TAMOR_DEMO_DATA, directory.path(),
                          std::filesystem::copy_options::recursive);
}

std::string WorkingDirectory::read(const std::string& name) const
{
    std::ostringstream text;
    text << std::ifstream(directory.path() / name, std::ios::binary).rdbuf();
    return text.str();
}

void WorkingDirectory::write(const std::string& name, const std::string& text) const
{
    directory.write(name, text);
}

void WorkingDirectory::remove(const std::string& name) const
{
    std::filesystem::remove(directory.path() / name);
}

/// What the test holds of the X server.
struct Demonstration::Connection
{
    explicit Connection(const std::string& name) : server(XOpenDisplay(name.c_str()))
    {
        // The window may be gone at any time, which is no reason to end the test.
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
        int errorBase = 0;
        XDamageQueryExtension(server, &damageEvents, &errorBase);
    }

    ~Connection() { XCloseDisplay(server); }

    std::string titleOf(Window any) const
    {
        char* name = nullptr;
        if (XFetchName(server, any, &name) == 0)
            return "";
        std::string result = name;
        XFree(name);
        return result;
    }

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    Display* server;
    Window window = 0;
    Damage damage = 0;
    int damageEvents = 0;
};

Demonstration::Demonstration(const WorkingDirectory& directory, std::vector<std::string> wrapper,
                             std::map<std::string, std::string> environment,
                             const std::vector<std::string>& program)
    : connection(std::make_unique<Connection>(display.name()))
{
    wrapper.insert(wrapper.end(), program.begin(), program.end());
    environment["DISPLAY"] = display.name();
    process = std::make_unique<ChildProcess>(wrapper, directory.path(), environment);
}

Demonstration::Demonstration(const std::function<int()>& body)
    : connection(std::make_unique<Connection>(display.name()))
{
    process = std::make_unique<ChildProcess>([this, body] {
        setenv("DISPLAY", display.name().c_str(), 1);
        return body();
    });
}

Demonstration::~Demonstration() = default;

bool Demonstration::opens()
{
    if (!shows([this] { return findWindow(); }))
        return false;
    connection->damage =
        XDamageCreate(connection->server, connection->window, XDamageReportNonEmpty);
    return waitForFrames();
}

bool Demonstration::findWindow()
{
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    if (XQueryTree(connection->server, DefaultRootWindow(connection->server), &root, &parent,
                   &children, &count) == 0)
        return false;
    for (unsigned int i = 0; i < count; i++) {
        // A program may open others while it tries out what there is; it names the one that stays.
        XWindowAttributes attributes{};
        XGetWindowAttributes(connection->server, children[i], &attributes);
        if (attributes.map_state == IsViewable && !connection->titleOf(children[i]).empty())
            connection->window = children[i];
    }
    XFree(children);
    return connection->window != 0;
}

bool Demonstration::waitForFrames(int count)
{
    // What has been shown until now does not count.
    XSync(connection->server, True);
    XDamageSubtract(connection->server, connection->damage, None, None);
    return shows([&] {
        XSync(connection->server, False);
        XEvent event;
        while (count > 0 && XCheckTypedEvent(connection->server,
                                             connection->damageEvents + XDamageNotify, &event)) {
            count--;
            XDamageSubtract(connection->server, connection->damage, None, None);
        }
        return count == 0;
    });
}

bool Demonstration::shows(const std::function<bool()>& condition)
{
    bool holds = false;
    becomesTrue([&] {
        holds = condition();
        return holds || !process->isRunning();
    });
    return holds;
}

bool Demonstration::prints(const std::string& text)
{
    return shows([&] { return errors().find(text) != std::string::npos; });
}

Picture Demonstration::picture(Place corner, int width, int height) const
{
    Picture result{width, height, {}};
    XImage* image =
        XGetImage(connection->server, connection->window, corner.x, corner.y,
                  static_cast<unsigned>(width), static_cast<unsigned>(height), AllPlanes, ZPixmap);
    if (image == nullptr)
        return {};
    for (int y = 0; y < height; y++) {
        for (int x = 0; x < width; x++) {
            const unsigned long value = XGetPixel(image, x, y);
            for (const int shift : {16, 8, 0})
                result.bytes.push_back(static_cast<std::uint8_t>(value >> shift));
        }
    }
    XDestroyImage(image);
    return result;
}

Pixel Demonstration::pixel(Place place) const
{
    const Picture one = picture(place, 1, 1);
    return one.bytes.empty() ? Pixel{} : one.at(0, 0);
}

void Demonstration::send(const std::vector<std::string>& words) const
{
    std::vector<std::string> arguments{"xdotool"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    ChildProcess tool(arguments, "", {{"DISPLAY", display.name()}});
    const ProcessEnd result = tool.wait();
    EXPECT_EQ(result.status, 0) << "xdotool " << words[0] << ": " << tool.errors();
}

void Demonstration::moveTo(Place place, int frames)
{
    send({"mousemove", "--window", std::to_string(connection->window), std::to_string(place.x),
          std::to_string(place.y)});
    waitForFrames(frames);
}

void Demonstration::press(int frames)
{
    send({"mousedown", "1"});
    waitForFrames(frames);
}

void Demonstration::letGo()
{
    send({"mouseup", "1"});
    waitForFrames();
}

void Demonstration::click(Place place)
{
    moveTo(place, 2);
    press(2);
    letGo();
}

void Demonstration::turnWheel(bool awayFromTheUser)
{
    send({"click", awayFromTheUser ? "4" : "5"});
    waitForFrames();
}

void Demonstration::drag(Place from, Place to, int steps)
{
    moveTo(from, 2);
    press(2);
    for (int i = 1; i <= steps; i++)
        moveTo({from.x + (to.x - from.x) * i / steps, from.y + (to.y - from.y) * i / steps}, 2);
    letGo();
}

void Demonstration::turnKey(const char* way, const std::string& key, int frames)
{
    send({way, key});
    waitForFrames(frames);
}

void Demonstration::holdKey(const std::string& key)
{
    turnKey("keydown", key, 4);
}

void Demonstration::letGoOfKey(const std::string& key)
{
    turnKey("keyup", key, 4);
}

void Demonstration::typeAll(const std::string& text)
{
    for (const char letter : text) {
        const std::string key = letter == ' ' ? "space" : std::string(1, letter);
        turnKey("keydown", key, 2);
        turnKey("keyup", key, 2);
    }
}

void Demonstration::type(const std::string& key)
{
    holdKey(key);
    letGoOfKey(key);
}

void Demonstration::closeWindow() const
{
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = connection->window;
    event.xclient.message_type = XInternAtom(connection->server, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] =
        static_cast<long>(XInternAtom(connection->server, "WM_DELETE_WINDOW", False));
    XSendEvent(connection->server, connection->window, False, NoEventMask, &event);
    XSync(connection->server, False);
}

std::string Demonstration::title() const
{
    return connection->titleOf(connection->window);
}

Place Demonstration::corner() const
{
    Place result;
    Window child = 0;
    XTranslateCoordinates(connection->server, connection->window,
                          DefaultRootWindow(connection->server), 0, 0, &result.x, &result.y,
                          &child);
    return result;
}
} // namespace tamor::test

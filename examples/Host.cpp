#include "examples/Host.h"

#include "examples/Screenshot.h"

#include <SDL.h>

#include <filesystem>

std::string takeScreenshotOption(std::vector<std::string>& words)
{
    if (words.size() < 2 || words[words.size() - 2] != "--screenshot")
        return "";
    std::string path = std::filesystem::absolute(words.back()).string();
    words.resize(words.size() - 2);
    return path;
}

bool goesOnAfterFrame(const std::string& screenshot)
{
    if (screenshot.empty())
        return true;
    writeScreenshot(screenshot);
    return false;
}

bool isNotEscape(const tamor::Event& event)
{
    return event.kind != tamor::EV_KEYBOARD || event.keyboard.held[SDLK_ESCAPE] == 0;
}

void fly(tamor::FPSCamera& camera, const tamor::Event& event)
{
    const auto isHeld = [&](int key) {
        return event.keyboard.held[static_cast<std::size_t>(key)] != 0;
    };
    if (event.kind == tamor::EV_UPDATE)
        camera.setFrameTime(static_cast<float>(event.delta));
    if (event.kind == tamor::EV_KEYBOARD)
        camera.move(isHeld('w'), isHeld('s'), isHeld(SDLK_SPACE), isHeld(SDLK_LCTRL), isHeld('a'),
                    isHeld('d'));
    if (event.kind == tamor::EV_MOUSE && event.mouse.left != 0)
        camera.look(static_cast<float>(event.mouse.dx), static_cast<float>(event.mouse.dy), 0.0F);
}

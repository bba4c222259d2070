#include "platform/GLee.h"

#include "examples/tour/Tour.h"

#include "examples/tour/Screen.h"

#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <iostream>

namespace tour
{
using namespace tamor;

namespace
{
constexpr double fieldOfView = 52.0; // degrees, from bottom to top
constexpr double nearPlane = 0.5;
constexpr double farPlane = 700.0;
constexpr std::int32_t idleBeforeTrip = 30000; // milliseconds
} // namespace

Tour::Tour(const ObjectRef<Kernel>& kernel)
{
    kernel->addCatcher(this,
                       1 << CLASS_GRAPHICS | 1 << CLASS_UPDATE | 1 << CLASS_RENDER |
                           1 << CLASS_MOUSE | 1 << CLASS_KEYBOARD,
                       0);
}

bool Tour::handleEvent(Event event)
{
    switch (event.kind) {
    case EV_LOAD_GRAPHICS_RESOURCES:
        load();
        return true;
    case EV_KEYBOARD:
        return takeKeys(event.keyboard);
    case EV_MOUSE:
        takePointer(event.mouse);
        return true;
    case EV_UPDATE:
        return update(event.delta);
    case EV_RENDER:
        drawScene();
        drawPanel();
        return true;
    default:
        return true;
    }
}

void Tour::load()
{
    if (!GLEE_ARB_vertex_buffer_object)
        std::cerr << "no buffers here: models are drawn from arrays" << std::endl;
    land.load();
    water.load();
    things.load();
    scripting.connect(things, land, flight, settings);
    scripting.load();
    beginAgain();
}

void Tour::beginAgain()
{
    panel.load(scripting.names());
    panel.isHidden = false;
    settings = Settings();
    made = settings.land;
    land.make(made);
    things.populate(land);
    scripting.stop();
    touch();
    flight.goTo({0.0F, 17.0F, 0.47F * land.size()}, 10.0F, 0.0F);
}

void Tour::lookAt(const std::string& kind, float distance, float rise, float aim)
{
    const Thing* const thing = things.first(kind);
    if (thing == nullptr)
        return;
    // From the south, over whatever is there.
    const Vector& place = thing->place;
    const float foot = things.footOf(*thing, land);
    const float from = std::max(land.heightAt(place.x, place.z + distance), 0.0F);
    const float height = std::max(foot, from) + rise;
    const float pitch = std::atan2(height - foot - aim, distance) * 57.29578F;
    flight.goTo({place.x - 0.25F * distance, height, place.z + distance}, pitch, 0.0F);
}

void Tour::touch()
{
    idle = 0;
    flight.endTrip();
}

bool Tour::takeKeys(const KeyboardState& keys)
{
    for (const std::uint8_t isHeld : keys.held)
        if (isHeld != 0) {
            touch();
            break;
        }
    // What is typed flies nobody anywhere, and Escape ends the typing and not the tour.
    if (panel.takeKeys(keys))
        return true;
    if (keys.pressed[SDLK_TAB] != 0)
        panel.isHidden = !panel.isHidden;
    flight.takeKeys(keys);
    return keys.pressed[SDLK_ESCAPE] == 0;
}

void Tour::takePointer(const MouseState& mouse)
{
    const bool wasDown = isDown;
    isDown = mouse.left != 0;
    if (isDown && !wasDown)
        touch(); // letting go of the button that begins the trip must not end it
    // A drag belongs to whom it began on.
    if (isDown && !wasDown)
        looksRound = !panel.isUnder(mouse);
    panel.takePointer(mouse);
    if (isDown && looksRound)
        flight.takePointer(mouse);
}

bool Tour::update(std::int32_t milliseconds)
{
    const auto time = static_cast<float>(milliseconds);
    const Panel::Presses presses = panel.update(milliseconds, settings);
    if (presses.leave)
        return false;
    if (presses.another)
        settings.land.seed++;
    if (presses.reset)
        beginAgain();
    if (presses.trip)
        flight.beginTrip();
    if (presses.stop)
        scripting.stop();
    const int chosen = panel.takeChosenScript();
    if (chosen >= 0)
        panel.showScript(scripting.text(chosen));
    if (presses.run)
        panel.tell(scripting.run(panel.scriptText()));
    const std::string words = scripting.update(time);
    if (!words.empty())
        panel.tell(words);

    // A landscape takes longer than a frame: it is made when the slider is let go.
    if (settings.land != made && !isDown) {
        made = settings.land;
        land.make(made);
        scripting.stop();
        things.populate(land);
    }
    idle += milliseconds;
    if (idle > idleBeforeTrip && !flight.isOnTrip())
        flight.beginTrip();
    seconds += time / 1000.0F;
    flight.update(time, land);
    panel.show(settings, things.all.size());
    return true;
}

void Tour::drawScene()
{
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(fieldOfView, static_cast<double>(viewport[2]) / viewport[3], nearPlane,
                   farPlane);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    setUpForScene();

    // The sky is behind everything and takes no part in light, fog and depth.
    sky.setHour(settings.hour);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glDisable(GL_FOG);
    flight.applyTurn();
    sky.draw();
    setUpForScene();

    glLoadIdentity();
    carryLantern();
    flight.apply();
    sky.shine(settings.fog);
    if (settings.showsWires)
        glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    setMaterial({1.0F, 1.0F, 1.0F});
    land.draw(settings.way);
    things.draw(settings, land, seconds);
    water.draw(sky, flight.eye(), seconds, settings.usesWaves);
}

/// A warm light at the eye, by night: the matrix is none yet.
void Tour::carryLantern() const
{
    if (!settings.hasLantern || sky.night == 0.0F) {
        glDisable(lantern.number);
        return;
    }
    glEnable(lantern.number);
    lantern.setPosition({0.0F, 0.0F, 0.0F}, true);
    lantern.setDiffuse(Vector(1.0F, 0.78F, 0.48F) * (1.3F * sky.night));
    lantern.setAttenuation(1.0F, 0.02F, 0.0018F);
}

void Tour::drawPanel()
{
    panel.draw();
}
} // namespace tour

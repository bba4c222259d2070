#include "examples/tour/Flight.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tour
{
using namespace tamor;

namespace
{
constexpr float unitsAMillisecond = 0.02F;
constexpr float degreesAPixel = 0.25F;
constexpr float clearance = 2.0F; // above ground and sea
constexpr float secondsAStop = 5.0F;
constexpr float degreesARadian = 180.0F / std::numbers::pi_v<float>;

/// A place on the trip, in half sizes of the island, with the height above what is below it; and
/// where the camera looks from there.
struct Stop
{
    float x;
    float z;
    float rise;
    float lookX;
    float lookZ;
};

constexpr std::array stops = {
    Stop{0.05F, 0.95F, 16.0F, 0.0F, 0.0F},   Stop{0.55F, 0.72F, 9.0F, 0.0F, 0.1F},
    Stop{0.72F, 0.15F, 12.0F, 0.1F, 0.0F},   Stop{0.38F, -0.28F, 10.0F, -0.3F, 0.1F},
    Stop{-0.08F, -0.62F, 22.0F, 0.0F, 0.1F}, Stop{-0.62F, -0.55F, 14.0F, 0.1F, 0.0F},
    Stop{-0.60F, 0.10F, 8.0F, 0.0F, 0.15F},  Stop{-0.42F, 0.72F, 7.0F, 0.1F, 0.1F},
};

/// The smooth curve through four values, from `b` at t = 0 to `c` at t = 1.
float through(float a, float b, float c, float d, float t)
{
    return b + 0.5F * t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a)));
}

bool isHeld(const KeyboardState& keys, int key)
{
    return keys.held[static_cast<std::size_t>(key)] != 0;
}
} // namespace

Flight::Flight()
{
    camera.reset(unitsAMillisecond, degreesAPixel);
}

void Flight::takeKeys(const KeyboardState& keys)
{
    camera.move(isHeld(keys, 'w'), isHeld(keys, 's'), isHeld(keys, SDLK_SPACE),
                isHeld(keys, SDLK_LCTRL), isHeld(keys, 'a'), isHeld(keys, 'd'));
}

void Flight::takePointer(const MouseState& mouse)
{
    camera.look(static_cast<float>(mouse.dx), static_cast<float>(mouse.dy), 0.0F);
}

void Flight::update(float milliseconds, const Landscape& land)
{
    camera.setFrameTime(milliseconds);
    if (isOnTrip()) {
        tripSeconds += milliseconds / 1000.0F;
        followTrip(land);
    }
    Vector& place = camera.position;
    place.y = std::max(place.y, std::max(land.heightAt(place.x, place.z), 0.0F) + clearance);
}

void Flight::goTo(const Vector& place, float pitch, float yaw)
{
    camera.position = place;
    camera.rotation = {pitch, yaw, 0.0F};
}

void Flight::lookFrom(const Vector& place)
{
    // `FPSCamera::lookAt` drops the sign of the smaller part, so the angles are worked out here.
    goTo(place, std::atan2(place.y, std::hypot(place.x, place.z)) * degreesARadian,
         std::atan2(-place.x, place.z) * degreesARadian);
}

void Flight::applyTurn()
{
    const Vector place = camera.position;
    camera.position = Vector();
    camera.apply();
    camera.position = place;
}

void Flight::followTrip(const Landscape& land)
{
    const float along = std::fmod(tripSeconds / secondsAStop, static_cast<float>(stops.size()));
    const auto first = static_cast<std::size_t>(along);
    const float t = along - static_cast<float>(first);
    const auto value = [&](float Stop::*field) {
        const auto at = [&](std::size_t n) { return stops[(first + n) % stops.size()].*field; };
        return through(at(stops.size() - 1), at(0), at(1), at(2), t);
    };
    const float half = land.size() / 2.0F;
    const Vector place(half * value(&Stop::x), 0.0F, half * value(&Stop::z));
    // Of the ground round about, so that the flight is smooth.
    float ground = 0.0F;
    for (const float dx : {-12.0F, 0.0F, 12.0F})
        for (const float dz : {-12.0F, 0.0F, 12.0F})
            ground += std::max(land.heightAt(place.x + dx, place.z + dz), 0.0F) / 9.0F;
    const float height = ground + value(&Stop::rise);

    const float dx = half * value(&Stop::lookX) - place.x;
    const float dz = half * value(&Stop::lookZ) - place.z;
    const float pitch = std::atan2(0.8F * height - 3.0F, std::hypot(dx, dz)) * degreesARadian;
    goTo({place.x, height, place.z}, pitch, std::atan2(dx, -dz) * degreesARadian);
}
} // namespace tour

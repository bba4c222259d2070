#include "platform/GLee.h"

#include "examples/tour/Sky.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tour
{
using namespace tamor;

namespace
{
constexpr float pi = std::numbers::pi_v<float>;
constexpr float radius = 500.0F; // of the dome, within the far plane

/// What is seen at an hour; between two, the colours between.
struct Moment
{
    float hour;
    Vector zenith;
    Vector horizon;
    Vector sunlight;
    Vector ambient;
};

const Vector nightZenith(0.02F, 0.03F, 0.09F);
const Vector nightHorizon(0.08F, 0.11F, 0.20F);
const Vector moonlight(0.26F, 0.31F, 0.44F);
const Vector nightAmbient(0.13F, 0.15F, 0.24F);

const std::array moments = {
    Moment{0.0F, nightZenith, nightHorizon, moonlight, nightAmbient},
    Moment{4.6F, nightZenith, nightHorizon, moonlight, nightAmbient},
    Moment{6.3F,
           {0.20F, 0.27F, 0.50F},
           {0.93F, 0.63F, 0.46F},
           {0.86F, 0.50F, 0.30F},
           {0.28F, 0.27F, 0.34F}},
    Moment{8.0F,
           {0.20F, 0.43F, 0.76F},
           {0.80F, 0.85F, 0.87F},
           {0.92F, 0.82F, 0.64F},
           {0.33F, 0.35F, 0.40F}},
    Moment{12.0F,
           {0.15F, 0.40F, 0.80F},
           {0.73F, 0.84F, 0.92F},
           {0.92F, 0.89F, 0.82F},
           {0.35F, 0.38F, 0.42F}},
    Moment{15.8F,
           {0.18F, 0.40F, 0.74F},
           {0.82F, 0.84F, 0.84F},
           {0.94F, 0.82F, 0.60F},
           {0.33F, 0.35F, 0.40F}},
    Moment{17.8F,
           {0.22F, 0.24F, 0.46F},
           {0.96F, 0.55F, 0.34F},
           {0.92F, 0.46F, 0.24F},
           {0.28F, 0.25F, 0.32F}},
    Moment{19.8F, nightZenith, nightHorizon, moonlight, nightAmbient},
    Moment{24.0F, nightZenith, nightHorizon, moonlight, nightAmbient},
};

template <class Value>
Value mix(const Value& a, const Value& b, float t)
{
    return a * (1.0F - t) + b * t;
}

float dot(const Vector& a, const Vector& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// A direction: degrees above the horizon, and round.
Vector direction(float elevation, float azimuth)
{
    const float e = elevation * pi / 180.0F;
    const float a = azimuth * pi / 180.0F;
    return {std::cos(e) * std::cos(a), std::sin(e), std::cos(e) * std::sin(a)};
}

/// A round glow on the dome, brightest in its middle, added to what is there.
void drawGlow(const Vector& towards, float size, const Vector& colour, float strength)
{
    Vector side = towards.cross(Vector(0.0F, 1.0F, 0.0F));
    side.normalise();
    const Vector up = side.cross(towards);
    glBegin(GL_TRIANGLE_FAN);
    glColor4f(colour.x, colour.y, colour.z, strength);
    const Vector middle = towards * radius;
    glVertex3f(middle.x, middle.y, middle.z);
    glColor4f(colour.x, colour.y, colour.z, 0.0F);
    for (int corner = 0; corner <= 32; corner++) {
        const float angle = 2.0F * pi * static_cast<float>(corner) / 32.0F;
        const Vector edge =
            middle + (side * std::cos(angle) + up * std::sin(angle)) * (size * radius);
        glVertex3f(edge.x, edge.y, edge.z);
    }
    glEnd();
}

void drawStars(float strength)
{
    glPointSize(2.0F);
    glBegin(GL_POINTS);
    for (int star = 1; star <= 420; star++) {
        const auto n = static_cast<float>(star);
        // Spread without a pattern that the eye would find.
        const float share = std::fmod(n * 0.618034F, 1.0F);
        const Vector place =
            direction(4.0F + 84.0F * std::fmod(n * 0.754878F, 1.0F), 360.0F * share) * radius;
        glColor4f(0.9F, 0.93F, 1.0F, strength * (0.2F + 0.8F * std::fmod(n * 0.3819F, 1.0F)));
        glVertex3f(place.x, place.y, place.z);
    }
    glEnd();
}
} // namespace

void Sky::setHour(float hour)
{
    std::size_t next = 1;
    while (next + 1 < moments.size() && hour > moments[next].hour)
        next++;
    const Moment& from = moments[next - 1];
    const Moment& to = moments[next];
    const float t = std::clamp((hour - from.hour) / (to.hour - from.hour), 0.0F, 1.0F);
    zenith = mix(from.zenith, to.zenith, t);
    horizon = mix(from.horizon, to.horizon, t);
    sunlight = mix(from.sunlight, to.sunlight, t);
    ambient = mix(from.ambient, to.ambient, t);

    // The sun rises in the east at six; the moon goes the opposite way.
    const float angle = (hour - 6.0F) / 12.0F * pi;
    Vector towards(std::cos(angle), std::sin(angle), -0.45F);
    if (towards.y < -0.02F)
        towards = Vector(-towards.x, -towards.y, -0.45F);
    towards.normalise();
    towardsLight = towards;
    // Faint where sun and moon take turns, so that shadows do not jump.
    sunlight = sunlight * std::clamp(0.1F + 6.0F * towards.y, 0.0F, 1.0F);
    night = std::clamp(1.0F - (zenith.z - nightZenith.z) / 0.35F, 0.0F, 1.0F);
}

void Sky::draw() const
{
    constexpr int segments = 36;
    constexpr std::array elevations = {-90.0F, -20.0F, 0.0F,  4.0F,  10.0F,
                                       18.0F,  30.0F,  48.0F, 70.0F, 90.0F};
    const auto corner = [&](float elevation, int segment) {
        const Vector place = direction(elevation, 360.0F * static_cast<float>(segment) / segments);
        const float rise = std::pow(std::max(place.y, 0.0F), 0.6F);
        const float warmth = std::pow(std::max(dot(place, towardsLight), 0.0F), 8.0F);
        const Vector colour =
            mix(horizon, zenith, rise) + sunlight * (0.22F * warmth * (1.0F - night));
        glColor3f(colour.x, colour.y, colour.z);
        glVertex3f(place.x * radius, place.y * radius, place.z * radius);
    };
    for (std::size_t ring = 0; ring + 1 < elevations.size(); ring++) {
        glBegin(GL_TRIANGLE_STRIP);
        for (int segment = 0; segment <= segments; segment++) {
            corner(elevations[ring], segment);
            corner(elevations[ring + 1], segment);
        }
        glEnd();
    }

    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    if (night > 0.0F)
        drawStars(night);
    const Vector disc = mix(sunlight * 1.2F, Vector(0.85F, 0.88F, 0.95F), night);
    drawGlow(towardsLight, mix(0.26F, 0.15F, night), sunlight, 0.38F);
    drawGlow(towardsLight, mix(0.055F, 0.042F, night), disc, 1.0F);
    drawGlow(towardsLight, mix(0.042F, 0.036F, night), disc, 1.0F);
    glDisable(GL_BLEND);
}

void Sky::shine(float density) const
{
    light.setPosition(towardsLight, false);
    light.setDiffuse(sunlight);
    light.setSpecular(sunlight * 0.6F);
    light.setAmbient(ambient);
    glEnable(light.number);
    glFogi(GL_FOG_MODE, GL_LINEAR);
    glFogf(GL_FOG_START, 90.0F * (1.0F - density));
    glFogf(GL_FOG_END, 160.0F + 440.0F * (1.0F - density));
    glFogfv(GL_FOG_COLOR, horizon.toArray());
}
} // namespace tour

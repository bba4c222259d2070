#include "examples/tour/Pictures.h"

#include "examples/Screenshot.h"

#include <array>

namespace tour
{
using namespace tamor;

namespace
{
enum Page : std::int32_t
{
    LAND,
    THINGS,
    LIGHT,
    SCRIPT
};

/// A picture: its name, and what is done to the tour as it is at first.
struct Scene
{
    const char* name;
    void (*prepare)(Tour& tour);
};

void runScript(Tour& tour, const std::string& name)
{
    const std::vector<std::string> names = tour.scripting.names();
    for (std::size_t n = 0; n < names.size(); n++) {
        if (names[n] != name)
            continue;
        const std::string text = tour.scripting.text(static_cast<int>(n));
        tour.panel.choose("samples", static_cast<std::uint32_t>(n));
        tour.scripting.run(text);
    }
    tour.panel.turnTo(SCRIPT);
}

const std::array scenes = {
    Scene{"01-morning", [](Tour&) {}},
    Scene{"02-noise",
          [](Tour& tour) {
              tour.panel.choose("source", 1);
              tour.flight.goTo({62.0F, 21.0F, 76.0F}, 13.0F, -38.0F);
          }},
    Scene{"03-picture",
          [](Tour& tour) {
              tour.panel.choose("source", 2);
              tour.flight.goTo({66.0F, 44.0F, 112.0F}, 20.0F, -36.0F);
          }},
    Scene{"04-things",
          [](Tour& tour) {
              tour.panel.turnTo(THINGS);
              tour.lookAt("windmill", 24.0F, 7.0F, 6.0F);
          }},
    Scene{"05-toon",
          [](Tour& tour) {
              tour.panel.turnTo(THINGS);
              tour.panel.tick("toon");
              tour.lookAt("teapot", 12.0F, 4.0F, 3.0F);
          }},
    Scene{"06-wires",
          [](Tour& tour) {
              tour.panel.turnTo(THINGS);
              for (const char* box : {"wires", "bones", "bounds"})
                  tour.panel.tick(box);
              tour.lookAt("fish", 9.0F, 1.0F, 0.5F);
          }},
    Scene{"07-evening",
          [](Tour& tour) {
              tour.panel.turnTo(LIGHT);
              tour.settings.hour = 17.4F;
              tour.flight.goTo({70.0F, 9.0F, 74.0F}, 2.0F, -62.0F);
          }},
    Scene{"08-night",
          [](Tour& tour) {
              tour.panel.turnTo(LIGHT);
              tour.settings.hour = 22.5F;
              tour.lookAt("tower", 30.0F, 5.0F, 7.0F);
          }},
    Scene{"09-script", [](Tour& tour) { runScript(tour, "wood"); }},
    Scene{"10-trip",
          [](Tour& tour) {
              tour.panel.isHidden = true;
              tour.flight.beginTrip();
              tour.flight.update(27500.0F, tour.land);
          }},
};
} // namespace

Pictures::Pictures(const ObjectRef<Kernel>& kernel, Tour& newTour, std::string newDirectory)
    : tour(newTour), directory(std::move(newDirectory))
{
    kernel->addCatcher(this, 1 << CLASS_RENDER, 0); // behind the tour, which has drawn
}

bool Pictures::handleEvent(Event event)
{
    if (event.kind != EV_RENDER)
        return true;
    // What is prepared is seen in the next frame.
    if (next > 0)
        writeScreenshot(directory + "/" + scenes[next - 1].name + ".ppm");
    if (next == scenes.size())
        return false;
    tour.beginAgain();
    tour.seconds = 10.0F;
    scenes[next++].prepare(tour);
    return true;
}
} // namespace tour

/// \file
/// The host: a catcher that gives events to the parts of the tour, and draws them one over the other.
#pragma once

#include "examples/tour/Flight.h"
#include "examples/tour/Landscape.h"
#include "examples/tour/Panel.h"
#include "examples/tour/Scripting.h"
#include "examples/tour/Settings.h"
#include "examples/tour/Sky.h"
#include "examples/tour/Things.h"
#include "examples/tour/Water.h"
#include "kernel/Kernel.h"

namespace tour
{
class Tour : public tamor::EventCatcher
{
public:
    explicit Tour(const tamor::ObjectRef<tamor::Kernel>& kernel);

    bool handleEvent(tamor::Event event) override;

    /// Loads everything; the window must be open.
    void load();

    /// Begins the trip now, not when nothing was touched for a while.
    void beginTrip() { flight.beginTrip(); }

    /// Makes everything as it is at first, the panel too.
    void beginAgain();

    /// Has the camera look at the first thing of a kind, `aim` above its foot.
    void lookAt(const std::string& kind, float distance, float rise, float aim);

    void drawScene();
    void drawPanel();

    Settings settings;
    Flight flight;
    Panel panel;
    Landscape land;
    Sky sky;
    Water water;
    Things things;
    Scripting scripting;
    float seconds = 0.0F; ///< since the start: the clock of waves and bones

private:
    bool takeKeys(const tamor::KeyboardState& keys);
    void takePointer(const tamor::MouseState& mouse);
    bool update(std::int32_t milliseconds);
    void touch();
    void carryLantern() const;

    tamor::Light lantern;
    LandSettings made;       ///< of the landscape that is there
    bool isDown = false;     ///< the left button
    bool looksRound = false; ///< since it went down beside the panel
    std::int32_t idle = 0;   ///< milliseconds since something was touched
};
} // namespace tour

/// \file
/// A model that can be drawn in each of the engine's ways, as often as a scene needs it.
#pragma once

#include "examples/tour/Settings.h"
#include "models/Model.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace tour
{
/// Takes the engine's one set of buffer names, which it gives to the first model of a process, out
/// of the way: every `Drawable` has its own. To be called once, when the window is open.
void takeFirstBuffers();

/// A model with buffers of its own, which it gives back. It leaves the matrix as it was, no client
/// array enabled and no buffer bound.
class Drawable
{
public:
    Drawable() = default;
    ~Drawable();
    Drawable(const Drawable&) = delete;
    Drawable& operator=(const Drawable&) = delete;

    /// Takes a model in place of the one before. Call `changed` when its vertices or faces change.
    void take(std::unique_ptr<tamor::Model> newModel);
    void changed() { isFilled = false; }

    /// Sets the pose of a model with bones; one without stays as it is.
    /// \param frame  0 or more; the animation begins again behind its end
    void pose(float frame);

    /// Draws it. After `Way::immediate` lighting is on again, as before.
    void draw(Way way);

    tamor::Model& model() { return *owned; }
    const tamor::Model& model() const { return *owned; }

private:
    void drawArrays();
    void drawBuffers();

    std::unique_ptr<tamor::Model> owned = std::make_unique<tamor::Model>();
    std::vector<std::uint32_t> corners; ///< for `Way::arrays`: three vertices a face
    bool isFilled = false;              ///< the buffers hold what the model has
};
} // namespace tour

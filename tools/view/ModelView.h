/// \file
/// A model to look at from all sides, with its animation, its bones and its numbers.
#pragma once

#include "maths/Light.h"
#include "models/Model.h"
#include "tools/view/Subject.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tamor::view
{
/// A model as the engine draws it.
class ModelView : public Subject
{
public:
    /// \param newName  a file of the working directory, "teapot" or "cube"
    explicit ModelView(std::string newName);
    ~ModelView() override;

    bool isThere() const override;
    std::optional<check::FileKind> kind() const override;
    std::string read(const std::set<std::string>& changed) override;
    std::set<std::filesystem::path> files() const override;

    void takeKeys(const KeyboardState& keys) override;
    void takePointer(const MouseState& pointer) override;
    void takeWheel(int notches) override;
    void update(std::int32_t milliseconds) override;
    void settle() override {}
    void draw() override;
    void decorate(Overlay& overlay) override;

private:
    void measure();
    void lookAt() const;
    void setLights();
    void drawSurface();
    void drawNormals() const;
    void drawBones() const;
    void step(float frames);

    std::string name;
    std::unique_ptr<Model> model;
    Light light;
    Light fill;
    Vector low;  ///< the smallest coordinates of the vertices at rest
    Vector high; ///< the largest
    float yaw = -0.45F;
    float pitch = 0.3F; ///< both in radians
    float distance = 1.0F;
    float time = 0.0F; ///< in frames of the animation
    bool isPlaying = true;
    bool isWireframe = false;
    bool hasBones = false;
    bool hasNormals = false;
    bool isTold = true;
    bool wasLeft = false;
};
} // namespace tamor::view

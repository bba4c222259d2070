/// \file
/// The widgets of this folder's layout, as far as Guichan has them.
#pragma once

#include <memory>

namespace tamor::bench
{
/// A Guichan GUI that draws with OpenGL, with a set of widgets like `layoutOf`'s.
class GuichanScene
{
public:
    /// \param count  of widgets, a multiple of 20
    explicit GuichanScene(int count);
    ~GuichanScene();
    GuichanScene(const GuichanScene&) = delete;
    GuichanScene& operator=(const GuichanScene&) = delete;

    /// Lets the widgets act and draws them.
    void drawFrame();

private:
    struct Parts;
    std::unique_ptr<Parts> parts;
};
} // namespace tamor::bench

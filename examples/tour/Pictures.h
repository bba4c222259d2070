/// \file
/// Ten pictures of the tour, the same in every run.
#pragma once

#include "examples/tour/Tour.h"

#include <cstddef>
#include <string>

namespace tour
{
/// Draws a picture a frame over what the tour has drawn, writes it, and ends the program.
class Pictures : public tamor::EventCatcher
{
public:
    Pictures(const tamor::ObjectRef<tamor::Kernel>& kernel, Tour& newTour,
             std::string newDirectory);

    bool handleEvent(tamor::Event event) override;

private:
    Tour& tour;
    std::string directory;
    std::size_t next = 0;
};
} // namespace tour

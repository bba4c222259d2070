/// \file
/// The real viewer, in a window on a display of its own or as a program that draws and ends.
#pragma once

#include "tests/end_to_end/Demonstration.h"

#include <map>
#include <string>
#include <vector>

namespace tamor::test
{
/// The viewer at work on a file of the test's directory, which is this process's.
class View : public Demonstration
{
public:
    explicit View(const std::vector<std::string>& arguments);

    /// Waits for the window, and moves the pointer to `place`, by a step that it is seen by.
    bool opensWithPointerAt(Place place);

    /// Waits until the standard output stream holds `text`, and for the next frames.
    bool says(const std::string& text);

    /// Waits until the standard output stream holds so many lines with `text`.
    bool saysTimes(const std::string& text, int count);

    /// Waits until all animation has ended: until the picture stays as it is.
    void rest();

    /// All of the window.
    Picture whole() const { return picture({0, 0}, 800, 600); }
};

/// What a run of the viewer came to.
struct ViewRun
{
    int status = -1;
    std::string output;
    std::string errors;
};

/// Runs the viewer to its end, with `environment` added to what this process has.
ViewRun runView(const std::vector<std::string>& arguments,
                const std::map<std::string, std::string>& environment = {});

} // namespace tamor::test

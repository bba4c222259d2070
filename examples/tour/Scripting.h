/// \file
/// Scripts that make and move things: the words that the tour gives the language.
#pragma once

#include "script/ScriptInterpreter.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tour
{
class Flight;
class Landscape;
class Things;
struct Settings;

/// | Word | What it does |
/// |---|---|
/// | `spawn(kind, x, z)` | Adds a thing on the ground, a fish above it; gives its number, or -1. |
/// | `move(thing, distance)` | Moves it the way that it looks. |
/// | `turn(thing, degrees)` | Turns it to its left. |
/// | `colour(thing, red, green, blue)` | Each from 0 to 1. |
/// | `camera(x, y, z)` | Goes there, and looks at the middle of the island. |
/// | `hour(hours)` | Makes it that hour, and gives the one that it was. |
/// | `ground(x, z)` | The height of the ground. |
/// | `random(from, to)` | A number between the two. |
/// | `after(seconds, name)` | Calls the function of that name when the time has passed. |
class Scripting
{
public:
    /// What the words work on. It must outlive the scripts.
    void connect(Things& newThings, const Landscape& newLand, Flight& newFlight,
                 Settings& newSettings);

    /// Takes all scripts of the directory "scripts", in the order of their names.
    void load();

    std::vector<std::string> names() const;

    /// The text of a script, or an empty one.
    std::string text(int index) const;

    /// Ends what still waits, and runs a text in an interpreter of its own, unless the checker knows
    /// an error in it.
    /// \return what there is to say of it in a line
    std::string run(const std::string& newText);

    /// Ends what still waits.
    void stop();

    /// Calls what was to be called by now.
    /// \return as `run`, empty if there is nothing to say
    std::string update(float milliseconds);

private:
    friend struct Words;

    struct Later
    {
        float seconds; ///< still to wait
        std::string function;
    };

    std::string runText(const std::string& text);

    Things* things = nullptr;
    const Landscape* land = nullptr;
    Flight* flight = nullptr;
    Settings* settings = nullptr;
    std::vector<std::pair<std::string, std::string>> scripts; ///< name and text
    std::unique_ptr<tamor::ScriptInterpreter> interpreter;
    std::vector<Later> waiting;
    unsigned random = 7;
};
} // namespace tour

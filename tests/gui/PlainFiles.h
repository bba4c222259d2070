/// \file
/// Second readers of themes and configurations, as plain as the formats' rules, to compare the
/// engine's with.
#pragma once

#include "gui/Theme.h"
#include "maths/Vector.h"

#include <array>
#include <string>

namespace tamor::test
{
/// Reads a theme file of these bytes, and loads no texture.
/// \param path  as it is printed
/// \return what is printed
std::string readThemePlainly(Theme& theme, const std::string& bytes, const std::string& path);

/// What a configuration sets.
struct PlainConfig
{
    /// Of the option's frame and mark, the check's frame and mark, and the slider's knob.
    std::array<Vector, 5> rectangles;
    float glowRate = 0.0F;
    std::string fontFile;
};

/// Reads a configuration of these bytes, and loads no font.
void readConfigPlainly(PlainConfig& config, const std::string& bytes);

/// What differs first between two themes, but for the texture, or "".
std::string difference(const Theme& a, const Theme& b);
} // namespace tamor::test

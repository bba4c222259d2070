/// \file
/// Models made of cones and tubes: a tree, a tower, a windmill whose sails turn on a bone.
#pragma once

#include "models/Model.h"

#include <cstdint>
#include <memory>

namespace tour
{
/// Makes the texture that all shapes share, a column for each of their colours.
std::uint32_t makePalette();

std::unique_ptr<tamor::Model> makeTree(std::uint32_t palette);
std::unique_ptr<tamor::Model> makeTower(std::uint32_t palette);
std::unique_ptr<tamor::Model> makeWindmill(std::uint32_t palette);
} // namespace tour

/// \file
/// Lines that show what is behind a model.
#pragma once

#include "models/Model.h"

namespace tour
{
/// Draws the bones as they are posed, over what hides them: a line from each to its parent, and a
/// point at each.
void drawBones(const tamor::Model& model);

/// Draws the edges of a box.
void drawBounds(const tamor::Vector& low, const tamor::Vector& high);
} // namespace tour

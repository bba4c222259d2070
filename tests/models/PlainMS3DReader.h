/// \file
/// A second reader of model files, as plain as the format's rules, to compare the engine's with.
#pragma once

#include "models/Model.h"

#include <cstdio>
#include <string>

namespace tamor::test
{
/// Reads `file` line by line with `fgets` and `sscanf`, and loads no texture. The caller deletes
/// the bones.
void readPlainly(Model& model, std::FILE* file);

/// What differs first between two models that were read, or "" for models alike to the last bit.
/// Textures' OpenGL names are not compared.
std::string difference(const Model& a, const Model& b);
} // namespace tamor::test

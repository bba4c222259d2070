/// \file
/// From a name to a model.
#pragma once

#include "TamorExport.h"
#include "models/Model.h"

#include <string>

namespace tamor
{
/// A new model by its name, ready to draw, which the caller owns and deletes. Never null.
///
/// | Name                                     | Model                         |
/// |------------------------------------------|-------------------------------|
/// | "cube", "teapot"                         | the built-in shape            |
/// | ends in ".vrx"                           | empty, and no file is opened  |
/// | ends in ".ms3d", or has four characters  | read by `MS3DModel`           |
/// | any other                                | empty                         |
///
/// The only failure that prints is the reader's; what could not be read stays empty.
TAMOR_EXPORT Model* createModel(const std::string& name);
} // namespace tamor

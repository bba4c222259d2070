/// \file
/// The state of OpenGL that the scene needs, and that which the GUI needs, each set in one place.
#pragma once

#include "maths/Vector.h"
#include "shaders/ShaderProgram.h"

#include <string>

namespace tour
{
/// Whether OpenGL has GLSL programs; to be asked when the window is open.
bool hasPrograms();

/// Loads and links a program if OpenGL has programs and both files are there; else says on the error
/// stream what is missing, and `program.program` stays 0.
void loadProgram(tamor::ShaderProgram& program, const std::string& vertexFile,
                 const std::string& fragmentFile);

/// All that the scene relies on. Whoever draws in it puts back what differs from this.
void setUpForScene();

/// What the GUI relies on and does not set itself: behind a scene, right before `renderAll`.
void setUpForGui();

/// What a surface makes of light. Texture colours are multiplied by it.
void setMaterial(const tamor::Vector& colour, float shine = 0.0F);
} // namespace tour

/// \file
/// One function a format: reads the source as the engine does, and reports into it.
#pragma once

#include "tools/check/Source.h"

namespace tamor::check
{
void checkLayout(Source& source);
void checkTheme(Source& source);
void checkConfig(Source& source);
void checkScript(Source& source);
void checkModel(Source& source);
void checkTGA(Source& source);
void checkPNG(Source& source);
void checkShader(Source& source);

/// Reports what a fragment shader takes from a vertex shader that does not give it.
void checkShaderInterface(const Source& vertex, Source& fragment);
} // namespace tamor::check

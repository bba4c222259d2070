/// \file
/// The reader of MilkShape 3D's text export. `docs/models.md` has the format line by line.
#pragma once

#include "TamorExport.h"
#include "models/Model.h"

#include <cstdio>
#include <string>

namespace tamor
{
/// A model read from a text export of MilkShape 3D.
class TAMOR_EXPORT MS3DModel : public Model
{
public:
    ~MS3DModel() override;

    /// Reads the file at `path`, loads its textures, and keeps its vertices as the rest pose.
    ///
    /// The reader goes strictly forward and reports nothing: a line that does not match leaves what
    /// it would have set as it was, and past the end the last line comes again and again. An OpenGL
    /// context must be current if a material has a texture.
    /// \return 1; or 0 after printing one of these lines. The first leaves the model untouched; the
    ///         second, where counts claim what the memory does not hold, leaves what was read:
    ///         '<path>': Invalid model filename
    ///         '<path>': Too large for the memory
    std::int32_t load(const std::string& path) override;
};

/// The next line of `file` that counts, without its last character, which is taken to be the newline.
///
/// Lines with "//" anywhere in them and blank lines are skipped. A line of more than 254 characters
/// comes in pieces that each lose their last character, as does a last line without a newline. At
/// the end the last line that was read, from whichever file, comes again; if that one is to be
/// skipped, this never returns.
TAMOR_EXPORT std::string readModelLine(std::FILE* file);
} // namespace tamor

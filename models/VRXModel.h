/// \file
/// The engine's own compressed model format, as far as it is settled.
#pragma once

#include "TamorExport.h"
#include "models/Model.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tamor
{
/// A model in the VRX format. Unfinished: reading stops at opening the file, and writing before any
/// file is touched. Nothing in the engine makes one.
class TAMOR_EXPORT VRXModel : public Model
{
public:
    ~VRXModel() override;

    /// Opens the file at `path`, reads nothing and leaves the model as it is.
    /// \return 1; or 0 after printing
    ///         '<path>': Invalid model filename
    std::int32_t load(const std::string& path) override;

    /// Prints "writing", hands the body to zlib twice, and writes no file.
    /// \return 1
    std::int32_t save() override;
};

/// The uncompressed body of `model`: 208 bytes a bone, 44 a rest vertex, 64 a face and 80 a
/// material, in this order, with no header.
///
/// Each bone's bytes are the first 208 of its record. The bytes of each later section are those of
/// the model object itself from `restVertices`, `faces` or `materials` on, up to the end of its
/// last field; the rest of the section is zero.
TAMOR_EXPORT std::vector<std::uint8_t> makeVRXBody(const Model& model);
} // namespace tamor

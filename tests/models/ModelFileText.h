/// \file
/// The text of model files, put together from sections of which a test writes the one it is about.
#pragma once

#include <string>

namespace tamor::test
{
/// A file with one triangle, no material and no bone, unless told otherwise. Sections end in a
/// newline.
struct ModelFileText
{
    std::string frames = "Frames: 30\n"
                         "Frame: 1\n";
    std::string meshes = "Meshes: 1\n"
                         "\"Triangle\" 0 0\n"
                         "3\n"
                         "0 0 0 0 0 0 -1\n"
                         "0 1 0 0 1 0 -1\n"
                         "0 0 1 0 0 1 -1\n"
                         "1\n"
                         "0 0 1\n"
                         "1\n"
                         "0 0 1 2 0 0 0 1\n";
    std::string materials = "Materials: 0\n";
    std::string bones = "Bones: 0\n";

    std::string text() const { return frames + meshes + materials + bones; }
};
} // namespace tamor::test

/// \file
/// The reader of MilkShape 3D's text export. `docs/models.md` has the format line by line.
#pragma once

#include "models/Model.h"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

namespace tamor
{
/// A model read from a text export of MilkShape 3D.
class MS3DModel : public Model
{
public:
    ~MS3DModel() override;

    /// Reads the file at `path`, loads its textures, and keeps its vertices as the rest pose.
    ///
    /// The reader goes strictly forward and reports nothing: a line that does not match leaves what
    /// it would have set as it was, and past the end the last line comes again and again. An OpenGL
    /// context must be current if a material has a texture.
    /// \return 1; or 0, with the model untouched, after printing
    ///         '<path>': Invalid model filename
    std::int32_t load(const std::string& path) override;
};

/// A model file that is being read, and the piece of it that was read last.
class ModelFile
{
public:
    /// \param newStream  open for reading; the caller closes it
    explicit ModelFile(std::FILE* newStream) : stream(newStream) {}
    ModelFile(const ModelFile&) = delete;
    ModelFile& operator=(const ModelFile&) = delete;

    /// Goes on by one line with its newline, or by 255 characters of a longer line. At the end of
    /// the file `piece` stays as it is.
    void advance();

    /// Ends before the first zero byte, if there is one. Empty before the first `advance`; good
    /// until the next.
    std::string_view piece;

private:
    void refill();

    std::FILE* stream;
    std::array<char, 65536> block;
    /// What is in the block and was not in a piece yet.
    std::string_view rest = std::string_view(block.data(), 0);
};

/// The next line that counts, without its last character, which is taken to be the newline. Good
/// until the next call.
///
/// Lines with "//" anywhere in them and blank lines are skipped. A line of more than 254 characters
/// comes in pieces that each lose their last character, as does a last line without a newline. At
/// the end the last line comes again; if that one is to be skipped, this never returns.
std::string_view readModelLine(ModelFile& file);
} // namespace tamor

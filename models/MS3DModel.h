/// \file
/// The reader of MilkShape 3D's text export. `docs/models.md` has the format line by line.
#pragma once

#include "models/Model.h"

#include <string>
#include <string_view>
#include <utility>

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

/// A model file's text, and the piece of it that was read last.
class ModelText
{
public:
    explicit ModelText(std::string newText) : text(std::move(newText)), rest(text) {}
    ModelText(const ModelText&) = delete;
    ModelText& operator=(const ModelText&) = delete;

    /// Goes on by one line with its newline, or by 255 characters of a longer line. At the end of
    /// the text `piece` stays as it is.
    void advance();

    /// Ends before the first zero byte, if there is one. Empty before the first `advance`.
    std::string_view piece;

private:
    std::string text;
    std::string_view rest;
};

/// The next line that counts, without its last character, which is taken to be the newline. Good as
/// long as `file` lives.
///
/// Lines with "//" anywhere in them and blank lines are skipped. A line of more than 254 characters
/// comes in pieces that each lose their last character, as does a last line without a newline. At
/// the end the last line comes again; if that one is to be skipped, this never returns.
std::string_view readModelLine(ModelText& file);
} // namespace tamor

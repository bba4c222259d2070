/// \file
/// What the checker finds: one record a finding, one row a code.
///
/// The folder tools/check/ reads what people write for the engine as the engine reads it, and says
/// what is dropped, replaced, cut or waited for, and where. docs/checker.md has a section for each
/// code. The engine knows nothing of it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamor::check
{
/// How bad a finding is.
enum class Severity : std::uint8_t
{
    warning, ///< what is probably not meant
    error,   ///< what never returns, ends the program or loses something that the file says
};

/// A kind of finding. Its name never changes, so that scripts may rely on it.
struct Code
{
    std::string_view name;
    Severity severity;
    std::string_view summary;
};

/// All codes, sorted by their formats.
std::span<const Code> codes();

/// The code of that name, which must be one.
const Code& codeNamed(std::string_view name);

/// One finding.
struct Finding
{
    std::string file;       ///< as the caller named it
    std::size_t line = 1;   ///< counts from 1; 1 in files that are no text
    std::size_t column = 1; ///< counts bytes from 1
    const Code* code = nullptr;
    std::string message; ///< one line, without the code
};
} // namespace tamor::check

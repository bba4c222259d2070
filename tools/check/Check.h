/// \file
/// Checking files and working directories, for tools that show what is found.
///
///     for (const Finding& finding : checkText("my.gui", text, FileKind::layout))
///         show(finding);
#pragma once

#include "tools/check/Finding.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tamor::check
{
class Source;

/// What a file is.
enum class FileKind : std::uint8_t
{
    layout,
    theme,
    configuration,
    script,
    model,
    tga,
    png,
    shader,
};

/// A kind's word on the command line, and the endings of its files' names.
struct FileKindName
{
    FileKind kind;
    std::string_view word;
    std::vector<std::string_view> endings;
};

/// All kinds.
std::span<const FileKindName> fileKinds();

/// The kind that a name's ending tells.
std::optional<FileKind> kindOfName(std::string_view name);

/// The kind that the content looks like.
std::optional<FileKind> kindOfContent(std::string_view content);

/// Checks a file by itself. What it names of others is left in its references.
void check(Source& source, FileKind kind);

/// Puts a source's findings into the order of its text.
void sortFindings(Source& source);

/// Checks a text by itself. The findings are in the order of the text.
std::vector<Finding> checkText(const std::string& name, std::string text, FileKind kind);

/// The whole of a file; nothing if it cannot be read.
std::optional<std::string> readWhole(const std::string& path);

/// What was found in a directory, in the order of the files' names.
struct DirectoryFindings
{
    std::vector<Finding> findings;
    std::size_t files = 0;
};

/// Checks all files of a working directory whose names tell a kind, and what they name of each
/// other.
/// \return nothing if the directory cannot be read
std::optional<DirectoryFindings> checkDirectory(const std::string& path);

/// Checks one file of a working directory, the files there that it names, and what these name.
/// \return nothing if the file cannot be read
std::optional<DirectoryFindings> checkFileOfDirectory(const std::string& path, FileKind kind);
} // namespace tamor::check

// Checking a working directory: every file by itself, and what the files name of each other.

#include "tools/check/Check.h"
#include "tools/check/Formats.h"
#include "tools/check/Source.h"
#include "tools/check/Words.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>

namespace tamor::check
{
namespace
{
namespace fs = std::filesystem;

// What the demonstration looks up in "my.gui".
constexpr std::string_view demonstrationNames[] = {
    "red", "green",  "blue",    "horz1",    "horz2",   "horzl1", "horzl2", "status",
    "fps", "redbut", "bluebut", "greenbut", "exitbut", "quill",  "combo1"};

class DirectoryCheck
{
public:
    explicit DirectoryCheck(fs::path newDirectory) : directory(std::move(newDirectory)) {}

    bool readFiles();
    bool readFile(const std::string& path, FileKind kind);
    DirectoryFindings run();

private:
    struct File
    {
        FileKind kind;
        Source source;
    };

    void addFile(const std::string& path, FileKind kind);
    void follow(Source& source, const Reference& reference);
    void followFile(Source& source, const Reference& reference, FileKind kind,
                    std::string_view missing);
    void followTexture(Source& source, const Reference& reference);
    bool isThere(const std::string& path) const;
    void checkLayoutFile(Source& layout);
    void checkFontSizes(Source& layout);
    void checkNames(Source& layout) const;
    bool lacksLayout() const;
    void checkShaderPair(const std::string& path, Source& source) const;
    std::string didYouMeanFile(const std::string& path) const;

    fs::path directory;
    std::map<std::string, File> files; ///< by their paths in the directory
    std::set<std::string> followed;
};

bool DirectoryCheck::readFiles()
{
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(directory, error)) {
        const std::string name = entry.path().filename().string();
        const std::optional<FileKind> kind = kindOfName(name);
        if (kind && entry.is_regular_file(error))
            addFile(name, *kind);
    }
    return !error;
}

bool DirectoryCheck::readFile(const std::string& path, FileKind kind)
{
    addFile(path, kind);
    return files.contains(path);
}

void DirectoryCheck::addFile(const std::string& path, FileKind kind)
{
    std::optional<std::string> text = readWhole((directory / path).string());
    if (!text)
        return;
    Source source((directory / path).string(), std::move(*text));
    check(source, kind);
    files.emplace(path, File{kind, std::move(source)});
}

bool DirectoryCheck::isThere(const std::string& path) const
{
    std::error_code error;
    return fs::is_regular_file(directory / path, error);
}

std::string DirectoryCheck::didYouMeanFile(const std::string& path) const
{
    std::vector<std::string_view> names;
    for (const auto& [name, file] : files)
        names.push_back(name);
    return didYouMean(path, names);
}

void DirectoryCheck::followFile(Source& source, const Reference& reference, FileKind kind,
                                std::string_view missing)
{
    if (!isThere(reference.path)) {
        const std::string who = reference.reason.empty() ? "" : " for " + reference.reason;
        source.report(missing, reference.offset,
                      "there is no " + inQuotes(reference.path) + who +
                          didYouMeanFile(reference.path));
    } else if (!files.contains(reference.path)) {
        addFile(reference.path, kind);
    }
}

void DirectoryCheck::followTexture(Source& source, const Reference& reference)
{
    const bool isKnown = reference.path.find("tga") != std::string::npos ||
                         reference.path.find("png") != std::string::npos;
    if (!isKnown) {
        source.report("texture-format", reference.offset,
                      inQuotes(reference.path) + " says neither tga nor png in its name: it is not "
                                                 "read");
    } else if (!isThere(reference.path)) {
        source.report("texture-missing", reference.offset,
                      "there is no picture " + inQuotes(reference.path) +
                          didYouMeanFile(reference.path));
    } else if (!files.contains(reference.path)) {
        const bool isTGA = reference.path.find("tga") != std::string::npos;
        addFile(reference.path, isTGA ? FileKind::tga : FileKind::png);
    }
}

void DirectoryCheck::follow(Source& source, const Reference& reference)
{
    switch (reference.kind) {
    case Reference::Kind::theme:
        followFile(source, reference, FileKind::theme, "theme-missing");
        break;
    case Reference::Kind::configuration:
        followFile(source, reference, FileKind::configuration, "config-missing");
        break;
    case Reference::Kind::texture:
        followTexture(source, reference);
        break;
    case Reference::Kind::font:
        if (!isThere(reference.path)) {
            source.report("font-missing", reference.offset,
                          "there is no font " + inQuotes(reference.path) + ": no text is seen");
        }
        break;
    }
}

void DirectoryCheck::checkLayoutFile(Source& layout)
{
    if (!isThere("default.theme")) {
        layout.report("theme-default",
                      "there is no default.theme: widgets above the first THEM have the built-in "
                      "look, with the picture gui.tga");
    }
    if (!isThere("messagebox.theme")) {
        layout.report("theme-default",
                      "there is no messagebox.theme: a message box would be black and without a "
                      "size");
    }
    checkFontSizes(layout);
    checkNames(layout);
}

void DirectoryCheck::checkFontSizes(Source& layout)
{
    const Source* first = nullptr;
    for (const Reference& reference : layout.references) {
        const auto file = files.find(reference.path);
        if (reference.kind != Reference::Kind::theme || file == files.end())
            continue;
        const Source& theme = file->second.source;
        if (first == nullptr) {
            first = &theme;
        } else if (theme.fontWidth != first->fontWidth || theme.fontHeight != first->fontHeight) {
            layout.report("theme-font-size", reference.offset,
                          inQuotes(reference.path) +
                              " has another font size than the theme above: all text gets the "
                              "size of the widget made last");
            return;
        }
    }
}

void DirectoryCheck::checkNames(Source& layout) const
{
    const std::vector<std::string>& names = layout.widgetNames;
    const auto isMissing = [&](std::string_view name) {
        return std::find(names.begin(), names.end(), name) == names.end();
    };
    std::vector<std::string_view> missing;
    std::copy_if(std::begin(demonstrationNames), std::end(demonstrationNames),
                 std::back_inserter(missing), isMissing);
    // Another program's layout may have the demonstration's file name, but not its widgets.
    if (2 * missing.size() > std::size(demonstrationNames))
        return;
    for (const std::string_view name : missing) {
        layout.report("demo-name", "the demonstration asks for a widget " + inQuotes(name) +
                                       ", which is not made");
    }
}

/// Whether the directory has what goes with a layout, and none.
bool DirectoryCheck::lacksLayout() const
{
    const auto hasKind = [&](FileKind kind) {
        return std::any_of(files.begin(), files.end(),
                           [=](const auto& file) { return file.second.kind == kind; });
    };
    return !hasKind(FileKind::layout) && hasKind(FileKind::theme) &&
           hasKind(FileKind::configuration);
}

void DirectoryCheck::checkShaderPair(const std::string& path, Source& source) const
{
    const bool isVertex = path.ends_with(".vert");
    if (!isVertex && !path.ends_with(".frag"))
        return;
    const std::string other = path.substr(0, path.rfind('.')) + (isVertex ? ".frag" : ".vert");
    const auto found = files.find(other);
    if (found == files.end()) {
        source.report("glsl-alone", "there is no " + inQuotes(other) +
                                        ": a program needs both, and links to nothing without");
    } else if (!isVertex) {
        checkShaderInterface(found->second.source, source);
    }
}

DirectoryFindings DirectoryCheck::run()
{
    // Layouts name themes and configurations, and these name pictures and fonts.
    for (int round = 0; round < 3; ++round) {
        std::vector<std::string> paths;
        for (const auto& [path, file] : files)
            paths.push_back(path);
        for (const std::string& path : paths) {
            if (!followed.insert(path).second)
                continue;
            Source& source = files.at(path).source;
            for (const Reference& reference : source.references)
                follow(source, reference);
        }
    }
    for (auto& [path, file] : files) {
        if (file.kind == FileKind::layout)
            checkLayoutFile(file.source);
        if (file.kind == FileKind::shader)
            checkShaderPair(path, file.source);
    }
    DirectoryFindings all;
    all.files = files.size();
    if (lacksLayout()) {
        all.findings.push_back({(directory / "my.gui").string(), 1, 1, &codeNamed("layout-missing"),
                                "there is no layout: the demonstration waits for ever"});
    }
    for (auto& [path, file] : files) {
        sortFindings(file.source);
        const std::vector<Finding>& found = file.source.findings;
        all.findings.insert(all.findings.end(), found.begin(), found.end());
    }
    return all;
}
} // namespace

std::optional<DirectoryFindings> checkDirectory(const std::string& path)
{
    DirectoryCheck directory(path);
    if (!directory.readFiles())
        return std::nullopt;
    return directory.run();
}

std::optional<DirectoryFindings> checkFileOfDirectory(const std::string& path, FileKind kind)
{
    const fs::path whole(path);
    DirectoryCheck directory(whole.parent_path());
    if (!directory.readFile(whole.filename().string(), kind))
        return std::nullopt;
    return directory.run();
}
} // namespace tamor::check

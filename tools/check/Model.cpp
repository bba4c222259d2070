// The checker of MS3D models, which goes through a file in the reader's steps, up to the first line
// that is not what the reader expects: behind it everything would be read in a wrong place.

#include "tools/check/Formats.h"
#include "tools/check/ModelLines.h"
#include "tools/check/Words.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <unordered_set>
#include <vector>

namespace tamor::check
{
namespace
{
constexpr std::string_view blanks = " \t\r\n\v\f";
constexpr std::size_t mostNumbers = 8;

/// What a line of numbers holds: "i" an integer, "f" a number, "w" any word.
struct LineOfNumbers
{
    std::string_view types;
    std::string_view what;
};

constexpr LineOfNumbers meshHead{"wii", "a mesh's name, flags and material"};
constexpr LineOfNumbers count{"i", "a count"};
constexpr LineOfNumbers vertexLine{"ifffffi", "a vertex: flags, x, y, z, u, v, bone"};
constexpr LineOfNumbers normalLine{"fff", "a normal: x, y, z"};
constexpr LineOfNumbers triangleLine{"iiiiiiii", "a triangle: flags, three vertices, three "
                                                 "normals, smoothing group"};
constexpr LineOfNumbers colourLine{"fff", "a colour: red, green, blue, alpha"};
constexpr LineOfNumbers numberLine{"f", "a number"};
constexpr LineOfNumbers poseLine{"iffffff", "flags, x, y, z and three angles"};
constexpr LineOfNumbers keyLine{"ffff", "a key: frame, x, y, z"};

/// The first word of a text, and where it begins; empty at the end.
std::string_view firstWord(std::string_view text, std::size_t& at)
{
    at = std::min(text.find_first_not_of(blanks, at), text.size());
    return text.substr(at, text.find_first_of(blanks, at) - at);
}

bool readInteger(const std::string& word, std::int32_t& value)
{
    char* end = nullptr;
    const long number = std::strtol(word.c_str(), &end, 10);
    const bool fits = number >= std::numeric_limits<std::int32_t>::min() &&
                      number <= std::numeric_limits<std::int32_t>::max();
    value = fits ? static_cast<std::int32_t>(number) : 0;
    return !word.empty() && *end == '\0' && fits;
}

bool readFloat(const std::string& word, float& value)
{
    char* end = nullptr;
    value = std::strtof(word.c_str(), &end);
    return !word.empty() && *end == '\0';
}

class ModelCheck
{
public:
    explicit ModelCheck(Source& newSource) : source(newSource), lines(newSource) {}

    void run()
    {
        if (readHeader("Frames:", frames) && skip() && readMeshes() && readMaterials() &&
            readBones()) {
            checkLater();
            lines.reportRest();
        }
        reportCarriageReturn(source, "ms3d-carriage-return",
                             "an empty line counts as a line, and names differ by them");
    }

private:
    /// An index into what comes later in the file.
    struct Index
    {
        std::int32_t value;
        std::size_t offset;
    };

    bool fail(std::size_t at, std::string_view what);
    bool readHeader(std::string_view head, std::int32_t& value);
    bool readNumbers(const LineOfNumbers& format);
    bool readCount(std::int32_t& value);
    bool skip() { return lines.next(); }

    bool readMeshes();
    bool readVertices();
    bool readTriangles();
    void checkTriangle(std::vector<std::int32_t>& normalOf, bool& saysShared);
    bool readMaterials();
    bool readTexture();
    bool readBones();
    bool readBone();
    bool readKeys();
    void checkLater();

    Source& source;
    ModelLines lines;
    std::array<std::int32_t, mostNumbers> integers = {};
    std::array<float, mostNumbers> floats = {};
    std::array<std::size_t, mostNumbers> offsets = {};
    std::int32_t frames = 0;
    std::int32_t vertexCount = 0;
    std::int32_t normalCount = 0;
    std::int32_t materialCount = 0;
    std::int32_t boneCount = 0;
    std::int32_t normalBase = 0;
    bool hasKeys = false;
    std::vector<Index> materials;
    std::vector<Index> vertexBones;
    std::unordered_set<std::string> boneNames;
};

bool ModelCheck::fail(std::size_t at, std::string_view what)
{
    std::size_t begin = at;
    const std::string_view word = firstWord(lines.line(), begin);
    source.report("ms3d-field", lines.offset() + begin,
                  (word.empty() ? "the line ends" : inQuotes(word) + " stands") +
                      " where the reader expects " + std::string(what) +
                      "; from here on lines are read in wrong places");
    return false;
}

bool ModelCheck::readHeader(std::string_view head, std::int32_t& value)
{
    if (!lines.next())
        return false;
    std::size_t at = head.size();
    if (!lines.line().starts_with(head) ||
        !readInteger(std::string(firstWord(lines.line(), at)), value))
        return fail(0, std::string(head) + " and a count");
    if (value < 0)
        source.report("ms3d-count", lines.offset(), "a count below 0 is taken for 0");
    return true;
}

bool ModelCheck::readNumbers(const LineOfNumbers& format)
{
    if (!lines.next())
        return false;
    std::size_t at = 0;
    for (std::size_t i = 0; i < format.types.size(); ++i) {
        const std::string word(firstWord(lines.line(), at));
        offsets[i] = lines.offset() + at;
        const char type = format.types[i];
        const bool isRead = type == 'w'   ? !word.empty()
                            : type == 'i' ? readInteger(word, integers[i])
                                          : readFloat(word, floats[i]);
        if (!isRead)
            return fail(at, format.what);
        at += word.size();
    }
    return true;
}

bool ModelCheck::readCount(std::int32_t& value)
{
    if (!readNumbers(count))
        return false;
    value = integers[0];
    if (value < 0)
        source.report("ms3d-count", offsets[0], "a count below 0 is taken for 0");
    return true;
}

bool ModelCheck::readMeshes()
{
    std::int32_t meshes = 0;
    if (!readHeader("Meshes:", meshes))
        return false;
    for (std::int32_t i = 0; i < meshes; ++i) {
        if (!lines.next())
            return false;
        std::size_t at = 0;
        const std::string_view name = firstWord(lines.line(), at);
        const bool isCut = name.starts_with('"') && (name.size() == 1 || !name.ends_with('"'));
        if (isCut) {
            source.report("ms3d-name-blank", lines.offset() + at + name.size(),
                          "a blank in a mesh's name hides its material");
        } else if (lines.again(); !readNumbers(meshHead)) {
            return false;
        } else {
            materials.push_back({integers[2], offsets[2]});
        }
        if (!readVertices() || !readTriangles())
            return false;
    }
    return true;
}

bool ModelCheck::readVertices()
{
    if (!readCount(vertexCount))
        return false;
    for (std::int32_t i = 0; i < vertexCount; ++i) {
        if (!readNumbers(vertexLine))
            return false;
        vertexBones.push_back({integers[6], offsets[6]});
    }
    if (!readCount(normalCount))
        return false;
    for (std::int32_t i = 0; i < normalCount; ++i) {
        if (!readNumbers(normalLine))
            return false;
    }
    return true;
}

bool ModelCheck::readTriangles()
{
    std::int32_t triangles = 0;
    if (!readCount(triangles))
        return false;
    std::vector<std::int32_t> normalOf(static_cast<std::size_t>(std::max(vertexCount, 0)), -1);
    bool saysShared = false;
    for (std::int32_t i = 0; i < triangles; ++i) {
        if (!readNumbers(triangleLine))
            return false;
        checkTriangle(normalOf, saysShared);
    }
    normalBase = std::max(normalCount, 0);
    return true;
}

void ModelCheck::checkTriangle(std::vector<std::int32_t>& normalOf, bool& saysShared)
{
    for (std::size_t k = 0; k < 3; ++k) {
        const std::int32_t vertex = integers[1 + k];
        const std::int64_t normal = std::int64_t{integers[4 + k]} + normalBase;
        if (vertex < 0 || vertex >= vertexCount) {
            source.report("ms3d-index", offsets[1 + k],
                          "the mesh has no vertex " + std::to_string(vertex));
            continue;
        }
        if (normal < 0 || normal >= normalCount) {
            source.report("ms3d-index", offsets[4 + k],
                          normalBase == 0
                              ? "the mesh has no normal " + std::to_string(normal)
                              : "this is normal " + std::to_string(normal) +
                                    ", which the mesh has not: the count of the mesh before is "
                                    "added to the index");
        }
        std::int32_t& earlier = normalOf[static_cast<std::size_t>(vertex)];
        if (earlier >= 0 && earlier != normal && !saysShared) {
            saysShared = true;
            source.report("ms3d-shared-normal", offsets[4 + k],
                          "vertex " + std::to_string(vertex) +
                              " has had another normal: it keeps the last one");
        }
        earlier = static_cast<std::int32_t>(normal);
    }
}

bool ModelCheck::readMaterials()
{
    if (!readHeader("Materials:", materialCount))
        return false;
    for (std::int32_t i = 0; i < materialCount; ++i) {
        const bool isRead = skip() && readNumbers(colourLine) && readNumbers(colourLine) &&
                            readNumbers(colourLine) && readNumbers(colourLine) &&
                            readNumbers(numberLine) && readNumbers(numberLine) && readTexture() &&
                            skip();
        if (!isRead)
            return false;
    }
    return true;
}

bool ModelCheck::readTexture()
{
    if (!lines.next())
        return false;
    std::string_view line = lines.line();
    std::size_t at = 1;
    if (!line.starts_with('"') || firstWord(line, at).empty())
        return fail(0, "a texture's path between double quotes");
    std::string_view path = firstWord(line, at);
    path = path.substr(0, path.find('"'));
    const std::size_t quote = line.find('"', 1);
    if (at + path.size() < std::min(quote, line.size())) {
        source.report("ms3d-texture-blank", lines.offset() + at + path.size(),
                      "a blank cuts a texture's path off");
    }
    if (!path.empty()) {
        source.references.push_back(
            {Reference::Kind::texture, std::string(path), lines.offset() + at, ""});
    }
    return true;
}

bool ModelCheck::readBones()
{
    if (!readHeader("Bones:", boneCount))
        return false;
    for (std::int32_t i = 0; i < boneCount; ++i) {
        if (!readBone())
            return false;
    }
    return true;
}

bool ModelCheck::readBone()
{
    if (!lines.next())
        return false;
    const std::string name = lines.line();
    if (!lines.next())
        return false;
    if (lines.line() != "\"\"" && !boneNames.contains(lines.line())) {
        source.report("ms3d-parent", lines.offset(),
                      "no bone above has exactly this line for its name: the bone becomes a root");
    }
    if (!readNumbers(poseLine))
        return false;
    if (floats[4] != 0.0F || floats[5] != 0.0F || floats[6] != 0.0F) {
        source.report("ms3d-rest-angles", offsets[4],
                      "the rest angles of bone " + inQuotes(name) +
                          " turn its vertices away from where the file puts them");
    }
    boneNames.insert(name);
    return readKeys() && readKeys();
}

bool ModelCheck::readKeys()
{
    std::int32_t keys = 0;
    if (!readCount(keys))
        return false;
    hasKeys = hasKeys || keys > 0;
    for (std::int32_t i = 0; i < keys; ++i) {
        if (!readNumbers(keyLine))
            return false;
    }
    return true;
}

void ModelCheck::checkLater()
{
    if (frames <= 0 && hasKeys) {
        source.report("ms3d-frames",
                      "a model with keys and without frames: any time but 0 never returns");
    }
    for (const Index& material : materials) {
        if (material.value < -1 || material.value >= materialCount) {
            source.report("ms3d-index", material.offset,
                          "the file has no material " + std::to_string(material.value));
        }
    }
    for (const Index& bone : vertexBones) {
        if (bone.value < -1 || bone.value >= boneCount) {
            source.report("ms3d-index", bone.offset,
                          "the file has no bone " + std::to_string(bone.value));
        }
    }
}
} // namespace

void checkModel(Source& source)
{
    ModelCheck(source).run();
}
} // namespace tamor::check

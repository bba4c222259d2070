#include "models/MS3DModel.h"

#include "maths/Memory.h"
#include "models/internal/ModelAccess.h"
#include "models/internal/ModelFile.h"
#include "models/internal/NumberFields.h"
#include "textures/TextureRegistry.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <locale.h>
#include <memory>
#include <tuple>

namespace tamor
{
namespace
{
/// The sum, which wraps: indices of a file are kept whatever they are.
std::int32_t addIndices(std::int32_t a, std::int32_t b)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

/// A count as the size of a list: none for a negative one.
std::size_t toSize(std::int32_t count)
{
    return static_cast<std::size_t>(std::max(count, 0));
}

/// What a list of `count` entries takes, in bytes, which may be more than there are addresses.
std::uint64_t sizeOf(std::int32_t count, std::size_t entrySize)
{
    return std::uint64_t{toSize(count)} * entrySize;
}

bool holds(std::int32_t count, std::size_t entrySize)
{
    return memoryHolds(sizeOf(count, entrySize));
}

// Each of these reads one line. The patterns rule: a line of plain numbers gives the same without
// them, in a sixth of the time. No result is looked at, so that what does not match stays as it
// was.

void readCount(std::string_view line, std::int32_t& count)
{
    if (!NumberFields(line).read(count).arePlain())
        std::sscanf(std::string(line).c_str(), "%d", &count);
}

void readFloat(std::string_view line, float& target)
{
    if (!NumberFields(line).read(target).arePlain())
        std::sscanf(std::string(line).c_str(), "%f", &target);
}

void readVector(std::string_view line, Vector& v)
{
    if (!NumberFields(line).read(v.x).read(v.y).read(v.z).arePlain())
        std::sscanf(std::string(line).c_str(), "%f %f %f", &v.x, &v.y, &v.z);
}

void readVertex(std::string_view line, Vertex& vertex)
{
    Vector& p = vertex.position;
    NumberFields fields(line);
    fields.skipInteger().read(p.x).read(p.y).read(p.z);
    fields.read(vertex.u).read(vertex.v).read(vertex.bone);
    if (!fields.arePlain()) {
        std::sscanf(std::string(line).c_str(), "%*d %f %f %f %f %f %d", &p.x, &p.y, &p.z, &vertex.u,
                    &vertex.v, &vertex.bone);
    }
}

void readTriangle(std::string_view line, Face& face)
{
    auto& v = face.vertex;
    auto& n = face.normalIndex;
    NumberFields fields(line);
    fields.skipInteger().read(v[0]).read(v[1]).read(v[2]);
    fields.read(n[0]).read(n[1]).read(n[2]).read(face.smoothingGroup);
    if (!fields.arePlain()) {
        std::sscanf(std::string(line).c_str(), "%*d %d %d %d %d %d %d %d", &v[0], &v[1], &v[2],
                    &n[0], &n[1], &n[2], &face.smoothingGroup);
    }
}

void readRestPose(std::string_view line, Bone& bone)
{
    Vector& p = bone.localPosition;
    Vector& r = bone.localRotation;
    NumberFields fields(line);
    fields.read(bone.flags).read(p.x).read(p.y).read(p.z).read(r.x).read(r.y).read(r.z);
    if (!fields.arePlain()) {
        std::sscanf(std::string(line).c_str(), "%d %f %f %f %f %f %f", &bone.flags, &p.x, &p.y,
                    &p.z, &r.x, &r.y, &r.z);
    }
}

void readKey(std::string_view line, KeyFrame& key)
{
    Vector& v = key.value;
    if (!NumberFields(line).read(key.time).read(v.x).read(v.y).read(v.z).arePlain())
        std::sscanf(std::string(line).c_str(), "%f %f %f %f", &key.time, &v.x, &v.y, &v.z);
}

/// A bone that is never freed: the model drops it, and whoever holds it may keep it.
Bone* newBone()
{
    return new Bone;
}

/// Closes what `std::fopen` has opened.
struct FileCloser
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// Has numbers read as in the C locale for as long as it lives, whatever a host has set: a file
/// means the same everywhere.
class NumbersOfC
{
public:
    NumbersOfC() : before(uselocale(ofC())) {}
    ~NumbersOfC() { uselocale(before); }
    NumbersOfC(const NumbersOfC&) = delete;
    NumbersOfC& operator=(const NumbersOfC&) = delete;

private:
    static locale_t ofC()
    {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t before;
};

/// Reads the sections of one file into a model.
///
/// What a line that does not match leaves as it was, is what the line of its kind before it set: so
/// the fields that take counts live as long as the load, and start at 0.
class Reader
{
public:
    Reader(Model& newModel, ModelFile& newFile) : model(newModel), file(newFile) {}

    /// \return false where the memory does not hold what the file claims
    bool read()
    {
        std::sscanf(lineText().c_str(), "Frames: %d", &model.frameCount);
        line(); // the current frame
        return readMeshes() && readMaterials() && readBones();
    }

private:
    std::string_view line() { return file.line(); }
    std::string lineText() { return std::string(line()); }

    /// Reads a line into each of the `items` from `first` on. Behind the end of the file the line is
    /// the same for all of them, and so is what it gives.
    template <typename Item, typename Read>
    void readItems(std::vector<Item>& items, std::size_t first, const Read& read)
    {
        for (std::size_t i = first; i < items.size(); ++i) {
            read(line(), items[i]);
            if (file.hasEnded()) {
                std::fill(items.begin() + static_cast<std::ptrdiff_t>(i), items.end(),
                          Item(items[i]));
                return;
            }
        }
    }

    bool readMeshes()
    {
        std::sscanf(lineText().c_str(), "Meshes: %d", &meshCount);
        for (std::int32_t i = 0; i < meshCount; ++i) {
            const bool isLikeTheLast = file.hasEnded();
            if (!readMesh())
                return false;
            if (!isLikeTheLast)
                continue;
            // All further meshes are as this one.
            if (vertexCount <= 0 && triangleCount <= 0)
                return true;
            if (!memoryHolds(saturatingProduct(toSize(meshCount - i), meshSize())))
                return false;
        }
        return true;
    }

    /// What the memory takes for a mesh of the current counts and its rest pose, and for the lists
    /// that grow by it.
    std::uint64_t meshSize() const
    {
        return 2 * (sizeOf(vertexCount, 2 * sizeof(Vertex)) + sizeOf(triangleCount, sizeof(Face)));
    }

    bool readMesh()
    {
        std::sscanf(lineText().c_str(), "%*s %*d %d", &materialIndex);

        readCount(line(), vertexCount);
        if (!holds(vertexCount, 2 * sizeof(Vertex)))
            return false;
        const std::size_t firstVertex = model.vertices.size();
        model.vertices.resize(firstVertex + toSize(vertexCount));
        readItems(model.vertices, firstVertex, readVertex);

        readCount(line(), normalCount);
        if (!holds(normalCount, sizeof(Vector)))
            return false;
        std::vector<Vector> normals(toSize(normalCount));
        readItems(normals, 0, readVector);

        readCount(line(), triangleCount);
        if (!holds(triangleCount, sizeof(Face)))
            return false;
        const std::size_t firstFace = model.faces.size();
        model.faces.resize(firstFace + toSize(triangleCount));
        readItems(model.faces, firstFace,
                  [&](std::string_view text, Face& face) { readFace(text, face, normals); });

        vertexBase = static_cast<std::int32_t>(model.vertices.size());
        // Meant: not a running total, and too far by this mesh's count for the next one, whose
        // table starts at 0; files with several meshes are written for it.
        // `MS3DModelLoad.MovesTheNormalIndicesOfAMeshByTheCountOfTheOneBefore` holds it.
        normalBase = static_cast<std::int32_t>(normals.size());
        return true;
    }

    void readFace(std::string_view text, Face& face, const std::vector<Vector>& normals)
    {
        readTriangle(text, face);
        face.material = materialIndex;
        for (std::size_t k = 0; k < 3; ++k) {
            face.vertex[k] = addIndices(face.vertex[k], vertexBase);
            face.normalIndex[k] = addIndices(face.normalIndex[k], normalBase);
            const std::int32_t vertex = face.vertex[k];
            const std::int32_t normal = face.normalIndex[k];
            // A file may name what it does not hold; then the normal stays as it was.
            if (hasIndex(model.vertices, vertex) && hasIndex(normals, normal)) {
                model.vertices[static_cast<std::size_t>(vertex)].normal =
                    normals[static_cast<std::size_t>(normal)];
            }
        }
    }

    bool readMaterials()
    {
        std::sscanf(lineText().c_str(), "Materials: %d", &materialCount);
        if (!holds(materialCount, sizeof(Material)))
            return false;
        model.materials.resize(toSize(materialCount));
        for (Material& material : model.materials)
            readMaterial(material);
        return true;
    }

    void readMaterial(Material& material)
    {
        line(); // the name
        readVector(line(), material.ambient);
        readVector(line(), material.diffuse);
        readVector(line(), material.specular);
        readVector(line(), material.emissive);
        readFloat(line(), material.shininess);
        readFloat(line(), material.transparency);
        std::sscanf(lineText().c_str(), "\"%511s", texture.data());
        line(); // the alpha texture

        // The pattern ends at white space, and takes the closing quote with it if there is none
        // before.
        material.texture = texture.data();
        material.texture.resize(std::min(material.texture.find('"'), material.texture.size()));
        if (!material.texture.empty())
            assignTexture(material.textureId, TextureKey{material.texture, 0});
    }

    bool readBones()
    {
        std::sscanf(lineText().c_str(), "Bones: %d", &boneCount);
        if (!holds(boneCount, sizeof(Bone) + sizeof(void*)))
            return false;
        model.bones.reserve(toSize(boneCount));
        for (std::size_t i = 0; i < toSize(boneCount); ++i)
            if (!readBone(i))
                return false;
        attachVertices();
        return true;
    }

    bool readBone(std::size_t index)
    {
        Bone* const bone = newBone();
        bone->name = lineText();
        bone->parent = findParent(line(), index);
        readRestPose(line(), *bone);
        if (!readKeys(bone->positionKeys) || !readKeys(bone->rotationKeys))
            return false;
        bone->index = static_cast<std::int32_t>(index);
        model.bones.push_back(bone);
        bone->position = bone->localPosition;
        bone->rotation = bone->localRotation;
        if (bone->parent != nullptr)
            bone->parent->children.push_back(bone->index);
        else
            model.rootBones.push_back(bone);
        return true;
    }

    /// The bone before `index` that has the name; of several, the last. Null for "" and for a name
    /// that is none's, so that the bone becomes a root.
    Bone* findParent(std::string_view name, std::size_t index) const
    {
        if (name == "\"\"")
            return nullptr;
        for (std::size_t i = index; i-- > 0;) {
            if (model.bones[i]->name == name)
                return model.bones[i];
        }
        return nullptr;
    }

    bool readKeys(std::vector<KeyFrame>& keys)
    {
        std::int32_t count = 0;
        readCount(line(), count);
        if (!holds(count, sizeof(KeyFrame)))
            return false;
        keys.resize(toSize(count));
        readItems(keys, 0, readKey);
        return true;
    }

    /// Gives each bone its vertices, in ascending order, in two passes over the vertices.
    void attachVertices()
    {
        std::vector<std::size_t> counts(model.bones.size());
        for (const Vertex& vertex : model.vertices) {
            if (hasIndex(counts, vertex.bone))
                ++counts[static_cast<std::size_t>(vertex.bone)];
        }
        for (std::size_t i = 0; i < counts.size(); ++i)
            model.bones[i]->attached.reserve(counts[i]);
        for (std::size_t i = 0; i < model.vertices.size(); ++i) {
            const std::int32_t bone = model.vertices[i].bone;
            if (hasIndex(model.bones, bone)) {
                model.bones[static_cast<std::size_t>(bone)]->attached.push_back(
                    static_cast<std::int32_t>(i));
            }
        }
    }

    Model& model;
    ModelFile& file;
    std::int32_t meshCount = 0;
    std::int32_t materialIndex = 0;
    std::int32_t vertexCount = 0;
    std::int32_t normalCount = 0;
    std::int32_t triangleCount = 0;
    std::int32_t materialCount = 0;
    std::int32_t boneCount = 0;
    std::int32_t vertexBase = 0;
    std::int32_t normalBase = 0;
    std::array<char, 512> texture = {};
};
} // namespace

std::string readModelLine(std::FILE* file)
{
    // Meant: one for the program, and never cleared: at the end of a file it holds the last line,
    // which readers take for what is missing; `ReadModelLine.RepeatsTheLastLineAtTheEnd` holds it.
    static std::array<char, ModelFile::longestPiece + 1> buffer = {};
    do {
        std::ignore = std::fgets(buffer.data(), buffer.size(), file);
    } while (std::strstr(buffer.data(), "//") != nullptr || buffer[0] == '\n');
    std::string line(buffer.data());
    if (!line.empty())
        line.pop_back();
    return line;
}

MS3DModel::~MS3DModel()
{
    Model::release();
}

std::int32_t MS3DModel::load(const std::string& path)
{
    const std::unique_ptr<std::FILE, FileCloser> stream(std::fopen(path.c_str(), "r"));
    if (stream == nullptr) {
        std::cerr << "'" << path << "': Invalid model filename\n";
        return 0;
    }
    const NumbersOfC numbersOfC;
    ModelFile file(stream.get());
    const bool isHeld = Reader(*this, file).read();
    restVertices = vertices;
    if (!isHeld)
        std::cerr << "'" << path << "': Too large for the memory\n";
    return isHeld ? 1 : 0;
}
} // namespace tamor

#include "tests/models/PlainMS3DReader.h"

#include <bit>
#include <cstring>

namespace tamor::test
{
namespace
{
class PlainReader
{
public:
    explicit PlainReader(std::FILE* newFile) : file(newFile) {}

    const char* line()
    {
        do {
            if (std::fgets(buffer, sizeof(buffer), file) == nullptr)
                clearerr(file);
        } while (std::strstr(buffer, "//") != nullptr || buffer[0] == '\n');
        text = buffer;
        if (!text.empty())
            text.pop_back();
        return text.c_str();
    }

    void readMeshes(Model& model)
    {
        int meshCount = 0;
        int material = 0;
        int vertexCount = 0;
        int normalCount = 0;
        int faceCount = 0;
        std::uint32_t vertexBase = 0;
        std::uint32_t normalBase = 0;
        std::sscanf(line(), "Frames: %d", &model.frameCount);
        line();
        std::sscanf(line(), "Meshes: %d", &meshCount);
        for (int mesh = 0; mesh < meshCount; ++mesh) {
            std::sscanf(line(), "%*s %*d %d", &material);
            std::sscanf(line(), "%d", &vertexCount);
            for (int i = 0; i < vertexCount; ++i) {
                Vertex v;
                std::sscanf(line(), "%*d %f %f %f %f %f %d", &v.position.x, &v.position.y,
                            &v.position.z, &v.u, &v.v, &v.bone);
                model.vertices.push_back(v);
            }
            std::vector<Vector> normals;
            std::sscanf(line(), "%d", &normalCount);
            for (int i = 0; i < normalCount; ++i) {
                Vector n;
                std::sscanf(line(), "%f %f %f", &n.x, &n.y, &n.z);
                normals.push_back(n);
            }
            std::sscanf(line(), "%d", &faceCount);
            for (int i = 0; i < faceCount; ++i) {
                Face f;
                std::sscanf(line(), "%*d %d %d %d %d %d %d %d", &f.vertex[0], &f.vertex[1],
                            &f.vertex[2], &f.normalIndex[0], &f.normalIndex[1], &f.normalIndex[2],
                            &f.smoothingGroup);
                for (std::size_t k = 0; k < 3; ++k) {
                    const std::uint32_t vertex =
                        static_cast<std::uint32_t>(f.vertex[k]) + vertexBase;
                    const std::uint32_t normal =
                        static_cast<std::uint32_t>(f.normalIndex[k]) + normalBase;
                    f.vertex[k] = static_cast<std::int32_t>(vertex);
                    f.normalIndex[k] = static_cast<std::int32_t>(normal);
                    if (vertex < model.vertices.size() && normal < normals.size())
                        model.vertices[vertex].normal = normals[normal];
                }
                f.material = material;
                model.faces.push_back(f);
            }
            vertexBase = static_cast<std::uint32_t>(model.vertices.size());
            normalBase = static_cast<std::uint32_t>(normals.size());
        }
    }

    void readMaterials(Model& model)
    {
        int count = 0;
        char texture[512] = "";
        std::sscanf(line(), "Materials: %d", &count);
        for (int i = 0; i < count; ++i) {
            Material m;
            line();
            for (Vector* colour : {&m.ambient, &m.diffuse, &m.specular, &m.emissive})
                std::sscanf(line(), "%f %f %f %*f", &colour->x, &colour->y, &colour->z);
            std::sscanf(line(), "%f", &m.shininess);
            std::sscanf(line(), "%f", &m.transparency);
            std::sscanf(line(), "\"%511s", texture);
            if (char* quote = std::strchr(texture, '"'))
                *quote = '\0';
            line();
            m.texture = texture;
            model.materials.push_back(m);
        }
    }

    void readBones(Model& model)
    {
        int count = 0;
        std::sscanf(line(), "Bones: %d", &count);
        for (int i = 0; i < count; ++i) {
            auto* bone = new Bone;
            bone->name = line();
            const std::string parent = line();
            for (Bone* other : model.bones) {
                if (parent != "\"\"" && other->name == parent)
                    bone->parent = other;
            }
            Vector& p = bone->localPosition;
            Vector& r = bone->localRotation;
            std::sscanf(line(), "%d %f %f %f %f %f %f", &bone->flags, &p.x, &p.y, &p.z, &r.x, &r.y,
                        &r.z);
            for (auto* keys : {&bone->positionKeys, &bone->rotationKeys}) {
                int keyCount = 0;
                std::sscanf(line(), "%d", &keyCount);
                for (int k = 0; k < keyCount; ++k) {
                    KeyFrame key;
                    std::sscanf(line(), "%f %f %f %f", &key.time, &key.value.x, &key.value.y,
                                &key.value.z);
                    keys->push_back(key);
                }
            }
            bone->index = i;
            bone->position = p;
            bone->rotation = r;
            model.bones.push_back(bone);
            if (bone->parent != nullptr)
                bone->parent->children.push_back(i);
            else
                model.rootBones.push_back(bone);
            for (std::size_t v = 0; v < model.vertices.size(); ++v) {
                if (model.vertices[v].bone == i)
                    bone->attached.push_back(static_cast<std::int32_t>(v));
            }
        }
    }

private:
    std::FILE* file;
    char buffer[256] = "";
    std::string text;
};

/// Whether two lists of records without gaps have the same bytes.
template <typename Record>
bool areSame(const std::vector<Record>& a, const std::vector<Record>& b)
{
    return a.size() == b.size() && (a.empty() || std::memcmp(static_cast<const void*>(a.data()),
                                                             static_cast<const void*>(b.data()),
                                                             a.size() * sizeof(Record)) == 0);
}

bool areSame(float a, float b)
{
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

bool areSame(const Vector& a, const Vector& b)
{
    return areSame(a.x, b.x) && areSame(a.y, b.y) && areSame(a.z, b.z) && areSame(a.w, b.w);
}

bool areSame(const Material& a, const Material& b)
{
    return areSame(a.ambient, b.ambient) && areSame(a.diffuse, b.diffuse) &&
           areSame(a.specular, b.specular) && areSame(a.emissive, b.emissive) &&
           areSame(a.shininess, b.shininess) && areSame(a.transparency, b.transparency) &&
           a.texture == b.texture;
}

std::int32_t parentIndex(const Bone& bone)
{
    return bone.parent == nullptr ? -1 : bone.parent->index;
}

bool areSame(const Bone& a, const Bone& b)
{
    return a.name == b.name && parentIndex(a) == parentIndex(b) && a.children == b.children &&
           a.attached == b.attached && a.flags == b.flags && a.index == b.index &&
           areSame(a.localPosition, b.localPosition) && areSame(a.localRotation, b.localRotation) &&
           areSame(a.position, b.position) && areSame(a.rotation, b.rotation) &&
           areSame(a.positionKeys, b.positionKeys) && areSame(a.rotationKeys, b.rotationKeys);
}
} // namespace

void readPlainly(Model& model, std::FILE* file)
{
    PlainReader reader(file);
    reader.readMeshes(model);
    reader.readMaterials(model);
    reader.readBones(model);
    model.restVertices = model.vertices;
}

std::string difference(const Model& a, const Model& b)
{
    if (a.frameCount != b.frameCount)
        return "frame count";
    if (!areSame(a.vertices, b.vertices) || !areSame(a.restVertices, b.restVertices))
        return "vertices";
    if (!areSame(a.faces, b.faces))
        return "faces";
    if (a.materials.size() != b.materials.size() || a.bones.size() != b.bones.size() ||
        a.rootBones.size() != b.rootBones.size())
        return "number of materials or bones";
    for (std::size_t i = 0; i < a.materials.size(); ++i) {
        if (!areSame(a.materials[i], b.materials[i]))
            return "material " + std::to_string(i);
    }
    for (std::size_t i = 0; i < a.bones.size(); ++i) {
        if (!areSame(*a.bones[i], *b.bones[i]))
            return "bone " + std::to_string(i);
    }
    for (std::size_t i = 0; i < a.rootBones.size(); ++i) {
        if (a.rootBones[i]->index != b.rootBones[i]->index)
            return "root " + std::to_string(i);
    }
    return "";
}
} // namespace tamor::test

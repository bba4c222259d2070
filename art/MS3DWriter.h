/// \file
/// The text export of MilkShape 3D, written so that `MS3DModel` reads back what was meant.
#pragma once

#include "models/Model.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace tamor::tools
{
/// Collects the parts of a file, then writes it.
class MS3DWriter
{
public:
    explicit MS3DWriter(int newFrames) : frames(newFrames) {}

    /// Takes the vertices, with their normals and bones, and the faces of `mesh`.
    void addMesh(const std::string& name, int material, const Model& mesh)
    {
        meshes.push_back({name, material, mesh});
    }

    void addMaterial(const std::string& name, const Material& material)
    {
        materials.emplace_back(name, material);
    }

    /// Parents must come before their children and be in `newBones`. Names are written in quotes.
    void setBones(std::vector<Bone> newBones) { bones = std::move(newBones); }

    /// \return whether the file could be written
    bool write(const std::string& path)
    {
        out = std::fopen(path.c_str(), "w");
        if (out == nullptr)
            return false;
        std::fprintf(out, "// Made by art/MakeExampleModels.cpp.\n\n");
        std::fprintf(out, "Frames: %d\nFrame: 1\n\nMeshes: %zu\n", frames, meshes.size());
        std::int32_t normalBase = 0;
        for (const Mesh& mesh : meshes) {
            writeMesh(mesh, normalBase);
            normalBase = static_cast<std::int32_t>(mesh.model.vertices.size());
        }
        std::fprintf(out, "\nMaterials: %zu\n", materials.size());
        for (const auto& [name, material] : materials)
            writeMaterial(name, material);
        std::fprintf(out, "\nBones: %zu\n", bones.size());
        for (const Bone& bone : bones)
            writeBone(bone);
        const bool failed = std::ferror(out) != 0;
        return std::fclose(out) == 0 && !failed;
    }

private:
    struct Mesh
    {
        std::string name;
        int material;
        Model model;
    };

    void writeFloats(std::initializer_list<float> values)
    {
        const char* separator = "";
        for (const float value : values) {
            // No more digits than a file needs; and what rounds to 0 has no sign.
            const double rounded = std::round(static_cast<double>(value) * 1e5) / 1e5 + 0.0;
            std::fprintf(out, "%s%g", separator, rounded);
            separator = " ";
        }
    }

    void writeVector(const Vector& v, const char* end)
    {
        writeFloats({v.x, v.y, v.z});
        std::fprintf(out, "%s\n", end);
    }

    /// \param normalBase  what the reader adds to the indices of this mesh, though its table of
    ///                    normals starts at 0
    void writeMesh(const Mesh& mesh, std::int32_t normalBase)
    {
        std::fprintf(out, "\"%s\" 0 %d\n%zu\n", mesh.name.c_str(), mesh.material,
                     mesh.model.vertices.size());
        for (const Vertex& vertex : mesh.model.vertices) {
            std::fprintf(out, "0 ");
            writeFloats(
                {vertex.position.x, vertex.position.y, vertex.position.z, vertex.u, vertex.v});
            std::fprintf(out, " %d\n", vertex.bone);
        }
        std::fprintf(out, "%zu\n", mesh.model.vertices.size());
        for (const Vertex& vertex : mesh.model.vertices)
            writeVector(vertex.normal, "");
        std::fprintf(out, "%zu\n", mesh.model.faces.size());
        for (const Face& face : mesh.model.faces) {
            const auto [a, b, c] = face.vertex;
            std::fprintf(out, "0 %d %d %d %d %d %d 1\n", a, b, c, a - normalBase, b - normalBase,
                         c - normalBase);
        }
    }

    void writeMaterial(const std::string& name, const Material& material)
    {
        std::fprintf(out, "\"%s\"\n", name.c_str());
        for (const Vector& colour :
             {material.ambient, material.diffuse, material.specular, material.emissive})
            writeVector(colour, " 1");
        writeFloats({material.shininess});
        std::fprintf(out, "\n");
        writeFloats({material.transparency});
        std::fprintf(out, "\n\"%s\"\n\"\"\n", material.texture.c_str());
    }

    void writeBone(const Bone& bone)
    {
        std::fprintf(out, "\"%s\"\n\"%s\"\n0 ", bone.name.c_str(),
                     bone.parent == nullptr ? "" : bone.parent->name.c_str());
        writeFloats({bone.localPosition.x, bone.localPosition.y, bone.localPosition.z});
        std::fprintf(out, " ");
        writeVector(bone.localRotation, "");
        writeKeys(bone.positionKeys);
        writeKeys(bone.rotationKeys);
    }

    void writeKeys(const std::vector<KeyFrame>& keys)
    {
        std::fprintf(out, "%zu\n", keys.size());
        for (const KeyFrame& key : keys) {
            writeFloats({key.time});
            std::fprintf(out, " ");
            writeVector(key.value, "");
        }
    }

    int frames;
    std::vector<Mesh> meshes;
    std::vector<std::pair<std::string, Material>> materials;
    std::vector<Bone> bones;
    std::FILE* out = nullptr;
};
} // namespace tamor::tools

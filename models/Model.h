/// \file
/// The triangle mesh with materials and a bone hierarchy: its records, shapes, motion and drawing.
///
/// The folder models/ holds the mesh class, its readers (the text export of MilkShape 3D, the
/// engine's own VRX format), skeletal animation, drawing, and the factory that turns a name into a
/// model. It leaves textures to textures/, and keeps no clock: the host owns time.
#pragma once

#include "TamorExport.h"
#include "maths/Matrix.h"
#include "maths/Vector.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tamor
{
/// A corner that faces share.
struct Vertex
{
    Vector position; ///< where the vertex is now
    Vector normal;   ///< from the file or `computeNormals`; animation does not turn it
    float u = 0.0F;  ///< texture coordinate
    float v = 0.0F;  ///< texture coordinate
    /// The owning bone's index in `Model::bones`; a value that is no bone's index means none.
    std::int32_t bone = -1;
};

static_assert(sizeof(Vertex) == 44);

/// A triangle.
struct Face
{
    /// Indices into `Model::vertices`. One that is out of range is kept, and reads as a new
    /// `Vertex` wherever the face is used.
    std::array<std::int32_t, 3> vertex = {};
    /// Indices into the file's normal table; kept only for the record.
    std::array<std::int32_t, 3> normalIndex = {};
    std::int32_t smoothingGroup = 0; ///< kept only for the record
    /// The colour of the three corners in buffer drawing.
    Vector colour;
    Vector normal; ///< as the file has it or `computeNormals` works it out; of length 1
    /// Index into `Model::materials`.
    std::int32_t material = 0;
};

static_assert(sizeof(Face) == 64);

/// How a surface takes light. Colours are red, green, blue, with an alpha that stays 1.
struct Material
{
    Vector ambient;              ///< of the light from everywhere
    Vector diffuse;              ///< of the light that surfaces scatter
    Vector specular;             ///< of the light in highlights
    Vector emissive;             ///< shown without any light
    float shininess = 0.0F;      ///< 0 to 128: the greater, the smaller the highlights
    float transparency = 0.0F;   ///< the alpha of the drawing colour
    std::string texture;         ///< file name; empty for none
    std::uint32_t textureId = 0; ///< OpenGL name, from `assignTexture`; 0 for none
};

/// An offset to a bone's rest pose at a point in time.
struct KeyFrame
{
    float time = 0.0F; ///< in frames
    Vector value;      ///< a translation, or Euler angles in radians
};

static_assert(sizeof(KeyFrame) == 20);

/// A joint of the skeleton, and the part of the mesh that moves with it.
///
/// Always held by pointer. Angles are Euler angles in radians.
struct Bone
{
    std::string name;                   ///< the name line of the file, quotes and all
    Bone* parent = nullptr;             ///< null at a root
    std::vector<std::int32_t> children; ///< indices into `Model::bones`
    std::vector<std::int32_t> attached; ///< indices into `Model::vertices`
    Matrix matrix;          ///< written by `Model::animateBone`, read for the children only
    std::int32_t flags = 0; ///< as in the file
    Vector absolute;        ///< place in the rest pose, in model space
    Vector localPosition;   ///< rest pose, relative to the parent
    Vector localRotation;   ///< rest pose, relative to the parent
    Vector position;        ///< the current local position
    Vector rotation;        ///< the current local rotation
    std::vector<KeyFrame> positionKeys; ///< added to `localPosition`
    std::vector<KeyFrame> rotationKeys; ///< added to `localRotation`
    std::int32_t index = 0;             ///< its own index in `Model::bones`
};

/// A mesh, posed by its bones and drawn with one material.
///
/// `createModel` makes one that is ready to draw; then `update` and `render` follow once a frame.
/// Delete it through this class. All operations run on the thread of the OpenGL context. Those that
/// return an integer return 0 unless told otherwise, and nothing here prints.
class TAMOR_EXPORT Model
{
public:
    Model() = default;

    /// Frees the containers. The bones are dropped, not deleted: whoever holds one may keep it.
    virtual ~Model();

    // The order of the virtual operations, and of the fields below, is settled.

    /// Reads a file. Here: does nothing.
    virtual std::int32_t load(const std::string& path);

    /// Writes the model. Here: does nothing.
    virtual std::int32_t save();

    /// Lets go of what a reader holds. Here: nothing.
    virtual std::int32_t release();

    /// Fills an empty model with a cube from -1 to 1: 20 vertices, 12 faces, no material.
    /// \return true
    bool makeCube();

    /// Fills an empty model with a teapot: 301 vertices, 576 faces, no material. It spans x from
    /// -5.999 to 6.860 (handle to spout), y from -1.367 to 4.933 and z from -4.012 to 3.988.
    /// \return true
    bool makeTeapot();

    /// Finishes a model that was loaded: poses the bones at rest, which sets their `absolute`,
    /// divides every triangle in four `levels` times, and marks the colour of every face with
    /// (-1, -1, -1). To be called once.
    void prepare(std::int32_t levels);

    /// Moves the vertices of `bone` and of all bones below it to the bones' current pose.
    ///
    /// A vertex goes through parentMatrix x T(position) x Rz x Ry x Rx, starting from its rest
    /// position minus the bone's `absolute`. Normals stay as they are.
    /// \param setAbsolute  whether to take `absolute` from this pose
    void poseBone(Bone* bone, Matrix parentMatrix, bool setAbsolute);

    /// Sets the current pose, and `matrix`, of the bone at `index` and of all bones below it from
    /// their key frames. An index that is no bone's does nothing.
    ///
    /// The sample lies between the last key before `time`, strictly, and the key after it; before
    /// all keys it is the first key's value, after all keys the last one's. It is added to the rest
    /// pose. A root starts from OpenGL's modelview matrix.
    /// \param time  in frames
    void animateBone(std::int32_t index, float time);

    /// Sets the pose of all bones at `time`, in frames, and refreshes the buffers. The vertices
    /// follow in `render`.
    ///
    /// The animation loops, and both ends are part of it: with 30 frames, -1 is 29, 30 is 30 and 31
    /// is 1.
    std::int32_t update(float time);

    /// Draws the model at `position`, turned by `rotation`, with the material of its first face.
    ///
    /// OpenGL's state is not put back: the modelview matrix stays multiplied by the model's
    /// transform, and the texture bound, or texturing off. Immediate mode, which `renderMode` 1 or
    /// a missing extension selects, also leaves lighting off and the colour green; buffers leave
    /// four client arrays enabled. A model without faces draws nothing.
    ///
    /// Immediate mode also draws a green line for every normal.
    /// \param flat  take the normals of faces rather than of vertices. Buffers keep the choice of
    ///              the call that filled them.
    std::int32_t render(bool flat);

    /// Chooses how to draw, and fills the buffers if that is by buffers.
    /// \param mode     0 to choose at the next drawing, 1 immediate, 2 buffers
    /// \param flat     as in `render`; kept in `flatShaded`
    /// \param refresh  fill even if the mode is not new, but leave texture coordinates as they are
    std::int32_t setRenderMode(std::int32_t mode, bool flat, bool refresh);

    /// Works out the normals of faces and, unless `flat`, of vertices as the mean of their faces'.
    ///
    /// What the vertex normals held stays in the sum: clear them first. A vertex in no face gets
    /// not-a-number components.
    std::int32_t computeNormals(bool flat);

    std::vector<Bone*> bones;     ///< all of them, in the file's order
    std::vector<Bone*> rootBones; ///< those without a parent
    std::vector<Vertex> vertices; ///< what is drawn
    /// The rest pose, which `poseBone` reads. Empty in the built-in shapes.
    std::vector<Vertex> restVertices;
    std::vector<Face> faces;          ///< triangles of `vertices`
    std::vector<Material> materials;  ///< which faces name by index
    Vector position;                  ///< where the model stands
    Vector rotation;                  ///< Euler angles of the model, in radians
    std::int32_t flatShaded = 0;      ///< last value given to `setRenderMode`
    std::int32_t frameCount = 0;      ///< length of the animation
    std::uint32_t vertexBuffer = 0;   ///< OpenGL buffer name
    std::uint32_t normalBuffer = 0;   ///< OpenGL buffer name
    std::uint32_t texCoordBuffer = 0; ///< OpenGL buffer name
    std::uint32_t colourBuffer = 0;   ///< OpenGL buffer name
    std::int32_t renderMode = 0;      ///< 0 not chosen, 1 immediate, 2 buffers

private:
    void moveAttached(const Bone& bone, const Matrix& matrix);
    void subdivide();
};
} // namespace tamor

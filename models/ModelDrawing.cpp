#include "platform/GLee.h"

#include "maths/GLState.h"
#include "models/Model.h"
#include "models/internal/BufferNames.h"
#include "models/internal/CornerArrays.h"
#include "models/internal/ModelAccess.h"

#include <GL/gl.h>

namespace tamor
{
namespace
{
constexpr std::int32_t modeNotChosen = 0;
constexpr std::int32_t modeImmediate = 1;
constexpr std::int32_t modeBuffers = 2;

/// The mean of three places.
Vector middle(const Vertex& a, const Vertex& b, const Vertex& c)
{
    const Vector sum = a.position + b.position + c.position;
    return sum / 3.0F;
}

void normalLine(const Vector& from, const Vector& normal)
{
    const Vector to = from + normal;
    glVertex3f(from.x, from.y, from.z);
    glVertex3f(to.x, to.y, to.z);
}

void drawTriangles(const Model& model, bool flat)
{
    glBegin(GL_TRIANGLES);
    for (const Face& face : model.faces) {
        if (flat)
            glNormal3f(face.normal.x, face.normal.y, face.normal.z);
        for (const std::int32_t index : face.vertex) {
            const Vertex& vertex = vertexAt(model.vertices, index);
            if (!flat)
                glNormal3f(vertex.normal.x, vertex.normal.y, vertex.normal.z);
            glTexCoord2f(vertex.u, vertex.v);
            glVertex3f(vertex.position.x, vertex.position.y, vertex.position.z);
        }
    }
    glEnd();
}

void drawNormals(const Model& model, bool flat)
{
    glBegin(GL_LINES);
    for (const Face& face : model.faces) {
        const Vertex& a = vertexAt(model.vertices, face.vertex[0]);
        const Vertex& b = vertexAt(model.vertices, face.vertex[1]);
        const Vertex& c = vertexAt(model.vertices, face.vertex[2]);
        if (flat) {
            // Meant: the third corner's normal, not the face's, shows a flat face's normal;
            // `ModelImmediateGLTest.DrawsOneNormalAFaceWhenFlat` holds it.
            normalLine(middle(a, b, c), c.normal);
            continue;
        }
        normalLine(a.position, a.normal);
        normalLine(b.position, b.normal);
        normalLine(c.position, c.normal);
    }
    glEnd();
}

/// Sets texture and colour by the material at `index`.
void applyMaterial(const std::vector<Material>& materials, std::int32_t index)
{
    if (hasIndex(materials, index)) {
        const Material& material = materials[static_cast<std::size_t>(index)];
        bindTexture(material.textureId);
        glColor4f(material.diffuse.x, material.diffuse.y, material.diffuse.z,
                  material.transparency);
        return;
    }
    // Meant: an index of one past the last material leaves the texture as it is, which includes 0
    // in a model without materials; `ModelMaterialGLTest.LeavesTheTextureAloneOnePastTheEnd` holds
    // it.
    if (index < 0 || static_cast<std::size_t>(index) != materials.size())
        glDisable(GL_TEXTURE_2D);
}

void drawBuffers(const Model& model)
{
    glBindBuffer(GL_ARRAY_BUFFER, model.vertexBuffer);
    glVertexPointer(3, GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, model.colourBuffer);
    glColorPointer(3, GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, model.normalBuffer);
    glNormalPointer(GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, model.texCoordBuffer);
    glTexCoordPointer(2, GL_FLOAT, 0, nullptr);

    // A model that came second has no buffers, and OpenGL would read from a null pointer.
    const bool hasBuffers = model.vertexBuffer != 0 && model.colourBuffer != 0 &&
                            model.normalBuffer != 0 && model.texCoordBuffer != 0;
    if (hasBuffers)
        glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(model.faces.size() * 3));
}

template <typename Item>
void fillBuffer(std::uint32_t name, const std::vector<Item>& data)
{
    glBindBuffer(GL_ARRAY_BUFFER, name);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(data.size() * sizeof(Item)), data.data(),
                 GL_DYNAMIC_DRAW);
}
} // namespace

bool bufferNamesMade = false;

std::int32_t Model::render(bool flat)
{
    glPointSize(5.0F);
    for (Bone* bone : rootBones)
        poseBone(bone, Matrix(), false);

    // Meant: nothing is pushed, so the transform stays on the matrix; a caller saves and restores
    // it; `ModelRenderGLTest.AppliesTheTransformTwiceWhenDrawnTwice` holds it.
    Matrix transform;
    transform.translate(position.x, position.y, position.z);
    transform.rotate(rotation.x, rotation.y, rotation.z);
    transform.multiplyModelview();

    glPointSize(10.0F);
    glColor3f(0.0F, 0.0F, 0.0F);
    if (faces.empty())
        return 0;
    applyMaterial(materials, faces.front().material);

    if (!GLEE_ARB_vertex_buffer_object || renderMode == modeImmediate) {
        drawTriangles(*this, flat);
        glDisable(GL_LIGHTING);
        glColor3f(0.0F, 1.0F, 0.0F);
        drawNormals(*this, flat);
        return 0;
    }

    if (renderMode == modeNotChosen)
        setRenderMode(modeBuffers, flat, false);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    if (renderMode == modeBuffers)
        drawBuffers(*this);
    return 0;
}

std::int32_t Model::setRenderMode(std::int32_t mode, bool flat, bool refresh)
{
    flatShaded = flat ? 1 : 0;
    if (!refresh && renderMode == mode)
        return 0;
    renderMode = mode;
    if (!GLEE_ARB_vertex_buffer_object)
        return 0;

    if (!bufferNamesMade) {
        glGenBuffers(1, &vertexBuffer);
        glGenBuffers(1, &colourBuffer);
        glGenBuffers(1, &normalBuffer);
        glGenBuffers(1, &texCoordBuffer);
        bufferNamesMade = true;
    }
    if (mode != modeBuffers)
        return 0;

    const CornerArrays arrays = makeCornerArrays(*this, flat, !refresh);
    fillBuffer(vertexBuffer, arrays.positions);
    fillBuffer(colourBuffer, arrays.colours);
    fillBuffer(normalBuffer, arrays.normals);
    // Animation does not change texture coordinates.
    if (!refresh)
        fillBuffer(texCoordBuffer, arrays.texCoords);
    return 0;
}

std::int32_t Model::computeNormals(bool flat)
{
    std::vector<std::int32_t> counters(vertices.size());
    for (Face& face : faces) {
        const Vector a = vertexAt(vertices, face.vertex[0]).position;
        const Vector b = vertexAt(vertices, face.vertex[1]).position;
        const Vector c = vertexAt(vertices, face.vertex[2]).position;
        face.normal = (b - a).cross(c - a);
        face.normal.normalise();
        if (flat)
            continue;
        for (const std::int32_t index : face.vertex) {
            if (!hasIndex(vertices, index))
                continue;
            vertices[static_cast<std::size_t>(index)].normal += face.normal;
            ++counters[static_cast<std::size_t>(index)];
        }
    }
    if (flat)
        return 0;

    for (std::size_t i = 0; i < vertices.size(); ++i) {
        vertices[i].normal /= static_cast<float>(counters[i]);
        vertices[i].normal.normalise();
    }
    return 0;
}
} // namespace tamor

#include "platform/GLee.h"

#include "examples/tour/Drawable.h"

#include <cmath>
#include <initializer_list>

namespace tour
{
using namespace tamor;

namespace
{
constexpr std::int32_t immediateMode = 1;
constexpr std::int32_t bufferMode = 2;

void giveBackBuffers(Model& model)
{
    for (std::uint32_t* name :
         {&model.vertexBuffer, &model.colourBuffer, &model.normalBuffer, &model.texCoordBuffer}) {
        if (*name != 0)
            glDeleteBuffers(1, name);
        *name = 0;
    }
}

void makeBuffers(Model& model)
{
    for (std::uint32_t* name :
         {&model.vertexBuffer, &model.colourBuffer, &model.normalBuffer, &model.texCoordBuffer})
        glGenBuffers(1, name);
}
} // namespace

void takeFirstBuffers()
{
    Model first;
    first.setRenderMode(immediateMode, false, false);
    if (GLEE_ARB_vertex_buffer_object)
        giveBackBuffers(first);
}

Drawable::~Drawable()
{
    giveBackBuffers(*owned);
    for (const Bone* bone : owned->bones)
        delete bone; // a model drops its bones
}

void Drawable::take(std::unique_ptr<Model> newModel)
{
    giveBackBuffers(*owned);
    for (const Bone* bone : owned->bones)
        delete bone;
    owned = std::move(newModel);
    corners.clear();
    isFilled = false;
}

void Drawable::pose(float frame)
{
    // A model without frames must not be given a time.
    if (owned->frameCount <= 0 || owned->bones.empty())
        return;
    owned->update(std::fmod(frame, static_cast<float>(owned->frameCount)));
    // That leaves a buffer bound, and then arrays would be taken for places in it.
    if (GLEE_ARB_vertex_buffer_object)
        glBindBuffer(GL_ARRAY_BUFFER, 0);
}

void Drawable::draw(Way way)
{
    glPushMatrix(); // the engine leaves the model's transform on it
    if (way == Way::immediate) {
        owned->setRenderMode(immediateMode, false, false);
        owned->render(false);
        glEnable(GL_LIGHTING); // it leaves this off
    } else if (way == Way::buffers && GLEE_ARB_vertex_buffer_object) {
        drawBuffers();
    } else {
        drawArrays();
    }
    glPopMatrix();
}

void Drawable::drawBuffers()
{
    if (owned->vertexBuffer == 0)
        makeBuffers(*owned);
    if (!isFilled) {
        owned->renderMode = 0; // so that texture coordinates are filled, too
        owned->setRenderMode(bufferMode, false, false);
        isFilled = true;
    }
    owned->setRenderMode(bufferMode, false, false);
    owned->render(false);
    for (const GLenum array : std::initializer_list<GLenum>{GL_VERTEX_ARRAY, GL_NORMAL_ARRAY,
                                                            GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY})
        glDisableClientState(array);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

/// What `Model::render` does, but for the drawing itself.
void Drawable::drawArrays()
{
    if (corners.size() != owned->faces.size() * 3) {
        corners.clear();
        for (const Face& face : owned->faces)
            for (const std::int32_t index : face.vertex)
                corners.push_back(static_cast<std::uint32_t>(index));
    }
    if (corners.empty())
        return;
    for (Bone* bone : owned->rootBones)
        owned->poseBone(bone, Matrix(), false);
    if (!owned->materials.empty())
        glBindTexture(GL_TEXTURE_2D, owned->materials.front().textureId);

    const Vertex& first = owned->vertices.front();
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof(Vertex), &first.position);
    glNormalPointer(GL_FLOAT, sizeof(Vertex), &first.normal);
    glTexCoordPointer(2, GL_FLOAT, sizeof(Vertex), &first.u);
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(corners.size()), GL_UNSIGNED_INT,
                   corners.data());
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
}
} // namespace tour

#include "platform/GLee.h"

#include "examples/tour/Guides.h"

namespace tour
{
using namespace tamor;

namespace
{
/// Where a bone is, and those below it: as `Model::poseBone` places the vertices.
void addBone(const Model& model, const Bone& bone, Matrix matrix, const Vector& from)
{
    matrix.translate(bone.position.x, bone.position.y, bone.position.z);
    matrix.rotate(0.0F, 0.0F, bone.rotation.z);
    matrix.rotate(0.0F, bone.rotation.y, 0.0F);
    matrix.rotate(bone.rotation.x, 0.0F, 0.0F);
    const Vector to = matrix.transformPoint(0.0F, 0.0F, 0.0F);
    glVertex3f(from.x, from.y, from.z);
    glVertex3f(to.x, to.y, to.z);
    for (const std::int32_t child : bone.children)
        addBone(model, *model.bones[static_cast<std::size_t>(child)], matrix, to);
}

void beginLines(float red, float green, float blue)
{
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glLineWidth(2.0F);
    glColor3f(red, green, blue);
}

void endLines()
{
    glLineWidth(1.0F);
    glEnable(GL_LIGHTING);
}
} // namespace

void drawBones(const Model& model)
{
    beginLines(1.0F, 0.85F, 0.2F);
    glDisable(GL_DEPTH_TEST);
    glBegin(GL_LINES);
    for (const Bone* bone : model.rootBones)
        addBone(model, *bone, Matrix(), Vector());
    glEnd();
    glEnable(GL_DEPTH_TEST);
    endLines();
}

void drawBounds(const Vector& low, const Vector& high)
{
    beginLines(0.95F, 0.97F, 1.0F);
    glBegin(GL_LINES);
    for (const float y : {low.y, high.y}) {
        for (const float z : {low.z, high.z}) {
            glVertex3f(low.x, y, z);
            glVertex3f(high.x, y, z);
        }
        for (const float x : {low.x, high.x}) {
            glVertex3f(x, y, low.z);
            glVertex3f(x, y, high.z);
        }
    }
    for (const float x : {low.x, high.x}) {
        for (const float z : {low.z, high.z}) {
            glVertex3f(x, low.y, z);
            glVertex3f(x, high.y, z);
        }
    }
    glEnd();
    endLines();
}
} // namespace tour

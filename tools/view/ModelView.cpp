#include "platform/GLee.h"

#include "tools/view/ModelView.h"

#include "maths/Matrix.h"
#include "models/ModelFactory.h"
#include "textures/TextureRegistry.h"
#include "tools/view/Overlay.h"

#include <SDL.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>

namespace tamor::view
{
namespace
{
constexpr float framesASecond = 24.0F;
constexpr float viewAngle = 45.0F;
constexpr float radiansAPixel = 0.01F;
constexpr float steepest = 1.5F;
constexpr float zoomStep = 1.1F;
constexpr float normalShare = 0.04F; // of the model's size
constexpr float degrees = 180.0F / 3.14159265F;

bool isShape(const std::string& name)
{
    return name == "teapot" || name == "cube";
}

std::string numbers(const Vector& v)
{
    std::array<char, 96> text{};
    std::snprintf(text.data(), text.size(), "%.2f, %.2f, %.2f", static_cast<double>(v.x),
                  static_cast<double>(v.y), static_cast<double>(v.z));
    return text.data();
}

void setMaterial(const Vector& diffuse, const Vector& specular, const Vector& emission,
                 float shininess)
{
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, diffuse.toArray());
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, specular.toArray());
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, emission.toArray());
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, shininess);
}

void point(const Vector& place)
{
    glVertex3f(place.x, place.y, place.z);
}

/// Draws a bone as a line to each of its children, and those, from the pose that the bones have.
void drawBone(const Model& model, const Bone& bone, Matrix matrix, const Vector* parentPlace)
{
    matrix.translate(bone.position.x, bone.position.y, bone.position.z);
    matrix.rotate(0.0F, 0.0F, bone.rotation.z);
    matrix.rotate(0.0F, bone.rotation.y, 0.0F);
    matrix.rotate(bone.rotation.x, 0.0F, 0.0F);
    const Vector place = matrix.transformPoint(0.0F, 0.0F, 0.0F);
    glBegin(GL_POINTS);
    point(place);
    glEnd();
    if (parentPlace != nullptr) {
        glBegin(GL_LINES);
        point(*parentPlace);
        point(place);
        glEnd();
    }
    for (const std::int32_t child : bone.children)
        if (child >= 0 && static_cast<std::size_t>(child) < model.bones.size())
            drawBone(model, *model.bones[static_cast<std::size_t>(child)], matrix, &place);
}
} // namespace

ModelView::ModelView(std::string newName) : name(std::move(newName)) {}

ModelView::~ModelView() = default;

bool ModelView::isThere() const
{
    return isShape(name) || std::ifstream(name).is_open();
}

std::optional<check::FileKind> ModelView::kind() const
{
    if (isShape(name))
        return std::nullopt;
    return check::FileKind::model;
}

std::string ModelView::read(const std::set<std::string>& changed)
{
    std::erase_if(textureRegistry, [&](const TextureEntry& entry) {
        return changed.contains(std::filesystem::path(entry.key.path).filename().string());
    });
    const std::unique_ptr<Model> earlier = std::move(model);
    model.reset(createModel(name));
    // Loading gives no normals to faces.
    model->computeNormals(true);
    // The first model of a process gets buffers and no other does, so they are handed on.
    if (earlier != nullptr) {
        model->vertexBuffer = earlier->vertexBuffer;
        model->normalBuffer = earlier->normalBuffer;
        model->texCoordBuffer = earlier->texCoordBuffer;
        model->colourBuffer = earlier->colourBuffer;
    }
    const float earlierSize = (high - low).length();
    measure();
    const float size = (high - low).length();
    if (earlier == nullptr || size != earlierSize)
        distance = 1.3F * size;
    return std::to_string(model->vertices.size()) + " vertices, " +
           std::to_string(model->faces.size()) + " faces, " + std::to_string(model->bones.size()) +
           " bones";
}

void ModelView::measure()
{
    low = high = model->vertices.empty() ? Vector() : model->vertices.front().position;
    for (const Vertex& vertex : model->vertices) {
        const Vector& p = vertex.position;
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
}

std::set<std::filesystem::path> ModelView::files() const
{
    if (isShape(name))
        return {};
    std::set<std::filesystem::path> result{name};
    for (std::size_t i = 0; model != nullptr && i < model->materials.size(); i++)
        if (!model->materials[i].texture.empty())
            result.insert(model->materials[i].texture);
    return result;
}

void ModelView::takeKeys(const KeyboardState& keys)
{
    const auto toggle = [&](int key, bool& flag) {
        if (keys.pressed[static_cast<std::size_t>(key)] != 0)
            flag = !flag;
    };
    toggle(SDLK_F1, isTold);
    toggle(SDLK_SPACE, isPlaying);
    toggle('w', isWireframe);
    toggle('b', hasBones);
    toggle('n', hasNormals);
    if (keys.pressed['.'] != 0)
        step(1.0F);
    if (keys.pressed[','] != 0)
        step(-1.0F);
    takeWheel(zoomOf(keys));
}

/// Goes on by whole frames, and stays there.
void ModelView::step(float frames)
{
    const auto length = static_cast<float>(model->frameCount);
    isPlaying = false;
    time = std::floor(time) + frames;
    if (length > 0.0F)
        time -= length * std::floor(time / length);
}

void ModelView::takePointer(const MouseState& pointer)
{
    if (pointer.left != 0 && wasLeft) {
        yaw += radiansAPixel * static_cast<float>(pointer.dx);
        pitch -= radiansAPixel * static_cast<float>(pointer.dy);
        pitch = std::clamp(pitch, -steepest, steepest);
    }
    wasLeft = pointer.left != 0;
}

void ModelView::takeWheel(int notches)
{
    const float size = std::max((high - low).length(), 0.001F);
    distance *= std::pow(zoomStep, static_cast<float>(-notches));
    distance = std::clamp(distance, 0.2F * size, 20.0F * size);
}

void ModelView::update(std::int32_t milliseconds)
{
    const auto length = static_cast<float>(model != nullptr ? model->frameCount : 0);
    if (isPlaying && length > 0.0F)
        time = std::fmod(time + static_cast<float>(milliseconds) * framesASecond / 1000.0F, length);
}

void ModelView::lookAt() const
{
    std::array<GLint, 4> viewport;
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    const double size = std::max(static_cast<double>((high - low).length()), 0.001);
    const double far = static_cast<double>(distance) + size;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(static_cast<double>(viewAngle),
                   static_cast<double>(viewport[2]) / static_cast<double>(viewport[3]),
                   std::max(static_cast<double>(distance) - size, far / 1000.0), far);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    const Vector centre = (low + high) / 2.0F;
    glTranslatef(0.0F, 0.0F, -distance);
    glRotatef(pitch * degrees, 1.0F, 0.0F, 0.0F);
    glRotatef(yaw * degrees, 0.0F, 1.0F, 0.0F);
    glTranslatef(-centre.x, -centre.y, -centre.z);
}

/// The lights stay where the viewer is, whatever way the model is turned.
void ModelView::setLights()
{
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    light.setDiffuse({0.95F, 0.93F, 0.88F});
    light.setSpecular({0.6F, 0.6F, 0.6F});
    light.setPosition({0.4F, 0.8F, 0.9F}, false);
    fill.setDiffuse({0.22F, 0.27F, 0.36F});
    fill.setPosition({-0.8F, 0.1F, 0.3F}, false);
    glEnable(light.number);
    glEnable(fill.number);
    glEnable(GL_NORMALIZE);
}

void ModelView::draw()
{
    if (model == nullptr)
        return;
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    setLights();
    // A model without frames must not be given a time.
    if (model->frameCount > 0)
        model->update(time);
    lookAt();
    glEnable(GL_DEPTH_TEST);
    glPushMatrix();
    drawSurface();
    glPopMatrix();

    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    if (hasNormals)
        drawNormals();
    if (hasBones)
        drawBones();
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glPopClientAttrib();
    glPopAttrib();
}

void ModelView::drawSurface()
{
    glEnable(GL_LIGHTING);
    glEnable(GL_TEXTURE_2D);
    const Vector black(0.0F, 0.0F, 0.0F);
    if (isWireframe) {
        glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        setMaterial(black, black, {0.75F, 0.82F, 0.90F}, 0.0F);
    } else if (model->materials.empty()) {
        glDisable(GL_TEXTURE_2D); // drawing takes whatever texture is bound
        setMaterial({0.80F, 0.48F, 0.30F}, {0.5F, 0.5F, 0.5F}, black, 40.0F);
    } else {
        // Drawing sets a colour only; under lighting the host sets the material.
        const Material& material = model->materials.front();
        setMaterial(material.diffuse, material.specular, material.emissive, material.shininess);
    }
    model->render(false);
}

void ModelView::drawNormals() const
{
    const float length = normalShare * (high - low).length();
    glColor3f(0.35F, 0.90F, 0.45F);
    glBegin(GL_LINES);
    for (const Vertex& vertex : model->vertices) {
        point(vertex.position);
        point(vertex.position + vertex.normal * length);
    }
    glEnd();
}

void ModelView::drawBones() const
{
    glDisable(GL_DEPTH_TEST); // they are inside
    glLineWidth(2.0F);
    glPointSize(7.0F);
    glColor3f(1.0F, 0.62F, 0.15F);
    for (const Bone* bone : model->rootBones)
        drawBone(*model, *bone, Matrix(), nullptr);
}

void ModelView::decorate(Overlay& overlay)
{
    if (!isTold || model == nullptr)
        return;
    std::string moment = "none";
    if (model->frameCount > 0) {
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), "frame %.0f of %d", std::floor(double{time}),
                      model->frameCount);
        moment = std::string(text.data()) + (isPlaying ? "" : ", paused");
    }
    std::vector<TextLine> lines{
        {std::to_string(model->vertices.size()), Ink::PLAIN, "vertices"},
        {std::to_string(model->faces.size()), Ink::PLAIN, "faces"},
        {std::to_string(model->bones.size()), Ink::PLAIN, "bones"},
        {moment, Ink::PLAIN, "animation"},
        {numbers(low), Ink::PLAIN, "from"},
        {numbers(high), Ink::PLAIN, "to"},
        {numbers(high - low), Ink::PLAIN, "size"},
    };
    for (const Material& material : model->materials)
        lines.push_back(
            {material.texture.empty() ? "no texture" : material.texture, Ink::PLAIN, "material"});
    overlay.addWindow(name, lines, Corner::TOP_LEFT);
    overlay.addWindow(
        "Keys",
        {{"drag turns; wheel, + and - zoom; space plays and pauses; , and . step", Ink::QUIET},
         {"w wireframe; b bones; n normals; F1 hides this", Ink::QUIET}},
        Corner::BOTTOM_LEFT);
}
} // namespace tamor::view

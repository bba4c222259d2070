#include "tools/view/Layout.h"

#include "textures/TextureRegistry.h"
#include "tools/view/GuiSpace.h"
#include "tools/view/KeptState.h"
#include "tools/view/WidgetTree.h"

#include <GL/gl.h>

#include <algorithm>
#include <fstream>

namespace tamor::view
{
namespace
{
// Longer than any animation takes.
constexpr std::int32_t aLongTime = 100000;

std::string counted(std::size_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}
} // namespace

Layout::Layout(std::string newFile, std::string newShownName)
    : file(std::move(newFile)), inspector(std::move(newShownName))
{}

bool Layout::isThere() const
{
    return std::filesystem::is_regular_file(file) && std::ifstream(file).is_open();
}

std::string Layout::read(const std::set<std::string>& changed)
{
    KeptState kept;
    kept.capture();
    leaveEarlierReading();
    // A texture is known by its file's name, and would not be read again.
    std::erase_if(textureRegistry, [&](const TextureEntry& entry) {
        return changed.contains(std::filesystem::path(entry.key.path).filename().string());
    });
    GLWidget::loadLayout(file);
    kept.restore();
    // The pointer may stand on a widget, which is to know.
    if (hasPointer)
        GLWidget::mouseMoved(pointerPlace);
    statements = readStatements(file);
    inspector.setLines(linesOfWidgets(statements));

    std::string words = counted(allWidgets().size(), "widget");
    if (++readings > 1)
        words += "; " + counted(leftWidgets, "widget") + " and " + counted(leftThemes, "theme") +
                 " of earlier readings stay in memory";
    return words;
}

void Layout::leaveEarlierReading()
{
    leftWidgets += allWidgets().size();
    leftThemes += GLWidget::themes.size();
    GuiSpace fresh;
    fresh.exchange();
}

std::set<std::filesystem::path> Layout::files() const
{
    std::set<std::filesystem::path> result{file, "default.theme"};
    for (const LayoutStatement& statement : statements) {
        if (statement.word != "CONF" || statement.fields[0].empty())
            continue;
        result.insert(statement.fields[0]);
        std::string font;
        if (std::ifstream(statement.fields[0]) >> font)
            result.insert(font);
    }
    for (const auto& [key, theme] : GLWidget::themes) {
        if (key.ends_with(".theme"))
            result.insert(key);
        const std::string texture = theme != nullptr ? theme->textureFile : "";
        if (!texture.empty() && texture != "NULL")
            result.insert(texture);
    }
    return result;
}

void Layout::takeKeys(const KeyboardState& keys)
{
    inspector.takeKeys(keys);
    GLWidget::keysChanged(keys.pressed.data());
}

void Layout::takePointer(const MouseState& pointer)
{
    inspector.takePointer(pointer);
    hasPointer = true;
    pointerPlace = {static_cast<float>(pointer.x), static_cast<float>(pointer.y)};
    GLWidget::mouseMoved(pointerPlace);
    if (!inspector.isOpen())
        GLWidget::mouseButtons(pointer.left != 0, pointer.middle != 0, pointer.right != 0);
}

void Layout::update(std::int32_t milliseconds)
{
    GLWidget::updateAll(milliseconds);
}

void Layout::settle()
{
    // A step that overshoots is put right by the next one.
    for (int i = 0; i < 3; i++)
        GLWidget::updateAll(aLongTime);
}

void Layout::draw()
{
    if (GLWidget::topLevel.empty())
        return;
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    GLWidget::renderAll();
}

void Layout::decorate(Overlay& overlay)
{
    inspector.decorate(overlay);
}
} // namespace tamor::view

#include "tools/view/LayoutView.h"

#include "textures/TextureRegistry.h"
#include "tools/view/GuiSpace.h"
#include "tools/view/KeptState.h"
#include "tools/view/LayoutLines.h"
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

LayoutView::LayoutView(std::string newFile, std::string newShownName)
    : file(std::move(newFile)), inspector(std::move(newShownName))
{}

bool LayoutView::isThere() const
{
    return std::filesystem::is_regular_file(file) && std::ifstream(file).is_open();
}

std::string LayoutView::read(const std::set<std::string>& changed)
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
    inspector.setLines(linesOfWidgets(readStatements(file)));

    std::string words = counted(allWidgets().size(), "widget");
    if (++readings > 1)
        words += "; " + counted(leftWidgets, "widget") + " and " + counted(leftThemes, "theme") +
                 " of earlier readings stay in memory";
    return words;
}

void LayoutView::leaveEarlierReading()
{
    leftWidgets += allWidgets().size();
    leftThemes += GLWidget::themes.size();
    GuiSpace fresh;
    fresh.exchange();
}

std::set<std::filesystem::path> LayoutView::files() const
{
    std::set<std::filesystem::path> result{file, "default.theme"};
    // The file may be newer than what is shown.
    for (const LayoutStatement& statement : readStatements(file)) {
        const bool namesAFile = statement.word == "CONF" || statement.word == "THEM";
        if (!namesAFile || statement.fields[0].empty())
            continue;
        result.insert(statement.fields[0]);
        std::string font;
        if (statement.word == "CONF" && std::ifstream(statement.fields[0]) >> font)
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

void LayoutView::takeKeys(const KeyboardState& keys)
{
    inspector.takeKeys(keys);
    GLWidget::keysChanged(keys.pressed.data());
}

void LayoutView::takePointer(const MouseState& pointer)
{
    inspector.takePointer(pointer);
    hasPointer = true;
    pointerPlace = {static_cast<float>(pointer.x), static_cast<float>(pointer.y)};
    GLWidget::mouseMoved(pointerPlace);
    if (!inspector.isOpen())
        GLWidget::mouseButtons(pointer.left != 0, pointer.middle != 0, pointer.right != 0);
}

void LayoutView::update(std::int32_t milliseconds)
{
    GLWidget::updateAll(milliseconds);
}

void LayoutView::settle()
{
    // A step that overshoots is put right by the next one.
    for (int i = 0; i < 3; i++)
        GLWidget::updateAll(aLongTime);
}

void LayoutView::draw()
{
    if (GLWidget::topLevel.empty())
        return;
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    GLWidget::renderAll();
}

void LayoutView::decorate(Overlay& overlay)
{
    inspector.decorate(overlay);
}
} // namespace tamor::view

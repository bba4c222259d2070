#include "tests/gui/fuzz/FuzzGui.h"

#include "gui/Theme.h"
#include "tests/gui/CleanGui.h"
#include "tests/gui/Seen.h"
#include "tests/support/TemporaryDirectory.h"
#include "textures/TextureRegistry.h"
#include "widgets/Button.h"
#include "widgets/TabWindow.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <iostream>
#include <set>
#include <utility>
#include <vector>

namespace
{
std::string textureAskedFor;
std::string fontAskedFor;
} // namespace

// This program's own, so that nobody needs a window or reads a stranger's font.
extern "C" FT_Error FT_Init_FreeType(FT_Library* library)
{
    *library = nullptr;
    return 0;
}

extern "C" FT_Error FT_New_Face(FT_Library /*library*/, const char* path, FT_Long /*index*/,
                                FT_Face* /*face*/)
{
    fontAskedFor = path;
    return FT_Err_Cannot_Open_Resource;
}

namespace tamor
{
bool assignTexture(std::uint32_t& id, const TextureKey& key)
{
    textureAskedFor = key.path;
    id = 1;
    return true;
}
} // namespace tamor

namespace tamor::test
{
namespace
{
constexpr std::string_view themeFile =
    "1 1 1\n1 0.7 0.2\n0.6 0.6 0.6\n0 0 0\n1\n0.8\n2\n0.005\n0.1\n"
    "0\n0.04 0.05\n0.7 1\n0.01 -0.01 0\n0.08\nNULL\n1\n";

constexpr std::string_view configFile = "a.ttf\n-\n0 0 0.2 1\n0.2 0 0.4 1\n0.4 0 0.6 1\n"
                                        "0.6 0 0.8 1\n0.8 0 1 1\n0.004\n";
} // namespace

std::string lastTexture()
{
    return textureAskedFor;
}

std::string lastFont()
{
    return fontAskedFor;
}

void enterGuiFolder()
{
    static bool isInside = false;
    if (std::exchange(isInside, true))
        return;
    static const TemporaryDirectory directory;
    for (const char* const file : {"default.theme", "combo_button.theme", "tabwin_button.theme",
                                   "messagebox.theme", "other.theme"})
        directory.write(file, themeFile);
    directory.write("gui.conf", configFile);
}

void deleteGui()
{
    std::vector<GLWidget*> waiting = GLWidget::topLevel;
    for (const auto& [name, widget] : GLWidget::widgets)
        waiting.push_back(widget);
    std::set<GLWidget*> known;
    while (!waiting.empty()) {
        GLWidget* const widget = waiting.back();
        waiting.pop_back();
        if (widget == nullptr || !known.insert(widget).second)
            continue;
        waiting.push_back(seen(*widget).parent);
        for (GLWidget* const child : seen(*widget).children)
            waiting.push_back(child);
        const auto* const window = dynamic_cast<TabWindow*>(widget);
        if (window == nullptr)
            continue;
        for (const Tab& tab : window->tabs) {
            waiting.insert(waiting.end(), tab.widgets.begin(), tab.widgets.end());
            waiting.push_back(tab.button);
        }
    }
    for (const GLWidget* const widget : known)
        delete widget;
    for (const auto& [name, theme] : GLWidget::themes)
        delete theme;
    clearGui();
}

Unprinted::Unprinted()
{
    std::cerr.setstate(std::ios::failbit);
}

Unprinted::~Unprinted()
{
    std::cerr.clear();
}
} // namespace tamor::test

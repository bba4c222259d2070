// What the font costs, apart from the OpenGL calls that it has to make: 10,000 short strings.
//
//   BM_print_shortStrings       Font::print of each
//   BM_printCalls_shortStrings  the OpenGL calls of the same strings, written out, and nothing else
//   BM_textWidth_shortStrings   Font::textWidth of each, which calls no OpenGL
//   BM_print_formatted          Font::print of "frame rate %d" and its number
//
// All runs on Mesa's no-op driver. Run by scripts/bench, or by hand under a display. Read BM_print
// against BM_printCalls: the ratio is what the font adds.

#include "benchmarks/support/NoOpWindow.h"
#include "textures/Font.h"

#include <GL/gl.h>
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace tamor::bench
{
namespace
{
/// Labels of 3 to 20 letters, digits and blanks.
std::vector<std::string> shortStrings()
{
    constexpr std::string_view characters = "abcdefghijklmnopqrstuvwxyz 0123456789";
    std::mt19937 random(7);
    std::vector<std::string> strings(10000);
    for (std::string& text : strings) {
        const std::size_t length = 3 + random() % 18;
        for (std::size_t k = 0; k < length; k++)
            text += characters[random() % characters.size()];
    }
    return strings;
}

const Font& loadedFont()
{
    openNoOpWindow();
    static const Font font = [] {
        Font loaded;
        if (!loaded.load(TAMOR_TEST_FONT))
            std::exit(1);
        loaded.setScale(0.04F, 0.05F);
        return loaded;
    }();
    return font;
}

void tellStrings(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() * 10000);
}

void makePrintCalls(const Font& font, const std::string& text)
{
    glPushAttrib(GL_ENABLE_BIT | GL_DEPTH_BUFFER_BIT);
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glListBase(font.listBase);
    GLfloat modelview[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, modelview);
    glPushMatrix();
    glLoadIdentity();
    glTranslatef(0, 0, 0);
    glMultMatrixf(modelview);
    glScalef(font.scaleX, font.scaleY, 0);
    glCallLists(static_cast<GLsizei>(text.size()), GL_UNSIGNED_BYTE, text.data());
    glPopMatrix();
    glPopAttrib();
}

/// Ends a benchmark whose two ways of drawing do not draw the same, or draw nothing.
bool isSame(benchmark::State& state, const std::function<void()>& draw,
            const std::function<void()>& other)
{
    const std::vector<float> drawn = feedbackOf(draw);
    if (!drawn.empty() && drawn == feedbackOf(other))
        return true;
    state.SkipWithError("this draws another text");
    return false;
}

bool isPrintedByItsCalls(benchmark::State& state, const Font& font, const std::string& text)
{
    return isSame(
        state, [&] { font.print(text.c_str()); }, [&] { makePrintCalls(font, text); });
}

void BM_print_shortStrings(benchmark::State& state)
{
    const Font& font = loadedFont();
    const std::vector<std::string> strings = shortStrings();
    if (!isPrintedByItsCalls(state, font, strings[0]))
        return;
    for (auto each : state) {
        for (const std::string& text : strings)
            font.print(text.c_str());
    }
    tellStrings(state);
}
BENCHMARK(BM_print_shortStrings)->Unit(benchmark::kMicrosecond);

void BM_printCalls_shortStrings(benchmark::State& state)
{
    const Font& font = loadedFont();
    const std::vector<std::string> strings = shortStrings();
    if (!isPrintedByItsCalls(state, font, strings[0]))
        return;
    for (auto each : state) {
        for (const std::string& text : strings)
            makePrintCalls(font, text);
    }
    tellStrings(state);
}
BENCHMARK(BM_printCalls_shortStrings)->Unit(benchmark::kMicrosecond);

void BM_textWidth_shortStrings(benchmark::State& state)
{
    const Font& font = loadedFont();
    const std::vector<std::string> strings = shortStrings();
    if (font.textWidth("Ai") != 41.0F / 32.0F * 0.04F)
        state.SkipWithError("these widths are not the font's");
    for (auto each : state) {
        for (const std::string& text : strings)
            benchmark::DoNotOptimize(font.textWidth(text.c_str()));
    }
    tellStrings(state);
}
BENCHMARK(BM_textWidth_shortStrings)->Unit(benchmark::kMicrosecond);

void BM_print_formatted(benchmark::State& state)
{
    const Font& font = loadedFont();
    if (!isSame(
            state, [&] { font.print("frame rate %d", 7); }, [&] { font.print("frame rate 7"); }))
        return;
    for (auto each : state) {
        for (int k = 0; k < 10000; k++)
            font.print("frame rate %d", k);
    }
    tellStrings(state);
}
BENCHMARK(BM_print_formatted)->Unit(benchmark::kMicrosecond);
} // namespace
} // namespace tamor::bench

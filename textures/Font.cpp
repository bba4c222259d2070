#include "textures/Font.h"

#include "maths/GLState.h"
#include "maths/Matrix.h"
#include "textures/Image.h"
#include "textures/internal/FormatText.h"
#include "textures/internal/Pixels.h"

#include <GL/gl.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>

namespace tamor
{
namespace
{
constexpr int characterCount = 128;
constexpr FT_F26Dot6 characterSize = 32 * 64; // 32 points
constexpr FT_UInt resolution = 96;            // dots per inch

// Meant: 32 points at 96 dots per inch are more than 32 pixels, so that a font unit is not an em;
// every size in a theme is measured so. `FontGLTest.AFontUnitIsThe32ndPartOfAPixel` holds it.
constexpr float pixelsPerUnit = 32.0F;

constexpr std::uint32_t glyphFlags =
    TextureKey::CLAMP_S | TextureKey::CLAMP_T | TextureKey::FONT_GLYPH;

unsigned int powerOfTwoFrom(unsigned int size)
{
    unsigned int power = 1;
    while (power < size)
        power *= 2;
    return power;
}

/// The grey value at `offset` of a bitmap; 0 where a bitmap that is not of 8-bit greys has fewer
/// bytes.
std::uint8_t greyAt(const FT_Bitmap& bitmap, unsigned int offset)
{
    const std::size_t size = static_cast<std::size_t>(std::abs(bitmap.pitch)) * bitmap.rows;
    return offset < size ? bitmap.buffer[offset] : 0;
}

/// The texture's bytes: each grey value of the bitmap as red, green, blue and alpha, in the first
/// corner of a picture of 0s. The bitmap's rows are taken to follow each other without a gap.
///
/// Meant: never freed; `FontGLTest.LeavesTheBytesOfItsGlyphsAllocated` holds it.
std::uint8_t* newGlyphBytes(const FT_Bitmap& bitmap, unsigned int width, unsigned int height)
{
    auto* const bytes = new std::uint8_t[toSize(std::uint64_t{width} * height * 4)]();
    for (unsigned int row = 0; row < bitmap.rows; row++) {
        for (unsigned int x = 0; x < bitmap.width; x++) {
            const std::uint8_t grey = greyAt(bitmap, row * bitmap.width + x);
            std::memset(bytes + std::size_t{4} * (row * width + x), grey, 4);
        }
    }
    return bytes;
}

float toUnits(FT_Long pixels)
{
    return static_cast<float>(pixels) / pixelsPerUnit;
}

float toUnits(unsigned int pixels)
{
    return static_cast<float>(pixels) / pixelsPerUnit;
}

/// The advance of a rendered glyph in whole pixels, rounded down.
FT_Long penAdvance(const FT_GlyphSlotRec_& glyph)
{
    return glyph.advance.x >> 6;
}

/// Compiles a list that draws the glyph at the pen and moves the pen on.
void compileList(std::uint32_t list, const FT_GlyphSlotRec_& glyph)
{
    const FT_Bitmap& bitmap = glyph.bitmap;
    const unsigned int textureWidth = powerOfTwoFrom(bitmap.width);
    const unsigned int textureHeight = powerOfTwoFrom(bitmap.rows);
    Image image;
    image.setFromBytes(static_cast<std::int32_t>(textureWidth),
                       static_cast<std::int32_t>(textureHeight), true,
                       newGlyphBytes(bitmap, textureWidth, textureHeight));
    std::uint32_t texture = 0;
    uploadTexture(texture, image, {"", glyphFlags});

    const float width = toUnits(bitmap.width);
    const float height = toUnits(bitmap.rows);
    const float u = static_cast<float>(bitmap.width) / static_cast<float>(textureWidth);
    const float v = static_cast<float>(bitmap.rows) / static_cast<float>(textureHeight);
    glNewList(list, GL_COMPILE);
    bindTexture(texture);
    glPushMatrix();
    glTranslatef(toUnits(FT_Long{glyph.bitmap_left}),
                 toUnits(FT_Long{glyph.bitmap_top} - static_cast<FT_Long>(bitmap.rows)), 0);
    glBegin(GL_QUADS);
    glTexCoord2f(0, 0);
    glVertex2f(0, height);
    glTexCoord2f(0, v);
    glVertex2f(0, 0);
    glTexCoord2f(u, v);
    glVertex2f(width, 0);
    glTexCoord2f(u, 0);
    glVertex2f(width, height);
    glEnd();
    glPopMatrix();
    glTranslatef(toUnits(penAdvance(glyph)), 0, 0);
    glEndList();
}

/// Prints a failure. Returns false.
bool fail(const char* words)
{
    std::cerr << words << std::endl;
    return false;
}

/// Opens a font file at the size that all text is rendered at. The library and the face are never
/// released: both live as long as the process, as what is made of them does.
/// \return null after printing what failed
FT_Face openFace(const std::string& path)
{
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) {
        fail("Error loading freetype library");
        return nullptr;
    }
    FT_Face face = nullptr;
    const FT_Error error = FT_New_Face(library, path.c_str(), 0, &face);
    if (error == FT_Err_Unknown_File_Format) {
        fail("The font file format is not recgonised");
        return nullptr;
    }
    if (error != 0) {
        fail("Error loading the font");
        return nullptr;
    }
    if (FT_Set_Char_Size(face, characterSize, characterSize, resolution, resolution) != 0) {
        fail("Error setting the font size");
        return nullptr;
    }
    return face;
}
} // namespace

bool Font::setScale(float x, float y)
{
    scaleX = x;
    scaleY = y;
    return true;
}

bool Font::load(const std::string& path)
{
    const FT_Face face = openFace(path);
    if (face == nullptr)
        return false;
    listBase = glGenLists(characterCount);
    for (unsigned int c = 0; c < characterCount; c++) {
        if (FT_Load_Glyph(face, FT_Get_Char_Index(face, c), FT_LOAD_DEFAULT) != 0)
            return fail("errors!");
        // A glyph that cannot be rendered has whatever bitmap the slot holds.
        FT_Render_Glyph(face->glyph, FT_RENDER_MODE_NORMAL);
        compileList(listBase + c, *face->glyph);
        advance[c] = toUnits(penAdvance(*face->glyph));
    }
    return true;
}

float Font::textWidth(const char* format) const
{
    char buffer[widthBufferSize];
    return measureLines(formatWithoutArguments(format, buffer));
}

bool Font::print(const char* format) const
{
    char buffer[printBufferSize];
    return printLines(formatWithoutArguments(format, buffer));
}

template <int>
float Font::textWidth(const char* format, ...) const
{
    char buffer[widthBufferSize] = {};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer, sizeof buffer, format, arguments);
    va_end(arguments);
    return measureLines(buffer);
}

template <int>
bool Font::print(const char* format, ...) const
{
    char buffer[printBufferSize] = {};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer, sizeof buffer, format, arguments);
    va_end(arguments);
    return printLines(buffer);
}

template float Font::textWidth<0>(const char* format, ...) const;
template bool Font::print<0>(const char* format, ...) const;

float Font::measureLine(std::string_view line) const
{
    float width = 0.0F;
    for (const char character : line) {
        const auto code = static_cast<unsigned char>(character);
        if (code < characterCount)
            width += advance[code] * scaleX;
    }
    return width;
}

float Font::measureLines(std::string_view text) const
{
    float widest = 0.0F;
    std::size_t newline = text.find('\n');
    if (newline != std::string_view::npos) {
        // Meant: the buffer is not cleared between lines, so that a line is measured with the tail
        // of a longer one before it; widgets get their widths so. The last line ends properly.
        // `Font.MeasuresAShortLineWithTheTailOfTheLongerOneBefore` holds it.
        char buffer[widthBufferSize] = {};
        while (newline != std::string_view::npos) {
            std::memcpy(buffer, text.data(), newline);
            widest = std::max(widest, measureLine(buffer));
            text.remove_prefix(newline + 1);
            newline = text.find('\n');
        }
    }
    return std::max(widest, measureLine(text));
}

void Font::beginPrint() const
{
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glListBase(listBase);
}

bool Font::printLines(std::string_view text) const
{
    glPushAttrib(GL_ENABLE_BIT | GL_DEPTH_BUFFER_BIT);
    GLint viewport[4]; // fetched and not used
    glGetIntegerv(GL_VIEWPORT, viewport);
    beginPrint();
    Matrix modelview;
    modelview.loadModelview();

    bool isLast = false;
    for (int i = 0; !isLast; i++) {
        const std::size_t newline = text.find('\n');
        isLast = newline == std::string_view::npos;
        const std::string_view line = text.substr(0, newline);
        glPushMatrix();
        glLoadIdentity();
        // Meant: the step is not scaled by the caller's modelview matrix; the lines of a text box
        // are placed by it. `FontGLTest.PrintsEachLineLowerInEyeCoordinates` holds it.
        glTranslatef(0, static_cast<float>(i) * -lineStep * scaleY, 0);
        modelview.multiplyModelview();
        glScalef(scaleX, scaleY, 0);
        glCallLists(static_cast<GLsizei>(line.size()), GL_UNSIGNED_BYTE, line.data());
        glPopMatrix();
        if (!isLast)
            text.remove_prefix(newline + 1);
    }
    glPopAttrib();
    return true;
}
} // namespace tamor

#include "gui/Theme.h"

#include "gui/ErrorLine.h"
#include "gui/FileFields.h"
#include "gui/LineFormat.h"
#include "textures/TextureRegistry.h"

#include <iomanip>
#include <string_view>

namespace tamor
{
namespace
{
using ReadLine = void (*)(std::istream& stream, Theme& theme);

struct Line
{
    LineFormat format; ///< what `read` reads
    ReadLine read;
};

// Alpha stays as it is: a file sets red, green and blue only.
template <Vector Theme::*colour>
void readColour(std::istream& stream, Theme& theme)
{
    readField(stream, (theme.*colour).x);
    readField(stream, (theme.*colour).y);
    readField(stream, (theme.*colour).z);
    skipLine(stream);
    printLine(theme.*colour);
}

template <float Theme::*number>
void readNumber(std::istream& stream, Theme& theme)
{
    readField(stream, theme.*number);
    skipLine(stream);
    printLine(theme.*number);
}

void readFontSize(std::istream& stream, Theme& theme)
{
    readField(stream, theme.fontSize.x);
    readField(stream, theme.fontSize.y);
    skipLine(stream);
    printLine(theme.fontSize);
}

void readBrightness(std::istream& stream, Theme& theme)
{
    readField(stream, theme.dimBrightness);
    readField(stream, theme.litBrightness);
    skipLine(stream);
    printLine(theme.dimBrightness, " ", theme.litBrightness);
}

void readTextureFile(std::istream& stream, Theme& theme)
{
    char(&textureFile)[sizeof theme.textureFile] = theme.textureFile;
    std::string token = textureFile;
    stream >> std::setw(sizeof textureFile - 1);
    readField(stream, token);
    skipLine(stream);
    token.copy(textureFile, sizeof textureFile - 1);
    textureFile[token.size()] = '\0';
    printLine(textureFile);
}

void readGlow(std::istream& stream, Theme& theme)
{
    readField(stream, theme.glowEnabled);
    skipLine(stream);
    printLine(theme.glowEnabled);
}

using enum FieldType;
constexpr FieldFormat colourFields[] = {{"red", number}, {"green", number}, {"blue", number}};
constexpr FieldFormat alphaField[] = {{"alpha", number}};
constexpr FieldFormat pixelsField[] = {{"pixels", number}};
constexpr FieldFormat lengthField[] = {{"length", number}};
constexpr FieldFormat shareField[] = {{"share", number}};
constexpr FieldFormat fontFields[] = {{"width", number}, {"height", number}};
constexpr FieldFormat brightnessFields[] = {{"idle", number}, {"lit", number}};
constexpr FieldFormat offsetFields[] = {{"x", number}, {"y", number}, {"z", number}};
constexpr FieldFormat textureField[] = {{"file or NULL", word}};
constexpr FieldFormat glowField[] = {{"glow", flag}};

constexpr Line linesInOrder[] = {
    {{"text colour", colourFields}, readColour<&Theme::textColour>},
    {{"edge colour", colourFields}, readColour<&Theme::edgeColour>},
    {{"body colour", colourFields}, readColour<&Theme::bodyColour>},
    {{"spare colour", colourFields}, readColour<&Theme::spareColour>},
    {{"alpha of bodies", alphaField}, readNumber<&Theme::bodyAlpha>},
    {{"alpha of lists", alphaField}, readNumber<&Theme::listAlpha>},
    {{"line width", pixelsField}, readNumber<&Theme::lineWidth>},
    {{"margin", lengthField}, readNumber<&Theme::margin>},
    {{"corner cut", shareField}, readNumber<&Theme::chamfer>},
    {{"spare size", lengthField}, readNumber<&Theme::spareSize>},
    {{"font size", fontFields}, readFontSize},
    {{"brightness", brightnessFields}, readBrightness},
    {{"press offset", offsetFields}, readColour<&Theme::pressOffset>},
    {{"icon size", lengthField}, readNumber<&Theme::iconSize>},
    {{"texture", textureField}, readTextureFile},
    {{"glow", glowField}, readGlow},
};
} // namespace

std::vector<LineFormat> themeLines()
{
    std::vector<LineFormat> formats;
    for (const Line& line : linesInOrder)
        formats.push_back(line.format);
    return formats;
}

void Theme::setDefaults()
{
    textColour = {1.0F, 1.0F, 1.0F};
    edgeColour = {1.0F, 0.71F, 0.16F};
    bodyColour = {0.8F, 0.8F, 0.8F};
    spareColour = {0.3F, 0.3F, 0.3F};
    bodyAlpha = 1.0F;
    listAlpha = 0.8F;
    lineWidth = 2.0F;
    margin = 0.005F;
    chamfer = 0.1F;
    spareSize = 0.003F;
    fontSize = {0.04F, 0.05F};
    dimBrightness = 0.7F;
    litBrightness = 1.0F;
    pressOffset = {0.005F, -0.005F};
    iconSize = 0.1F;
    assignTexture(texture, {"gui.tga", 0});
    glowEnabled = true;
}

void Theme::read(const std::string& file)
{
    std::ifstream stream = openFields(file);
    printLine("reading theme ", file);
    for (const Line& line : linesInOrder)
        line.read(stream, *this);
    if (std::string_view(textureFile) != "NULL") {
        printLine("loading ", textureFile);
        assignTexture(texture, {textureFile, 0});
    }
    printLine("read theme ", file);
}
} // namespace tamor

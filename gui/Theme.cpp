#include "gui/Theme.h"

#include "gui/TextFields.h"
#include "textures/TextureRegistry.h"

#include <algorithm>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <string_view>

namespace tamor
{
namespace
{
// Alpha stays as it is: a file sets red, green and blue only.
void readColour(std::istream& stream, Vector& colour)
{
    readField(stream, colour.x);
    readField(stream, colour.y);
    readField(stream, colour.z);
    skipLine(stream);
    std::cerr << colour << "\n";
}

void readNumber(std::istream& stream, float& number)
{
    readField(stream, number);
    skipLine(stream);
    std::cerr << number << "\n";
}
} // namespace

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
    std::ifstream stream(file);
    std::cerr << "reading theme " << file << "\n";

    readColour(stream, textColour);
    readColour(stream, edgeColour);
    readColour(stream, bodyColour);
    readColour(stream, spareColour);
    readNumber(stream, bodyAlpha);
    readNumber(stream, listAlpha);
    readNumber(stream, lineWidth);
    readNumber(stream, margin);
    readNumber(stream, chamfer);
    readNumber(stream, spareSize);

    readField(stream, fontSize.x);
    readField(stream, fontSize.y);
    skipLine(stream);
    std::cerr << fontSize << "\n";

    readField(stream, dimBrightness);
    readField(stream, litBrightness);
    skipLine(stream);
    std::cerr << dimBrightness << " " << litBrightness << "\n";

    readColour(stream, pressOffset);
    readNumber(stream, iconSize);

    std::string token = textureFile;
    stream >> std::setw(sizeof textureFile - 1);
    readField(stream, token);
    skipLine(stream);
    token.copy(textureFile, sizeof textureFile - 1);
    textureFile[token.size()] = '\0';
    std::cerr << textureFile << "\n";

    readField(stream, glowEnabled);
    skipLine(stream);
    std::cerr << glowEnabled << "\n";

    if (std::string_view(textureFile) != "NULL") {
        std::cerr << "loading " << textureFile << "\n";
        assignTexture(texture, {textureFile, 0});
    }
    std::cerr << "read theme " << file << "\n";
}
} // namespace tamor

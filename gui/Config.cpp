#include "gui/GLWidget.h"
#include "gui/TextFields.h"
#include "textures/Font.h"

#include <fstream>
#include <iostream>

namespace tamor
{
namespace
{
void readRectangle(std::istream& stream, Vector& rectangle)
{
    readField(stream, rectangle.x);
    readField(stream, rectangle.y);
    readField(stream, rectangle.z);
    readField(stream, rectangle.w);
    skipLine(stream);
}
} // namespace

bool GLWidget::readConfig(const std::string& file)
{
    std::ifstream stream(file);

    std::string fontFile;
    readField(stream, fontFile);
    skipLine(stream);
    std::cerr << "Loading " << fontFile << "\n";
    font.load(fontFile); // says itself what went wrong; the GUI goes on without text
    std::cerr << "Loaded.\n";

    std::string unused;
    readField(stream, unused);
    skipLine(stream);

    readRectangle(stream, optionFrame);
    readRectangle(stream, optionMark);
    readRectangle(stream, checkFrame);
    readRectangle(stream, checkMark);
    readRectangle(stream, sliderKnob);
    readField(stream, glowRate);
    return true;
}
} // namespace tamor

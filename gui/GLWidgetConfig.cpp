#include "gui/ErrorLine.h"
#include "gui/FileFields.h"
#include "gui/GLWidget.h"
#include "gui/LineFormat.h"
#include "textures/Font.h"

namespace tamor
{
namespace
{
using ReadLine = void (*)(std::istream& stream);

struct Line
{
    LineFormat format; ///< what `read` reads
    ReadLine read;
};

void readFontFile(std::istream& stream)
{
    std::string fontFile;
    readField(stream, fontFile);
    skipLine(stream);
    printLine("Loading ", fontFile);
    GLWidget::font.load(fontFile); // says itself what went wrong; the GUI goes on without text
    printLine("Loaded.");
}

void readUnusedWord(std::istream& stream)
{
    std::string unused;
    readField(stream, unused);
    skipLine(stream);
}

template <Vector* rectangle>
void readRectangle(std::istream& stream)
{
    readField(stream, rectangle->x);
    readField(stream, rectangle->y);
    readField(stream, rectangle->z);
    readField(stream, rectangle->w);
    skipLine(stream);
}

void readGlowRate(std::istream& stream)
{
    readField(stream, GLWidget::glowRate);
}

using enum FieldType;
constexpr FieldFormat fontField[] = {{"font file", word}};
constexpr FieldFormat unusedField[] = {{"any word", word}};
constexpr FieldFormat rectangleFields[] = {
    {"left", number}, {"bottom", number}, {"right", number}, {"top", number}};
constexpr FieldFormat rateField[] = {{"glow a millisecond", number}};

constexpr Line linesInOrder[] = {
    {{"font", fontField}, readFontFile},
    {{"unused", unusedField}, readUnusedWord},
    {{"option frame", rectangleFields}, readRectangle<&GLWidget::optionFrame>},
    {{"option mark", rectangleFields}, readRectangle<&GLWidget::optionMark>},
    {{"check frame", rectangleFields}, readRectangle<&GLWidget::checkFrame>},
    {{"check mark", rectangleFields}, readRectangle<&GLWidget::checkMark>},
    {{"slider knob", rectangleFields}, readRectangle<&GLWidget::sliderKnob>},
    {{"glow rate", rateField}, readGlowRate},
};
} // namespace

std::vector<LineFormat> configLines()
{
    std::vector<LineFormat> formats;
    for (const Line& line : linesInOrder)
        formats.push_back(line.format);
    return formats;
}

bool GLWidget::readConfig(const std::string& file)
{
    std::ifstream stream = openFields(file);
    for (const Line& line : linesInOrder)
        line.read(stream);
    return true;
}
} // namespace tamor

#include "tests/gui/PlainFiles.h"

#include "tests/support/PlainNumber.h"

#include <cstring>
#include <iomanip>
#include <locale>
#include <sstream>
#include <type_traits>

namespace tamor::test
{
namespace
{
/// The fields of a file, one after the other. Behind one that cannot be read none can.
class Fields
{
public:
    explicit Fields(const std::string& bytes) : stream(bytes)
    {
        stream.imbue(std::locale::classic());
    }

    template <class Field>
    void take(Field& field)
    {
        Field value{};
        if constexpr (std::is_same_v<Field, float>)
            takePlainNumber(stream, value);
        else
            stream >> value;
        if (!stream.fail())
            field = value;
    }

    void takeWord(std::string& word, int longest)
    {
        std::string value;
        stream >> std::setw(longest) >> value;
        if (!stream.fail())
            word = value;
    }

    void endLine() { stream.ignore(10000, '\n'); }

private:
    std::istringstream stream;
};

std::string echoOf(const Vector& vector)
{
    std::ostringstream echo;
    echo.imbue(std::locale::classic());
    echo << "(" << vector.x << ", " << vector.y << ", " << vector.z << ", " << vector.w << ")\n";
    return echo.str();
}

std::string echoOf(float number, const std::string& end = "\n")
{
    std::ostringstream echo;
    echo.imbue(std::locale::classic());
    echo << number << end;
    return echo.str();
}

/// Whether two have the same bits.
template <class Field>
bool areSame(const Field& a, const Field& b)
{
    return std::memcmp(static_cast<const void*>(&a), static_cast<const void*>(&b), sizeof a) == 0;
}
} // namespace

std::string readThemePlainly(Theme& theme, const std::string& bytes, const std::string& path)
{
    std::string echo = "reading theme " + path + "\n";
    Fields fields(bytes);
    const auto takeThree = [&](Vector& vector) {
        fields.take(vector.x);
        fields.take(vector.y);
        fields.take(vector.z);
        fields.endLine();
        echo += echoOf(vector);
    };
    for (Vector* const colour :
         {&theme.textColour, &theme.edgeColour, &theme.bodyColour, &theme.spareColour})
        takeThree(*colour);
    for (float* const number : {&theme.bodyAlpha, &theme.listAlpha, &theme.lineWidth, &theme.margin,
                                &theme.chamfer, &theme.spareSize}) {
        fields.take(*number);
        fields.endLine();
        echo += echoOf(*number);
    }
    fields.take(theme.fontSize.x);
    fields.take(theme.fontSize.y);
    fields.endLine();
    echo += echoOf(theme.fontSize);
    fields.take(theme.dimBrightness);
    fields.take(theme.litBrightness);
    fields.endLine();
    echo += echoOf(theme.dimBrightness, " ") + echoOf(theme.litBrightness);
    takeThree(theme.pressOffset);
    fields.take(theme.iconSize);
    fields.endLine();
    echo += echoOf(theme.iconSize);
    std::string texture = theme.textureFile;
    fields.takeWord(texture, 511);
    fields.endLine();
    std::memcpy(theme.textureFile, texture.c_str(), texture.size() + 1);
    // As a string of C, which ends at a zero byte.
    texture = theme.textureFile;
    echo += texture + "\n";
    fields.take(theme.glowEnabled);
    fields.endLine();
    echo += theme.glowEnabled ? "1\n" : "0\n";
    if (texture != "NULL")
        echo += "loading " + texture + "\n";
    return echo + "read theme " + path + "\n";
}

void readConfigPlainly(PlainConfig& config, const std::string& bytes)
{
    Fields fields(bytes);
    fields.takeWord(config.fontFile, 0);
    fields.endLine();
    std::string unused;
    fields.takeWord(unused, 0);
    fields.endLine();
    for (Vector& rectangle : config.rectangles) {
        for (float* const number : {&rectangle.x, &rectangle.y, &rectangle.z, &rectangle.w})
            fields.take(*number);
        fields.endLine();
    }
    fields.take(config.glowRate);
}

std::string difference(const Theme& a, const Theme& b)
{
    const auto vectors = {&Theme::textColour,  &Theme::edgeColour, &Theme::bodyColour,
                          &Theme::spareColour, &Theme::fontSize,   &Theme::pressOffset};
    int number = 0;
    for (Vector Theme::*const vector : vectors) {
        number++;
        if (!areSame(a.*vector, b.*vector))
            return "vector " + std::to_string(number);
    }
    const auto numbers = {&Theme::bodyAlpha,     &Theme::listAlpha,     &Theme::lineWidth,
                          &Theme::margin,        &Theme::chamfer,       &Theme::spareSize,
                          &Theme::dimBrightness, &Theme::litBrightness, &Theme::iconSize};
    number = 0;
    for (float Theme::*const field : numbers) {
        number++;
        if (!areSame(a.*field, b.*field))
            return "number " + std::to_string(number);
    }
    if (std::strcmp(a.textureFile, b.textureFile) != 0)
        return "the texture's file";
    return a.glowEnabled == b.glowEnabled ? "" : "the glow";
}
} // namespace tamor::test

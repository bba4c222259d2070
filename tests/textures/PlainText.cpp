#include "tests/textures/PlainText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace tamor::test
{
namespace
{
/// The largest width and precision that are printed as they are.
constexpr unsigned long widest = 9999;

/// Takes a number, or a star for 0, from the front of `rest`.
unsigned long takeNumber(std::string& rest)
{
    if (rest.starts_with('*')) {
        rest.erase(0, 1);
        return 0;
    }
    const std::size_t digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
    const unsigned long number = digits == 0 ? 0 : std::strtoul(rest.c_str(), nullptr, 10);
    rest.erase(0, digits);
    return std::min(number, widest);
}

/// Takes those of the characters that stand at the front of `rest`.
std::string takeAny(std::string& rest, const char* characters)
{
    const std::size_t count = std::min(rest.find_first_not_of(characters), rest.size());
    std::string taken = rest.substr(0, count);
    rest.erase(0, count);
    return taken;
}

template <typename Zero>
std::string printed(const std::string& conversion, Zero zero)
{
    static std::array<char, 4 * widest> buffer;
    std::snprintf(buffer.data(), buffer.size(), conversion.c_str(), zero);
    return buffer.data();
}

/// Takes a conversion from the front of `rest`, which is behind the per cent sign.
std::string takeConversion(std::string& rest)
{
    const std::string whole = rest;
    std::string conversion = "%" + takeAny(rest, "-+ #0'");
    const unsigned long width = takeNumber(rest);
    if (width > 0)
        conversion += std::to_string(width);
    if (rest.starts_with('.')) {
        rest.erase(0, 1);
        conversion += "." + std::to_string(takeNumber(rest));
    }
    takeAny(rest, "hlqLjzZt");
    const std::string type = rest.substr(0, 1);
    rest.erase(0, 1);
    if (type == "%")
        return "%";
    if (type == "n")
        return "";
    if (!type.empty() && std::strchr("diouxX", type[0]) != nullptr)
        return printed(conversion + type, 0);
    if (!type.empty() && std::strchr("aAeEfFgG", type[0]) != nullptr)
        return printed(conversion + type, 0.0);
    if (!type.empty() && std::strchr("csCS", type[0]) != nullptr)
        return printed(conversion + "s", "");
    if (type == "p")
        return printed(conversion + "p", static_cast<void*>(nullptr));
    return "%" + whole.substr(0, whole.size() - rest.size());
}

float lineWidth(const Font& font, const char* line)
{
    float width = 0.0F;
    for (; *line != 0; line++) {
        const auto code = static_cast<unsigned char>(*line);
        if (code < 128)
            width += font.advance[code] * font.scaleX;
    }
    return width;
}
} // namespace

std::string formatPlainly(const std::string& format, std::size_t longest)
{
    std::string text;
    std::string rest = format;
    while (!rest.empty() && text.size() < longest) {
        const std::size_t plain = std::min(rest.find('%'), rest.size());
        text += rest.substr(0, plain);
        rest.erase(0, plain);
        if (rest.empty())
            break;
        rest.erase(0, 1);
        text += takeConversion(rest);
    }
    return text.substr(0, longest);
}

std::vector<std::string> linesPlainly(const std::string& text)
{
    std::vector<std::string> lines = {""};
    for (const char character : text) {
        if (character == '\n')
            lines.emplace_back();
        else
            lines.back() += character;
    }
    return lines;
}

float textWidthPlainly(const Font& font, const std::string& text)
{
    const std::vector<std::string> lines = linesPlainly(text);
    // It is not cleared between lines.
    char buffer[512] = {};
    float largest = 0.0F;
    for (std::size_t k = 0; k < lines.size(); k++) {
        const bool isLast = k + 1 == lines.size();
        std::copy(lines[k].begin(), lines[k].end(), buffer);
        if (isLast)
            buffer[lines[k].size()] = 0;
        const float width = lineWidth(font, buffer);
        if (width > largest)
            largest = width;
    }
    return largest;
}
} // namespace tamor::test

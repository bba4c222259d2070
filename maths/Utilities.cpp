#include "maths/Utilities.h"

#include <cmath>
#include <fstream>

namespace tamor
{
std::string readFile(const std::string& path)
{
    std::ifstream file(path);
    if (!file.is_open())
        return "";

    std::string text;
    std::string line;
    // A directory opens but cannot be read, so it ends by failing rather than by reaching its end.
    while (!file.eof() && !file.bad()) {
        std::getline(file, line);
        text += line;
        text += '\n';
    }
    return text;
}

std::int32_t countOccurrences(const std::string& text, const std::string& pattern)
{
    std::int32_t count = 0;
    std::size_t position = 0;
    while ((position = text.find(pattern, position)) != std::string::npos) {
        ++count;
        position += pattern.size();
    }
    return count;
}

std::string replaceAll(const std::string& pattern, const std::string& replacement, std::string text)
{
    std::string result;
    std::size_t start = 0;
    for (std::size_t found = text.find(pattern); found != std::string::npos;
         found = text.find(pattern, start)) {
        result.append(text, start, found - start);
        result += replacement;
        start = found + pattern.size();
    }
    result.append(text, start);
    return result;
}

bool almostEqual(float a, float b)
{
    constexpr float tolerance = 0.008F;
    return std::abs(a - b) < tolerance;
}
} // namespace tamor

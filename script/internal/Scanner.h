/// \file
/// The scanners of script text, on a view that walks along it. Not for hosts: `Tokenizer.h` offers
/// the same scanners on strings, and both have the one implementation here.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace tamor
{
/// The classes of characters, as bits: a "-" is both a number's and a name's.
enum CharacterClass : unsigned char
{
    SPACE_CHARACTER = 1,
    NUMBER_CHARACTER = 2,
    NAME_CHARACTER = 4,
    INDEX_END_CHARACTER = 8 ///< what is passed over behind an index: "]" and space
};

/// The classes of every byte. Letters are those of the C locale, and a carriage return is no space.
inline constexpr std::array<unsigned char, 256> characterClasses = [] {
    std::array<unsigned char, 256> classes{};
    for (const char c : std::string_view(" \t\n"))
        classes[static_cast<unsigned char>(c)] |= SPACE_CHARACTER | INDEX_END_CHARACTER;
    classes[static_cast<unsigned char>(']')] |= INDEX_END_CHARACTER;
    for (const char c : std::string_view("0123456789.-"))
        classes[static_cast<unsigned char>(c)] |= NUMBER_CHARACTER;
    for (const char c : std::string_view("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ-_:"))
        classes[static_cast<unsigned char>(c)] |= NAME_CHARACTER;
    return classes;
}();

constexpr unsigned characterClass(char character)
{
    return characterClasses[static_cast<unsigned char>(character)];
}

/// The rest of a text. To read is to take from its front.
class Scanner
{
public:
    explicit Scanner(std::string_view text) : rest(text) {}

    bool atEnd() const { return rest.empty(); }
    std::string_view text() const { return rest; }

    /// By a loop of its own: what is asked for is short, and seldom there.
    bool startsWith(std::string_view prefix) const
    {
        if (prefix.size() > rest.size())
            return false;
        for (std::size_t i = 0; i < prefix.size(); ++i)
            if (rest[i] != prefix[i])
                return false;
        return true;
    }

    bool startsWith(char character) const { return !rest.empty() && rest.front() == character; }

    bool startsWith(CharacterClass characters) const
    {
        return !rest.empty() && (characterClass(rest.front()) & characters) != 0;
    }

    /// True when every character that is left is space; true at the end.
    bool isAllSpace() const { return Scanner(*this).takeRun(SPACE_CHARACTER) == rest; }

    /// Takes `count` characters. Past the end it throws `std::out_of_range`.
    std::string_view take(std::size_t count)
    {
        if (count > rest.size())
            throwPastTheEnd();
        const std::string_view taken = rest.substr(0, count);
        rest.remove_prefix(count);
        return taken;
    }

    /// Takes the prefix, if it stands at the front.
    bool skip(std::string_view prefix)
    {
        if (!startsWith(prefix))
            return false;
        rest.remove_prefix(prefix.size());
        return true;
    }

    /// Takes a run of characters of a class, which may be empty.
    std::string_view takeRun(CharacterClass characters)
    {
        std::size_t length = 0;
        while (length < rest.size() && (characterClass(rest[length]) & characters) != 0)
            ++length;
        return take(length);
    }

    void skipSpace() { takeRun(SPACE_CHARACTER); }
    std::string_view readNumberText() { return takeRun(NUMBER_CHARACTER); }
    std::string_view readName() { return takeRun(NAME_CHARACTER); }

    /// A name with any number of indices. Only number characters are taken for an index, so the
    /// path of `a[i]` is `a[i`. Throws `std::out_of_range` where the text ends inside an index.
    std::string_view readVariablePath();

    /// Reads what is left as literal indices, such as `[3][4]`. \return false where it is anything else
    bool readIndices(std::vector<unsigned>& indices);

    /// The content of the string at whose opening quote the text stands. Throws
    /// `std::out_of_range` where the text ends inside the string.
    std::string readStringLiteral();

private:
    [[noreturn]] static void throwPastTheEnd();

    std::string_view rest;
};

/// The float at the front of a run of number characters, as a stream reads it: `1.2.3` gives 1.2.
/// What a stream rejects (`-`, `.`, `--1`) gives 0.
float numberFromText(std::string_view text);

/// The integer at the front of a run of number characters, as a stream reads it: `1.5` gives 1.
/// What no 32-bit integer can be read from gives 0.
int integerFromText(std::string_view text);
} // namespace tamor

#include "platform/internal/InputLines.h"

#include <array>
#include <charconv>

namespace tamor
{
namespace
{
using KeyTable = std::array<std::uint8_t, keyCount>;

void writeKeys(std::ostream& stream, std::string_view word, const KeyTable& keys)
{
    std::string_view heading = word;
    for (std::size_t index = 0; index < keys.size(); ++index) {
        if (keys[index] == 0)
            continue;
        stream << heading << ' ' << index;
        heading = "";
    }
}

/// Takes the first word off `rest`; "" when there is none. Words have one space between them.
std::string_view takeWord(std::string_view& rest)
{
    const std::size_t end = rest.find(' ');
    const std::string_view word = rest.substr(0, end);
    rest = end == std::string_view::npos ? "" : rest.substr(end + 1);
    return word;
}

/// Whether all of `word` is a number that `number` can hold.
template <typename Integer>
bool readNumber(std::string_view word, Integer& number)
{
    const char* const end = word.data() + word.size();
    const std::from_chars_result result = std::from_chars(word.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

constexpr const char* damagedNumber = "a number is missing or damaged";
constexpr const char* tooLong = "the line goes on behind its last number";

const char* readKeyboard(std::string_view rest, KeyboardState& keyboard)
{
    if (!readNumber(takeWord(rest), keyboard.modifiers))
        return damagedNumber;
    KeyTable* keys = nullptr;
    while (!rest.empty()) {
        const std::string_view word = takeWord(rest);
        if (word == "held" || word == "pressed") {
            keys = word == "held" ? &keyboard.held : &keyboard.pressed;
            continue;
        }
        std::size_t index = 0;
        if (keys == nullptr || !readNumber(word, index) || index >= keys->size())
            return "a key is a number below 512, behind \"held\" or \"pressed\"";
        (*keys)[index] = 1;
    }
    return nullptr;
}

const char* readMouse(std::string_view rest, MouseState& mouse)
{
    for (std::int32_t* const number :
         {&mouse.x, &mouse.y, &mouse.z, &mouse.dx, &mouse.dy, &mouse.dz}) {
        if (!readNumber(takeWord(rest), *number))
            return damagedNumber;
    }
    for (std::uint8_t* const button : {&mouse.left, &mouse.middle, &mouse.right}) {
        if (!readNumber(takeWord(rest), *button))
            return damagedNumber;
    }
    return rest.empty() ? nullptr : tooLong;
}
} // namespace

void writeInput(std::ostream& stream, const Event& event)
{
    switch (event.kind) {
    case EV_KEYBOARD:
        stream << "keyboard " << event.keyboard.modifiers;
        writeKeys(stream, " held", event.keyboard.held);
        writeKeys(stream, " pressed", event.keyboard.pressed);
        break;
    case EV_MOUSE: {
        const MouseState& mouse = event.mouse;
        stream << "mouse " << mouse.x << ' ' << mouse.y << ' ' << mouse.z << ' ' << mouse.dx << ' '
               << mouse.dy << ' ' << mouse.dz << ' ' << int{mouse.left} << ' ' << int{mouse.middle}
               << ' ' << int{mouse.right};
        break;
    }
    default:
        stream << "update " << event.delta;
        break;
    }
    stream << '\n';
}

const char* readInput(std::string_view line, Event& event)
{
    std::string_view rest = line;
    const std::string_view word = takeWord(rest);
    if (word == "keyboard") {
        event = Event();
        event.kind = EV_KEYBOARD;
        return readKeyboard(rest, event.keyboard);
    }
    if (word == "mouse") {
        event.kind = EV_MOUSE;
        return readMouse(rest, event.mouse);
    }
    if (word == "update") {
        event.kind = EV_UPDATE;
        if (!readNumber(takeWord(rest), event.delta))
            return damagedNumber;
        return rest.empty() ? nullptr : tooLong;
    }
    return "an event is \"keyboard\", \"mouse\" or \"update\"";
}
} // namespace tamor

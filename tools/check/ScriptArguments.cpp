#include "tools/check/ScriptArguments.h"

#include "script/Tokenizer.h"

#include <string>

namespace tamor::check
{
namespace
{
ArgumentFault parenthesisInString(std::size_t offset)
{
    return {"script-paren-string", offset,
            "a parenthesis in a string counts as one of the call: build the string first"};
}
} // namespace

CharacterClasses::CharacterClasses()
{
    for (std::size_t i = 0; i < 256; ++i) {
        const std::string front(1, static_cast<char>(i));
        space[i] = isSpaceChar(front);
        number[i] = isNumberChar(front);
        name[i] = isNameChar(front);
    }
}

const CharacterClasses& classes()
{
    static const CharacterClasses all;
    return all;
}

std::optional<ArgumentFault> faultOfArguments(std::string_view text, std::size_t begin,
                                              std::size_t innerEnd)
{
    int open = 0;
    int openInString = 0;
    bool isInString = false;
    for (std::size_t i = begin; i < innerEnd; ++i) {
        const char c = text[i];
        if (isInString && c == '\'') {
            ++i;
        } else if (c == '"') {
            // What is balanced in a string does no harm.
            if (isInString && openInString > 0)
                return parenthesisInString(i);
            isInString = !isInString;
            openInString = 0;
        } else if (c == '(' || c == ')') {
            int& count = isInString ? openInString : open;
            count += c == '(' ? 1 : -1;
            if (openInString < 0)
                return parenthesisInString(i);
        } else if (c == ',' && isInString) {
            return ArgumentFault{"script-comma", i,
                                 "a comma in a string cuts the argument: the program ends; build "
                                 "the string first"};
        } else if (c == ',' && open > 0) {
            return ArgumentFault{"script-comma", i,
                                 "a comma of a call inside a call cuts the outer one: call the "
                                 "inner one first"};
        }
    }
    // The string is cut by a parenthesis that was taken for the call's.
    if (isInString && innerEnd < text.size())
        return parenthesisInString(innerEnd);
    return std::nullopt;
}
} // namespace tamor::check

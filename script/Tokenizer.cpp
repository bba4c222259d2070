#include "script/Tokenizer.h"

#include "script/ScriptInterpreter.h"
#include "script/internal/Elements.h"
#include "script/internal/Scanner.h"

namespace tamor
{
namespace
{
bool startsWith(const std::string& text, CharacterClass characters)
{
    return Scanner(text).startsWith(characters);
}

/// Removes from the front of `text` what the scanner has taken.
void keepRest(std::string& text, const Scanner& scanner)
{
    text.erase(0, text.size() - scanner.text().size());
}
} // namespace

bool startsWith(const std::string& text, const std::string& prefix)
{
    return text.starts_with(prefix);
}

bool isSpaceChar(const std::string& text)
{
    return startsWith(text, SPACE_CHARACTER);
}

bool isNumberChar(const std::string& text)
{
    return startsWith(text, NUMBER_CHARACTER);
}

bool isNameChar(const std::string& text)
{
    return startsWith(text, NAME_CHARACTER);
}

bool isQuoteChar(const std::string& text)
{
    return text.starts_with('"');
}

bool isAllSpace(const std::string& text)
{
    return Scanner(text).isAllSpace();
}

void skipSpace(std::string& text)
{
    Scanner scanner(text);
    scanner.skipSpace();
    keepRest(text, scanner);
}

std::string readNumberText(std::string& text)
{
    Scanner scanner(text);
    std::string result(scanner.readNumberText());
    keepRest(text, scanner);
    return result;
}

std::string readName(std::string& text)
{
    Scanner scanner(text);
    std::string result(scanner.readName());
    keepRest(text, scanner);
    return result;
}

std::string readVariablePath(std::string& text)
{
    Scanner scanner(text);
    std::string result(scanner.readVariablePath());
    keepRest(text, scanner);
    return result;
}

std::string readStringLiteral(std::string& text)
{
    Scanner scanner(text);
    std::string result = scanner.readStringLiteral();
    keepRest(text, scanner);
    return result;
}

ScriptValue* resolveVariable(ScriptInterpreter& interpreter, const std::string& path)
{
    Scanner scanner(path);
    ScriptValue* result = nullptr;
    while (!scanner.isAllSpace()) {
        // Meant: a name behind an index starts over, so `a[1]b` is `b`;
        // `ResolveVariable.StartsOverAtANameBehindAnIndex` holds it.
        if (scanner.startsWith(NAME_CHARACTER)) {
            result = &interpreter.variables[std::string(scanner.readName())];
            continue;
        }
        if (result == nullptr || !scanner.skip("["))
            return nullptr;
        scanner.skipSpace();
        if (!scanner.startsWith(NUMBER_CHARACTER))
            break;
        const int index = integerFromText(scanner.readNumberText());
        result = script::findElement(interpreter, *result, static_cast<unsigned>(index));
        scanner.takeRun(INDEX_END_CHARACTER);
    }
    return result;
}
} // namespace tamor

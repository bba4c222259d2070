#include "tools/view/LayoutLines.h"

#include "tools/view/WidgetFields.h"
#include "tools/view/WidgetTree.h"
#include "widgets/Button.h"
#include "widgets/TabWindow.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>

namespace tamor::view
{
namespace
{
/// How many words stand behind a directive, or a kind's place, and whether a text follows them.
struct Form
{
    std::string_view word;
    std::string_view className; ///< of a kind
    int words = 0;
    bool hasText = false;
};

constexpr Form directives[] = {
    {"CONF", "", 1, false},   {"THEM", "", 2, false},    {"CADD", "", 5, false},
    {"TADD", "", 6, false},   {"NTAB", "", 2, true},     {"TEXT", "", 1, true},
    {"SOLID", "", 0, false},  {"CENTREX", "", 1, false}, {"CENTREY", "", 1, false},
    {"CENTRE", "", 1, false},
};

constexpr Form kinds[] = {
    {"Win", "GLWindow", 1, true},  {"Frame", "Frame", 1, false},    {"Butt", "Button", 1, false},
    {"Label", "Label", 0, true},   {"Check", "Checkbox", 0, true},  {"Opt", "Optionbox", 0, true},
    {"Slide", "Slider", 2, false}, {"Combo", "Combobox", 0, false}, {"TWin", "TabWindow", 0, false},
    {"Text", "Textbox", 2, false},
};

/// The caption that stands for a picture, behind which come its width and height.
constexpr std::string_view pictureCaption = "TEX";

template <std::size_t count>
const Form* findForm(const Form (&forms)[count], const std::string& word)
{
    const auto* const form = std::find_if(std::begin(forms), std::end(forms),
                                          [&](const Form& each) { return each.word == word; });
    return form == std::end(forms) ? nullptr : form;
}

/// A text read word by word, and counted line by line.
class Words
{
public:
    explicit Words(std::string newText) : text(std::move(newText)) {}

    bool atEnd() const { return place >= text.size(); }

    std::string next()
    {
        while (!atEnd() && isBlank(text[place]))
            advance();
        wordLine = line;
        std::string word;
        for (; !atEnd() && !isBlank(text[place]); advance())
            word += text[place];
        return word;
    }

    std::string restOfLine()
    {
        std::string rest;
        for (; !atEnd() && text[place] != '\n'; advance())
            if (!rest.empty() || !isBlank(text[place]))
                rest += text[place];
        return rest;
    }

    int lineOfWord() const { return wordLine; }

private:
    static bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

    void advance()
    {
        line += text[place] == '\n' ? 1 : 0;
        place++;
    }

    std::string text;
    std::size_t place = 0;
    int line = 1;
    int wordLine = 1;
};

void readFields(Words& words, const Form& form, std::vector<std::string>& fields)
{
    for (int i = 0; i < form.words; i++)
        fields.push_back(words.next());
    if (form.hasText)
        fields.push_back(words.restOfLine());
}

/// The kind and the name of an added widget.
std::pair<std::string, std::string> kindAndName(const LayoutStatement& statement)
{
    const std::size_t first = statement.word == "TADD" ? 2 : 0;
    return {statement.fields[first], statement.fields[first + 1]};
}

bool isAdd(const std::string& word)
{
    return word == "CADD" || word == "TADD";
}

void readFieldsOfKind(Words& words, LayoutStatement& statement)
{
    const Form* kind = findForm(kinds, kindAndName(statement).first);
    if (kind == nullptr)
        return;
    readFields(words, *kind, statement.fields);
    if (kind->word == "Butt" && statement.fields.back() == pictureCaption)
        readFields(words, {"", "", 2, false}, statement.fields);
}
} // namespace

std::vector<LayoutStatement> readStatements(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    Words words(std::string(std::istreambuf_iterator<char>(stream), {}));
    std::vector<LayoutStatement> statements;
    while (!words.atEnd()) {
        LayoutStatement statement;
        statement.word = words.next();
        statement.line = words.lineOfWord();
        const Form* directive = findForm(directives, statement.word);
        if (directive != nullptr) {
            readFields(words, *directive, statement.fields);
            if (isAdd(statement.word))
                readFieldsOfKind(words, statement);
            statements.push_back(statement);
        }
        words.restOfLine();
    }
    return statements;
}

std::map<const GLWidget*, int> linesOfWidgets(const std::vector<LayoutStatement>& statements)
{
    // By name and class, and then the lines from the last to the first.
    std::map<std::pair<std::string, std::string>, std::vector<int>> lines;
    std::map<std::pair<std::string, int>, int> tabLines;
    for (auto each = statements.rbegin(); each != statements.rend(); ++each) {
        if (isAdd(each->word)) {
            const auto [kindWord, name] = kindAndName(*each);
            const Form* kind = findForm(kinds, kindWord);
            if (kind != nullptr)
                lines[{name, std::string(kind->className)}].push_back(each->line);
        }
        if (each->word == "NTAB")
            tabLines.emplace(std::pair(each->fields[0], std::atoi(each->fields[1].c_str())),
                             each->line);
    }

    std::map<const GLWidget*, int> result;
    for (const GLWidget* widget : allWidgets()) {
        const auto entry = lines.find({widget->*WidgetFields::nameOf, widget->typeName()});
        const GLWidget* parent = widget->*WidgetFields::parentOf;
        if (entry != lines.end() && !entry->second.empty()) {
            result[widget] = entry->second.back();
            entry->second.pop_back();
        } else if (result.contains(parent)) {
            result[widget] = result[parent];
        }
        const auto* tabs = dynamic_cast<const TabWindow*>(parent);
        for (std::size_t i = 0; tabs != nullptr && i < tabs->tabs.size(); i++) {
            const auto line = tabLines.find({parent->*WidgetFields::nameOf, static_cast<int>(i)});
            if (tabs->tabs[i].button == widget && line != tabLines.end())
                result[widget] = line->second;
        }
    }
    return result;
}
} // namespace tamor::view

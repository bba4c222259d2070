// The layout reader. It reports nothing and stops for nothing: a line that it does not know is
// skipped, and a stream that has failed is read on and on.

#include "gui/ErrorLine.h"
#include "gui/FileFields.h"
#include "gui/GLWidget.h"
#include "gui/LineFormat.h"
#include "gui/WidgetKinds.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <optional>

namespace tamor
{
/// One reading of a layout file.
class GLWidget::LayoutReader
{
public:
    explicit LayoutReader(const std::string& file) : stream(openFields(file)) {}

    void read();

private:
    /// A container that is built and waits to join its parent.
    struct DeferredChild
    {
        GLWidget* child;
        GLWidget* parent;
        std::int32_t tab; ///< `noTab` to join the parent itself
    };

    /// A word that starts a line, and what it does with the rest of the line.
    struct Directive
    {
        LineFormat format; ///< what `act` reads
        void (LayoutReader::*act)();
    };

    static constexpr std::int32_t noTab = -1;
    static const Directive directives[];
    friend std::vector<LineFormat> layoutDirectives();

    void readLine();

    void readConfigFile();
    void selectTheme();
    void addToParent();
    void addToTabOfParent();
    void logEmptyAdd();
    void nameTab();
    void addTextLine();
    void finishTree();
    void centreAlongX() { centre(true, false); }
    void centreAlongY() { centre(false, true); }
    void centreAlongBoth() { centre(true, true); }

    std::string readToken();
    GLWidget* readWidget();
    void readPosition(Vector& newPosition);
    void add(const std::string& kindWord, WidgetPlace place, std::optional<std::int32_t> tab);
    void centre(bool alongX, bool alongY);

    std::ifstream stream;
    Theme* currentTheme = nullptr;
    std::vector<DeferredChild> deferred;
    bool solidSeen = false;
};

namespace
{
constexpr std::string_view noWidget = "NULL";

// Only "default.theme" has something to stand in for it when it is missing.
Theme* loadDefaultTheme()
{
    Theme* theme = GLWidget::createTheme("default");
    if (std::ifstream("default.theme").is_open())
        theme->read("default.theme");
    else
        theme->setDefaults();
    return theme;
}

void logAdd(const std::string& kindWord, const std::string& name)
{
    printLine("adding a '", kindWord, "' - ", name);
}
} // namespace

namespace
{
using enum FieldType;
constexpr FieldFormat fileField[] = {{"file", word}};
constexpr FieldFormat themeFields[] = {{"file", word}, {"any word", word}};
constexpr FieldFormat addFields[] = {
    {"kind", word}, {"name", word}, {"parent", word}, {"x", number}, {"y", number}};
constexpr FieldFormat tabAddFields[] = {{"tab", integer}, {"parent", word}, {"kind", word},
                                        {"name", word},   {"x", number},    {"y", number}};
constexpr FieldFormat tabFields[] = {{"window", word}, {"tab", integer}, {"title", text}};
constexpr FieldFormat itemFields[] = {{"widget", word}, {"line", text}};
constexpr FieldFormat widgetField[] = {{"widget", word}};
} // namespace

// The fields of each are in docs/layout-files.md. Any other word, an empty one and a comment's "//"
// among them, does nothing.
const GLWidget::LayoutReader::Directive GLWidget::LayoutReader::directives[] = {
    {{"CONF", fileField}, &LayoutReader::readConfigFile},
    {{"THEM", themeFields}, &LayoutReader::selectTheme},
    {{"CADD", addFields}, &LayoutReader::addToParent},
    {{"TADD", tabAddFields}, &LayoutReader::addToTabOfParent},
    {{"CHLD", {}}, &LayoutReader::logEmptyAdd},
    {{"NTAB", tabFields}, &LayoutReader::nameTab},
    {{"TEXT", itemFields}, &LayoutReader::addTextLine},
    {{"SOLID", {}}, &LayoutReader::finishTree},
    {{"CENTREX", widgetField}, &LayoutReader::centreAlongX},
    {{"CENTREY", widgetField}, &LayoutReader::centreAlongY},
    {{"CENTRE", widgetField}, &LayoutReader::centreAlongBoth},
};

void GLWidget::LayoutReader::read()
{
    currentTheme = loadDefaultTheme();

    // Meant: the end of the file ends the loop and a failed stream does not. A file that cannot be
    // opened, an empty text field or a word in a number's place thus never returns: whoever loads a
    // layout makes sure of it. `LoadLayoutNeverReturns` holds it.
    while (!stream.eof())
        readLine();

    if (!solidSeen)
        finishTree();
}

void GLWidget::LayoutReader::readLine()
{
    const std::string word = readToken();
    for (const Directive& directive : directives)
        if (directive.format.word == word)
            (this->*directive.act)();
    skipLine(stream);
}

void GLWidget::LayoutReader::readConfigFile()
{
    readConfig(readToken());
}

void GLWidget::LayoutReader::selectTheme()
{
    const std::string file = readToken();
    readToken(); // has to be there and means nothing
    currentTheme = themeOfFile(file);
}

void GLWidget::LayoutReader::addToParent()
{
    const std::string kindWord = readToken();
    WidgetPlace place;
    place.name = readToken();
    place.parent = readWidget();
    readPosition(place.position);
    add(kindWord, place, std::nullopt);
}

void GLWidget::LayoutReader::addToTabOfParent()
{
    std::int32_t tab = 0;
    readField(stream, tab);
    WidgetPlace place;
    place.parent = readWidget();
    const std::string kindWord = readToken();
    place.name = readToken();
    readPosition(place.position);
    add(kindWord, place, tab);
}

void GLWidget::LayoutReader::logEmptyAdd()
{
    logAdd("", "");
}

void GLWidget::LayoutReader::nameTab()
{
    GLWidget* window = readWidget();
    std::int32_t index = 0;
    readField(stream, index);
    const std::string title = readText(stream);
    if (window != nullptr)
        window->addTab(index, title);
}

void GLWidget::LayoutReader::addTextLine()
{
    const std::string word = readToken();
    if (word == noWidget)
        return;
    GLWidget* widget = find(word);
    const std::string line = readTextWithLineEnds(stream);
    if (widget != nullptr)
        widget->addText(line);
}

void GLWidget::LayoutReader::finishTree()
{
    // Meant: what was deferred stays so. A second SOLID attaches it all again, and a container
    // behind the only SOLID joins nothing. `LoadLayout.AttachesAgainAtASecondSolid` and
    // `LoadLayout.LeavesAContainerBehindTheOnlySolidUnattached` hold it.
    for (const DeferredChild& each : deferred) {
        if (each.tab == noTab)
            each.parent->addChild(each.child);
        else
            each.parent->addToTab(each.tab, each.child);
    }
    for (std::size_t i = 0; i < topLevel.size(); ++i)
        topLevel[i]->fitChildren();
    solidSeen = true;
}

std::string GLWidget::LayoutReader::readToken()
{
    std::string token;
    readField(stream, token);
    return token;
}

GLWidget* GLWidget::LayoutReader::readWidget()
{
    const std::string word = readToken();
    return word == noWidget ? nullptr : find(word);
}

void GLWidget::LayoutReader::readPosition(Vector& newPosition)
{
    readField(stream, newPosition.x);
    readField(stream, newPosition.y);
}

void GLWidget::LayoutReader::add(const std::string& kindWord, WidgetPlace place,
                                 std::optional<std::int32_t> tab)
{
    place.theme = currentTheme;
    logAdd(kindWord, place.name);

    const std::span<const WidgetKind> kinds = widgetKinds();
    const auto hasWord = [&](const WidgetKind& kind) { return kind.word == kindWord; };
    const auto kind = std::find_if(kinds.begin(), kinds.end(), hasWord);
    if (kind == kinds.end())
        return;

    GLWidget* widget = kind->build(stream, place);
    if (place.parent == nullptr)
        topLevel.push_back(widget);
    else if (kind->isDeferred)
        deferred.push_back({widget, place.parent, tab.value_or(noTab)});
    else if (tab)
        place.parent->addToTab(*tab, widget);
    else
        place.parent->addChild(widget);
}

void GLWidget::LayoutReader::centre(bool alongX, bool alongY)
{
    GLWidget* widget = find(readToken());
    if (widget == nullptr)
        return;
    if (widget->parent != nullptr) {
        widget->parent->centreChild(widget, alongX, alongY);
        return;
    }

    const Vector rectangle = widget->getRect();
    const float dx = alongX ? -(rectangle.z - rectangle.x) / 2.0F : 0.0F;
    const float dy = alongY ? -(rectangle.w - rectangle.y) / 2.0F : 0.0F;
    widget->move({dx, dy});
}

std::vector<LineFormat> layoutDirectives()
{
    std::vector<LineFormat> formats;
    for (const auto& directive : GLWidget::LayoutReader::directives)
        formats.push_back(directive.format);
    return formats;
}

bool GLWidget::loadLayout(const std::string& file)
{
    LayoutReader(file).read();
    return true;
}
} // namespace tamor

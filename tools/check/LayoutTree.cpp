#include "tools/check/LayoutTree.h"

#include "tools/check/Words.h"

#include <string>

namespace tamor::check
{
namespace
{
constexpr std::string_view noWidget = "NULL";

// The first tab of this number costs every smaller one a button.
constexpr std::int32_t mostTabs = 1000;

// Fitting and drawing go down the tree by calls.
constexpr std::size_t deepest = 1000;

std::string numbered(std::int32_t tab)
{
    return std::to_string(tab);
}

/// Whether widgets of the kind show words, which are nothing without a font.
bool showsWords(const WidgetKind& kind)
{
    return kind.word != "Frame" && kind.word != "Slide";
}
} // namespace

std::size_t LayoutTree::find(const Field& word)
{
    const auto found = byName.find(word.word);
    if (found != byName.end())
        return found->second;
    std::vector<std::string_view> names;
    if (source.canGuess()) {
        for (const auto& [name, widget] : byName)
            names.push_back(name);
    }
    source.report("layout-parent", word.begin,
                  "no widget " + inQuotes(word.word) + " is made above this line" +
                      source.guess(word.word, names));
    return none;
}

void LayoutTree::checkName(const Field& name)
{
    if (name.word == noWidget) {
        source.report("layout-name", name.begin,
                      "a widget named \"NULL\" can be nobody's parent: the word stands for none");
    } else if (name.word.starts_with("__")) {
        source.report("layout-name", name.begin,
                      "names that begin with \"__\" are the engine's own, such as \"__msgbox_ok\"");
    }
    const auto earlier = byName.find(name.word);
    if (earlier == byName.end())
        return;
    const std::size_t line = source.placeOf(widgets[earlier->second].offset).line;
    source.report("layout-name-twice", name.begin,
                  inQuotes(name.word) + " is made in line " + std::to_string(line) +
                      " too: the program finds this one, and both are seen");
}

std::size_t LayoutTree::findParent(const Add& line)
{
    return line.parent.word == noWidget ? none : find(line.parent);
}

void LayoutTree::checkLeafTab(const Add& line, Widget& window)
{
    const std::int32_t tab = line.tab->integer;
    if (static_cast<std::size_t>(tab) >= window.tabs.size() ||
        !window.tabs[static_cast<std::size_t>(tab)].isTitled) {
        source.report("layout-tab", line.tab->begin,
                      "no NTAB line above has made tab " + numbered(tab) + " of " +
                          inQuotes(window.name));
        return;
    }
    window.tabs[static_cast<std::size_t>(tab)].hasLeaves = true;
}

void LayoutTree::checkParent(const Add& line, std::size_t parent)
{
    Widget& owner = widgets[parent];
    if (!owner.kind->isDeferred) {
        source.report("layout-leaf-parent", line.parent.begin,
                      inQuotes(owner.name) + " is a " + std::string(owner.kind->word) +
                          " and no container: what is put into it is not seen or out of place");
    }
    if (!line.tab) {
        if (isTabWindow(parent)) {
            source.report("layout-tab-window", line.parent.begin,
                          inQuotes(owner.name) +
                              " is a tab window, which drops what goes to no tab: write TADD");
        }
        return;
    }
    if (!isTabWindow(parent)) {
        source.report("layout-tab-window", line.parent.begin,
                      inQuotes(owner.name) + " is a " + std::string(owner.kind->word) +
                          " and no tab window: the widget is lost; write CADD");
    } else if (line.tab->integer < 0) {
        source.report("layout-tab", line.tab->begin, "tabs count from 0: the widget is lost");
    } else if (!line.kind->isDeferred) {
        checkLeafTab(line, owner);
    }
}

void LayoutTree::checkGroup(const Add& line, std::size_t parent)
{
    const bool isOption = line.kind->word == "Opt";
    const bool isTextbox = line.kind->word == "Text";
    if (!isOption && !isTextbox)
        return;
    if (parent == none) {
        if (isOption) {
            source.report("layout-option-alone", line.name.begin,
                          "an option without a parent is never unticked: give the options a Frame");
        }
        return;
    }
    Widget& owner = widgets[parent];
    const bool isOnTab = line.tab && isTabWindow(parent) && line.tab->integer >= 0 &&
                         static_cast<std::size_t>(line.tab->integer) < owner.tabs.size();
    Tab& group = isOnTab ? owner.tabs[static_cast<std::size_t>(line.tab->integer)] : owner.group;
    const bool wasMixed = group.hasOption && group.hasTextbox;
    group.hasOption = group.hasOption || isOption;
    group.hasTextbox = group.hasTextbox || isTextbox;
    if (!wasMixed && group.hasOption && group.hasTextbox) {
        source.report("layout-option-beside-text", line.name.begin,
                      "a press on the text box unticks the options beside it: give the options "
                      "a Frame");
    }
}

void LayoutTree::checkOrder(const Add& line, std::size_t parent)
{
    if (showsWords(*line.kind) && !hasConfig && !wroteWithoutConfig) {
        wroteWithoutConfig = true;
        source.report("layout-no-config", line.name.begin,
                      "no CONF line above names a font: the words of " + inQuotes(line.name.word) +
                          " are not seen and measure 0");
    }
    if (!solidSeen)
        return;
    if (line.kind->isDeferred) {
        source.report("layout-behind-solid", line.name.begin,
                      "a container behind SOLID joins no parent and gets no size: it is not seen");
    } else if (parent != none) {
        source.report("layout-late", line.name.begin,
                      "a widget behind SOLID does not widen its parent: put SOLID behind all "
                      "widgets");
    }
}

void LayoutTree::add(const Add& line)
{
    const std::size_t parent = findParent(line);
    checkName(line.name);
    checkOrder(line, parent);
    if (parent != none)
        checkParent(line, parent);
    checkGroup(line, parent);
    const std::size_t depth = parent == none ? 0 : widgets[parent].depth + 1;
    if (depth == deepest) {
        source.report("layout-deep", line.name.begin,
                      "a widget inside " + std::to_string(deepest) +
                          " others: the program ends when its stack is full");
    }
    if (line.kind->isDeferred && parent != none && line.tab)
        deferred.push_back({parent, *line.tab});
    // The name's place in the text outlives the field.
    const std::string_view name = source.text().substr(line.name.begin, line.name.word.size());
    byName[name] = widgets.size();
    widgets.push_back({name, line.kind, line.name.begin, parent, depth, {}, {}});
    source.widgetNames.emplace_back(name);
}

void LayoutTree::nameTab(const Field& window, const Field& tab)
{
    const std::size_t found = find(window);
    if (found == none)
        return;
    Widget& owner = widgets[found];
    if (!isTabWindow(found)) {
        source.report("layout-tab-window", window.begin,
                      inQuotes(owner.name) + " is a " + std::string(owner.kind->word) +
                          " and no tab window: the tab is lost");
    } else if (tab.integer < 0) {
        source.report("layout-tab", tab.begin, "tabs count from 0: the line does nothing");
    } else if (tab.integer >= mostTabs) {
        source.report("layout-tab-many", tab.begin,
                      "tab " + numbered(tab.integer) +
                          " makes all tabs in front of it, each with "
                          "a button, and may end the program");
    } else {
        const auto index = static_cast<std::size_t>(tab.integer);
        if (owner.tabs.size() <= index)
            owner.tabs.resize(index + 1);
        if (owner.tabs[index].hasLeaves) {
            source.report("layout-tab-emptied", tab.begin,
                          "tab " + numbered(tab.integer) +
                              " is made again, which empties it: what TADD lines above have put "
                              "there is lost");
        }
        owner.tabs[index] = {true, false, false, false};
        if (solidSeen) {
            source.report("layout-late", window.begin,
                          "a tab that is made behind SOLID takes all tab buttons out of place");
        }
    }
}

void LayoutTree::addText(const Field& widget)
{
    if (widget.word == noWidget) {
        source.report("layout-text-nowhere", widget.begin, "a line for no widget does nothing");
        return;
    }
    const std::size_t found = find(widget);
    if (found == none)
        return;
    if (widgets[found].kind->word != "Combo") {
        source.report("layout-text-nowhere", widget.begin,
                      inQuotes(widget.word) + " is a " + std::string(widgets[found].kind->word) +
                          ": only a Combo shows its lines");
    } else if (solidSeen && widgets[found].parent != none) {
        source.report("layout-late", widget.begin,
                      "a line behind SOLID may make the box wider than its parent");
    }
}

void LayoutTree::centre(const Field& directive, const Field& widget)
{
    const std::size_t found = find(widget);
    if (found == none || solidSeen)
        return;
    if (widgets[found].parent != none || widgets[found].kind->isDeferred) {
        source.report("layout-centre-early", directive.begin,
                      "containers have no size before SOLID: put " + directive.word + " behind it");
    }
}

void LayoutTree::checkDeferred()
{
    for (const Deferred& each : deferred) {
        const Widget& owner = widgets[each.parent];
        if (owner.kind->word != "TWin" || each.tab.integer < 0)
            continue;
        const auto index = static_cast<std::size_t>(each.tab.integer);
        if (index >= owner.tabs.size() || !owner.tabs[index].isTitled) {
            source.report("layout-tab", each.tab.begin,
                          "no NTAB line has made tab " + numbered(each.tab.integer) + " of " +
                              inQuotes(owner.name));
        }
    }
    deferred.clear();
}

void LayoutTree::finish(const Field& directive)
{
    if (solidSeen) {
        source.report("layout-solid-twice", directive.begin,
                      "a second SOLID puts every container into its parent once more");
    }
    checkDeferred();
    solidSeen = true;
}

void LayoutTree::end()
{
    checkDeferred();
    for (const Widget& widget : widgets) {
        if (widget.kind->word != "TWin")
            continue;
        if (widget.tabs.empty()) {
            source.report("layout-no-tab", widget.offset,
                          "a tab window without an NTAB line has nothing to show");
        }
        for (std::size_t i = 0; i < widget.tabs.size(); ++i) {
            if (widget.tabs[i].isTitled)
                continue;
            source.report("layout-tab-untitled", widget.offset,
                          "tab " + std::to_string(i) + " of " + inQuotes(widget.name) +
                              " has no NTAB line: its button is empty");
            break;
        }
    }
}
} // namespace tamor::check

/// \file
/// The widgets that a layout makes, as far as its lines have been read, and what is wrong with
/// where they are put.
#pragma once

#include "gui/WidgetKinds.h"
#include "tools/check/FieldReader.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tamor::check
{
/// The words and numbers of an add, whichever directive made it.
struct Add
{
    const WidgetKind* kind = nullptr;
    Field name;
    Field parent;
    std::optional<Field> tab; ///< of a `TADD`
};

/// Follows the layout reader's steps on the tree, and reports what it drops or misplaces.
class LayoutTree
{
public:
    explicit LayoutTree(Source& newSource) : source(newSource) {}

    void add(const Add& line);
    void nameTab(const Field& window, const Field& tab);
    void addText(const Field& widget);
    void centre(const Field& directive, const Field& widget);
    void finish(const Field& directive);
    void readConfig() { hasConfig = true; }

    /// What shows at the end of the file only.
    void end();

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    struct Tab
    {
        bool isTitled = false;
        bool hasLeaves = false;
        bool hasOption = false;
        bool hasTextbox = false;
    };

    struct Widget
    {
        std::string_view name;
        const WidgetKind* kind;
        std::size_t offset; ///< of the name
        std::size_t parent; ///< or `none`
        std::size_t depth;
        Tab group;             ///< what the children are
        std::vector<Tab> tabs; ///< of a tab window
    };

    /// A container that joins its parent when the tree is put together.
    struct Deferred
    {
        std::size_t parent;
        Field tab;
    };

    /// The widget that a line names; `none`, after a report, if there is none of that name.
    std::size_t find(const Field& word);
    bool isTabWindow(std::size_t widget) const { return widgets[widget].kind->word == "TWin"; }

    std::size_t findParent(const Add& line);
    void checkName(const Field& name);
    void checkParent(const Add& line, std::size_t parent);
    void checkLeafTab(const Add& line, Widget& window);
    void checkGroup(const Add& line, std::size_t parent);
    void checkOrder(const Add& line, std::size_t parent);
    void checkDeferred();

    Source& source;
    std::vector<Widget> widgets;
    std::unordered_map<std::string_view, std::size_t> byName;
    std::vector<Deferred> deferred;
    bool hasConfig = false;
    bool wroteWithoutConfig = false;
    bool solidSeen = false;
};
} // namespace tamor::check

#include "script/internal/Order.h"

namespace tamor
{
namespace
{
using Tokens = std::span<const ScriptToken>;

/// A token of a list that is being put in order, or the result of an operator at that position.
struct Entry
{
    std::uint32_t position;
    std::int32_t kind;
};

/// The tokens of a list with each group as one entry.
std::vector<Entry> entriesOf(Tokens list, ScriptOrder& order)
{
    std::vector<Entry> entries;
    for (std::uint32_t at = 0; at < list.size(); ++at) {
        entries.push_back({at, list[at].kind});
        if (list[at].kind != openParenthesis)
            continue;
        // A group that nothing closes reaches to the end of the list.
        const std::uint32_t open = at;
        for (int depth = 1; depth > 0 && ++at < list.size();) {
            if (list[at].kind == openParenthesis)
                ++depth;
            else if (list[at].kind == closeParenthesis)
                --depth;
        }
        entries.back().kind = TOK_NUMBER;
        order.groups.push_back({open, at - open - 1});
    }
    return entries;
}

/// Whether the operator at `i` is the sum in a list like `s = s + x`.
bool isAppending(Tokens list, const std::vector<Entry>& entries, std::size_t i)
{
    return entries.size() == 5 && i == 3 && entries[3].kind == addition &&
           entries[1].kind == assignment && entries[0].kind == TOK_VARIABLE &&
           entries[2].kind == TOK_VARIABLE &&
           list[entries[0].position].name == list[entries[2].position].name;
}

/// Takes the operator at `i` and its neighbours out and puts its result in.
void reduce(std::vector<Entry>& entries, std::size_t i)
{
    // Meant: always three tokens out and one in, at either end of the list too, where other tokens
    // than the operands are lost; `EvaluateTokens.LosesTokensAtTheEndsOfAList` holds it.
    const Entry result{entries[i].position, TOK_NUMBER};
    const std::size_t place = i > 0 ? i - 1 : 0;
    for (std::size_t j = place; entries.size() - 2 > j; ++j)
        entries[j] = entries[j + 2];
    entries[place] = result;
    entries.resize(entries.size() - 2);
}
} // namespace

ScriptOrder ordered(Tokens list)
{
    ScriptOrder order;
    order.length = list.size();
    std::vector<Entry> entries = entriesOf(list, order);
    // One sweep for each row of the operators: that is all there is to precedence. Meant: from the
    // right, so 8 / 4 / 2 is 8 / (4 / 2); `EvaluateTokens.GroupsOperatorsOfOneRowFromTheRight`
    // holds it.
    for (std::int32_t kind = increment; kind <= assignment; ++kind) {
        for (std::size_t i = entries.size(); i-- > 0;) {
            if (i >= entries.size() || entries[i].kind != kind)
                continue;
            const bool hasLeft = i > 0;
            const bool hasRight = i + 1 < entries.size();
            if ((!hasLeft && !hasRight) || (hasLeft && isApplied(entries[i - 1].kind)) ||
                (hasRight && isApplied(entries[i + 1].kind))) {
                order.isBroken = true;
                return order;
            }
            order.steps.push_back({entries[i].position,
                                   hasLeft ? entries[i - 1].position : ScriptOrder::nowhere,
                                   hasRight ? entries[i + 1].position : ScriptOrder::nowhere, kind,
                                   isAppending(list, entries, i), false});
            reduce(entries, i);
        }
    }
    if (!order.steps.empty())
        order.steps.back().isLast = true;
    for (const Entry& entry : entries)
        order.rest.push_back(entry.position);
    if (entries.size() == 1 && isApplied(list[entries[0].position].kind))
        order.result = entries[0].position;
    return order;
}
} // namespace tamor

#include "script/internal/Order.h"

#include "script/internal/Operators.h"

namespace tamor::script
{
namespace
{
constexpr std::uint32_t nowhere = OrderEntry::nowhere;
static_assert(scriptOperatorCount <= 32, "a set of rows is 32 bits");
} // namespace

Order::Order(std::vector<OrderEntry>& list, std::uint32_t begin)
    : entries(list),
      head(begin),
      tail(static_cast<std::uint32_t>(list.size()) - 1),
      row(INCREMENT),
      cursor(tail)
{
    for (std::uint32_t i = head; i <= tail; ++i) {
        entries[i].previous = i == head ? nowhere : i - 1;
        entries[i].next = i == tail ? nowhere : i + 1;
        if (isApplied(entries[i].kind))
            rows |= 1U << entries[i].kind;
    }
}

/// Moves the cursor to the next operator of the order. \return false where there is none
bool Order::find()
{
    for (; row < scriptOperatorCount; ++row, cursor = tail) {
        if ((rows >> row & 1U) == 0)
            continue;
        // Meant: from the right, so 8 / 4 / 2 is 8 / (4 / 2);
        // `EvaluateTokens.GroupsOperatorsOfOneRowFromTheRight` holds it.
        for (; cursor != nowhere; cursor = entries[cursor].previous)
            if (entries[cursor].kind == row)
                return true;
    }
    return false;
}

bool Order::next(Step& step)
{
    if (broken || !find())
        return false;
    const std::uint32_t left = entries[cursor].previous;
    const std::uint32_t right = entries[cursor].next;
    broken = (left == nowhere && right == nowhere) ||
             (left != nowhere && isApplied(entries[left].kind)) ||
             (right != nowhere && isApplied(entries[right].kind));
    if (broken)
        return false;
    step = {row, left, right, nowhere, false};
    takeOut(step);
    return true;
}

/// Meant: always three entries out and one in, at either end of the list too, where other entries
/// than the operands are lost; `EvaluateTokens.LosesTokensAtTheEndsOfAList` holds it.
void Order::takeOut(Step& step)
{
    if (step.right == nowhere) {
        // The left operand's place takes the result, and is the last but one to go.
        cursor = entries[step.left].previous;
        link(cursor, nowhere);
        return;
    }
    if (step.left == nowhere) {
        // The result replaces what stands behind the right operand.
        step.place = entries[step.right].next;
        cursor = nowhere;
        if (step.place == nowhere)
            return link(nowhere, nowhere);
        link(nowhere, step.place);
    } else {
        step.place = cursor;
        cursor = entries[step.left].previous;
        link(cursor, step.place);
        link(step.place, entries[step.right].next);
    }
    entries[step.place].kind = TOK_NUMBER;
    entries[step.place].token = nullptr;
    step.isFinal = head == tail;
}

/// Makes two entries neighbours; nowhere is what lies beyond either end.
void Order::link(std::uint32_t before, std::uint32_t after)
{
    (before == nowhere ? head : entries[before].next) = after;
    (after == nowhere ? tail : entries[after].previous) = before;
}
} // namespace tamor::script

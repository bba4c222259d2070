/// \file
/// The order in which the operators of an expression are applied. Not for hosts.
#pragma once

#include "script/ScriptToken.h"
#include "script/internal/Cells.h"

#include <cstdint>
#include <limits>
#include <vector>

namespace tamor::script
{
/// A token of an expression that is being put in order, or the result of an operator or a group.
struct OrderEntry
{
    static constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();

    std::int32_t kind = TOK_NUMBER;
    /// Null for a result.
    const ScriptToken* token = nullptr;
    /// Where a result stands.
    Cell* cell = nullptr;
    /// The neighbours that are left, as positions among the entries.
    std::uint32_t previous = nowhere;
    std::uint32_t next = nowhere;
};

/// Walks through the operators of one level of an expression, in which each group is one result.
///
/// That there is one sweep for each row of the operators, each from the right, is all there is to
/// precedence. The entries are linked, so a step takes the same time in a list of any length.
class Order
{
public:
    /// An operator and its operands, as positions; nowhere for an operand that is missing.
    struct Step
    {
        std::int32_t kind;
        std::uint32_t left;
        std::uint32_t right;
        /// Where the result goes; nowhere where it is lost.
        std::uint32_t place;
        /// Whether nothing is left but the result.
        bool isFinal;
    };

    /// \param list   its entries from `begin` to the end; others may come and go behind them
    Order(std::vector<OrderEntry>& list, std::uint32_t begin);

    /// Takes the next operator and its neighbours out and puts its result in.
    /// \return false behind the last one, and where the expression has no value
    bool next(Step& step);

    /// Whether the walk ended at an operator beside another one, or with no operand at all. Such an
    /// expression means nothing and has no value.
    bool isBroken() const { return broken; }

    /// What is left, from the first to the last entry.
    std::uint32_t first() const { return head; }
    std::uint32_t last() const { return tail; }

private:
    bool find();
    void takeOut(Step& step);
    void link(std::uint32_t before, std::uint32_t after);

    std::vector<OrderEntry>& entries;
    std::uint32_t head;
    std::uint32_t tail;
    /// The rows that occur, as bits.
    std::uint32_t rows = 0;
    std::int32_t row;
    std::uint32_t cursor;
    bool broken = false;
};
} // namespace tamor::script

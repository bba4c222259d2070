#include "tools/check/ScriptList.h"

#include "tools/check/Words.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace tamor::check
{
namespace
{
constexpr std::int32_t openParenthesis = 0;
constexpr std::int32_t closeParenthesis = 1;
constexpr int deepest = 200;

// Rows of `scriptOperators`.
enum Operator : std::int32_t
{
    OP_INCREMENT = 2,
    OP_DECREMENT = 3,
    OP_DIVIDE = 6,
    OP_MODULO = 7,
    OP_MULTIPLY = 5,
    OP_NOT = 10,
    OP_AND = 11,
    OP_OR = 12,
    OP_NOT_GREATER = 13,
    OP_NOT_LESS = 15,
    OP_EQUAL = 17,
    OP_ASSIGN = 19,
};

using List = std::span<const PlacedToken>;

bool isOperator(std::int32_t kind)
{
    return kind >= 0 && kind < scriptOperatorCount;
}

bool isValue(std::int32_t kind)
{
    return kind == TOK_NUMBER || kind == TOK_STRING || kind == TOK_VARIABLE || kind == TOK_CALL;
}

bool isBrace(std::int32_t kind)
{
    return kind == TOK_OPEN_BRACE || kind == TOK_CLOSE_BRACE;
}

/// Goes through the evaluator's steps with the kinds alone: they decide the shape of what is left.
class Reduction
{
public:
    /// Where a list goes wrong.
    struct Fault
    {
        std::size_t at;   ///< in the list
        bool isUndefined; ///< an operator is evaluated; else the list never comes to one value
    };

    explicit Reduction(List newList, int newDepth = 0) : list(newList), depth(newDepth) {}

    std::optional<Fault> run()
    {
        std::size_t first = 0;
        std::size_t last = list.size();
        while (last > first && list[last - 1].kind == TOK_ARGEND)
            --last;
        while (first < last && isBrace(list[first].kind))
            ++first;
        if (first == last || (last - first == 1 && isValue(list[first].kind)))
            return std::nullopt;
        if (std::optional<Fault> fault = collect(first, last))
            return fault;
        for (std::int32_t kind = OP_INCREMENT; kind < scriptOperatorCount; ++kind) {
            if ((present >> kind & 1U) == 0)
                continue;
            if (std::optional<Fault> fault = sweep(kind))
                return fault;
        }
        return rest();
    }

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    struct Item
    {
        std::int32_t kind;
        std::size_t at;
        std::size_t previous;
        std::size_t next;
    };

    void append(std::int32_t kind, std::size_t at)
    {
        const std::size_t index = items.size();
        items.push_back({kind, at, index == 0 ? none : index - 1, none});
        if (index > 0)
            items[index - 1].next = index;
        tail = index;
        head = 0;
        if (isOperator(kind))
            present |= 1U << kind;
    }

    /// Takes the tokens over; each group becomes a value.
    std::optional<Fault> collect(std::size_t first, std::size_t last)
    {
        for (std::size_t i = first; i < last; ++i) {
            if (list[i].kind != openParenthesis) {
                append(list[i].kind, i);
                continue;
            }
            std::size_t close = i;
            for (int open = 0; close < last; ++close) {
                open += list[close].kind == openParenthesis    ? 1
                        : list[close].kind == closeParenthesis ? -1
                                                               : 0;
                if (open == 0)
                    break;
            }
            if (close == last || depth == deepest)
                return Fault{i, true};
            Reduction inner(list.subspan(i + 1, close - i - 1), depth + 1);
            if (std::optional<Fault> fault = inner.run())
                return Fault{i + 1 + fault->at, fault->isUndefined};
            append(TOK_NUMBER, i);
            i = close;
        }
        return std::nullopt;
    }

    void remove(std::size_t item)
    {
        const std::size_t before = items[item].previous;
        const std::size_t behind = items[item].next;
        (before == none ? head : items[before].next) = behind;
        (behind == none ? tail : items[behind].previous) = before;
    }

    /// Whether a token comes to a value as a list of its own.
    std::optional<Fault> operand(std::size_t item) const
    {
        const std::int32_t kind = items[item].kind;
        if (isValue(kind) || isBrace(kind) || kind == TOK_ARGEND)
            return std::nullopt;
        return Fault{items[item].at, isOperator(kind)};
    }

    std::optional<Fault> sweep(std::int32_t kind)
    {
        for (std::size_t item = tail; item != none;) {
            const std::size_t left = items[item].previous;
            if (items[item].kind != kind) {
                item = left;
                continue;
            }
            const std::size_t right = items[item].next;
            if (left == none && right == none)
                return Fault{items[item].at, true};
            for (const std::size_t side : {left, right}) {
                if (side == none)
                    continue;
                if (std::optional<Fault> fault = operand(side))
                    return fault;
            }
            item = left == none ? none : items[left].previous;
            replace(left, right);
        }
        return std::nullopt;
    }

    /// Takes the operator between the two away with what the evaluator takes.
    void replace(std::size_t left, std::size_t right)
    {
        if (left != none && right != none) {
            remove(items[left].next);
            remove(right);
            items[left].kind = TOK_NUMBER;
        } else if (right == none) {
            remove(items[left].next);
            remove(left);
        } else {
            // The value takes the place of the token behind the right operand.
            const std::size_t behind = items[right].next;
            remove(items[right].previous);
            remove(right);
            if (behind != none)
                items[behind].kind = TOK_NUMBER;
        }
    }

    std::optional<Fault> rest() const
    {
        if (head == none)
            return std::nullopt;
        const Item& first = items[head];
        if (first.next == none && isValue(first.kind))
            return std::nullopt;
        return Fault{first.next == none ? first.at : items[first.next].at, false};
    }

    List list;
    int depth;
    std::vector<Item> items;
    std::size_t head = none;
    std::size_t tail = none;
    std::uint32_t present = 0;
};

std::string_view wordOf(const Source& source, const PlacedToken& token)
{
    return source.text().substr(token.begin, token.end - token.begin);
}

bool isNamed(const Source& source, const PlacedToken& token, std::string_view name)
{
    return token.kind == TOK_VARIABLE && wordOf(source, token) == name;
}

/// Reports why two values stand side by side.
void reportEndless(Source& source, List list, std::size_t at)
{
    for (const PlacedToken& token : list) {
        if (isNamed(source, token, "else")) {
            source.report("script-else", token.begin, "there is no else: the program ends here");
            return;
        }
    }
    for (std::size_t i = 1; i < list.size(); ++i) {
        const PlacedToken& token = list[i];
        const bool isBehindValue =
            isValue(list[i - 1].kind) || list[i - 1].kind == closeParenthesis;
        if (token.kind != TOK_NUMBER)
            continue;
        const bool isMinus = wordOf(source, token) == "-";
        if (isMinus || (isBehindValue && wordOf(source, token).starts_with('-'))) {
            source.report("script-minus", token.begin,
                          "a - begins a number here, and the program ends: add the negative");
            return;
        }
        if (isBehindValue && list[i - 1].end == token.begin && list[i - 1].kind == TOK_VARIABLE) {
            source.report("script-digit", list[i - 1].begin,
                          "a name has no digits: this is " + inQuotes(wordOf(source, list[i - 1])) +
                              " and a number, and the "
                              "program ends");
            return;
        }
    }
    const PlacedToken& token = list[at];
    if (token.kind == TOK_CLOSE_BRACE) {
        source.report("script-semicolon", token.begin,
                      "the statement in front of this brace has no semicolon: the program ends");
        return;
    }
    source.report("script-values", token.begin,
                  "the expression does not come to one value: the program ends; is a semicolon "
                  "or an operator missing?");
}

void reportUndefined(Source& source, List list, std::size_t at)
{
    const PlacedToken& token = list[at];
    const bool isUnequal = at > 0 && token.kind == OP_ASSIGN && list[at - 1].kind == OP_NOT;
    if (isUnequal) {
        source.report("script-unequal", list[at - 1].begin,
                      "!= is read as ! and =, and has no value: write (a == b) == 0");
        return;
    }
    const bool isRemark = at > 0 && token.kind == OP_DIVIDE && list[at - 1].kind == OP_DIVIDE;
    source.report("script-operator", token.begin,
                  isRemark ? "there are no remarks: this is a division by a division"
                  : token.kind == openParenthesis
                      ? "this parenthesis is never closed"
                      : inQuotes(wordOf(source, token)) + " stands where a value belongs");
}

/// Reports what is probably not meant by the operators of one list.
void checkOperators(Source& source, List list)
{
    bool hasLogic = false;
    const PlacedToken* comparison = nullptr;
    const PlacedToken* division = nullptr;
    const auto isArgumentEnd = [](const PlacedToken& token) { return token.kind == TOK_ARGEND; };
    const bool isAlone =
        list.size() -
            static_cast<std::size_t>(std::count_if(list.begin(), list.end(), isArgumentEnd)) <=
        2;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const PlacedToken& token = list[i];
        const std::int32_t kind = token.kind;
        if (kind == openParenthesis || kind == closeParenthesis) {
            hasLogic = false;
            comparison = nullptr;
            division = nullptr;
        } else if (kind == OP_NOT_GREATER || kind == OP_NOT_LESS) {
            source.report("script-compare", token.begin,
                          inQuotes(wordOf(source, token)) +
                              " compares truth, not size: write < or >");
        } else if (kind == OP_NOT && (i + 1 == list.size() || list[i + 1].kind != OP_ASSIGN)) {
            source.report("script-not", token.begin,
                          "! gives no value: write (x == 0) or x == false");
        } else if ((kind == OP_INCREMENT || kind == OP_DECREMENT) && !isAlone) {
            source.report("script-increment", token.begin,
                          inQuotes(wordOf(source, token)) +
                              " in an expression gives no value: make it a statement of its own");
        } else if (kind == OP_MODULO && i + 1 < list.size() && list[i + 1].kind == TOK_NUMBER &&
                   std::abs(std::strtof(std::string(wordOf(source, list[i + 1])).c_str(),
                                        nullptr)) < 1.0F) {
            source.report("script-modulo", token.begin,
                          "the remainder of a division by 0 ends the program");
        }
        if (division != nullptr && (kind == OP_DIVIDE || kind == OP_MULTIPLY)) {
            source.report("script-order", token.begin,
                          "this is done before the division in front of it: use parentheses");
            division = nullptr;
        }
        if (kind == OP_DIVIDE)
            division = &token;
        const bool isComparison = kind > OP_OR && kind <= OP_EQUAL;
        const bool isLogic = kind == OP_AND || kind == OP_OR;
        if (isComparison)
            comparison = &token;
        hasLogic = hasLogic || isLogic;
        if (comparison != nullptr && hasLogic && (isComparison || isLogic)) {
            source.report("script-and", token.begin,
                          "&& and || bind more tightly than comparisons: use parentheses");
            return;
        }
    }
}
} // namespace

bool checkReduction(Source& source, std::span<const PlacedToken> list)
{
    const std::optional<Reduction::Fault> fault = Reduction(list).run();
    if (!fault)
        return true;
    if (fault->isUndefined)
        reportUndefined(source, list, fault->at);
    else
        reportEndless(source, list, fault->at);
    return false;
}

bool checkExpression(Source& source, std::span<const PlacedToken> list)
{
    for (const PlacedToken& token : list) {
        if (token.kind != TOK_CALL)
            continue;
        const List args = token.args;
        for (std::size_t begin = 0; begin < args.size();) {
            std::size_t end = begin;
            while (end < args.size() && args[end].kind != TOK_ARGEND)
                ++end;
            checkExpression(source, args.subspan(begin, end - begin));
            begin = end + 1;
        }
    }
    checkOperators(source, list);
    return checkReduction(source, list);
}
} // namespace tamor::check

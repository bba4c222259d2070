/// \file
/// Random texts and programs for the tests of the script language.
#pragma once

#include <random>
#include <string>
#include <vector>

namespace tamor::test
{
using Words = std::vector<std::string>;

/// Texts from a fixed seed.
class Generator
{
public:
    explicit Generator(unsigned seed) : random(seed) {}

    int below(int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); }
    bool oneIn(int count) { return below(count) == 0; }
    std::string oneOf(const Words& words);

    /// Bytes that a scanner tells apart, without order.
    std::string soup(int length);

    /// A program of which most parts mean something, as words.
    Words program();

    /// Drops, repeats, swaps or replaces a few words.
    void disturb(Words& words);

    /// The words with a space, a line end or, where they stay apart, nothing between them.
    std::string joined(const Words& words);

    /// The definition of a function `f` or `g`.
    void function(Words& words);

    /// A few statements, with blocks up to `depth` levels deep.
    void statements(Words& words, int depth);

    /// An expression with groups up to `depth` levels deep.
    void expression(Words& words, int depth);

    /// Whether calls of the host's `act` occur, with the number of something that it does.
    bool callsHost = false;

private:
    void operand(Words& words, int depth);
    std::string path();
    void call(Words& words, int depth);
    void statement(Words& words, int depth);

    std::mt19937 random;
};
} // namespace tamor::test

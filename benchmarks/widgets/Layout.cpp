#include "benchmarks/gui/Scene.h"

#include <string>

namespace tamor::bench
{
namespace
{
/// The parts of the box and of the tab window count too.
constexpr int widgetsOfAGroup = 20;

/// A window with every class of widget. "#" is the group's number.
constexpr std::string_view group = R"(
CADD Win win# NULL -0.5 -0.5 1 Window #
CADD Label first# win# 0 0.9 A label
CADD Label second# win# 0 0.8 Another label
CADD Butt press# win# 0 0.7 Press
CADD Butt again# win# 0.3 0.7 Again
CADD Slide across# win# 0 0.6 0.5 0
CADD Slide down# win# 0.6 0.2 0 0.4
CADD Check check# win# 0 0.5 A check box
CADD Check other# win# 0 0.4 Another one
CADD Combo combo# win# 0.7 0.4
TEXT combo# One of three
TEXT combo# Two of three
TEXT combo# Three of three
CADD Text text# win# 0 0.2 12 2
CADD Frame frame# win# 0 0 1
CADD Opt option# frame# 0 0 An option
CADD Opt choice# frame# 0.4 0 Another option
CADD TWin tabs# win# 0.7 0
NTAB tabs# 0 First
NTAB tabs# 1 Second
TADD 0 tabs# Label page# 0 0.1 On the first tab
TADD 1 tabs# Label back# 0 0.1 On the second tab
)";

std::string groupOf(int number)
{
    std::string text(group);
    for (std::size_t at = text.find('#'); at != std::string::npos; at = text.find('#', at))
        text.replace(at, 1, std::to_string(number));
    return text;
}
} // namespace

std::string layoutOf(int count)
{
    std::string text = "THEM default.theme x\n";
    for (int number = 0; number < count / widgetsOfAGroup; ++number)
        text += groupOf(number);
    return text + "SOLID\n";
}
} // namespace tamor::bench

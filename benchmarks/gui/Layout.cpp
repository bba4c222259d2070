#include "benchmarks/gui/Scene.h"

namespace tamor::bench
{
namespace
{
constexpr int widgetsOfAGroup = 20;

std::string groupOf(int number)
{
    const std::string id = std::to_string(number);
    std::string text = "CADD Win win" + id + " NULL -0.5 -0.5 1 Window " + id + "\n";
    const auto add = [&](const std::string& kind, int count, const std::string& parent,
                         const std::string& fields) {
        for (int i = 0; i < count; ++i)
            text += "CADD " + kind + " " + kind + id + "_" + std::to_string(i) + " " + parent + id +
                    " 0.1 0." + std::to_string(i) + " " + fields + "\n";
    };
    add("Label", 4, "win", "a label");
    add("Butt", 5, "win", "button");
    add("Slide", 3, "win", "0 0.4");
    add("Check", 3, "win", "a box");
    text += "CADD Frame frame" + id + " win" + id + " 0 0 1\n";
    add("Opt", 3, "frame", "option");
    return text;
}
} // namespace

std::string layoutOf(int count)
{
    std::string text = "THEM default.theme x\n";
    for (int group = 0; group < count / widgetsOfAGroup; ++group)
        text += groupOf(group);
    return text + "SOLID\n";
}
} // namespace tamor::bench

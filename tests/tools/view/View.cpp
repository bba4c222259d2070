#include "tests/tools/view/View.h"

#include "tests/support/ChildProcess.h"

#include <unistd.h>

#include <algorithm>

namespace tamor::test
{
namespace
{
int becomeView(const std::vector<std::string>& arguments)
{
    std::vector<std::string> words{TAMOR_VIEW_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    std::transform(words.begin(), words.end(), std::back_inserter(pointers),
                   [](std::string& word) { return word.data(); });
    pointers.push_back(nullptr);
    execv(TAMOR_VIEW_PROGRAM, pointers.data());
    return 127;
}

int countIn(const std::string& text, const std::string& part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        count++;
    return count;
}
} // namespace

View::View(const std::vector<std::string>& arguments)
    : Demonstration([arguments] { return becomeView(arguments); })
{}

bool View::opensWithPointerAt(Place place)
{
    if (!opens())
        return false;
    moveTo({place.x + 1, place.y});
    moveTo(place);
    return true;
}

bool View::says(const std::string& text)
{
    return saysTimes(text, 1);
}

bool View::saysTimes(const std::string& text, int count)
{
    return shows([&] { return countIn(output(), text) >= count; }) && waitForFrames();
}

void View::rest()
{
    Picture last;
    shows([&] {
        const Picture before = last;
        waitForFrames();
        last = whole();
        return last.bytes == before.bytes;
    });
}

ViewRun runView(const std::vector<std::string>& arguments,
                const std::map<std::string, std::string>& environment)
{
    std::vector<std::string> words{TAMOR_VIEW_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    ChildProcess program(words, "", environment);
    const ProcessEnd end = program.wait();
    return {end.status, program.output(), program.errors()};
}
} // namespace tamor::test

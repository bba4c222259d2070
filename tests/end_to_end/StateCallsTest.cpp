#include "app/Application.h"
#include "tests/end_to_end/Demonstration.h"
#include "tests/end_to_end/Places.h"
#include "tests/support/GLRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
using Calls = std::vector<std::string>;

/// The demonstration, which writes the calls of a frame to the file "calls" when there is a file
/// "wanted" in its directory and nothing fades any more.
class WatchedApplication : public Application
{
public:
    bool handleEvent(Event event) override
    {
        if (event.kind != EV_RENDER)
            return Application::handleEvent(event);
        recorder.clear();
        const bool answer = Application::handleEvent(event);
        Calls calls = recorder.calls();
        still = calls == last ? still + 1 : 0;
        last = std::move(calls);
        if (still >= framesToStandStill && std::filesystem::exists("wanted")) {
            std::ofstream file("calls.part");
            for (const std::string& call : last)
                file << call << '\n';
            file.close();
            std::filesystem::remove("wanted");
            std::filesystem::rename("calls.part", "calls");
        }
        return answer;
    }

private:
    static constexpr int framesToStandStill = 4;

    GLRecorder recorder;
    Calls last;
    int still = 0;
};

/// The calls of a frame in which everything stands still and the pointer is where no widget is.
Calls settledCalls(Demonstration& demo, const WorkingDirectory& directory)
{
    demo.moveTo(freePlace);
    directory.write("wanted", "");
    EXPECT_TRUE(demo.shows([] { return std::filesystem::exists("calls"); }));
    std::istringstream lines(directory.read("calls"));
    directory.remove("calls");
    Calls calls;
    for (std::string line; std::getline(lines, line);)
        calls.push_back(line);
    return calls;
}

/// What leads from one list of calls to another: the calls that go, marked "-", and those that come,
/// marked "+", in order, with the number of those between that stay.
std::string changeOf(const Calls& from, const Calls& to)
{
    // common[i][j]: how many calls the two lists share in order from i and from j on.
    std::vector<std::vector<int>> common(from.size() + 1, std::vector<int>(to.size() + 1));
    for (std::size_t i = from.size(); i-- > 0;) {
        for (std::size_t j = to.size(); j-- > 0;)
            common[i][j] = from[i] == to[j] ? common[i + 1][j + 1] + 1
                                            : std::max(common[i + 1][j], common[i][j + 1]);
    }
    std::ostringstream text;
    int same = 0;
    const auto write = [&](char mark, const std::string& call) {
        if (same > 0)
            text << "= " << same << '\n';
        same = 0;
        text << mark << ' ' << call << '\n';
    };
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < from.size() || j < to.size()) {
        if (i < from.size() && j < to.size() && from[i] == to[j]) {
            ++same;
            ++i;
            ++j;
        } else if (j == to.size() || (i < from.size() && common[i + 1][j] >= common[i][j + 1])) {
            write('-', from[i++]);
        } else {
            write('+', to[j++]);
        }
    }
    return text.str();
}

std::string textOf(const std::string& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Whether `change` is what goldens/`name`.calls holds. With TAMOR_UPDATE_GOLDENS set, the file is
/// written instead.
testing::AssertionResult isTheChangeOf(const std::string& change, const std::string& name)
{
    const std::string path = TAMOR_SOURCES "/tests/end_to_end/goldens/" + name + ".calls";
    if (std::getenv("TAMOR_UPDATE_GOLDENS") != nullptr)
        std::ofstream(path) << change;
    if (change == textOf(path))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << path << " has another change than\n" << change;
}

TEST(TheWindowsCallsGLTest, AreWhatTheyWereFoundToBeInEveryState)
{
    struct State
    {
        const char* name;
        std::vector<Place> clicks;
    };
    const std::vector<State> states = {
        {"window-options", {optionsTab}},
        {"window-checks", {checksTab}},
        {"window-check-ticked", {iconOfRow(1)}},
        {"window-list", {listBox}},
        {"window-list-chosen", {listRow(2)}},
        {"window-page-with-the-focus", {notebook}},
        {"window-box-ok", {quillButton}},
        {"window-box-ok-cancel", {onlyOk, redButton}},
        {"window-box-yes-no-cancel", {okOfTwo, blueButton}},
        {"window-box-yes-no", {noOfThree, greenButton}},
    };
    const WorkingDirectory directory;
    // The frame rate is another in each run.
    std::string layout = directory.read("my.gui");
    layout.replace(layout.find(" fps "), 5, " rate ");
    directory.write("my.gui", layout);
    Demonstration demo([] {
        ObjectRef<WatchedApplication>(new WatchedApplication)->run();
        return 0;
    });
    ASSERT_TRUE(demo.opens());

    // The first state is that of `AWholeFrameGLTest`, call by call; each further one is held by what
    // it changes in the one before it.
    Calls before = settledCalls(demo, directory);
    for (const State& state : states) {
        for (const Place& place : state.clicks)
            demo.click(place);
        const Calls now = settledCalls(demo, directory);
        EXPECT_TRUE(isTheChangeOf(changeOf(before, now), state.name));
        before = now;
    }

    demo.holdKey("Escape");
    EXPECT_EQ(demo.end().status, 0) << demo.errors();
}
} // namespace
} // namespace tamor::test

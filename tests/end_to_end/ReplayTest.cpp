#include "maths/Utilities.h"
#include "tests/end_to_end/Demonstration.h"
#include "tests/end_to_end/Places.h"
#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
// The tracer comes before the sanitiser's library, which is harmless here.
const std::map<std::string, std::string> tracerEnvironment = {
    {"ASAN_OPTIONS", "verify_asan_link_order=0:detect_leaks=0"}};

std::vector<std::string> tracerTo(const std::string& trace)
{
    return {"apitrace", "trace", "-o", trace};
}

/// The OpenGL calls of each frame that was shown, as text: whole floats, with what pointers point to.
std::vector<std::string> framesOf(const std::string& trace)
{
    ChildProcess dumper({"apitrace", "dump", "--color=never", "--call-nos=no", "--arg-names=no",
                         "--thread-ids=no", trace});
    EXPECT_EQ(dumper.wait(std::chrono::seconds(200)).status, 0) << dumper.errors();
    std::vector<std::string> frames(1);
    std::istringstream lines(dumper.output());
    for (std::string line; std::getline(lines, line);) {
        if (line.find("glXSwapBuffers(") == 0)
            frames.emplace_back();
        else if (line.find("gl") == 0 && line.find("glX") != 0)
            frames.back() += line + '\n';
    }
    return frames;
}

/// A run that a test records, and what it drew.
class Recording
{
public:
    /// The demonstration, to be worked by the test.
    Demonstration& demo() { return demonstration; }

    /// The text of the recording, when the run is over.
    std::string text() const { return directory.read("run.input"); }

    /// Plays the recording, and compares what it draws with what was drawn.
    void expectThatItPlaysAlike() const
    {
        const std::string played = directory.path() + "/played.trace";
        std::vector<std::string> player = tracerTo(played);
        player.insert(player.end(), {TAMOR_REPLAY_PROGRAM, "--play", "run.input"});
        const VirtualDisplay display;
        std::map<std::string, std::string> environment = tracerEnvironment;
        environment["DISPLAY"] = display.name();
        ChildProcess process(player, directory.path(), environment);
        EXPECT_EQ(process.wait(std::chrono::seconds(200)).status, 0) << process.errors();

        const std::vector<std::string> expected = framesOf(recorded);
        const std::vector<std::string> frames = framesOf(played);
        directory.remove("played.trace");
        ASSERT_EQ(frames.size(), expected.size());
        for (std::size_t frame = 0; frame < frames.size(); ++frame)
            ASSERT_EQ(frames[frame], expected[frame]) << "frame " << frame;
    }

private:
    WorkingDirectory directory;
    std::string recorded = directory.path() + "/recorded.trace";
    Demonstration demonstration{directory,
                                tracerTo(recorded),
                                tracerEnvironment,
                                {TAMOR_REPLAY_PROGRAM, "--record", "run.input"}};
};

TEST(AReplayGLTest, MakesEveryCallOfEveryFrameAgainAndAgain)
{
    Recording recording;
    Demonstration& demo = recording.demo();
    ASSERT_TRUE(demo.opens());
    demo.drag(redKnob, {redKnob.x, redKnob.y - 77});
    demo.drag(firstKnob, {firstKnob.x + 73, firstKnob.y});
    demo.click(optionsTab);
    demo.click(iconOfRow(1));
    demo.click(checksTab);
    demo.click(iconOfRow(2));
    demo.click(listBox);
    demo.click(listRow(1));
    demo.click(notebook);
    demo.typeAll("the quill");
    demo.type("Return");
    demo.typeAll("writes");
    demo.type("BackSpace");
    demo.click(blueButton);
    demo.click(noOfThree);
    demo.drag(choicesStrip, {choicesStrip.x - 40, choicesStrip.y + 60});
    demo.click(quillButton);
    demo.click(onlyOk);
    demo.turnWheel(true);
    demo.moveTo(freePlace);
    ASSERT_TRUE(demo.waitForFrames(40));
    demo.holdKey("Escape");
    ASSERT_EQ(demo.end().status, 0) << demo.errors();
    ASSERT_GT(countOccurrences(recording.text(), "\nmouse "), 60);
    ASSERT_GT(countOccurrences(recording.text(), " pressed "), 16);

    recording.expectThatItPlaysAlike();
    recording.expectThatItPlaysAlike();
}

TEST(AReplayGLTest, EndsInTheFrameInWhichTheWindowWasClosed)
{
    Recording recording;
    ASSERT_TRUE(recording.demo().opens());
    recording.demo().closeWindow();
    ASSERT_EQ(recording.demo().end().status, 0);

    recording.expectThatItPlaysAlike();
}

TEST(AReplayGLTest, EndsInTheFrameInWhichTheDemonstrationEndedItself)
{
    Recording recording;
    ASSERT_TRUE(recording.demo().opens());
    recording.demo().moveTo(exitButton);
    recording.demo().press();
    ASSERT_EQ(recording.demo().end().status, 0);

    recording.expectThatItPlaysAlike();
}

TEST(AReplay, SaysThatAFileIsNoRecording)
{
    const WorkingDirectory directory;
    ChildProcess program({TAMOR_REPLAY_PROGRAM, "--play", "my.gui"}, directory.path());

    EXPECT_EQ(program.wait().status, 1);

    EXPECT_EQ(program.errors(),
              "Error reading input file 'my.gui', line 1: this is no recorded input\n"
              "Error sending load resources event\n");
}

TEST(AReplay, SaysHowItIsUsed)
{
    ChildProcess program({TAMOR_REPLAY_PROGRAM, "run.input"});

    EXPECT_EQ(program.wait().status, 2);

    EXPECT_EQ(program.errors(), "usage: tamor-replay --record FILE | --play FILE\n");
}
} // namespace
} // namespace tamor::test

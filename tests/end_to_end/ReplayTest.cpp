#include "maths/Utilities.h"
#include "tests/end_to_end/Demonstration.h"
#include "tests/end_to_end/Places.h"
#include "tests/end_to_end/Trace.h"
#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace tamor::test
{
namespace
{
/// The calls of each frame, without those of the window system, whose numbers differ.
std::vector<std::vector<std::string>> callsOf(const Trace& trace)
{
    std::vector<std::vector<std::string>> frames = trace.frames();
    for (std::vector<std::string>& calls : frames)
        std::erase_if(calls, [](const std::string& call) { return call.starts_with("glX"); });
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
        const Trace played(directory.path() + "/played.trace");
        std::vector<std::string> player = played.tracer();
        player.insert(player.end(), {TAMOR_REPLAY_PROGRAM, "--play", "run.input"});
        const VirtualDisplay display;
        std::map<std::string, std::string> environment = Trace::environment();
        environment["DISPLAY"] = display.name();
        ChildProcess process(player, directory.path(), environment);
        EXPECT_EQ(process.wait(std::chrono::seconds(200)).status, 0) << process.errors();

        const std::vector<std::vector<std::string>> expected = callsOf(recorded);
        const std::vector<std::vector<std::string>> frames = callsOf(played);
        directory.remove("played.trace");
        ASSERT_EQ(frames.size(), expected.size());
        for (std::size_t frame = 0; frame < frames.size(); ++frame)
            ASSERT_EQ(frames[frame], expected[frame]) << "frame " << frame;
    }

private:
    WorkingDirectory directory;
    Trace recorded{directory.path() + "/recorded.trace"};
    Demonstration demonstration{directory,
                                recorded.tracer(),
                                Trace::environment(),
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

#include "app/Application.h"
#include "tests/end_to_end/Demonstration.h"
#include "tests/end_to_end/Goldens.h"
#include "tests/end_to_end/Places.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace tamor::test
{
namespace
{
using testing::HasSubstr;

// Sliders start at 0.5, and a driver may round half of 255 either way.
constexpr int half = 127;
constexpr int rounding = 2;

void expectColour(const Pixel& pixel, int red, int green, int blue)
{
    EXPECT_NEAR(pixel[0], red, rounding);
    EXPECT_NEAR(pixel[1], green, rounding);
    EXPECT_NEAR(pixel[2], blue, rounding);
}

TEST(TheColourSlidersGLTest, SetTheClearColour)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());
    expectColour(demo.pixel(freePlace), half, half, half);

    // The line of 308 pixels is the whole range, so 77 of them are a quarter.
    demo.drag(redKnob, {redKnob.x, redKnob.y - 77});
    expectColour(demo.pixel(freePlace), 191, half, half);
    demo.drag(greenKnob, {greenKnob.x, greenKnob.y + 77});
    expectColour(demo.pixel(freePlace), 191, 64, half);
    demo.drag(blueKnob, {blueKnob.x, blueKnob.y + 139});
    expectColour(demo.pixel(freePlace), 191, 64, 12);
}

TEST(TheColourSlidersGLTest, LetGoWhenTheButtonIsReleased)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());
    demo.drag(redKnob, {redKnob.x, redKnob.y - 77});

    demo.moveTo({redKnob.x, redKnob.y - 20});
    demo.moveTo({redKnob.x, redKnob.y + 20});

    expectColour(demo.pixel(freePlace), 191, half, half);
}

TEST(TheLevelSlidersGLTest, ShowTheirValuesWithTwoDecimals)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());
    const auto firstText = [&] { return demo.picture({155, 60}, 160, 20); };
    const auto secondText = [&] { return demo.picture({155, 135}, 160, 20); };
    EXPECT_TRUE(showsTheSame(firstText(), "slider-1-at-0.50"));
    EXPECT_TRUE(showsTheSame(secondText(), "slider-2-at-0.50"));

    // 292 pixels are the whole range.
    demo.drag(firstKnob, {firstKnob.x + 73, firstKnob.y});
    demo.drag(secondKnob, {secondKnob.x - 73, secondKnob.y});

    EXPECT_TRUE(showsTheSame(firstText(), "slider-1-at-0.75"));
    EXPECT_TRUE(showsTheSame(secondText(), "slider-2-at-0.25"));
}

TEST(TheFrameRateGLTest, IsReportedAfterFiveSecondsOnTheErrorStreamAndInTheWindow)
{
    const WorkingDirectory directory;
    const auto line = [](const Demonstration& demo) {
        return demo.picture(rateCorner, rateWidth, rateHeight);
    };
    Picture shown;
    int frames = 0;
    double seconds = 0;
    double rate = 0;
    {
        Demonstration demo(directory);
        ASSERT_TRUE(demo.opens());

        ASSERT_TRUE(demo.prints(" FPS\n"));

        demo.waitForFrames();
        shown = line(demo);
        const std::string errors = demo.errors();
        const std::size_t lineEnd = errors.rfind('\n');
        const std::string report = errors.substr(errors.rfind('\n', lineEnd - 1) + 1);
        ASSERT_EQ(std::sscanf(report.c_str(), "%d frames in %lf seconds = %lf FPS", &frames,
                              &seconds, &rate),
                  3)
            << report;
    }
    EXPECT_GT(seconds, 5.0);
    // Six digits are printed.
    EXPECT_NEAR(rate, frames / seconds, rate * 1e-5);

    // A label with these words in the same place, which is not replaced, looks the same.
    std::string layout = directory.read("my.gui");
    const std::string label = "fps program 0 0.26 FPS:";
    layout.replace(layout.find(label), label.size(),
                   "rate program 0 0.26 FPS: " + std::to_string(static_cast<int>(rate)));
    directory.write("my.gui", layout);
    Demonstration expected(directory);
    ASSERT_TRUE(expected.opens());
    EXPECT_TRUE(expected.shows([&] { return line(expected).bytes == shown.bytes; }));
}

TEST(AWindowGLTest, IsDraggedByItsStrip)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());
    const Pixel plate = demo.pixel(choicesPlate);
    const Place lower{choicesPlate.x, choicesPlate.y + 200};
    const Pixel clear = demo.pixel(lower);
    ASSERT_NE(plate, clear);

    demo.drag(choicesStrip, {choicesStrip.x, choicesStrip.y + 200});

    // The strip lights the whole plate while the pointer is on it.
    demo.moveTo(freePlace);
    EXPECT_TRUE(demo.shows([&] { return demo.pixel(lower) == plate; }));
    EXPECT_EQ(demo.pixel({choicesStrip.x, 60}), clear);
}

TEST(AWindowGLTest, StaysWhenItIsPulledByItsPlate)
{
    const WorkingDirectory directory;
    Demonstration demo(directory);
    ASSERT_TRUE(demo.opens());
    const Place lower{choicesPlate.x, choicesPlate.y + 200};
    const Pixel clear = demo.pixel(lower);

    demo.drag(choicesPlate, lower);

    EXPECT_EQ(demo.pixel(lower), clear);
}

/// Runs the demonstration with a camera that moves, and says at its end where the camera has come
/// to: nothing of that is seen in the window.
int runWithCamera()
{
    const ObjectRef<Application> application(new Application);
    application->camera.reset(0.01F, 0.1F);
    application->run();
    const Vector& place = application->camera.position;
    const Vector& turn = application->camera.rotation;
    const auto sign = [](float number) { return number > 0 ? '+' : number < 0 ? '-' : '0'; };
    std::cout << "place " << sign(place.x) << sign(place.y) << sign(place.z) << " turn "
              << sign(turn.x) << sign(turn.y) << '\n';
    return 0;
}

struct CameraKey
{
    const char* name;
    const char* end;
};

void PrintTo(const CameraKey& key, std::ostream* out)
{
    *out << key.name;
}

class ACameraKeyGLTest : public testing::TestWithParam<CameraKey>
{};

TEST_P(ACameraKeyGLTest, MovesTheCamera)
{
    const WorkingDirectory directory;
    Demonstration demo(runWithCamera);
    ASSERT_TRUE(demo.opens());

    demo.holdKey(GetParam().name);
    demo.letGoOfKey(GetParam().name);
    demo.holdKey("Escape");

    EXPECT_EQ(demo.end().status, 0);
    EXPECT_EQ(demo.output(), GetParam().end);
}

// The camera looks along -z with y up and x to the right.
INSTANTIATE_TEST_SUITE_P(Each, ACameraKeyGLTest,
                         testing::Values(CameraKey{"w", "place 00- turn 00\n"},
                                         CameraKey{"s", "place 00+ turn 00\n"},
                                         CameraKey{"a", "place -00 turn 00\n"},
                                         CameraKey{"d", "place +00 turn 00\n"},
                                         CameraKey{"space", "place 0+0 turn 00\n"},
                                         CameraKey{"Control_L", "place 0-0 turn 00\n"}));

TEST(TheMouseGLTest, TurnsTheCameraAlsoOverAWidget)
{
    const WorkingDirectory directory;
    Demonstration demo(runWithCamera);
    ASSERT_TRUE(demo.opens());

    // The first motion of a run only says where the pointer is.
    demo.moveTo(freePlace);
    demo.moveTo(quillButton);
    demo.holdKey("Escape");

    EXPECT_EQ(demo.end().status, 0);
    EXPECT_THAT(demo.output(), HasSubstr("place 000 turn "));
    EXPECT_THAT(demo.output(), testing::Not(HasSubstr("turn 00")));
}
} // namespace
} // namespace tamor::test

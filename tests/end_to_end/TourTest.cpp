// The tour, worked by real keys and a real pointer: each control, and what is seen of it.

#include "tests/end_to_end/Demonstration.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace tamor::test
{
namespace
{
// The window has 400 by 300 pixels, and what examples/tour/data/panel.gui calls 1 is half its height.
constexpr double centreX = 200;
constexpr double centreY = 150;

/// A place on a page of the panel, as the layout counts it: from the corner of the pages, within three
/// margins.
constexpr Place onPage(double x, double y)
{
    return {static_cast<int>(centreX + centreY * (-1.27 + x)),
            static_cast<int>(centreY - centreY * (-0.47 + y))};
}

/// The same in the window below the pages, whose corner is lower.
constexpr Place below(double x, double y)
{
    return onPage(x, y - 0.46);
}

constexpr Place landTab = {19, 20};
constexpr Place thingsTab = {50, 20};
constexpr Place lightTab = {79, 20};
constexpr Place scriptTab = {106, 20};
constexpr Place firstList = onPage(0.2, 1.10);
constexpr Place samples = onPage(0.2, 1.19);
constexpr Place textBox = onPage(0.4, 0.6);
constexpr Place runButton = onPage(0.07, 0.28);
constexpr Place stopButton = onPage(0.26, 0.28);
constexpr Place tripButton = below(0.07, 0.03);
constexpr Place resetButton = below(0.27, 0.03);
constexpr Place leaveButton = below(0.50, 0.03);
constexpr Place yesButton = {181, 170};
constexpr Place noButton = {210, 170};
constexpr Place sky = {380, 10};
constexpr Place besideThePanel = {300, 150};

/// A part of the window.
struct Part
{
    Place corner;
    int width;
    int height;
};

// At first: a tower, and the hill below it, where nothing moves; the windmill; nothing but water.
constexpr Part tower = {{315, 50}, 48, 55};
constexpr Part hill = {{285, 130}, 60, 40};
constexpr Part mill = {{190, 65}, 36, 50};
constexpr Part water = {{260, 230}, 100, 50};
constexpr Part all = {{140, 0}, 260, 300}; // but the panel
constexpr Part hour = {onPage(0.01, 1.26), 100, 15};
constexpr Part chosen = {onPage(0.08, 1.15), 90, 15};
constexpr Part sheet = {onPage(0.03, 1.1), 110, 90};

int brightness(Pixel pixel)
{
    return pixel[0] + pixel[1] + pixel[2];
}

bool isGreen(Pixel pixel)
{
    return pixel[1] > pixel[0] + 100 && pixel[1] > pixel[2] + 100;
}

bool isYellow(Pixel pixel)
{
    return pixel[0] > 230 && pixel[1] > 190 && pixel[2] < 90;
}

bool isWhite(Pixel pixel)
{
    return *std::min_element(pixel.begin(), pixel.end()) > 235;
}

/// The program and somebody at the pointer, the keys and the screen.
class TheTourGLTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(tour.opens());
        ASSERT_TRUE(tour.shows([this] { return isDay() && isStill(hill); }));
    }

    Picture picture(const Part& part) const
    {
        return tour.picture(part.corner, part.width, part.height);
    }

    bool isDay() const { return brightness(tour.pixel(sky)) > 300; }
    bool isNight() const { return brightness(tour.pixel(sky)) < 120; }

    /// Whether a part looks the same some frames later.
    bool isStill(const Part& part)
    {
        const Picture before = picture(part);
        tour.waitForFrames();
        return picture(part).bytes == before.bytes;
    }

    /// Whether the camera has moved: of the picture more is other than windmill and fish, which are
    /// never still.
    bool hasMoved(const Picture& before) const
    {
        const Picture now = picture(all);
        int different = 0;
        for (std::size_t n = 0; n < now.bytes.size(); n++)
            different += std::abs(now.bytes[n] - before.bytes[n]) > 4 ? 1 : 0;
        return different > 4000;
    }

    bool isFlying()
    {
        const Picture before = picture(all);
        tour.waitForFrames();
        return hasMoved(before);
    }

    /// So that the sea is still.
    void turnWavesOff()
    {
        tour.click(lightTab);
        tour.click(onPage(0.05, 0.75));
        ASSERT_TRUE(tour.shows([this] { return isStill(water); }));
    }

    int count(const Part& part, bool (*is)(Pixel)) const
    {
        const Picture shown = picture(part);
        int result = 0;
        for (int y = 0; y < shown.height; y++)
            for (int x = 0; x < shown.width; x++)
                result += is(shown.at(x, y)) ? 1 : 0;
        return result;
    }

    /// Where the panel is dark: its words and knobs. What is behind it shines through a little.
    std::vector<bool> words(const Part& part) const
    {
        const Picture shown = picture(part);
        std::vector<bool> result;
        for (int y = 0; y < shown.height; y++)
            for (int x = 0; x < shown.width; x++)
                result.push_back(brightness(shown.at(x, y)) < 570);
        return result;
    }

    /// Whether other words come after something is done.
    template <class Action>
    bool changesWords(const Action& action, const Part& part)
    {
        const std::vector<bool> before = words(part);
        action();
        return tour.shows([&] {
            const std::vector<bool> now = words(part);
            int different = 0;
            for (std::size_t n = 0; n < now.size(); n++)
                different += now[n] != before[n] ? 1 : 0;
            return different > 3;
        });
    }

    /// Whether there are the same words some frames later.
    bool isSteady(const Part& part)
    {
        const std::vector<bool> before = words(part);
        tour.waitForFrames(12);
        return words(part) == before;
    }

    /// Whether a part looks other after something is done.
    template <class Action>
    bool changes(const Part& part, const Action& action)
    {
        const Picture before = picture(part);
        action();
        return tour.shows([&] { return picture(part).bytes != before.bytes; });
    }

    /// Whether a part comes to look like this.
    bool becomes(const Part& part, const Picture& expected)
    {
        return tour.shows([&] { return picture(part).bytes == expected.bytes; });
    }

    /// Chooses a row of a list.
    void choose(Place list, int row)
    {
        tour.click(list);
        tour.click({list.x, list.y + 13 + 23 * row / 2});
    }

    void slide(double x, double y, int pixels)
    {
        const Place knob = onPage(x, y);
        tour.drag(knob, {knob.x + pixels, knob.y}, 2);
    }

    bool makeNight()
    {
        tour.click(lightTab);
        // From half past nine in the morning to about half past eight in the evening.
        slide(0.415, 1.11, 49);
        return tour.shows([this] { return isNight(); });
    }

    Demonstration tour{[] {
        execl(TAMOR_TOUR_PROGRAM, TAMOR_TOUR_PROGRAM, "--size", "400x300", nullptr);
        return 1;
    }};
};

TEST_F(TheTourGLTest, MakesTheLandAsItsPageSays)
{
    turnWavesOff(); // which may come to lie where the hill was, and behind the words
    tour.click(landTab);
    const Picture fractal = picture(hill);
    EXPECT_EQ(tour.title(), "Tamor Tour");
    const auto changesTheHill = [&](const auto& action) {
        EXPECT_TRUE(tour.shows([&] { return isStill(hill); }));
        return changes(hill, action);
    };

    EXPECT_TRUE(changesTheHill([&] { choose(firstList, 1); }));
    EXPECT_TRUE(changesTheHill([&] { choose(firstList, 2); }));
    choose(firstList, 0);
    EXPECT_TRUE(becomes(hill, fractal));

    for (const double slider : {0.83, 0.61, 0.39}) {
        SCOPED_TRACE(slider);
        const Part label = {onPage(0.01, slider + 0.15), 100, 10};
        EXPECT_TRUE(changesTheHill(
            [&] { EXPECT_TRUE(changesWords([&] { slide(0.415, slider, 15); }, label)); }));
    }
    EXPECT_TRUE(changesTheHill([&] { tour.click(onPage(0.08, 0.25)); })) << "Another";
}

TEST_F(TheTourGLTest, DrawsThingsAsTheirPageSays)
{
    const Picture atFirst = picture(tower);
    tour.click(thingsTab);
    EXPECT_EQ(count(tower, isGreen), 0);

    EXPECT_TRUE(changesWords([&] { choose(firstList, 1); }, chosen)); // arrays, which look alike
    EXPECT_EQ(count(tower, isGreen), 0);
    choose(firstList, 2);
    EXPECT_TRUE(tour.shows([&] { return count(tower, isGreen) > 100; })) << "no normals";
    choose(firstList, 0);
    EXPECT_TRUE(becomes(tower, atFirst));

    const auto tick = [&](double y) { tour.click(onPage(0.05, y + 0.03)); };
    for (const double box : {0.78, 0.42}) { // wires, few tones
        SCOPED_TRACE(box);
        EXPECT_TRUE(changes(tower, [&] { tick(box); }));
        tick(box);
        EXPECT_TRUE(becomes(tower, atFirst));
    }
    EXPECT_EQ(count(mill, isYellow), 0);
    tick(0.66);
    EXPECT_TRUE(tour.shows([&] { return count(mill, isYellow) > 5; })) << "no bones";
    EXPECT_EQ(count(tower, isWhite), 0);
    tick(0.54);
    EXPECT_TRUE(tour.shows([&] { return count(tower, isWhite) > 100; })) << "no bounds";
}

TEST_F(TheTourGLTest, LightsItAsItsPageSays)
{
    tour.click(lightTab);
    const auto seaMoves = [this] { return !isStill(water); };
    EXPECT_TRUE(tour.shows(seaMoves));
    tour.click(onPage(0.05, 0.75));
    EXPECT_TRUE(tour.shows([this] { return isStill(water); })) << "waves";
    tour.click(onPage(0.05, 0.75));
    EXPECT_TRUE(tour.shows(seaMoves));

    EXPECT_TRUE(changes(hill, [&] {
        EXPECT_TRUE(changesWords([&] { slide(0.415, 0.89, 30); }, {onPage(0.01, 1.04), 100, 10}));
    })) << "fog";
    EXPECT_TRUE(changesWords([&] { EXPECT_TRUE(makeNight()); }, hour));
    ASSERT_TRUE(tour.shows([this] { return isStill(hill); }));
    EXPECT_TRUE(changes(hill, [&] { tour.click(onPage(0.05, 0.63)); })) << "lantern";
}

TEST_F(TheTourGLTest, RunsScriptsThatAreChosenAndChanged)
{
    const Part said = {onPage(0.01, 0.22), 120, 30};
    ASSERT_TRUE(makeNight());
    tour.click(scriptTab);

    // The first line makes it seven o'clock, and with a number before it is an error.
    tour.click(textBox);
    EXPECT_TRUE(changesWords([&] { tour.type("0"); }, sheet));
    EXPECT_TRUE(changesWords([&] { tour.click(runButton); }, said));
    EXPECT_TRUE(isNight());
    // A key that is down for long is typed again and again, so as many go as came.
    EXPECT_TRUE(tour.shows([&] {
        tour.click(textBox);
        tour.type("BackSpace");
        tour.click(runButton);
        return isDay();
    }));

    EXPECT_TRUE(changesWords([&] { choose(samples, 2); }, sheet));

    // A day goes by until it is stopped.
    EXPECT_TRUE(changesWords([&] { choose(samples, 1); }, sheet));
    tour.click(runButton);
    tour.click(lightTab);
    EXPECT_TRUE(tour.shows([&] { return !isSteady(hour); }));
    tour.click(scriptTab);
    tour.click(stopButton);
    tour.click(lightTab);
    EXPECT_TRUE(isSteady(hour));
}

TEST_F(TheTourGLTest, GivesTheKeysToTheTextBoxOrToTheCamera)
{
    turnWavesOff();
    const auto flies = [this](const char* key) {
        const Picture before = picture(all);
        tour.type(key);
        EXPECT_TRUE(tour.shows([&] { return hasMoved(before); })) << key;
        EXPECT_TRUE(tour.shows([&] { return !isFlying(); })) << key;
    };
    for (const char* key : {"s", "w", "a", "d", "space", "Control_L"})
        flies(key);
    const Picture before = picture(all);
    tour.drag(besideThePanel, {besideThePanel.x + 20, besideThePanel.y + 10}, 2);
    EXPECT_TRUE(tour.shows([&] { return hasMoved(before); }));

    tour.click(scriptTab);
    const Picture beforeTyping = picture(all);
    tour.click(textBox);
    EXPECT_TRUE(changesWords([&] { tour.type("s"); }, sheet));
    EXPECT_FALSE(hasMoved(beforeTyping));
    tour.type("Escape"); // which ends the typing alone
    flies("s");
    tour.click(textBox);
    tour.click(besideThePanel);
    flies("w");

    // Tab hides the panel, whose paper is brighter than what is behind it.
    const Place paper = {120, 210};
    const int withPanel = brightness(tour.pixel(paper));
    tour.type("Tab");
    EXPECT_TRUE(tour.shows([&] { return brightness(tour.pixel(paper)) < withPanel - 150; }));
    tour.type("Tab");
    EXPECT_TRUE(tour.shows([&] { return brightness(tour.pixel(paper)) > withPanel - 50; }));

    tour.holdKey("Escape");
    EXPECT_EQ(tour.end().status, 0) << tour.errors();
}

TEST_F(TheTourGLTest, AsksBeforeItBeginsAgainAndLeaves)
{
    ASSERT_TRUE(makeNight());
    const Part box = {{160, 120}, 80, 60};
    const auto isAsked = [&] { return changes(box, [&] { tour.click(resetButton); }); };

    EXPECT_TRUE(isAsked());
    EXPECT_TRUE(changes(box, [&] { tour.click(noButton); }));
    EXPECT_TRUE(isNight());
    EXPECT_TRUE(isAsked());
    tour.click(yesButton);
    EXPECT_TRUE(tour.shows([this] { return isDay(); }));

    tour.moveTo(leaveButton);
    tour.press();
    EXPECT_EQ(tour.end().status, 0) << tour.errors();
}

TEST_F(TheTourGLTest, GoesRoundWhenAskedOrLeftAloneAndEndsItAtATouch)
{
    turnWavesOff();
    const auto goesRound = [this] { return isFlying(); };
    const auto stays = [this] { return !isFlying(); };
    EXPECT_TRUE(tour.shows(stays));
    tour.click(tripButton);
    EXPECT_TRUE(tour.shows(goesRound));
    tour.click(besideThePanel);
    EXPECT_TRUE(tour.shows(stays));

    // Half a minute without a touch, which is as long as is waited.
    EXPECT_TRUE(tour.shows(goesRound) || tour.shows(goesRound));
    tour.type("space");
    EXPECT_TRUE(tour.shows(stays));
}
} // namespace
} // namespace tamor::test

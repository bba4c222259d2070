#include "kernel/Kernel.h"

#include "tests/kernel/TestCatcher.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/CommaLocale.h"

#include <SDL.h>
#include <dlfcn.h>
#include <gmock/gmock.h>

#include <deque>

namespace tamor
{
namespace
{
using test::Deliveries;
using test::TestCatcher;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr std::int32_t allClasses = 0x1FF;

/// What SDL's clock is to say, call by call; SDL's own time when there is nothing more.
std::deque<Uint32> ticksToCome;

Event eventOf(std::int32_t kind)
{
    Event event;
    event.kind = kind;
    return event;
}

/// A kernel with catchers that note what they receive. The objects are collected at the end.
class KernelFixture : public testing::Test
{
protected:
    ~KernelFixture() override
    {
        collectAll();
        // The sweep ends a process, and this one goes on to further tests.
        shuttingDown = false;
    }

    TestCatcher* addCatcher(const std::string& name, std::int32_t mask, std::int32_t priority = 0)
    {
        auto* catcher = new TestCatcher(name, log);
        kernel->addCatcher(ref(catcher), mask, priority);
        return catcher;
    }

    static ObjectRef<EventCatcher> ref(EventCatcher* catcher) { return {catcher}; }

    const ObjectRef<EventCatcher> nobody{};
    Deliveries log;
    Kernel* kernel = new Kernel;
};

using KernelTest = KernelFixture;

TEST_F(KernelTest, StartsEmpty)
{
    EXPECT_THAT(kernel->classLists, testing::Each(IsEmpty()));
    EXPECT_THAT(kernel->catchers, IsEmpty());
    EXPECT_FALSE(kernel->quitFlag);
    EXPECT_EQ(kernel->internalMask, 0);
    EXPECT_TRUE(kernel->timer.isEmpty());
}

TEST_F(KernelTest, ServesInOrderOfRegistrationWhateverThePriority)
{
    addCatcher("first", 1 << CLASS_UPDATE, 700);
    addCatcher("second", 1 << CLASS_UPDATE, 500);
    addCatcher("third", 1 << CLASS_UPDATE, 600);

    EXPECT_TRUE(kernel->sendEvent(nobody, eventOf(EV_UPDATE)));

    EXPECT_THAT(log, ElementsAre(Pair("first", 20), Pair("second", 20), Pair("third", 20)));
}

TEST_F(KernelTest, DeliversEachKindToItsClassesAlone)
{
    struct Row
    {
        std::int32_t kind;
        std::vector<std::int32_t> classes;
    };
    const std::vector<Row> rows = {
        {16, {0}}, {17, {1}}, {18, {2}}, {19, {3}}, {20, {4}},    {21, {5}},
        {22, {7}}, {23, {6}}, {24, {8}}, {25, {1}}, {26, {2, 0}},
    };
    for (std::int32_t deliveryClass = 0; deliveryClass <= 8; ++deliveryClass)
        addCatcher(std::to_string(deliveryClass), 1 << deliveryClass);

    for (const Row& row : rows) {
        log.clear();
        EXPECT_TRUE(kernel->sendEvent(nobody, eventOf(row.kind)));

        Deliveries expected;
        for (const std::int32_t deliveryClass : row.classes)
            expected.emplace_back(std::to_string(deliveryClass), row.kind);
        EXPECT_EQ(log, expected) << "kind " << row.kind;
    }
}

TEST_F(KernelTest, PrintsACodeThatIsNoKindAndServesNobody)
{
    addCatcher("all", allClasses);
    for (const std::int32_t kind : {0, 15, 27, -3}) {
        const test::CapturedErrors errors;

        EXPECT_TRUE(kernel->sendEvent(nobody, eventOf(kind)));
        EXPECT_TRUE(kernel->sendEventTo(nobody, eventOf(kind)));

        EXPECT_EQ(errors.text(), std::to_string(kind) + "\n" + std::to_string(kind) + "\n");
    }
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(KernelTest, PrintsTheCodeInTheCLocale)
{
    const test::CommaLocale locale;
    const test::CapturedErrors errors;

    kernel->sendEvent(nobody, eventOf(-4711));

    EXPECT_EQ(errors.text(), "-4711\n");
}

TEST_F(KernelTest, ReleasesTwiceInACatcherOfBothClasses)
{
    addCatcher("resources", 1 << CLASS_RESOURCES);
    addCatcher("both", 1 << CLASS_RESOURCES | 1 << CLASS_GRAPHICS);

    kernel->sendEvent(nobody, eventOf(EV_RELEASE_RESOURCES));

    EXPECT_THAT(log, ElementsAre(Pair("both", 26), Pair("resources", 26), Pair("both", 26)));
}

TEST_F(KernelTest, MaskBitsAboveTheClassesDoNothing)
{
    addCatcher("high", ~allClasses);

    for (std::int32_t kind = 16; kind <= 26; ++kind)
        kernel->sendEvent(nobody, eventOf(kind));

    EXPECT_THAT(log, IsEmpty());
}

TEST_F(KernelTest, SendLeavesOutTheCatcherNamed)
{
    TestCatcher* const sender = addCatcher("sender", allClasses);
    addCatcher("other", allClasses);

    EXPECT_TRUE(kernel->sendEvent(ref(sender), eventOf(EV_KEYBOARD)));

    EXPECT_THAT(log, ElementsAre(Pair("other", 24)));
}

TEST_F(KernelTest, SendToReachesTheTargetAloneIfItIsSubscribed)
{
    addCatcher("other", allClasses);
    TestCatcher* const target = addCatcher("target", 1 << CLASS_MOUSE);

    EXPECT_TRUE(kernel->sendEventTo(ref(target), eventOf(EV_MOUSE)));
    EXPECT_TRUE(kernel->sendEventTo(ref(target), eventOf(EV_KEYBOARD)));

    EXPECT_THAT(log, ElementsAre(Pair("target", 23)));
}

TEST_F(KernelTest, SendToPassesOnTheTargetsAnswer)
{
    TestCatcher* const target = addCatcher("target", allClasses);
    target->answer = [](Event&) { return false; };

    EXPECT_FALSE(kernel->sendEventTo(ref(target), eventOf(EV_MOUSE)));
}

TEST_F(KernelTest, SendToNobodyStillServesTheKernelItself)
{
    addCatcher("all", allClasses);
    kernel->internalMask = 1 << CLASS_WINDOW;

    EXPECT_TRUE(kernel->sendEventTo(nobody, eventOf(EV_QUIT)));

    EXPECT_THAT(log, IsEmpty());
    EXPECT_TRUE(kernel->quitFlag);
}

TEST_F(KernelTest, ARecordWithoutACatcherIsPassedOver)
{
    TestCatcher* const sender = addCatcher("sender", allClasses);
    kernel->addCatcher(nobody, allClasses, 0);
    addCatcher("other", allClasses);

    EXPECT_TRUE(kernel->sendEventTo(nobody, eventOf(EV_MOUSE)));
    EXPECT_TRUE(kernel->sendEvent(ref(sender), eventOf(EV_KEYBOARD)));

    EXPECT_THAT(log, ElementsAre(Pair("other", 24)));
}

TEST_F(KernelTest, QuitBeforeTheKernelServesItsClassReachesCatchersOnly)
{
    addCatcher("window", 1 << CLASS_WINDOW);

    EXPECT_TRUE(kernel->sendEvent(nobody, eventOf(EV_QUIT)));

    EXPECT_THAT(log, ElementsAre(Pair("window", 25)));
    EXPECT_FALSE(kernel->quitFlag);
}

TEST_F(KernelTest, OpeningTheWindowSetsNoQuitFlagInARunningKernel)
{
    kernel->internalMask = 1 << CLASS_WINDOW;

    kernel->sendEvent(nobody, eventOf(EV_OPEN_WINDOW));

    EXPECT_FALSE(kernel->quitFlag);
}

TEST_F(KernelTest, AFalseAnswerEndsTheDelivery)
{
    addCatcher("first", 1 << CLASS_GRAPHICS)->answer = [](Event&) { return false; };
    addCatcher("second", 1 << CLASS_GRAPHICS | 1 << CLASS_RESOURCES);
    const test::CapturedErrors errors;

    EXPECT_FALSE(kernel->sendEvent(nobody, eventOf(EV_RELEASE_RESOURCES)));

    EXPECT_THAT(log, ElementsAre(Pair("first", 26)));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(KernelTest, ReceiversChangeACopyOfTheirOwn)
{
    const auto change = [](Event& event) {
        EXPECT_EQ(event.delta, 5);
        EXPECT_EQ(event.window.title, "title");
        event.delta = 6;
        event.window.title = "changed";
        return true;
    };
    addCatcher("first", allClasses)->answer = change;
    addCatcher("second", allClasses)->answer = change;
    Event event = eventOf(EV_UPDATE);
    event.delta = 5;
    event.window.title = "title";

    kernel->sendEvent(nobody, event);

    EXPECT_EQ(log.size(), 2U);
    EXPECT_EQ(event.delta, 5);
}

TEST_F(KernelTest, ACatcherRegisteredTwiceIsServedTwice)
{
    TestCatcher* const catcher = addCatcher("twice", 1 << CLASS_UPDATE);
    EXPECT_TRUE(kernel->addCatcher(ref(catcher), 1 << CLASS_UPDATE, 0));

    kernel->sendEvent(nobody, eventOf(EV_UPDATE));

    EXPECT_THAT(log, ElementsAre(Pair("twice", 20), Pair("twice", 20)));
    EXPECT_THAT(kernel->classLists[CLASS_UPDATE], ElementsAre(0, 1));
}

TEST_F(KernelTest, SettingChangesEveryRegistrationOfTheCatcher)
{
    TestCatcher* const catcher = addCatcher("set", 1 << CLASS_UPDATE, 1);
    addCatcher("other", 1 << CLASS_UPDATE, 2);
    kernel->addCatcher(ref(catcher), 1 << CLASS_UPDATE, 1);

    EXPECT_TRUE(kernel->setCatcher(ref(catcher), 1 << CLASS_RENDER, 9));

    EXPECT_THAT(kernel->classLists[CLASS_UPDATE], ElementsAre(1));
    EXPECT_THAT(kernel->classLists[CLASS_RENDER], ElementsAre(0, 2));
    EXPECT_EQ(kernel->catchers[0].priority, 9);
    EXPECT_EQ(kernel->catchers[1].priority, 2);
    EXPECT_EQ(kernel->catchers[2].priority, 9);
}

TEST_F(KernelTest, SettingAnUnknownCatcherChangesNothing)
{
    addCatcher("known", 1 << CLASS_UPDATE);

    EXPECT_TRUE(kernel->setCatcher(ref(new TestCatcher("unknown", log)), allClasses, 1));

    EXPECT_EQ(kernel->catchers.size(), 1U);
    EXPECT_EQ(kernel->catchers[0].mask, 1 << CLASS_UPDATE);
}

TEST_F(KernelTest, RemovingRebuildsTheClassLists)
{
    TestCatcher* const first = addCatcher("first", 1 << CLASS_UPDATE);
    addCatcher("second", 1 << CLASS_UPDATE | 1 << CLASS_MOUSE);

    EXPECT_TRUE(kernel->removeCatcher(ref(first)));

    EXPECT_EQ(kernel->catchers.size(), 1U);
    EXPECT_THAT(kernel->classLists[CLASS_UPDATE], ElementsAre(0));
    EXPECT_THAT(kernel->classLists[CLASS_MOUSE], ElementsAre(0));
    EXPECT_EQ(first->refCount, 0);
}

TEST_F(KernelTest, RemovingErasesOnlyTheFirstOfTwoAdjacentRecords)
{
    TestCatcher* const catcher = addCatcher("twice", 1 << CLASS_UPDATE, 1);
    kernel->addCatcher(ref(catcher), 1 << CLASS_UPDATE, 2);

    kernel->removeCatcher(ref(catcher));

    ASSERT_EQ(kernel->catchers.size(), 1U);
    EXPECT_EQ(kernel->catchers[0].priority, 2);
}

TEST_F(KernelTest, RemovingErasesBothOfTwoRecordsThatAreApart)
{
    TestCatcher* const catcher = addCatcher("apart", 1 << CLASS_UPDATE);
    TestCatcher* const other = addCatcher("other", 1 << CLASS_UPDATE);
    kernel->addCatcher(ref(catcher), 1 << CLASS_UPDATE, 0);

    kernel->removeCatcher(ref(catcher));

    ASSERT_EQ(kernel->catchers.size(), 1U);
    EXPECT_EQ(kernel->catchers[0].catcher.get(), other);
}

TEST_F(KernelTest, RemovingByTheReferenceOfARecordRemovesThatCatcher)
{
    addCatcher("first", 1 << CLASS_UPDATE);
    TestCatcher* const second = addCatcher("second", 1 << CLASS_UPDATE);
    kernel->addCatcher(kernel->catchers[0].catcher, 1 << CLASS_UPDATE, 0);

    kernel->removeCatcher(kernel->catchers[0].catcher);

    ASSERT_EQ(kernel->catchers.size(), 1U);
    EXPECT_EQ(kernel->catchers[0].catcher.get(), second);
}

TEST_F(KernelTest, RegistrationsDuringDeliveryAreSeenAtOnce)
{
    addCatcher("first", 1 << CLASS_UPDATE)->answer = [this](Event&) {
        addCatcher("late", 1 << CLASS_UPDATE);
        return true;
    };

    kernel->sendEvent(nobody, eventOf(EV_UPDATE));

    EXPECT_THAT(log, ElementsAre(Pair("first", 20), Pair("late", 20)));
}

TEST_F(KernelTest, ARemovalDuringDeliveryShiftsTheWalk)
{
    TestCatcher* const first = addCatcher("first", 1 << CLASS_UPDATE);
    first->answer = [this, first](Event&) { return kernel->removeCatcher(ref(first)); };
    addCatcher("second", 1 << CLASS_UPDATE);
    addCatcher("third", 1 << CLASS_UPDATE);

    kernel->sendEvent(nobody, eventOf(EV_UPDATE));

    EXPECT_THAT(log, ElementsAre(Pair("first", 20), Pair("third", 20)));
}

TEST_F(KernelTest, SendsOnWhatItReceivesToAllButItself)
{
    kernel->addCatcher(ref(kernel), allClasses, 0);
    addCatcher("other", allClasses);

    EXPECT_TRUE(kernel->handleEvent(eventOf(EV_MOUSE)));

    EXPECT_THAT(log, ElementsAre(Pair("other", 23)));
}

/// The whole life cycle.
class KernelRun : public KernelFixture
{
protected:
    ~KernelRun() override { ticksToCome.clear(); }

    /// The kinds that one catcher of all classes receives until it answers false to the event of
    /// kind `last` for the `times`-th time.
    std::vector<std::int32_t> kindsUntil(std::int32_t last, int times = 1)
    {
        addCatcher("all", allClasses)->answer = [last, times](Event& event) mutable {
            return event.kind != last || --times > 0;
        };
        wasOrderly = kernel->run();
        std::vector<std::int32_t> kinds;
        for (const auto& [name, kind] : log)
            kinds.push_back(kind);
        return kinds;
    }

    bool wasOrderly = false;
};

TEST_F(KernelRun, SendsStartFramesAndReleaseInOrder)
{
    EXPECT_THAT(kindsUntil(EV_RENDER, 2), ElementsAre(16, 17, 18, 19, 20, 21, 20, 21, 26, 26));
    EXPECT_TRUE(wasOrderly);
    EXPECT_EQ(kernel->internalMask, 2);
    EXPECT_FALSE(kernel->timer.isEmpty());
}

TEST_F(KernelRun, SendsNoRenderBehindAFailedUpdate)
{
    EXPECT_THAT(kindsUntil(EV_UPDATE), ElementsAre(16, 17, 18, 19, 20, 26, 26));
    EXPECT_TRUE(wasOrderly);
}

TEST_F(KernelRun, AFailureSkipsTheLaterCatchersOfTheFrame)
{
    addCatcher("first", 1 << CLASS_UPDATE)->answer = [](Event&) { return false; };
    addCatcher("second", 1 << CLASS_UPDATE | 1 << CLASS_RENDER | 1 << CLASS_RESOURCES);

    EXPECT_TRUE(kernel->run());

    EXPECT_THAT(log, ElementsAre(Pair("second", 16), Pair("first", 20), Pair("second", 26)));
}

TEST_F(KernelRun, EndsInWordsAtAFailedStartUpEvent)
{
    struct Row
    {
        std::int32_t kind;
        const char* words;
        std::size_t received;
    };
    const std::vector<Row> rows = {
        {16, "Error sending load resources event\n", 1},
        {17, "Error sending openwindow event\n", 2},
        {18, "Error sending load graphics resources event\n", 3},
        {19, "Error sending initial setup event\n", 4},
    };
    for (const Row& row : rows) {
        kernel = new Kernel;
        log.clear();
        const test::CapturedErrors errors;

        EXPECT_EQ(kindsUntil(row.kind).size(), row.received);

        EXPECT_FALSE(wasOrderly);
        EXPECT_EQ(errors.text(), row.words);
        EXPECT_EQ(kernel->internalMask, 0);
    }
}

TEST_F(KernelRun, SaysThatTheReleaseEventFailed)
{
    addCatcher("first", 1 << CLASS_GRAPHICS | 1 << CLASS_UPDATE)->answer = [](Event& event) {
        return event.kind != EV_UPDATE && event.kind != EV_RELEASE_RESOURCES;
    };
    addCatcher("second", 1 << CLASS_RESOURCES);
    const test::CapturedErrors errors;

    EXPECT_FALSE(kernel->run());

    EXPECT_EQ(errors.text(), "Error sending release resources event\n");
    EXPECT_THAT(log, ElementsAre(Pair("second", 16), Pair("first", 18), Pair("first", 20),
                                 Pair("first", 26)));
}

TEST_F(KernelRun, AsksForTheWindowThatIsWanted)
{
    WindowParameters asked;
    addCatcher("window", 1 << CLASS_WINDOW)->answer = [&asked](Event& event) {
        asked = event.window;
        return false;
    };

    const test::CapturedErrors errors;
    kernel->run();

    EXPECT_EQ(asked.title, "Tamor Application");
    EXPECT_EQ(asked.width, 800);
    EXPECT_EQ(asked.height, 600);
    EXPECT_EQ(asked.depth, 24);
    EXPECT_FALSE(asked.fullscreen);
}

TEST_F(KernelRun, TheReleaseEventIsTheRecordOfTheStart)
{
    std::vector<std::string> titles;
    addCatcher("all", allClasses)->answer = [&titles](Event& event) {
        titles.push_back(event.window.title);
        return event.kind != EV_UPDATE;
    };

    kernel->run();

    EXPECT_THAT(titles,
                ElementsAre("", "Tamor Application", "Tamor Application", "Tamor Application", "",
                            "Tamor Application", "Tamor Application"));
}

TEST_F(KernelRun, DeltaIsTheTimeBetweenTheStartsOfTwoFramesAndTheSameInBothEvents)
{
    // The timer's start, the end of the kernel's start, and the starts of four frames.
    ticksToCome = {100, 150, 157, 200, 200, 70000};
    std::vector<std::int32_t> deltas;
    addCatcher("frames", 1 << CLASS_UPDATE | 1 << CLASS_RENDER)->answer = [&](Event& event) {
        deltas.push_back(event.delta);
        return deltas.size() < 8;
    };

    kernel->run();

    EXPECT_THAT(deltas, ElementsAre(7, 7, 43, 43, 0, 0, 69800, 69800));
    EXPECT_THAT(ticksToCome, IsEmpty());
}

TEST_F(KernelRun, DeltaGoesOnAcrossTheEndOfSDLsClock)
{
    ticksToCome = {0xFFFFFFF0, 0xFFFFFFF8, 4};
    std::int32_t delta = 0;
    addCatcher("frame", 1 << CLASS_UPDATE)->answer = [&](Event& event) {
        delta = event.delta;
        return false;
    };

    kernel->run();

    EXPECT_EQ(delta, 12);
}

TEST_F(KernelRun, SendsToAllTheKernelItselfIncluded)
{
    // What the kernel receives it sends on, so that the other receives all twice.
    kernel->addCatcher(ref(kernel), allClasses, 0);

    EXPECT_THAT(kindsUntil(EV_RENDER, 2), ElementsAre(16, 16, 17, 17, 18, 18, 19, 19, 20, 20, 21,
                                                      21, 26, 26, 26, 26, 26, 26));
}

TEST_F(KernelRun, GoesOnAfterAQuitEventAlone)
{
    int updates = 0;
    addCatcher("quitter", 1 << CLASS_UPDATE | 1 << CLASS_RENDER)->answer = [&](Event& event) {
        kernel->sendEvent(nobody, eventOf(EV_QUIT));
        EXPECT_TRUE(kernel->quitFlag);
        if (event.kind == EV_UPDATE)
            ++updates;
        return updates < 3;
    };

    EXPECT_TRUE(kernel->run());

    EXPECT_EQ(updates, 3);
}

TEST_F(KernelRun, AQuitDuringStartUpDoesNotReachTheKernel)
{
    addCatcher("quitter", 1 << CLASS_SETUP)->answer = [&](Event&) {
        kernel->sendEvent(nobody, eventOf(EV_QUIT));
        EXPECT_FALSE(kernel->quitFlag);
        return true;
    };
    addCatcher("end", 1 << CLASS_UPDATE)->answer = [](Event&) { return false; };

    EXPECT_TRUE(kernel->run());
}

TEST_F(KernelRun, KeepsATimerThatIsThere)
{
    auto* const timer = new Timer;
    kernel->timer = timer;

    kindsUntil(EV_UPDATE);

    EXPECT_EQ(kernel->timer.get(), timer);
}
} // namespace
} // namespace tamor

/// Stands before SDL's own, which it calls unless a test says what time it is.
extern "C" Uint32 SDL_GetTicks()
{
    if (tamor::ticksToCome.empty())
        return reinterpret_cast<Uint32 (*)()>(dlsym(RTLD_NEXT, "SDL_GetTicks"))();
    const Uint32 ticks = tamor::ticksToCome.front();
    tamor::ticksToCome.pop_front();
    return ticks;
}

#include "kernel/Diagnostics.h"

#include "tests/support/CapturedErrors.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/CommaLocale.h"

#include <gmock/gmock.h>

#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>

namespace tamor
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

class CallStackTest : public testing::Test
{
protected:
    ~CallStackTest() override { callStack = CallStack(); }
};

TEST_F(CallStackTest, KeepsNothingBeforeItIsEnabled)
{
    pushCall("early");
    popCall();

    EXPECT_THAT(callStack.frames, IsEmpty());
}

TEST_F(CallStackTest, KeepsTheNamesOldestFirst)
{
    enableCallStack();
    pushCall("a");
    pushCall("b");
    pushCall("c");
    popCall();

    EXPECT_THAT(callStack.frames, ElementsAre("a", "b"));
}

TEST_F(CallStackTest, APopTooManyDoesNothing)
{
    enableCallStack();
    popCall();

    EXPECT_THAT(callStack.frames, IsEmpty());
}

TEST_F(CallStackTest, DumpsTheNewestFirstWithTheHighestNumber)
{
    enableCallStack();
    pushCall("main");
    pushCall("run");
    pushCall("load");
    const test::CapturedErrors errors;

    EXPECT_TRUE(dumpCallStack());

    EXPECT_EQ(errors.text(), "3 -> load\n2 -> run\n1 -> main\n");
}

TEST_F(CallStackTest, NumbersInTheCLocale)
{
    enableCallStack();
    for (int count = 0; count < 1000; ++count)
        pushCall("f");
    const test::CommaLocale locale;
    const test::CapturedErrors errors;

    dumpCallStack();

    EXPECT_THAT(errors.text(), testing::StartsWith("1000 -> f\n999 -> f\n"));
}

TEST_F(CallStackTest, DumpsNothingWhenEmpty)
{
    const test::CapturedErrors errors;

    EXPECT_TRUE(dumpCallStack());

    EXPECT_EQ(errors.text(), "");
}

/// Runs `body` in a child process with the handlers installed.
struct Reported
{
    explicit Reported(const std::function<int()>& body)
    {
        test::ChildProcess child([&body] {
            installSignalHandlers();
            return body();
        });
        end = child.wait();
        errors = child.errors();
    }

    test::ProcessEnd end;
    std::string errors;
};

TEST(SignalHandler, ReportsAnInterruptAndEndsWithStatus1)
{
    const Reported reported([] { return std::raise(SIGINT); });

    EXPECT_EQ(reported.end.status, 1);
    EXPECT_EQ(reported.errors, "Caught signal SIGINT - Terminal interrupt (ANSI)\nStack Trace:\n");
}

TEST(SignalHandler, ReportsAbortUnderItsOldName)
{
    const Reported reported([]() -> int { std::abort(); });

    EXPECT_EQ(reported.end.status, 1);
    EXPECT_EQ(reported.errors, "Caught signal SIGIOT - IOT Trap (4.2 BSD)\nStack Trace:\n");
}

TEST(SignalHandler, IsInstalledForSixSignalsAndNoOther)
{
    const Reported reported([] {
        for (int number = 1; number < SIGRTMIN; ++number) {
            struct sigaction action
            {};
            sigaction(number, nullptr, &action);
            if (action.sa_handler == signalHandler)
                std::cerr << number << ' ';
        }
        return 0;
    });
    EXPECT_EQ(reported.errors, "1 2 3 4 6 11 ");
}

TEST(SignalHandler, EndsTheProcessWithStatus1ForEachOfItsSignals)
{
    for (const int number : {1, 2, 3, 4, 6, 11}) {
        const Reported reported([number] { return std::raise(number); });
        EXPECT_EQ(reported.end.status, 1) << number;
    }
    // A signal that is not installed takes its default action.
    for (const int number : {SIGTERM, SIGUSR1, SIGPIPE}) {
        const Reported reported([number] { return std::raise(number); });
        EXPECT_EQ(reported.end.signal, number);
        EXPECT_EQ(reported.errors, "");
    }
}

TEST(SignalHandler, PrintsNoFramesUnderItsHeading)
{
    const Reported reported([] {
        enableCallStack();
        pushCall("main");
        return std::raise(SIGHUP);
    });

    EXPECT_EQ(reported.errors, "Caught signal SIGHUP - Hangup (POSIX)\nStack Trace:\n");
}

TEST(SignalHandler, HasWordsForThirtySignals)
{
    const std::vector<std::string> words = {
        "SIGHUP - Hangup (POSIX)",
        "SIGINT - Terminal interrupt (ANSI)",
        "SIGQUIT - Terminal quit (POSIX)",
        "SIGILL - Illegal instruction (ANSI)",
        "SIGTRAP - Trace trap (POSIX)",
        "SIGIOT - IOT Trap (4.2 BSD)",
        "SIGBUS - BUS error (4.2 BSD)",
        "SIGFPE - Floating point exception (ANSI)",
        "SIGKILL - Kill(can't be caught or ignored) (POSIX)",
        "SIGUSR1 - User defined signal 1 (POSIX)",
        "SIGSEGV - Invalid memory segment access (ANSI)",
        "SIGUSR2 - User defined signal 2 (POSIX)",
        "SIGPIPE - Write on a pipe with no reader, Broken pipe (POSIX)",
        "SIGALRM - Alarm clock (POSIX)",
        "SIGTERM - Termination (ANSI)",
        "SIGSTKFLT - Stack fault",
        "SIGCHLD - Child process has stopped or exited, changed (POSIX)",
        "SIGCONT - Continue executing, if stopped (POSIX)",
        "SIGSTOP - Stop executing(can't be caught or ignored) (POSIX)",
        "SIGTSTP - Terminal stop signal (POSIX)",
        "SIGTTIN - Background process trying to read, from TTY (POSIX)",
        "SIGTTOU - Background process trying to write, to TTY (POSIX)",
        "SIGURG - Urgent condition on socket (4.2 BSD)",
        "SIGXCPU - CPU limit exceeded (4.2 BSD)",
        "SIGXFSZ - File size limit exceeded (4.2 BSD)",
        "SIGVTALRM - Virtual alarm clock (4.2 BSD)",
        "SIGPROF - Profiling alarm clock (4.2 BSD)",
        "SIGWINCH - Window size change (4.3 BSD, Sun)",
        "SIGIO - I/O now possible (4.2 BSD)",
        "SIGPWR - Power failure restart (System V)",
    };
    for (std::size_t index = 0; index < words.size(); ++index) {
        test::ChildProcess child([index]() -> int { signalHandler(static_cast<int>(index) + 1); });
        EXPECT_EQ(child.wait().status, 1);
        EXPECT_EQ(child.errors(), "Caught signal " + words[index] + "\nStack Trace:\n");
    }
}

TEST(SignalHandler, HasOnlyTheHeadingForAnUnknownSignal)
{
    test::ChildProcess child([]() -> int { signalHandler(31); });

    EXPECT_EQ(child.wait().status, 1);
    EXPECT_EQ(child.errors(), "Stack Trace:\n");
}

/// What runs at the exit from a handler has ten seconds.
TEST(SignalHandlerExit, WaitsForARoutineOfThreeSeconds)
{
    const Reported reported([] {
        std::atexit([] {
            sleep(3);
            std::cerr << "tidied up\n";
        });
        return std::raise(SIGINT);
    });

    EXPECT_EQ(reported.end.status, 1);
    EXPECT_THAT(reported.errors, testing::EndsWith("Stack Trace:\ntidied up\n"));
}

TEST(SignalHandlerExit, EndsARoutineThatNeverReturnsAfterTenSeconds)
{
    const Reported reported([] {
        std::atexit([] {
            const unsigned limit = alarm(0);
            std::cerr << "ends in " << limit << '\n';
            alarm(limit);
            for (;;)
                pause();
        });
        return std::raise(SIGINT);
    });

    EXPECT_FALSE(reported.end.timedOut);
    EXPECT_EQ(reported.end.status, 1);
    EXPECT_THAT(reported.errors, testing::EndsWith("Stack Trace:\nends in 10\n"));
}

TEST(AssertTrue, DoesNothingForATrueCondition)
{
    const test::CapturedErrors errors;

    EXPECT_TRUE(assertTrue("all is well", true));

    EXPECT_EQ(errors.text(), "");
}

TEST(AssertTrue, EndsTheProcessWithStatus0ForAFalseOne)
{
    test::ChildProcess child([] {
        assertTrue("the sky is green", false);
        return 5;
    });

    EXPECT_EQ(child.wait().status, 0);
    EXPECT_EQ(child.errors(), "Assert failed: the sky is green\n");
}
} // namespace
} // namespace tamor

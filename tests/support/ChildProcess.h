/// \file
/// Programs that a test starts, and what becomes of them.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tamor::test
{
/// How a process ended.
struct ProcessEnd
{
    bool timedOut = false; ///< it had to be killed
    int status = -1;       ///< its exit status, or -1
    int signal = 0;        ///< the signal that ended it, or 0
};

/// A running program whose two output streams are kept. It is killed if it outlives this object.
class ChildProcess
{
public:
    /// Starts `arguments[0]`, found on the PATH, in `directory` ("" is this process's own), with
    /// `environment` added to what this process has.
    explicit ChildProcess(const std::vector<std::string>& arguments,
                          const std::string& directory = "",
                          const std::map<std::string, std::string>& environment = {});

    /// Runs `body` in a copy of this process, which exits with its result.
    explicit ChildProcess(const std::function<int()>& body);

    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Sends a signal.
    void signal(int number) const;

    /// Waits for the end; kills the process when `limit` has gone by.
    ProcessEnd wait(std::chrono::milliseconds limit = std::chrono::seconds(60));

    bool isRunning();
    pid_t id() const { return process; }

    /// What it has written to the standard output and error streams so far.
    std::string output() const;
    std::string errors() const;

private:
    void keepStreams() const;

    pid_t process = -1;
    int outputFile = -1;
    int errorFile = -1;
    bool ended = false;
    ProcessEnd end;
};

/// Whether `body` goes on through a second of processor time, in a copy of this process.
bool runsForEver(const std::function<void()>& body);

/// Asks `condition` every few milliseconds until it is true or `limit` has gone by. Returns its
/// last answer.
bool becomesTrue(const std::function<bool()>& condition,
                 std::chrono::milliseconds limit = std::chrono::seconds(30));
} // namespace tamor::test

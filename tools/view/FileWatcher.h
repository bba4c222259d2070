/// \file
/// Notice of changed files.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace tamor::view
{
/// Watches files for being written, replaced or removed, through Linux's inotify. It watches their
/// directories, so that a file that an editor replaces, or one that is not there yet, is noticed.
class FileWatcher
{
public:
    FileWatcher();
    ~FileWatcher();
    FileWatcher(const FileWatcher&) = delete;
    FileWatcher& operator=(const FileWatcher&) = delete;

    /// The files to watch from now on, in place of those before.
    void watch(const std::set<std::filesystem::path>& files);

    /// Waits until something happens to a file, at most for `limit`.
    /// \return the names of changed files, without their directories. One that was removed counts
    ///         only when nothing has taken its place for a moment, as editors replace files.
    std::set<std::string> wait(std::chrono::milliseconds limit);

private:
    using Clock = std::chrono::steady_clock;

    void readEvents(std::set<std::string>& changed);

    int descriptor;
    std::map<std::filesystem::path, int> directories; ///< the watch of each
    std::map<int, std::set<std::string>> names;       ///< the files in each
    std::map<std::string, Clock::time_point> removed; ///< and when
};
} // namespace tamor::view

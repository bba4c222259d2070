#include "tools/view/FileWatcher.h"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstring>

namespace tamor::view
{
namespace
{
constexpr std::uint32_t writeEvents = IN_CLOSE_WRITE | IN_MOVED_TO;
constexpr std::uint32_t removeEvents = IN_DELETE | IN_MOVED_FROM;

// Longer than an editor takes between moving the old file away and writing the new one.
constexpr std::chrono::milliseconds replacementTime(60);
} // namespace

FileWatcher::FileWatcher() : descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

FileWatcher::~FileWatcher()
{
    close(descriptor);
}

void FileWatcher::watch(const std::set<std::filesystem::path>& files)
{
    names.clear();
    for (const std::filesystem::path& file : files) {
        const std::filesystem::path directory = std::filesystem::absolute(file).parent_path();
        auto entry = directories.find(directory);
        if (entry == directories.end()) {
            const int watch =
                inotify_add_watch(descriptor, directory.c_str(), writeEvents | removeEvents);
            entry = directories.emplace(directory, watch).first;
        }
        names[entry->second].insert(file.filename().string());
    }
}

std::set<std::string> FileWatcher::wait(std::chrono::milliseconds limit)
{
    pollfd ready{descriptor, POLLIN, 0};
    std::set<std::string> changed;
    if (poll(&ready, 1, static_cast<int>(limit.count())) > 0)
        readEvents(changed);
    for (auto each = removed.begin(); each != removed.end();) {
        if (Clock::now() - each->second > replacementTime) {
            changed.insert(each->first);
            each = removed.erase(each);
        } else {
            ++each;
        }
    }
    return changed;
}

void FileWatcher::readEvents(std::set<std::string>& changed)
{
    alignas(inotify_event) std::array<char, 16384> buffer;
    ssize_t size = 0;
    while ((size = read(descriptor, buffer.data(), buffer.size())) > 0) {
        for (std::size_t offset = 0; offset < static_cast<std::size_t>(size);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + offset, sizeof event);
            const char* const text = buffer.data() + offset + sizeof event;
            const std::string name = event.len > 0 ? text : "";
            offset += sizeof event + event.len;
            if (!names[event.wd].contains(name))
                continue;
            if ((event.mask & writeEvents) != 0) {
                changed.insert(name);
                removed.erase(name);
            } else {
                removed[name] = Clock::now();
            }
        }
    }
}
} // namespace tamor::view

/// \file
/// A catcher that does as a test tells it.
#pragma once

#include "kernel/Kernel.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tamor::test
{
/// Who received what, in order: pairs of a catcher's name and an event's kind.
using Deliveries = std::vector<std::pair<std::string, std::int32_t>>;

/// Notes each event in a log that catchers share, and answers with `answer`, which is true if it is
/// not set.
class TestCatcher : public EventCatcher
{
public:
    TestCatcher(std::string newName, Deliveries& newLog) : name(std::move(newName)), log(newLog) {}

    bool handleEvent(Event event) override
    {
        log.emplace_back(name, event.kind);
        return answer ? answer(event) : true;
    }

    std::function<bool(Event&)> answer;

private:
    std::string name;
    Deliveries& log;
};
} // namespace tamor::test

/// \file
/// Who receives the updates whose way through the kernel is measured.
#pragma once

#include "kernel/Kernel.h"

#include <cstdint>

namespace tamor::bench
{
/// Looks at its copy of the record, and does nothing else.
class UpdateReceiver : public EventCatcher
{
public:
    bool handleEvent(Event event) override
    {
        received += event.delta;
        return true;
    }

    /// The sum of all the `delta`s.
    std::int64_t received = 0;
};

/// Registers three receivers with `kernel`, which keeps them, and returns the last that is asked.
inline UpdateReceiver* addThreeReceivers(Kernel& kernel)
{
    UpdateReceiver* last = nullptr;
    for (int count = 0; count < 3; ++count) {
        last = new UpdateReceiver;
        kernel.addCatcher(ObjectRef<EventCatcher>(last), 1 << CLASS_UPDATE, 0);
    }
    return last;
}

/// An update of 16 milliseconds.
inline Event updateEvent()
{
    Event event;
    event.kind = EV_UPDATE;
    event.delta = 16;
    return event;
}
} // namespace tamor::bench

/// \file
/// The receiver of events.
#pragma once

#include "TamorExport.h"
#include "kernel/Event.h"
#include "kernel/MMObject.h"

namespace tamor
{
/// Receives the events of the classes that it subscribed to with `Kernel::addCatcher`.
class TAMOR_EXPORT EventCatcher : public MMObject
{
public:
    /// Subscribes to nothing; `Kernel::addCatcher` does.
    explicit EventCatcher(const ObjectRef<EventCatcher>& newParent = {}) : parent(newParent) {}

    /// Handles one event, in a copy of its own.
    /// \return false to end the delivery of this event and make its sending fail. From `EV_UPDATE`
    ///         and `EV_RENDER` that is the way to end the kernel's loop, and the only one.
    virtual bool handleEvent(Event event) = 0;

    /// Held from construction to destruction. Nothing reads it.
    ObjectRef<EventCatcher> parent;
};
} // namespace tamor

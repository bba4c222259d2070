/// \file
/// The run loop, and the delivery of events to catchers.
///
/// The folder kernel/ holds the event record, the run loop, the lifetime of long-lived objects, the
/// timer and the diagnostics. It knows nothing of windows, input or drawing: all of that happens in
/// the catchers.
#pragma once

#include "TamorExport.h"
#include "kernel/Event.h"
#include "kernel/EventCatcher.h"
#include "kernel/MMObject.h"
#include "kernel/Timer.h"

#include <array>
#include <cstdint>
#include <vector>

namespace tamor
{
/// One registration.
struct CatcherRecord
{
    ObjectRef<EventCatcher> catcher; ///< who receives; never empty
    std::int32_t mask = 0;     ///< bit n: subscribed to delivery class n; bits above 8 do nothing
    std::int32_t priority = 0; ///< kept, and never read: catchers are served as they registered
};

/// Owns the run loop, holds the catchers, and delivers every event.
///
/// There is no queue: a send is a nested call that returns when every receiver has returned. Sends
/// may nest, and registrations may change during delivery, which is seen at once. Everything
/// happens on one thread.
class TAMOR_EXPORT Kernel : public EventCatcher
{
public:
    Kernel();

    /// Registers `catcher`, behind all others; one that is there already is registered once more,
    /// and served twice.
    /// \return true
    bool addCatcher(const ObjectRef<EventCatcher>& catcher, std::int32_t mask,
                    std::int32_t priority);

    /// Gives every registration of `catcher` this mask and priority.
    /// \return true, also for an unknown catcher
    bool setCatcher(const ObjectRef<EventCatcher>& catcher, std::int32_t mask,
                    std::int32_t priority);

    /// Erases the registrations of `catcher`, but of two adjacent ones the first alone.
    /// \return true, also for an unknown catcher
    bool removeCatcher(const ObjectRef<EventCatcher>& catcher);

    /// Runs the whole life cycle, once a process: the four start-up events, then `EV_UPDATE` and
    /// `EV_RENDER` each frame until a catcher returns false, then the release event.
    /// \return false if a start-up event or the release event failed, after printing one of:
    ///         Error sending load resources event
    ///         Error sending openwindow event
    ///         Error sending load graphics resources event
    ///         Error sending initial setup event
    ///         Error sending release resources event
    bool run();

    /// Delivers `event` to every subscriber but the catcher in `except`, which may be empty. An
    /// event of no known kind reaches nobody, and its number is printed on a line.
    /// \return false as soon as a receiver returned false; the others are not served then
    bool sendEvent(const ObjectRef<EventCatcher>& except, Event event);

    /// Delivers `event` to `target` alone, if it is subscribed to the event's class.
    /// \return false if it returned false; true also when it was not called
    bool sendEventTo(const ObjectRef<EventCatcher>& target, Event event);

    /// Sends on what it receives, to all catchers but itself.
    bool handleEvent(Event event) override;

    /// For each class, the positions in `catchers` of its subscribers, ascending.
    std::array<std::vector<std::int32_t>, deliveryClassCount> classLists;
    std::vector<CatcherRecord> catchers; ///< in order of registration
    bool quitFlag = false;               ///< ends the loop
    /// The classes that the kernel itself serves: none until start-up is through, then the window
    /// class, for `EV_QUIT`. It stays so.
    std::int32_t internalMask = 0;
    ObjectRef<Timer> timer; ///< empty until `run`

private:
    /// Takes the memory for so many subscribers to each class, so that what follows cannot lack it: a
    /// registration is made whole or not at all.
    void reserveClassLists(std::size_t count);
    void rebuildClassLists();
    /// Whom a send reaches of the subscribers: all but the catcher that it names, or that one alone.
    enum class Receivers
    {
        ALL_BUT,
        ONLY,
    };
    bool dispatch(const Event& event, Receivers receivers, const EventCatcher* named);
    bool processInternal(Event event);
    bool sendStartupEvents(Event& event);
};
} // namespace tamor

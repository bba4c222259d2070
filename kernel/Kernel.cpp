#include "kernel/Kernel.h"

#include <algorithm>
#include <iostream>
#include <span>
#include <string>

namespace tamor
{
namespace
{
constexpr bool hasClass(std::int32_t mask, std::size_t deliveryClass)
{
    return ((mask >> deliveryClass) & 1) != 0;
}

/// The classes that an event of this kind is delivered to, in the order in which they are served;
/// none for a code that is no kind.
std::span<const DeliveryClass> classesOf(std::int32_t kind)
{
    static constexpr std::array start = {
        CLASS_RESOURCES, CLASS_WINDOW,      CLASS_GRAPHICS, CLASS_SETUP,    CLASS_UPDATE,
        CLASS_RENDER,    CLASS_RENDER_DONE, CLASS_MOUSE,    CLASS_KEYBOARD, CLASS_WINDOW};
    static constexpr std::array release = {CLASS_GRAPHICS, CLASS_RESOURCES};
    static_assert(EV_LOAD_RESOURCES + start.size() == EV_RELEASE_RESOURCES,
                  "one class for each kind in order, from the first to EV_QUIT");

    if (kind == EV_RELEASE_RESOURCES)
        return release;
    if (kind >= EV_LOAD_RESOURCES && kind < EV_RELEASE_RESOURCES)
        return std::span(start).subspan(static_cast<std::size_t>(kind - EV_LOAD_RESOURCES), 1);
    return {};
}
} // namespace

Kernel::Kernel() = default;

bool Kernel::addCatcher(const ObjectRef<EventCatcher>& catcher, std::int32_t mask,
                        std::int32_t priority)
{
    reserveClassLists(catchers.size() + 1);
    catchers.push_back({catcher, mask, priority});
    rebuildClassLists();
    return true;
}

bool Kernel::setCatcher(const ObjectRef<EventCatcher>& catcher, std::int32_t mask,
                        std::int32_t priority)
{
    reserveClassLists(catchers.size());
    for (CatcherRecord& record : catchers) {
        if (record.catcher == catcher) {
            record.mask = mask;
            record.priority = priority;
        }
    }
    rebuildClassLists();
    return true;
}

bool Kernel::removeCatcher(const ObjectRef<EventCatcher>& catcher)
{
    // The reference may be one of a record, which is about to move.
    const EventCatcher* const removed = catcher.get();
    // Meant: the walk steps over a record that moved into an erased place, so of two adjacent
    // records of one catcher only the first goes. Nothing here registers twice; it is what a host
    // is told to expect. `KernelTest.RemovingErasesOnlyTheFirstOfTwoAdjacentRecords` holds it.
    for (std::size_t position = 0; position < catchers.size(); ++position) {
        if (catchers[position].catcher.get() == removed)
            catchers.erase(catchers.begin() + static_cast<std::ptrdiff_t>(position));
    }
    rebuildClassLists();
    return true;
}

bool Kernel::run()
{
    quitFlag = false;
    if (timer.isEmpty())
        timer = new Timer;
    Event lifeCycle;
    if (!sendStartupEvents(lifeCycle))
        return false;

    internalMask = 1 << CLASS_WINDOW;
    const ObjectRef<EventCatcher> nobody;
    std::uint32_t previous = timer->getTicks();
    while (!quitFlag) {
        const std::uint32_t now = timer->getTicks();
        Event frame;
        frame.kind = EV_UPDATE;
        frame.delta = static_cast<std::int32_t>(now - previous);
        // Meant: the result is written over the flag, so an EV_QUIT in between ends nothing unless
        // a catcher returns false as well. `KernelRun.GoesOnAfterAQuitEventAlone` holds it.
        quitFlag = !sendEvent(nobody, frame);
        if (quitFlag)
            break;
        frame.kind = EV_RENDER;
        quitFlag = !sendEvent(nobody, frame);
        previous = now;
    }

    lifeCycle.kind = EV_RELEASE_RESOURCES;
    quitFlag = !sendEvent(nobody, lifeCycle);
    if (quitFlag)
        std::cerr << "Error sending release resources event" << std::endl;
    return !quitFlag;
}

bool Kernel::sendStartupEvents(Event& event)
{
    struct Step
    {
        EventKind kind;
        const char* failure;
    };
    static constexpr std::array steps = {
        Step{EV_LOAD_RESOURCES, "Error sending load resources event"},
        Step{EV_OPEN_WINDOW, "Error sending openwindow event"},
        Step{EV_LOAD_GRAPHICS_RESOURCES, "Error sending load graphics resources event"},
        Step{EV_INITIAL_SETUP, "Error sending initial setup event"},
    };

    for (const Step& step : steps) {
        event.kind = step.kind;
        // The rest of the window's parameters stand in a new event as they are wanted.
        if (step.kind == EV_OPEN_WINDOW)
            event.window.title = "Tamor Application";
        quitFlag = !sendEvent(ObjectRef<EventCatcher>(), event);
        if (quitFlag) {
            std::cerr << step.failure << std::endl;
            return false;
        }
    }
    return true;
}

bool Kernel::sendEvent(const ObjectRef<EventCatcher>& except, Event event)
{
    return dispatch(event, Receivers::ALL_BUT, except.get());
}

bool Kernel::sendEventTo(const ObjectRef<EventCatcher>& target, Event event)
{
    return dispatch(event, Receivers::ONLY, target.get());
}

bool Kernel::handleEvent(Event event)
{
    return sendEvent(ObjectRef<EventCatcher>(this), event);
}

void Kernel::reserveClassLists(std::size_t count)
{
    for (std::vector<std::int32_t>& list : classLists) {
        // Twice as much when it is full, as a list grows by itself.
        if (list.capacity() < count)
            list.reserve(std::max(count, 2 * list.capacity()));
    }
}

void Kernel::rebuildClassLists()
{
    for (std::size_t deliveryClass = 0; deliveryClass < deliveryClassCount; ++deliveryClass) {
        std::vector<std::int32_t>& list = classLists[deliveryClass];
        list.clear();
        for (std::size_t position = 0; position < catchers.size(); ++position) {
            if (hasClass(catchers[position].mask, deliveryClass))
                list.push_back(static_cast<std::int32_t>(position));
        }
    }
}

bool Kernel::dispatch(const Event& event, Receivers receivers, const EventCatcher* named)
{
    const std::span<const DeliveryClass> classes = classesOf(event.kind);
    if (classes.empty())
        std::cerr << std::to_string(event.kind) << std::endl;

    for (const DeliveryClass deliveryClass : classes) {
        const auto index = static_cast<std::size_t>(deliveryClass);
        // Never printed today, as the kernel refuses nothing: what it comes to serve may fail.
        if (hasClass(internalMask, index) && !processInternal(event)) {
            std::cerr << "Error processing an internal event" << std::endl;
            return false;
        }
        // A handler may change the registrations, so the list is read anew at each step.
        for (std::size_t j = 0; j < classLists[index].size(); ++j) {
            const auto position = static_cast<std::size_t>(classLists[index][j]);
            EventCatcher* const catcher = catchers[position].catcher.get();
            const bool isNamed = catcher == named;
            const bool isReceiver = receivers == Receivers::ONLY ? isNamed : !isNamed;
            // A record may hold no catcher: then nobody is called, whoever was named.
            if (isReceiver && catcher != nullptr && !catcher->handleEvent(event))
                return false;
        }
    }
    return true;
}

bool Kernel::processInternal(Event event)
{
    if (event.kind == EV_QUIT)
        quitFlag = true;
    return true;
}
} // namespace tamor

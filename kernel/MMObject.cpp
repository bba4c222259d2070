#include "kernel/MMObject.h"

#include <exception>

namespace tamor
{
namespace
{
/// Takes `object` out of the list and deletes it. `next`, the place of a walk, is moved on first if
/// it stands at a further entry of the same object.
void collect(MMObject* object, std::list<MMObject*>::iterator& next)
{
    while (next != liveObjects.end() && *next == object)
        ++next;
    liveObjects.remove(object);
    delete object;
}
} // namespace

MMObject::MMObject()
{
    liveObjects.push_back(this);
}

MMObject::~MMObject()
{
    if (std::uncaught_exceptions() > 0)
        liveObjects.remove(this);
}

void collectUnreferenced()
{
    for (auto next = liveObjects.begin(); next != liveObjects.end();) {
        MMObject* object = *next;
        ++next;
        if (object->refCount < 1)
            collect(object, next);
    }
}

void collectAll()
{
    shuttingDown = true;
    for (auto next = liveObjects.begin(); next != liveObjects.end();) {
        MMObject* object = *next;
        ++next;
        collect(object, next);
    }
}
} // namespace tamor

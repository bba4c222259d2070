/// \file
/// Objects that live until a sweep collects them, and the reference that counts.
///
/// Dropping the last reference destroys nothing. So the kernel and its catchers may hold each
/// other, and nothing is freed while the kernel runs.
#pragma once

#include "TamorExport.h"

#include <cstdint>
#include <list>

namespace tamor
{
/// Base of the long-lived objects. Each must be made with `new`, and is deleted by a sweep alone:
/// one that lives on the stack, or is deleted by hand, leaves a dangling entry in `liveObjects`.
class TAMOR_EXPORT MMObject
{
public:
    /// Enters the object at the end of `liveObjects`.
    MMObject();
    /// Leaves `liveObjects` alone, but while an exception is thrown: an object whose constructor
    /// fails goes out of the list.
    virtual ~MMObject();
    MMObject(const MMObject&) = delete;
    MMObject& operator=(const MMObject&) = delete;

    /// How many references hold the object. Only `collectUnreferenced` looks at it.
    std::int32_t refCount = 0;
};

/// All living objects, oldest first. (Inline, so that it stands before any object of a program
/// that knows this header.)
inline TAMOR_EXPORT std::list<MMObject*> liveObjects;

/// Set by `collectAll`, and never cleared. While it is set, references leave the counts alone, as
/// the objects may be gone.
inline TAMOR_EXPORT bool shuttingDown = false;

/// Deletes the objects whose count is below 1, oldest first, in one pass: an object that loses its
/// last reference in the sweep goes with it if it stands further on, and stays if further back.
TAMOR_EXPORT void collectUnreferenced();

/// Deletes all objects, oldest first, whatever their counts.
TAMOR_EXPORT void collectAll();

/// A pointer that counts itself in its object. An empty one holds nothing.
template <typename T>
class ObjectRef
{
public:
    /// Makes an empty one.
    ObjectRef() = default;
    ObjectRef(T* newObject) : object(newObject) { retain(); } ///< null makes an empty one
    /// Holds what the other holds, which counts one more.
    ObjectRef(const ObjectRef& other) : object(other.object) { retain(); }
    ~ObjectRef() { release(); }

    /// Releases what it held first, which is safe since a release never destroys.
    ObjectRef& operator=(const ObjectRef& other)
    {
        hold(other.object);
        return *this;
    }
    /// As above; null makes it empty.
    ObjectRef& operator=(T* newObject)
    {
        hold(newObject);
        return *this;
    }

    T* get() const { return object; }                  ///< null if it is empty
    T* operator->() const { return object; }           ///< not to be asked of an empty one
    T& operator*() const { return *object; }           ///< not to be asked of an empty one
    bool isEmpty() const { return object == nullptr; } ///< whether it holds nothing

    /// Whether both hold the same object.
    bool operator==(const ObjectRef& other) const { return object == other.object; }

private:
    void hold(T* newObject)
    {
        release();
        object = newObject;
        retain();
    }
    void retain() const
    {
        if (object != nullptr && !shuttingDown)
            ++object->refCount;
    }
    void release() const
    {
        if (object != nullptr && !shuttingDown)
            --object->refCount;
    }

    T* object = nullptr;
};
} // namespace tamor

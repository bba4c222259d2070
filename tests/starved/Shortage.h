/// \file
/// Memory that runs out at a chosen moment: operator new of this program refuses when it is told to.
#pragma once

#include <initializer_list>
#include <new>

namespace tamor::test
{
/// A lack of memory, which begins behind so many allocations.
class Shortage
{
public:
    /// \param granted  how many allocations are answered before the first is refused
    /// \param isLasting  whether every later one is refused, too
    Shortage(int granted, bool isLasting) : newGranted(granted), newIsLasting(isLasting) {}

    /// Calls `action`, which may run out of memory.
    /// \return whether it came to its end, and threw no `std::bad_alloc`
    template <class Action>
    bool during(const Action& action)
    {
        begin();
        try {
            action();
        } catch (const std::bad_alloc&) {
            end();
            return false;
        }
        end();
        return true;
    }

    /// Whether an allocation has been refused.
    bool hasCome() const { return isMet; }

private:
    void begin() const;
    void end();

    int newGranted;
    bool newIsLasting;
    bool isMet = false;
};

/// Calls `attempt` with a shortage at the first allocation, at the second and so on, until one is
/// through without coming to it: each a moment's lack, and then all again with a lasting one.
/// \return how many allocations were refused, one after the other
template <class Attempt>
int starve(const Attempt& attempt)
{
    int refused = 0;
    for (const bool isLasting : {false, true}) {
        for (int granted = 0;; ++granted) {
            Shortage shortage(granted, isLasting);
            attempt(shortage);
            if (!shortage.hasCome())
                break;
            ++refused;
        }
    }
    return refused;
}

/// The files that the process has open.
int openDescriptors();
} // namespace tamor::test

/// \file
/// What a send costs beyond the copies of the record that it must make: one for the send and one
/// for each receiver.
///
/// Run `tamor-kernel-benchmarks` and divide `BM_send_updateToThreeCatchers` by
/// `BM_copy_fourRecords`. The receivers do nothing but look at their copy.
#include "kernel/Kernel.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace tamor
{
namespace
{
/// Receives, and does nothing with it.
class Receiver : public EventCatcher
{
public:
    bool handleEvent(Event event) override
    {
        received += event.delta;
        return true;
    }

    std::int64_t received = 0;
};

Event updateEvent()
{
    Event event;
    event.kind = EV_UPDATE;
    event.delta = 16;
    return event;
}

void BM_send_updateToThreeCatchers(benchmark::State& state)
{
    auto* const kernel = new Kernel;
    std::array<Receiver*, 3> receivers{};
    for (Receiver*& receiver : receivers) {
        receiver = new Receiver;
        kernel->addCatcher(ObjectRef<EventCatcher>(receiver), 1 << CLASS_UPDATE, 0);
    }
    const ObjectRef<EventCatcher> nobody;
    const Event event = updateEvent();
    if (!kernel->sendEvent(nobody, event) || receivers[2]->received != 16)
        std::abort();

    for (auto _ : state) {
        bool delivered = kernel->sendEvent(nobody, event);
        benchmark::DoNotOptimize(delivered);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_send_updateToThreeCatchers);

[[gnu::noinline]] bool take(Event event)
{
    benchmark::DoNotOptimize(event);
    return event.delta == 16;
}

void BM_copy_fourRecords(benchmark::State& state)
{
    const Event event = updateEvent();
    if (!take(event))
        std::abort();

    for (auto _ : state) {
        for (int copy = 0; copy < 4; ++copy) {
            bool taken = take(event);
            benchmark::DoNotOptimize(taken);
        }
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_copy_fourRecords);
} // namespace
} // namespace tamor

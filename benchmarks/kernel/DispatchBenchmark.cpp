/// \file
/// What a send costs beyond the copies of the record that it must make: one for the send and one
/// for each receiver.
///
/// Run `tamor-kernel-benchmarks` and divide `BM_send_updateToThreeCatchers` by
/// `BM_copy_fourRecords`, or `BM_send_sigcToThreeSlots`, a signal that hands out three copies, by it.
/// The receivers do nothing but look at their copy.
#include "benchmarks/support/UpdateReceiver.h"

#include <benchmark/benchmark.h>
#ifdef TAMOR_HAS_SIGC
#include <sigc++/sigc++.h>
#endif

#include <array>
#include <cstdlib>

namespace tamor::bench
{
namespace
{
void BM_send_updateToThreeCatchers(benchmark::State& state)
{
    auto* const kernel = new Kernel;
    const UpdateReceiver* const last = addThreeReceivers(*kernel);
    const ObjectRef<EventCatcher> nobody;
    const Event event = updateEvent();
    if (!kernel->sendEvent(nobody, event) || last->received != 16)
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

#ifdef TAMOR_HAS_SIGC
/// The same three receivers behind a signal, each given a record of its own.
void BM_send_sigcToThreeSlots(benchmark::State& state)
{
    std::array<UpdateReceiver, 3> receivers;
    sigc::signal<bool, Event> sent;
    for (UpdateReceiver& receiver : receivers)
        sent.connect(sigc::mem_fun(receiver, &UpdateReceiver::handleEvent));
    const Event event = updateEvent();
    if (!sent(event) || receivers[2].received != 16)
        std::abort();

    for (auto _ : state) {
        bool delivered = sent(event);
        benchmark::DoNotOptimize(delivered);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_send_sigcToThreeSlots);
#endif
} // namespace
} // namespace tamor::bench

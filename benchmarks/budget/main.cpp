// tamor-budget [NAME]: does that work once, in countedWork(); without a name it lists all.
//
// What draws needs a display: it opens a window whose driver draws nothing.

#include "benchmarks/budget/Workload.h"

#include <cstdio>
#include <cstring>

/// What callgrind looks for.
extern "C" [[gnu::noinline]] bool countedWork(const std::function<bool()>& work)
{
    return work();
}

int main(int count, char** words)
{
    using namespace tamor::bench;
    for (const auto& group : {mediaWorkloads(), guiWorkloads(), scriptWorkloads()}) {
        for (const Workload& workload : group) {
            if (count < 2) {
                std::puts(workload.name);
            } else if (std::strcmp(words[1], workload.name) == 0) {
                if (countedWork(workload.prepare()))
                    return 0;
                std::fprintf(stderr, "tamor-budget: %s does not do its work\n", workload.name);
                return 1;
            }
        }
    }
    return count < 2 ? 0 : 1;
}

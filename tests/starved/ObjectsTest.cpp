// The kernel's objects, when memory runs out while they are made and registered: the sweeps find
// living objects only, and a catcher is registered whole or not at all.
#include "kernel/Kernel.h"
#include "platform/GLRender.h"
#include "platform/InputRecorder.h"
#include "platform/SDLInput.h"
#include "tests/kernel/TestCatcher.h"
#include "tests/starved/Shortage.h"
#include "tests/support/CapturedErrors.h"
#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace tamor::test
{
namespace
{
constexpr std::int32_t allClasses = (1 << deliveryClassCount) - 1;

/// The registrations that the class lists know.
std::size_t listed(const Kernel& kernel)
{
    std::size_t count = 0;
    for (const auto& list : kernel.classLists)
        count += list.size();
    return count;
}

TEST(StarvedKernel, RegistersACatcherWholeOrNotAtAll)
{
    const int refused = starve([](Shortage& shortage) {
        Deliveries log;
        {
            const ObjectRef<Kernel> kernel = new Kernel;
            const ObjectRef<EventCatcher> first = new TestCatcher("first", log);
            const ObjectRef<EventCatcher> second = new TestCatcher("second", log);
            kernel->addCatcher(first, allClasses, 0);

            const bool isThrough =
                shortage.during([&] { kernel->addCatcher(second, allClasses, 0); });

            const std::size_t catchers = isThrough ? 2 : 1;
            EXPECT_EQ(kernel->catchers.size(), catchers);
            EXPECT_EQ(listed(*kernel), catchers * deliveryClassCount);
            kernel->setCatcher(first, 0, 0);
            EXPECT_EQ(listed(*kernel), (catchers - 1) * deliveryClassCount);
            kernel->catchers.clear();
        }
        collectUnreferenced();
        collectUnreferenced();
        EXPECT_EQ(liveObjects.size(), 0U);
    });
    EXPECT_GE(refused, 10);
}

TEST(StarvedKernel, SubscribesWholeOrNotAtAll)
{
    const int refused = starve([](Shortage& shortage) {
        Deliveries log;
        {
            const ObjectRef<Kernel> kernel = new Kernel;
            const ObjectRef<EventCatcher> catcher = new TestCatcher("only", log);
            // By hand, as a host may: then no list has room for it.
            kernel->catchers.push_back({catcher, 1 << CLASS_UPDATE, 0});

            const bool isThrough =
                shortage.during([&] { kernel->setCatcher(catcher, allClasses, 7); });

            EXPECT_EQ(kernel->catchers[0].mask, isThrough ? allClasses : 1 << CLASS_UPDATE);
            EXPECT_EQ(kernel->catchers[0].priority, isThrough ? 7 : 0);
            EXPECT_EQ(listed(*kernel), isThrough ? deliveryClassCount : 0);
            kernel->catchers.clear();
        }
        collectUnreferenced();
    });
    EXPECT_EQ(refused, 2 * deliveryClassCount);
}

TEST(StarvedObjects, ThatCouldNotBeMadeAreSweptByNobody)
{
    const TemporaryDirectory directory;
    const CapturedErrors errors;
    const std::string file = "run.input";
    const int descriptors = openDescriptors();
    const int refused = starve([&](Shortage& shortage) {
        {
            ObjectRef<Kernel> kernel;
            shortage.during([&] {
                kernel = new Kernel;
                new SDLInput(kernel, false);
                new GLRender(kernel);
                new InputRecorder(kernel, file);
            });
            if (!kernel.isEmpty())
                kernel->catchers.clear();
        }

        collectUnreferenced();
        collectUnreferenced();

        EXPECT_EQ(liveObjects.size(), 0U);
    });
    EXPECT_GE(refused, 20);
    EXPECT_EQ(openDescriptors(), descriptors);
}
} // namespace
} // namespace tamor::test

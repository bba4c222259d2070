#include "maths/Memory.h"

#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <algorithm>
#include <memory>

namespace tamor
{
namespace
{
TEST(MemoryHolds, SmallSizesAndNotTheLargest)
{
    EXPECT_TRUE(memoryHolds(0));
    EXPECT_TRUE(memoryHolds(1 << 20));
    EXPECT_FALSE(memoryHolds(std::uint64_t{1} << 62));
    EXPECT_FALSE(memoryHolds(UINT64_MAX));
}

TEST(MemoryHolds, WhatFitsIntoTheAddressesThatAHostAllows)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitiser takes more addresses than the limit leaves";
#endif
    test::ChildProcess child([] {
        const rlimit limit = {512UL << 20, 512UL << 20};
        setrlimit(RLIMIT_AS, &limit);
        const bool holdsLess = memoryHolds(65UL << 20);
        const bool holdsAll = memoryHolds(512UL << 20);
        // The program itself has taken more than that.
        const rlimit less = {1UL << 20, 1UL << 20};
        setrlimit(RLIMIT_AS, &less);
        return holdsLess && !holdsAll && !memoryHolds(65UL << 20) ? 0 : 1;
    });

    EXPECT_EQ(child.wait().status, 0);
}

TEST(SaturatingProduct, StopsAtTheLargestNumber)
{
    EXPECT_EQ(saturatingProduct(0, UINT64_MAX), 0U);
    EXPECT_EQ(saturatingProduct(UINT64_MAX, 0), 0U);
    EXPECT_EQ(saturatingProduct(3, 5), 15U);
    EXPECT_EQ(saturatingProduct(1ULL << 32, 1ULL << 31), 1ULL << 63);
    EXPECT_EQ(saturatingProduct(1ULL << 32, 1ULL << 32), UINT64_MAX);
    EXPECT_EQ(saturatingProduct(UINT64_MAX, 2), UINT64_MAX);
}

TEST(ClearPages, SetsAllBytesTo0AndNoOthers)
{
    constexpr std::size_t size = 40000;
    const auto bytes = std::make_unique<char[]>(size);
    for (const std::size_t start : {0U, 1U, 4095U, 4096U, 5000U}) {
        for (const std::size_t count : {0U, 1U, 100U, 4096U, 8192U, 20001U, 30000U}) {
            std::fill_n(bytes.get(), size, 'x');

            clearPages(bytes.get() + start, count);

            EXPECT_EQ(std::count(bytes.get(), bytes.get() + size, 'x'),
                      static_cast<std::ptrdiff_t>(size - count));
            EXPECT_EQ(std::count(bytes.get() + start, bytes.get() + start + count, 0),
                      static_cast<std::ptrdiff_t>(count));
        }
    }
}
} // namespace
} // namespace tamor

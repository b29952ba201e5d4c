#include "support/HeapGrowth.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#include "support/Sanitizers.h"

namespace kesto {
namespace {

// The sanitizers' allocators have no such setting.
constexpr bool kOwnAllocator = kAddressSanitizer || kThreadSanitizer;

#if defined(__GLIBC__) && GTEST_HAS_DEATH_TEST
// The size of the mapping of this process that holds address, as /proc/self/maps lists it.
size_t MappingSize(const void* address) {
    const auto at = reinterpret_cast<std::uintptr_t>(address);
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        std::istringstream range(line);
        std::uintptr_t from = 0, to = 0;
        char dash = 0;
        range >> std::hex >> from >> dash >> to;
        if (from <= at && at < to)
            return to - from;
    }
    return 0;
}

// Ends the process with 0 when a new thread's first allocation lies in a heap of at least one
// step, with 1 when it lies in a smaller one.
[[noreturn]] void ExitByNewThreadsHeap() {
    size_t size = 0;
    std::thread([&size] {
        void* piece = std::malloc(64);
        size = MappingSize(piece);
        std::free(piece);
    }).join();
    std::exit(size >= kHeapGrowthStep ? 0 : 1);
}

TEST(GrowHeapsInLargeSteps, ANewThreadsHeapIsGrownAStepAtOnce) {
    if (kOwnAllocator)
        GTEST_SKIP() << "the sanitizer's allocator has no such setting";
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            GrowHeapsInLargeSteps();
            ExitByNewThreadsHeap();
        },
        testing::ExitedWithCode(0), "");
}

TEST(GrowHeapsInLargeSteps, WithoutItANewThreadsHeapStartsSmaller) {
    if (kOwnAllocator)
        GTEST_SKIP() << "the sanitizer's allocator has no such setting";
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(ExitByNewThreadsHeap(), testing::ExitedWithCode(1), "");
}
#endif

TEST(GrowHeapsInLargeSteps, CanBeCalledAgain) {
    GrowHeapsInLargeSteps();
    GrowHeapsInLargeSteps();
    void* piece = std::malloc(kHeapGrowthStep);
    EXPECT_NE(piece, nullptr);
    std::free(piece);
}

}  // namespace
}  // namespace kesto

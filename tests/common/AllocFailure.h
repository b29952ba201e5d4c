// Makes allocations fail on purpose, to reach the readers' out-of-memory paths.
#pragma once

#include <cstddef>

namespace kesto::test {

// While alive, every operator new of at least minSize bytes throws std::bad_alloc. Small
// allocations (short strings) still succeed, so a record allocation is the one that fails.
class ScopedAllocFailure {
  public:
    explicit ScopedAllocFailure(std::size_t minSize);
    ~ScopedAllocFailure();
    ScopedAllocFailure(const ScopedAllocFailure&) = delete;
    ScopedAllocFailure& operator=(const ScopedAllocFailure&) = delete;
};

}  // namespace kesto::test

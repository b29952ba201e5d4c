// Replaces the global operator new of the test program with one that can be told to fail.
#include "common/AllocFailure.h"

#include <cstdlib>
#include <new>

namespace {
std::size_t failFrom = 0;  // 0: never fail
}  // namespace

namespace kesto::test {

ScopedAllocFailure::ScopedAllocFailure(std::size_t minSize) {
    failFrom = minSize;
}
ScopedAllocFailure::~ScopedAllocFailure() {
    failFrom = 0;
}

}  // namespace kesto::test

void* operator new(std::size_t size) {
    if (failFrom != 0 && size >= failFrom)
        throw std::bad_alloc();
    if (void* p = std::malloc(size == 0 ? 1 : size))
        return p;
    throw std::bad_alloc();
}

void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}

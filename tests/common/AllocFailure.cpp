// Replaces the global operator new of the test program with one that can be told to fail.
// Every form of new and delete is replaced, so that no memory taken by one allocator (a
// sanitizer's, say) is given back to the other.
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

void* operator new[](std::size_t size) {
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
    return operator new(size, tag);
}

void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}
void operator delete[](void* p) noexcept {
    std::free(p);
}
void operator delete[](void* p, std::size_t) noexcept {
    std::free(p);
}
void operator delete(void* p, const std::nothrow_t&) noexcept {
    std::free(p);
}
void operator delete[](void* p, const std::nothrow_t&) noexcept {
    std::free(p);
}

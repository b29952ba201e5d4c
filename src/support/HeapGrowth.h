// How the C library's allocator grows the heaps of the process.
#pragma once

namespace kesto {

// How much the allocator adds to a heap beyond what an allocation needs when it grows one.
inline constexpr unsigned long kHeapGrowthStep = 1024 * 1024;

// Asks the allocator to grow its heaps kHeapGrowthStep at a time. A job's records, its outline
// files and its report are made of many small pieces by several threads at once; grown a page
// at a time, each thread's heap took a system call per page, and each of those holds the
// process's memory map against the other threads' page faults. Called first in main, before
// any thread starts; nothing where the C library has no such setting.
void GrowHeapsInLargeSteps();

}  // namespace kesto

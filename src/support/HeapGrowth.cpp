#include "support/HeapGrowth.h"

#include <cstdlib>  // defines __GLIBC__ where the C library is glibc

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace kesto {

void GrowHeapsInLargeSteps() {
#if defined(__GLIBC__)
    mallopt(M_TOP_PAD, static_cast<int>(kHeapGrowthStep));
#endif
}

}  // namespace kesto

// The libFuzzer entry of one harness, chosen when it is built (KESTO_FUZZ_HARNESS).
#include "Harnesses.h"

#ifndef KESTO_FUZZ_HARNESS
#error "KESTO_FUZZ_HARNESS names the harness function this fuzzer runs"
#endif

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // One site for the whole process: creating a folder per run would cost more than the run.
    static kesto::fuzz::FuzzSite site(kesto::fuzz::FuzzSite::ProcessFolder());
    KESTO_FUZZ_HARNESS(site, data, size);
    return 0;
}

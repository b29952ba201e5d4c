#include "app/CKestoApp.h"
#include "app/InputReaders.h"

namespace kesto {

Outcome CKestoApp::ReadInput(const Services& services, OutlineFiles outlines) {
    ParseCommandLine();
    // Every reader stops at its first failure, so only the first code is reported.
    Outcome read = ReadPalletFile(*this);
    if (read.Ok())
        read = ReadJobFile(*this, services, outlines);
    if (!read.Ok())
        Run.ExitParam = read.Code();
    return read;
}

}  // namespace kesto

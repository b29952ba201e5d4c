#include "app/CKestoApp.h"
#include "app/InputReaders.h"

namespace kesto {

int CKestoApp::ReadInput(const Services& services) {
    ParseCommandLine();
    // Every reader stops at its first failure, so only the first code is reported.
    if (ReadPalletFile(*this) == 0 || ReadJobFile(*this, services) == 0) {
        Run.ExitParam = Run.ErrorCode;
        return 0;
    }
    return 1;
}

}  // namespace kesto

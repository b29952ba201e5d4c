#include "support/Version.h"

namespace kesto {

// KESTO_VERSION comes from the build (the CMake project's version).
const char* KestoVersion() {
    return KESTO_VERSION;
}

std::string VersionLine(const std::string& program) {
    return program + " (Kesto) " + KestoVersion();
}

}  // namespace kesto

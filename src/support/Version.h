// The version of Kesto: the project's version, set once in CMake, shown by every program's
// --version and by the window's version box.
#pragma once

#include <string>

namespace kesto {

// "1.0.0"
const char* KestoVersion();

// The line --version prints: "kesto-batch (Kesto) 1.0.0".
std::string VersionLine(const std::string& program);

}  // namespace kesto

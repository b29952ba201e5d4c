// Putting folders and names together with exactly one separator between them.
#pragma once

#include <string>

namespace kesto {

#ifdef _WIN32
inline constexpr char kPathSeparator = '\\';
#else
inline constexpr char kPathSeparator = '/';
#endif

// Both '\\' and '/' become the platform's separator.
std::string NormalizeSeparators(std::string path);
// folder + exactly one separator + name (name may start with a separator). Empty folder: name.
std::string JoinPath(const std::string& folder, const std::string& name);
// folder with a trailing separator added when it has none.
std::string WithTrailingSeparator(const std::string& folder);

}  // namespace kesto

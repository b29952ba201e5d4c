// printf-style formatting of a line of text into a string of any length.
#pragma once

#include <string>

namespace kesto {

#if defined(__GNUC__)
__attribute__((format(printf, 1, 2)))
#endif
std::string
FormatText(const char* format, ...);

}  // namespace kesto

// Number conversions of the start-up readers that follow the C library's scanf rules, where
// a text that holds no number leaves the target as it was.
#pragma once

#include <cstdint>
#include <string>

namespace kesto {

// As sscanf(text, "%d", &value): true and value set when text begins (after white space)
// with an integer; values beyond the int32 range saturate.
bool ScanInt(const std::string& text, int32_t& value);

// As sscanf(text, "%lf", &value).
bool ScanDouble(const std::string& text, double& value);

// atol of the text from its second character ("P12" gives 12); 0 for a text shorter than two.
int32_t AtoLFromSecond(const std::string& text);

}  // namespace kesto

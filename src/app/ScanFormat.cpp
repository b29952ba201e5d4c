#include "app/ScanFormat.h"

#include <cstdlib>
#include <limits>

#include "support/TextFile.h"

namespace kesto {

bool ScanInt(const std::string& text, int32_t& value) {
    const char* begin = text.c_str();
    char* end = nullptr;
    const long long parsed = std::strtoll(begin, &end, 10);
    if (end == begin)
        return false;
    constexpr long long kMin = std::numeric_limits<int32_t>::min();
    constexpr long long kMax = std::numeric_limits<int32_t>::max();
    value = static_cast<int32_t>(parsed < kMin ? kMin : (parsed > kMax ? kMax : parsed));
    return true;
}

bool ScanDouble(const std::string& text, double& value) {
    const char* begin = text.c_str();
    char* end = nullptr;
    const double parsed = std::strtod(begin, &end);
    if (end == begin)
        return false;
    value = parsed;
    return true;
}

int32_t AtoLFromSecond(const std::string& text) {
    return text.size() < 2 ? 0 : AtoL(text.substr(1));
}

}  // namespace kesto

#include "support/TextFormat.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

namespace kesto {

std::string FormatText(const char* format, ...) {
    va_list args;
    va_start(args, format);
    va_list copy;
    va_copy(copy, args);
    const int length = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    std::string text;
    if (length > 0) {
        std::vector<char> buffer(static_cast<size_t>(length) + 1);
        std::vsnprintf(buffer.data(), buffer.size(), format, args);
        text.assign(buffer.data(), static_cast<size_t>(length));
    }
    va_end(args);
    return text;
}

void TextBuilder::Padded(const char* begin, const char* end, int width, bool left) {
    const size_t length = static_cast<size_t>(end - begin);
    const size_t fill = width > 0 && static_cast<size_t>(width) > length ? width - length : 0;
    if (!left)
        text_.append(fill, ' ');
    text_.append(begin, length);
    if (left)
        text_.append(fill, ' ');
}

TextBuilder& TextBuilder::Str(const std::string& s) {
    text_.append(s.c_str());
    return *this;
}

TextBuilder& TextBuilder::Str(const std::string& s, int width, int precision, bool left) {
    size_t length = std::strlen(s.c_str());
    if (precision >= 0)
        length = std::min(length, static_cast<size_t>(precision));
    Padded(s.data(), s.data() + length, width, left);
    return *this;
}

TextBuilder& TextBuilder::Int(int64_t v, int width, int digits, bool left) {
    if (digits < 0 || digits > 32) {
        text_ +=
            FormatText(left ? "%-*.*lld" : "%*.*lld", width, digits, static_cast<long long>(v));
        return *this;
    }
    char buffer[64];
    char* p = buffer;
    // The magnitude as unsigned, so that the lowest value has one too.
    const uint64_t magnitude = v < 0 ? 0 - static_cast<uint64_t>(v) : static_cast<uint64_t>(v);
    if (v < 0)
        *p++ = '-';
    char number[24];
    char* end = std::to_chars(number, number + sizeof number, magnitude).ptr;
    // A precision of 0 prints nothing for 0.
    if (digits == 0 && magnitude == 0)
        end = number;
    const ptrdiff_t zeros = std::max<ptrdiff_t>(digits - (end - number), 0);
    p = std::fill_n(p, zeros, '0');
    p = std::copy(number, end, p);
    Padded(buffer, p, width, left);
    return *this;
}

TextBuilder& TextBuilder::Fixed(double v, int width, int precision) {
    // The longest fixed text of a double: 309 digits, a sign, a point and the decimals.
    char buffer[384];
    const auto [end, ec] =
        std::to_chars(buffer, buffer + sizeof buffer, v, std::chars_format::fixed, precision);
    if (ec != std::errc()) {
        text_ += FormatText("%*.*f", width, precision, v);
        return *this;
    }
    Padded(buffer, end, width, false);
    return *this;
}

}  // namespace kesto

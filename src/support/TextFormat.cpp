#include "support/TextFormat.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <utility>
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

namespace {

constexpr int kExactPrecisionMax = 9;
// The longest fixed text of a double at two decimals: 309 digits, a sign, a point, the decimals.
constexpr size_t kFixedTextMax = 384;
constexpr char kDigitPairs[] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";
constexpr uint64_t kPowersOfTen[kExactPrecisionMax + 1] = {
    1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000};

// "%.Nf" of a finite v below 2^53 in magnitude, N up to 9, without the general algorithm:
// |v| is m / 2^shift exactly, so |v| * 10^N = m * 10^N / 2^shift, and the bits shifted out
// round it to the nearest, ties to even, as printf rounds the exact value. nullptr when v is
// outside that range (the caller takes the general way).
char* FixedExact(char* out, double v, int precision) {
#if defined(__SIZEOF_INT128__)
    if (precision < 0 || precision > kExactPrecisionMax || !std::isfinite(v))
        return nullptr;
    // v = mantissa * 2^-shift exactly, from the bits of the double.
    uint64_t bits = 0;
    std::memcpy(&bits, &v, sizeof bits);
    const auto biased = static_cast<int>((bits >> 52) & 0x7FF);
    uint64_t mantissa = bits & ((uint64_t{1} << 52) - 1);
    if (biased != 0)
        mantissa |= uint64_t{1} << 52;
    const int shift = 1075 - std::max(biased, 1);
    if (shift < 0)
        return nullptr;
    __extension__ typedef unsigned __int128 Wide;  // a GCC and Clang type, hence the guard
    const Wide scaled = static_cast<Wide>(mantissa) * kPowersOfTen[precision];
    Wide rounded = 0;
    if (shift == 0) {
        rounded = scaled;
    } else if (shift < 128) {
        rounded = scaled >> shift;
        const Wide rest = scaled - (rounded << shift);
        const Wide half = static_cast<Wide>(1) << (shift - 1);
        if (rest > half || (rest == half && (rounded & 1) != 0))
            ++rounded;
    }
    if ((rounded >> 64) != 0)
        return nullptr;
    const auto digits = static_cast<uint64_t>(rounded);
    // A division by a constant is a multiplication: the precisions of the files get their own.
    uint64_t whole = 0;
    uint64_t decimals = 0;
    switch (precision) {
        case 4:
            whole = digits / 10000;
            decimals = digits % 10000;
            break;
        case 1:
            whole = digits / 10;
            decimals = digits % 10;
            break;
        default:
            whole = digits / kPowersOfTen[precision];
            decimals = digits % kPowersOfTen[precision];
            break;
    }
    if (std::signbit(v))
        *out++ = '-';
    out = std::to_chars(out, out + 24, whole).ptr;
    if (precision > 0) {
        *out++ = '.';
        if (precision == 4) {
            // The files' usual four decimals as two pairs of digits.
            std::memcpy(out, kDigitPairs + 2 * (decimals / 100), 2);
            std::memcpy(out + 2, kDigitPairs + 2 * (decimals % 100), 2);
        } else {
            for (int i = precision - 1; i >= 0; --i, decimals /= 10)
                out[i] = static_cast<char>('0' + decimals % 10);
        }
        out += precision;
    }
    return out;
#else
    (void)out;
    (void)v;
    (void)precision;
    return nullptr;
#endif
}

// "%.2f" of v, then without trailing zeros and point, "-0" as "0"; returns the end.
char* ShortLengthText(char* out, double v) {
    char* end = FixedExact(out, v, 2);
    if (end == nullptr) {
        const auto [ptr, ec] =
            std::to_chars(out, out + kFixedTextMax, v, std::chars_format::fixed, 2);
        end = ptr;
        if (ec != std::errc())
            end = out + std::snprintf(out, kFixedTextMax, "%.2f", v);
    }
    if (std::find(out, end, '.') != end) {
        while (end[-1] == '0')
            --end;
        if (end[-1] == '.')
            --end;
    }
    if (end - out == 2 && out[0] == '-' && out[1] == '0') {
        out[0] = '0';
        end = out + 1;
    }
    return end;
}

// text with %1 .. %9 replaced by figures 1 to 9 (a missing figure by nothing), appended to out.
template <class Figures>
void AppendFigures(std::string& out, std::string_view text, const Figures& figures) {
    for (size_t at = 0; at < text.size();) {
        const size_t mark = text.find('%', at);
        if (mark == std::string_view::npos || mark + 1 >= text.size()) {
            out.append(text.substr(at));
            return;
        }
        const char digit = text[mark + 1];
        if (digit < '1' || digit > '9') {
            out.append(text.substr(at, mark + 1 - at));
            at = mark + 1;
            continue;
        }
        out.append(text.substr(at, mark - at));
        const auto k = static_cast<size_t>(digit - '1');
        if (k < figures.size())
            out.append(std::string_view(*(figures.begin() + static_cast<ptrdiff_t>(k))));
        at = mark + 2;
    }
}

}  // namespace

void TextBuilder::Padded(const char* begin, const char* end, int width, bool left) {
    const size_t length = static_cast<size_t>(end - begin);
    const size_t fill = width > 0 && static_cast<size_t>(width) > length ? width - length : 0;
    // Appended as they are: growing the text first would clear the bytes only to overwrite them.
    if (!left && fill > 0)
        text_.append(fill, ' ');
    text_.append(begin, length);
    if (left && fill > 0)
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
    // "%d", the most common: the digits go straight into the text.
    if (width == 0 && digits == 1) {
        char number[24];
        // By length: appending a range of pointers takes the string's general replace.
        const char* end = std::to_chars(number, number + sizeof number, v).ptr;
        text_.append(number, static_cast<size_t>(end - number));
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
    // The longest fixed text of a double: 309 digits, a sign, a point and the decimals; room
    // before the number for the blanks of the usual widths, so that one append takes both.
    constexpr int kBlankRoom = 32;
    char buffer[kBlankRoom + 384];
    char* const number = buffer + kBlankRoom;
    if (const char* exact = FixedExact(number, v, precision)) {
        const auto length = static_cast<int>(exact - number);
        if (width - length > kBlankRoom) {
            Padded(number, exact, width, false);
            return *this;
        }
        char* start = number;
        for (int fill = width - length; fill > 0; --fill)
            *--start = ' ';
        text_.append(start, static_cast<size_t>(exact - start));
        return *this;
    }
    const auto [end, ec] =
        std::to_chars(number, buffer + sizeof buffer, v, std::chars_format::fixed, precision);
    if (ec != std::errc()) {
        text_ += FormatText("%*.*f", width, precision, v);
        return *this;
    }
    Padded(number, end, width, false);
    return *this;
}

TextBuilder& TextBuilder::Length(double v) {
    char buffer[kFixedTextMax];
    text_.append(buffer, static_cast<size_t>(ShortLengthText(buffer, v) - buffer));
    return *this;
}

TextBuilder& TextBuilder::Figures(std::string_view text,
                                  std::initializer_list<std::string_view> figures) {
    AppendFigures(text_, text, figures);
    return *this;
}

void TextBuilder::CutAtNul(size_t from) {
    const size_t nul = text_.find('\0', from);
    if (nul != std::string::npos)
        text_.resize(nul);
}

std::string ShortLength(double v) {
    char buffer[kFixedTextMax];
    return std::string(buffer, ShortLengthText(buffer, v));
}

FigureText::FigureText(std::string text) : text_(std::move(text)) {
    size_t run = 0;
    for (size_t i = 0; i + 1 < text_.size(); ++i) {
        if (text_[i] != '%' || text_[i + 1] < '1' || text_[i + 1] > '9')
            continue;
        if (i > run)
            pieces_.push_back({run, i - run, -1});
        pieces_.push_back({0, 0, text_[i + 1] - '1'});
        run = i + 2;
        ++i;
    }
    if (text_.size() > run)
        pieces_.push_back({run, text_.size() - run, -1});
}

std::string FillFigures(const std::string& text, const std::vector<std::string>& figures) {
    std::string out;
    AppendFigures(out, text, figures);
    return out;
}

}  // namespace kesto

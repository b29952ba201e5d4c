#include "support/TextColumns.h"

#include <cstdint>
#include <cstring>

namespace kesto {

namespace {

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

// The length of the UTF-8 sequence at text[at], or 0 when none starts there.
size_t Utf8SequenceLength(const std::string& text, size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    size_t length = 0;
    uint32_t code = 0;
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        code = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        code = lead & 0x0F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        code = lead & 0x07;
    } else {
        return 0;
    }
    if (at + length > text.size())
        return 0;
    for (size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[at + i]);
        if (!IsContinuation(byte))
            return 0;
        code = (code << 6) | (byte & 0x3F);
    }
    // Overlong forms, surrogates and code points beyond Unicode are not UTF-8.
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    if (overlong || (code >= 0xD800 && code <= 0xDFFF) || code > 0x10FFFF)
        return 0;
    return length;
}

// The greatest character boundary at or below width.
size_t BoundaryAtOrBelow(const std::string& text, size_t width) {
    if (width >= text.size())
        return text.size();
    if (IsValidUtf8(text)) {
        size_t end = width;
        while (end > 0 && IsContinuation(static_cast<unsigned char>(text[end])))
            --end;
        return end;
    }
    size_t at = 0;
    while (at < width) {
        const size_t step = IsShiftJisLead(static_cast<unsigned char>(text[at])) ? 2 : 1;
        if (at + step > width)
            break;
        at += step;
    }
    return at;
}

}  // namespace

bool IsShiftJisLead(unsigned char byte) {
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

bool IsValidUtf8(const std::string& text) {
    constexpr uint64_t kHighBits = 0x8080808080808080ULL;
    for (size_t at = 0; at < text.size();) {
        // ASCII, most of any text here, is valid as it stands: eight bytes at a time.
        uint64_t eight = 0;
        if (text.size() - at >= sizeof eight) {
            std::memcpy(&eight, text.data() + at, sizeof eight);
            if ((eight & kHighBits) == 0) {
                at += sizeof eight;
                continue;
            }
        }
        if (static_cast<unsigned char>(text[at]) < 0x80) {
            ++at;
            continue;
        }
        const size_t length = Utf8SequenceLength(text, at);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

std::string CutToBytes(const std::string& text, size_t width) {
    // A C string's text, as printf takes it.
    const std::string shown = text.substr(0, text.find('\0'));
    return shown.substr(0, BoundaryAtOrBelow(shown, width));
}

std::string FitColumn(const std::string& text, size_t width) {
    std::string column = CutToBytes(text, width);
    column.resize(width, ' ');
    return column;
}

}  // namespace kesto

#include "cli/TerminalText.h"

#include <array>
#include <cerrno>

#include "support/TextColumns.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <iconv.h>
#endif

namespace kesto {

#if defined(_WIN32)

namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";
constexpr UINT kShiftJisCodePage = 932;

// One character of code page 932 in UTF-8, or nothing when the bytes are none.
std::string CharacterToUtf8(const char* bytes, int length) {
    std::array<wchar_t, 2> wide{};
    const int units = MultiByteToWideChar(kShiftJisCodePage, MB_ERR_INVALID_CHARS, bytes, length,
                                          wide.data(), static_cast<int>(wide.size()));
    if (units <= 0)
        return {};
    std::array<char, 8> utf8{};
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, utf8.data(),
                                         static_cast<int>(utf8.size()), nullptr, nullptr);
    return std::string(utf8.data(), static_cast<size_t>(size > 0 ? size : 0));
}

}  // namespace

// Character by character, so that a byte that starts none is replaced as on other systems.
std::string TerminalText(const std::string& bytes) {
    if (IsValidUtf8(bytes))
        return bytes;
    std::string out;
    for (size_t at = 0; at < bytes.size();) {
        const bool lead = IsShiftJisLead(static_cast<unsigned char>(bytes[at]));
        const size_t length = lead && at + 1 < bytes.size() ? 2 : 1;
        const std::string character = CharacterToUtf8(bytes.data() + at, static_cast<int>(length));
        if (character.empty()) {
            out += kReplacement;
            ++at;
        } else {
            out += character;
            at += length;
        }
    }
    return out;
}

#else

namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";

class Converter {
  public:
    Converter() : cd_(iconv_open("UTF-8", "CP932")) {}
    ~Converter() {
        if (Valid())
            iconv_close(cd_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    bool Valid() const { return cd_ != reinterpret_cast<iconv_t>(-1); }

    std::string Convert(const std::string& bytes) {
        std::string out;
        char* in = const_cast<char*>(bytes.data());
        size_t inLeft = bytes.size();
        std::array<char, 256> buffer{};
        while (inLeft > 0) {
            char* to = buffer.data();
            size_t toLeft = buffer.size();
            const size_t done = iconv(cd_, &in, &inLeft, &to, &toLeft);
            out.append(buffer.data(), static_cast<size_t>(to - buffer.data()));
            if (done == static_cast<size_t>(-1) && errno != E2BIG) {
                // A byte that starts no character (or a lead byte at the end): skip it.
                out += kReplacement;
                ++in;
                --inLeft;
                iconv(cd_, nullptr, nullptr, nullptr, nullptr);
            }
        }
        return out;
    }

  private:
    iconv_t cd_;
};

}  // namespace

std::string TerminalText(const std::string& bytes) {
    if (IsValidUtf8(bytes))
        return bytes;
    Converter converter;
    // Without the C library's code page 932 the bytes go out as they are.
    return converter.Valid() ? converter.Convert(bytes) : bytes;
}

#endif

}  // namespace kesto

// The window's fonts, made from the font definitions of the program settings.
#pragma once

#include <QFont>
#include <array>
#include <optional>

#include "app/CKestoApp.h"

namespace kesto {

// Family used next to the face name when a font set asks for the Japanese character set.
inline constexpr const char* kCjkFallbackFamily = "Noto Sans CJK JP";
inline constexpr int kJapaneseCharSet = 128;

class FontTable {
  public:
    // One font per font set whose height is not 0: pixel size |height|, the face name as
    // family, and the CJK fallback for character set 128 (low 8 bits).
    void Build(const CKestoApp& app);
    // Font numbers outside 0..4 count as undefined.
    bool Defined(int number) const;
    QFont Font(int number) const;       // the default font when undefined
    int PixelHeight(int number) const;  // 0 when undefined

  private:
    std::array<std::optional<QFont>, 5> fonts_;
};

}  // namespace kesto

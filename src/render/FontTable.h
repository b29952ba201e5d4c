// The window's fonts, made from the font definitions of the program settings, and the
// fonts a picture defines for itself.
#pragma once

#include <QFont>
#include <array>
#include <optional>
#include <string>

#include "app/CKestoApp.h"
#include "view/Canvas.h"

namespace kesto {

// Family used next to the face name when a font set asks for the Japanese character set.
inline constexpr const char* kCjkFallbackFamily = "Noto Sans CJK JP";
inline constexpr int kJapaneseCharSet = 128;

class FontTable {
  public:
    // One font per font set whose height is not 0: pixel size |height|, the face name as
    // family, and the CJK fallback for character set 128 (low 8 bits).
    void Build(const CKestoApp& app);
    // One font made the same way (height 0 leaves it undefined), bold when asked; numbers
    // outside the canvas's slots are ignored.
    void Set(int number, int height, int charSet, const std::string& faceName, bool bold);
    // Font numbers outside the canvas's slots count as undefined.
    bool Defined(int number) const;
    QFont Font(int number) const;       // the default font when undefined
    int PixelHeight(int number) const;  // 0 when undefined

  private:
    std::array<std::optional<QFont>, kCanvasFontSlots> fonts_;
};

}  // namespace kesto

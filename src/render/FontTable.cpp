#include "render/FontTable.h"

#include <QStringList>
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "render/TextCodec.h"

namespace kesto {

namespace {

// Heights beyond any screen (a saturated number in the settings) are cut to this.
constexpr int64_t kMaxPixelSize = 32767;

QFont MakeFont(int height, int charSet, const std::string& faceName) {
    QFont font;
    const int64_t size = std::llabs(static_cast<int64_t>(height));
    font.setPixelSize(static_cast<int>(std::min(size, kMaxPixelSize)));
    QStringList families;
    if (!faceName.empty())
        families << DecodeText(faceName);
    if ((charSet & 0xFF) == kJapaneseCharSet)
        families << QString::fromLatin1(kCjkFallbackFamily);
    if (!families.isEmpty())
        font.setFamilies(families);
    // The definitions ask for the "modern" family with default pitch.
    font.setStyleHint(QFont::TypeWriter);
    font.setItalic(false);
    font.setUnderline(false);
    font.setStrikeOut(false);
    return font;
}

}  // namespace

void FontTable::Build(const CKestoApp& app) {
    for (size_t n = 0; n < fonts_.size(); ++n)
        fonts_[n].reset();
    for (size_t n = 0; n < app.Settings.FontHeight.size(); ++n)
        Set(static_cast<int>(n), app.Settings.FontHeight[n], app.Settings.FontCharSet[n],
            app.Settings.FontNames[n], false);
}

void FontTable::Set(int number, int height, int charSet, const std::string& faceName, bool bold) {
    if (number < 0 || number >= static_cast<int>(fonts_.size()))
        return;
    std::optional<QFont>& font = fonts_[static_cast<size_t>(number)];
    font.reset();
    if (height == 0)
        return;
    font = MakeFont(height, charSet, faceName);
    font->setBold(bold);
}

bool FontTable::Defined(int number) const {
    return number >= 0 && number < static_cast<int>(fonts_.size()) && fonts_[number].has_value();
}

QFont FontTable::Font(int number) const {
    return Defined(number) ? *fonts_[number] : QFont();
}

int FontTable::PixelHeight(int number) const {
    return Defined(number) ? fonts_[number]->pixelSize() : 0;
}

}  // namespace kesto

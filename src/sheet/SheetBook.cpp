#include "sheet/SheetBook.h"

#include "sheet/SheetTable.h"

namespace kesto {

namespace {

constexpr int32_t kCaptionTop = 22;
constexpr int32_t kValueTop = 42;
constexpr int32_t kRuleY = 86;

// One field of the header: a caption over its value, in a column of its own so that a long
// value is cut at the column's end rather than running into the next.
struct HeaderField {
    int32_t Left = 0;
    int32_t Width = 0;
    SheetFont Font;
    LabelMode Mode = LabelMode::Left;
};

constexpr HeaderField kJobField{kSheetMargin, 400, sheetfont::kHeading};
constexpr HeaderField kProcessField{440, 500, sheetfont::kHeading};
constexpr HeaderField kPalletField{952, 230, sheetfont::kHeading};
constexpr HeaderField kDateField{1194, 240, sheetfont::kBold};
constexpr HeaderField kPageField{1446, kSheetWidth - kSheetMargin - 1446, sheetfont::kBold,
                                 LabelMode::Right};

// A field without a value is left out, caption and all.
void DrawField(PicturePage& page, const HeaderField& field, const std::string& caption,
               const std::string& value) {
    if (value.empty())
        return;
    const int32_t right = field.Left + field.Width;
    if (!caption.empty()) {
        const SheetFont& small = sheetfont::kSmall;
        page.Drawing.DrawLabel(field.Mode, caption, small.Slot, {field.Left, kCaptionTop},
                               {field.Left, kCaptionTop, right, kCaptionTop + small.Height + 6},
                               sheetcolour::kCaption);
    }
    // Values of the smaller font stand on the same line as the others.
    const int32_t top = kValueTop + sheetfont::kHeading.Height - field.Font.Height;
    page.Drawing.DrawLabel(field.Mode, value, field.Font.Slot, {field.Left, top},
                           {field.Left, top, right, top + field.Font.Height * 3 / 2},
                           sheetcolour::kInk);
}

}  // namespace

SheetBook::SheetBook(PictureDocument& document, const SheetTexts& texts, SheetHeading heading)
    : document_(document),
      texts_(texts),
      heading_(std::move(heading)),
      first_(document.Pages.size()) {}

PicturePage& SheetBook::NewPalletPage(const std::string& process, const std::string& pallet,
                                      const std::string& title) {
    return NewPage(Header{process, pallet}, title);
}

PicturePage& SheetBook::NewSummaryPage(const std::string& title) {
    return NewPage(Header{}, title);
}

PicturePage& SheetBook::NewPage(Header header, const std::string& title) {
    headers_.push_back(std::move(header));
    PicturePage& page = document_.Pages.emplace_back();
    page.Width = kSheetWidth;
    page.Height = kSheetHeight;
    page.Title = title;
    return page;
}

void SheetBook::Finish() {
    for (size_t i = 0; i < headers_.size(); ++i)
        DrawHeader(document_.Pages[first_ + i], headers_[i], i + 1);
}

void SheetBook::DrawHeader(PicturePage& page, const Header& header, size_t number) const {
    DrawField(page, kJobField, texts_.Job, heading_.JobName);
    if (header.Process.empty()) {
        DrawField(page, kProcessField, "", texts_.Summary);
    } else {
        DrawField(page, kProcessField, texts_.Process, header.Process);
        DrawField(page, kPalletField, texts_.Pallet, header.Pallet);
    }
    DrawField(page, kDateField, texts_.Printed, heading_.Date);
    DrawField(page, kPageField, "", texts_.PageOf(number, headers_.size()));
    page.Drawing.DrawLinePrim({kSheetMargin, kRuleY}, {kSheetWidth - kSheetMargin, kRuleY},
                              sheetcolour::kRule, PenStyle::Solid, 2);
}

}  // namespace kesto

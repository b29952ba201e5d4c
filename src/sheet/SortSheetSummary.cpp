// The summary pages of the sort sheet: a table per section, each under its heading, a
// section that does not fit going on over the next page under its heading again.
#include <algorithm>
#include <unordered_map>

#include "app/Codes.h"
#include "placement/ShortReason.h"
#include "rules/ListLines.h"
#include "sheet/SheetTable.h"
#include "sheet/SortSheet.h"
#include "view/OffsetCrossings.h"

namespace kesto {

namespace {

constexpr int32_t kLeft = kSheetMargin;
constexpr int32_t kWidth = kSheetWidth - 2 * kSheetMargin;
constexpr int32_t kHeadingHeight = 44;
constexpr int32_t kSectionGap = 24;
constexpr int32_t kNoneHeight = 36;

struct Section {
    std::string Heading;
    SheetTable Table;
};

// The columns every section starts with: the process, the part and its name.
std::vector<SheetColumn> PartColumns(const SheetTexts& texts) {
    return {{texts.ColumnProcess, 260}, {texts.ColumnPart, 130}, {texts.ColumnName, 420}};
}

std::string ProcessOf(const CKestoApp& app, int32_t processNo) {
    const KouteiInfo* koutei = app.KouteiByNo(processNo);
    return koutei != nullptr ? SheetProcessText(*koutei) : std::to_string(processNo);
}

Section SmallBoxes(const CKestoApp& app, const SheetTexts& texts) {
    std::vector<SheetColumn> columns = PartColumns(texts);
    columns.insert(columns.begin(), {texts.ColumnBox, 100});
    columns.push_back({texts.ColumnPieces, 120, CellAlign::Right});
    Section section{texts.SmallBoxes, SheetTable(columns)};
    for (int32_t n = 1; n <= kSmallBoxSlots; ++n) {
        const std::string box = texts.BoxPrefix + std::to_string(n);
        for (const KouteiInfo& koutei : app.KouteiList) {
            for (const PartsInfo& part : app.PartsList) {
                if (part.KouteiNo == koutei.No && InSmallBox(part, SmallBoxCode(n))) {
                    section.Table.AddRow({box, SheetProcessText(koutei), part.Code,
                                          part.DisplayName, std::to_string(part.Quantity)});
                }
            }
        }
    }
    return section;
}

Section SetAside(const CKestoApp& app, const SheetTexts& texts) {
    std::vector<SheetColumn> columns = PartColumns(texts);
    columns.push_back({texts.SetAside, 140, CellAlign::Right});
    columns.push_back({texts.ColumnQuantity, 140, CellAlign::Right});
    Section section{texts.SetAside, SheetTable(columns)};
    for (const KouteiInfo& koutei : app.KouteiList) {
        for (const PartsInfo& part : app.PartsList) {
            if (part.KouteiNo == koutei.No && InTorioki(part)) {
                section.Table.AddRow({SheetProcessText(koutei), part.Code, part.DisplayName,
                                      std::to_string(part.Quantity - part.PiecesPlaced),
                                      std::to_string(part.Quantity)});
            }
        }
    }
    return section;
}

Section Short(const CKestoApp& app, const Services& services, const SheetTexts& texts) {
    std::vector<SheetColumn> columns = {{texts.ColumnProcess, 200},
                                        {texts.ColumnPart, 120},
                                        {texts.ColumnName, 300},
                                        {texts.ColumnPlaced, 110, CellAlign::Right},
                                        {texts.ColumnQuantity, 120, CellAlign::Right}};
    const int32_t used = 200 + 120 + 300 + 110 + 120;
    columns.push_back({texts.ColumnReason, kWidth - used, CellAlign::Left, true});
    Section section{texts.Short, SheetTable(columns)};
    std::unordered_map<const PartsInfo*, const ShortReason*> why;
    const std::vector<ShortPart> reasons = WhyShortAll(app);
    for (const ShortPart& r : reasons)
        why[r.Part] = &r.Reason;
    for (const KouteiInfo& koutei : app.KouteiList) {
        for (const PartsInfo& part : app.PartsList) {
            if (part.KouteiNo != koutei.No || !LeftShort(part))
                continue;
            const auto reason = why.find(&part);
            section.Table.AddRow(
                {SheetProcessText(koutei), part.Code, part.DisplayName,
                 std::to_string(part.PiecesPlaced), std::to_string(part.Quantity),
                 reason != why.end() ? ShortReasonText(*reason->second, services.Messages) : ""});
        }
    }
    return section;
}

Section Crossings(const CKestoApp& app, const MessageTable& messages, const SheetTexts& texts,
                  const std::vector<int32_t>& blockNumbers) {
    std::vector<SheetColumn> columns = {{texts.ColumnProcess, 260},
                                        {texts.Pallet, 110},
                                        {texts.ColumnBlock, 90, CellAlign::Right},
                                        {texts.ColumnCorner, 160}};
    const int32_t used = 260 + 110 + 90 + 160;
    columns.push_back({texts.ColumnCrossing, kWidth - used, CellAlign::Left, true});
    Section section{texts.Crossings, SheetTable(columns)};
    for (const OffsetCrossing& c : OffsetCrossings(app)) {
        const BlockInfo& block = *app.BlockOf(*c.Stack);
        section.Table.AddRow(
            {ProcessOf(app, block.KouteiNo),
             PalletSelectLine(app.Settings.PalletPrefix, c.PalletNo),
             std::to_string(blockNumbers[static_cast<size_t>(c.Stack->BlockIndex)]),
             texts.CornerText(StandingCorner(app, *c.Stack)), OffsetCrossingText(c, messages)});
    }
    return section;
}

class SummaryPages {
  public:
    SummaryPages(const SheetTexts& texts, SheetBook& book) : texts_(texts), book_(book) {}

    void Add(const Section& section) {
        const SheetTable& table = section.Table;
        const int32_t first =
            table.Rows() == 0 ? kNoneHeight : table.TitleHeight() + table.RowHeight(0);
        if (page_ == nullptr || y_ + kHeadingHeight + first > kSheetBodyBottom)
            NewPage();
        Heading(section.Heading);
        if (table.Rows() == 0) {
            const SheetFont& font = sheetfont::kText;
            page_->Drawing.DrawLabel(LabelMode::Left, texts_.None, font.Slot, {kLeft + 8, y_},
                                     {kLeft + 8, y_, kLeft + kWidth, y_ + kNoneHeight},
                                     sheetcolour::kInk);
            y_ += kNoneHeight + kSectionGap;
            return;
        }
        size_t next = 0;
        while (true) {
            const SheetTable::Drawn drawn =
                table.Draw(page_->Drawing, kLeft, y_, kSheetBodyBottom, next);
            next = drawn.Next;
            y_ = drawn.Bottom + kSectionGap;
            if (next == table.Rows())
                return;
            NewPage();
            Heading(section.Heading);
        }
    }

  private:
    void NewPage() {
        page_ = &book_.NewSummaryPage(texts_.Summary);
        y_ = kSheetBodyTop;
    }
    void Heading(const std::string& text) {
        const SheetFont& font = sheetfont::kHeading;
        page_->Drawing.DrawLabel(LabelMode::Left, text, font.Slot, {kLeft, y_},
                                 {kLeft, y_, kLeft + kWidth, y_ + kHeadingHeight},
                                 sheetcolour::kInk);
        y_ += kHeadingHeight;
    }

    const SheetTexts& texts_;
    SheetBook& book_;
    PicturePage* page_ = nullptr;
    int32_t y_ = 0;
};

}  // namespace

void AddSummaryPages(const CKestoApp& app, const Services& services, const SheetTexts& texts,
                     const std::vector<int32_t>& blockNumbers, SheetBook& book) {
    SummaryPages pages(texts, book);
    pages.Add(SmallBoxes(app, texts));
    pages.Add(SetAside(app, texts));
    pages.Add(Short(app, services, texts));
    pages.Add(Crossings(app, services.Messages, texts, blockNumbers));
}

}  // namespace kesto

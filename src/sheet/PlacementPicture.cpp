#include "sheet/PlacementPicture.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <istream>
#include <ostream>
#include <sstream>

#include "app/Codes.h"
#include "placement/ShortReason.h"
#include "rules/ListLines.h"
#include "session/JobSession.h"
#include "sheet/SheetTexts.h"
#include "support/SetupList.h"
#include "support/TextFormat.h"
#include "view/OffsetCrossings.h"
#include "view/PalletDrawing.h"
#include "view/ShiftedCanvas.h"

namespace kesto {

namespace {

constexpr int32_t kPalletsPerPage = 4;
constexpr Rgb kTextColour{0, 0, 0};

// The first defined font among the message keys' fonts, then any defined font; -1 when the
// settings define none.
int32_t ChooseFont(const CKestoApp& app, const std::vector<int32_t>& preferred) {
    for (const int32_t slot : preferred) {
        if (FontDefined(app, slot))
            return slot;
    }
    for (int32_t slot = 0; slot < static_cast<int32_t>(app.Settings.FontHeight.size()); ++slot) {
        if (FontDefined(app, slot))
            return slot;
    }
    return -1;
}

int32_t KeyFont(const MessageTable& messages, const char* key) {
    return messages.GetFontText("MainDlg", key).Font;
}

int32_t TitleFont(const CKestoApp& app, const MessageTable& messages) {
    return ChooseFont(app, {KeyFont(messages, "TitleName"), KeyFont(messages, "L-PALLET-CAP")});
}

// The strip at the top of every page that holds its title.
int32_t TitleStripHeight(const CKestoApp& app, int32_t font, int32_t pageHeight) {
    const int32_t fontHeight = font >= 0 ? FontPixelHeight(app, font) : 0;
    return std::min(std::max(2 * fontHeight, pageHeight / 25), pageHeight / 4);
}

void DrawTitle(const CKestoApp& app, PicturePage& page, int32_t font, int32_t strip) {
    if (font < 0)
        return;
    const int32_t top = std::max(0, (strip - FontPixelHeight(app, font)) / 2);
    page.Drawing.DrawLabel(LabelMode::AtPoint, page.Title, font, {page.Width / 60, top},
                           {0, 0, page.Width, strip}, kTextColour);
}

// The captions a window shows as labels over the drawing, centred in their strips.
void DrawCaptions(const CKestoApp& app, const PalletDrawing& drawing, Canvas& canvas) {
    for (const PalletCaption& caption : drawing.Captions) {
        if (!caption.Visible || caption.Text.empty() || !FontDefined(app, caption.FontSlot))
            continue;
        IntRect rect = caption.Rect;
        const int32_t spare = rect.Bottom - rect.Top - FontPixelHeight(app, caption.FontSlot);
        rect.Top += std::max(0, spare / 2);
        canvas.DrawLabel(LabelMode::Centred, caption.Text, caption.FontSlot, {rect.Left, rect.Top},
                         rect, kTextColour);
    }
}

std::string ProcessTitle(const CKestoApp& app, const KouteiInfo& koutei, int32_t firstPallet,
                         const std::string& jobName) {
    std::string title = ScheduleLine(app, koutei) + " - " + jobName;
    if (app.Settings.PalletCount > kPalletsPerPage) {
        const int32_t last = std::min(app.Settings.PalletCount, firstPallet + kPalletsPerPage - 1);
        title += " (" + PalletSelectLine(app.Settings.PalletPrefix, firstPallet) + " .. " +
                 PalletSelectLine(app.Settings.PalletPrefix, last) + ")";
    }
    return title;
}

// One page per four pallets of each process, as the window's 4PALLET view (FLAT for a job
// with one pallet) shows them; the other toggles are the operator's.
void AddProcessPages(const CKestoApp& app, const ViewState& shown, const MessageTable& messages,
                     const std::string& jobName, int32_t width, int32_t height,
                     PictureDocument& document) {
    const int32_t titleFont = TitleFont(app, messages);
    const int32_t strip = TitleStripHeight(app, titleFont, height);
    ViewState pages = shown;
    pages.SetMode(app.Settings.PalletCount > 1 ? PalletView::FourPallet : PalletView::Flat);
    pages.Set3D(false);
    int32_t position = 0;
    for (const KouteiInfo& koutei : app.KouteiList) {
        pages.SetKoutei(++position);
        for (int32_t first = 1; first == 1 || first <= app.Settings.PalletCount;
             first += kPalletsPerPage) {
            pages.SetPallet(first);
            PicturePage& page = document.Pages.emplace_back();
            page.Width = width;
            page.Height = height;
            page.Title = ProcessTitle(app, koutei, first, jobName);
            DrawTitle(app, page, titleFont, strip);
            PalletDrawing drawing(app, pages, messages);
            drawing.SetArea({0, 0, width, height - strip});
            // Below the page's title strip, in the drawing's own coordinates.
            ShiftedCanvas area(page.Drawing, 0, strip);
            drawing.Refresh(area);
            DrawCaptions(app, drawing, area);
        }
    }
}

// --- listing ---------------------------------------------------------------------------

struct ListingLine {
    std::string Text;
    int32_t Font = -1;
    int32_t Indent = 0;  // in steps
};

struct ListingFonts {
    int32_t Heading = -1;
    int32_t Box = -1;
    int32_t Line = -1;
};

void AddPartLines(const CKestoApp& app, bool (*wanted)(const PartsInfo&, int32_t), int32_t code,
                  std::string (*line)(const PartsInfo&), int32_t font,
                  std::vector<ListingLine>& lines) {
    for (const KouteiInfo& koutei : app.KouteiList) {
        for (const PartsInfo& part : app.PartsList) {
            if (part.KouteiNo == koutei.No && wanted(part, code))
                lines.push_back({FormatText("%.2d  ", koutei.No) + line(part), font, 2});
        }
    }
}

bool HasPartFor(const CKestoApp& app, int32_t code) {
    return std::any_of(app.PartsList.begin(), app.PartsList.end(),
                       [&](const PartsInfo& p) { return InSmallBox(p, code); });
}

// The short parts of a process, each with the line of why below it.
void AddShortLines(const CKestoApp& app, const KouteiInfo& koutei,
                   const std::vector<ShortPart>& reasons, const MessageTable& messages,
                   int32_t font, std::vector<ListingLine>& lines) {
    for (const PartsInfo& part : app.PartsList) {
        if (part.KouteiNo != koutei.No || !LeftShort(part))
            continue;
        lines.push_back({FormatText("%.2d  ", koutei.No) + ShortLine(part), font, 2});
        const auto reason = std::find_if(reasons.begin(), reasons.end(),
                                         [&](const ShortPart& r) { return r.Part == &part; });
        if (reason != reasons.end())
            lines.push_back({ShortReasonText(reason->Reason, messages), font, 3});
    }
}

std::vector<ListingLine> ListingLines(const CKestoApp& app, const Services& services,
                                      const ListingFonts& fonts) {
    const MessageTable& messages = services.Messages;
    const SheetTexts texts = SheetTexts::From(messages);
    std::vector<ListingLine> lines;
    const auto emptySection = [&](size_t before) {
        if (lines.size() == before)
            lines.push_back({"-", fonts.Line, 2});
    };

    lines.push_back({texts.SmallBoxes, fonts.Heading, 0});
    size_t before = lines.size();
    for (int32_t n = 1; n <= kSmallBoxSlots; ++n) {
        const int32_t code = SmallBoxCode(n);
        if (!HasPartFor(app, code))
            continue;
        lines.push_back({FormatText("%s%d", texts.BoxPrefix.c_str(), n), fonts.Box, 1});
        AddPartLines(
            app, [](const PartsInfo& p, int32_t c) { return InSmallBox(p, c); }, code, SmallBoxLine,
            fonts.Line, lines);
    }
    emptySection(before);

    lines.push_back({texts.SetAside, fonts.Heading, 0});
    before = lines.size();
    AddPartLines(
        app, [](const PartsInfo& p, int32_t) { return InTorioki(p); }, 0, ToriokiLine, fonts.Line,
        lines);
    emptySection(before);

    lines.push_back({texts.Short, fonts.Heading, 0});
    before = lines.size();
    const std::vector<ShortPart> reasons = WhyShortAll(app);
    for (const KouteiInfo& koutei : app.KouteiList)
        AddShortLines(app, koutei, reasons, messages, fonts.Line, lines);
    emptySection(before);

    lines.push_back({texts.Crossings, fonts.Heading, 0});
    before = lines.size();
    for (const OffsetCrossing& crossing : OffsetCrossings(app)) {
        const BlockInfo* block = app.BlockOf(*crossing.Stack);
        lines.push_back(
            {FormatText("%.2d  ", block->KouteiNo) + OffsetCrossingText(crossing, messages),
             fonts.Line, 2});
    }
    emptySection(before);
    return lines;
}

// The listing as pages of width x height, one line below the other, a new page whenever
// one is full.
void AddListingPages(const CKestoApp& app, const Services& services, const std::string& jobName,
                     int32_t width, int32_t height, PictureDocument& document) {
    const MessageTable& messages = services.Messages;
    const int32_t titleFont = TitleFont(app, messages);
    const int32_t strip = TitleStripHeight(app, titleFont, height);
    ListingFonts fonts;
    fonts.Heading = ChooseFont(app, {KeyFont(messages, "L-SMALLBOX"), titleFont});
    fonts.Box = ChooseFont(app, {KeyFont(messages, "B-SBOX1"), fonts.Heading});
    fonts.Line = ChooseFont(app, {KeyFont(messages, "LIST-SBOX"), fonts.Heading});
    if (fonts.Line < 0)
        return;  // nothing can be written without a font
    const int32_t left = std::max(8, width / 60);
    const int32_t step = std::max(8, width / 50);
    const int32_t bottom = height - std::max(8, height / 40);
    PicturePage* page = nullptr;
    int32_t y = 0;
    int32_t pageNo = 0;
    for (const ListingLine& line : ListingLines(app, services, fonts)) {
        const int32_t font = line.Font >= 0 ? line.Font : fonts.Line;
        const int32_t fontHeight = FontPixelHeight(app, font);
        const int32_t advance = fontHeight + std::max(2, fontHeight / 2);
        // A heading gets a gap above it, except at the top of a page.
        const int32_t gap =
            (line.Indent == 0 && page != nullptr && y > strip + advance / 2) ? advance / 2 : 0;
        if (page == nullptr || y + gap + advance > bottom) {
            page = &document.Pages.emplace_back();
            page->Width = width;
            page->Height = height;
            page->Title = jobName + (++pageNo > 1 ? FormatText(" (%d)", pageNo) : "");
            DrawTitle(app, *page, titleFont, strip);
            y = strip + advance / 2;
        } else {
            y += gap;
        }
        const IntPoint at{left + line.Indent * step, y};
        page->Drawing.DrawLabel(LabelMode::AtPoint, line.Text, font, at,
                                {at.X, at.Y, width, at.Y + advance}, kTextColour);
        y += advance;
    }
}

}  // namespace

PictureDocument BuildPlacementPictures(const CKestoApp& app, const ViewState& shown,
                                       const Services& services, const std::string& jobName,
                                       int32_t width, int32_t height) {
    PictureDocument document;
    TakeSettingsFonts(app, document);
    if (width <= 0 || height <= 0)
        return document;
    AddProcessPages(app, shown, services.Messages, jobName, width, height, document);
    AddListingPages(app, services, jobName, width, height, document);
    return document;
}

std::string PictureJobName(const JobSession& session) {
    return std::filesystem::path(GetDataFilePath(session.Svc(), DataFile::Job)).filename().string();
}

}  // namespace kesto

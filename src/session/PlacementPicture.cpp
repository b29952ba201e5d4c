#include "session/PlacementPicture.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <istream>
#include <ostream>
#include <sstream>

#include "app/Codes.h"
#include "session/ListLines.h"
#include "support/TextFormat.h"
#include "view/PalletDrawing.h"

namespace kesto {

namespace {

constexpr const char* kDocumentHeader = "kesto-picture-document 1";
constexpr int32_t kPalletsPerPage = 4;
constexpr int32_t kLargestPage = 20000;  // pixels; more is a damaged document
constexpr Rgb kTextColour{0, 0, 0};

// Fallback headings for keys a message file may lack; the shortage list has no key at all.
constexpr const char* kSmallBoxHeading = "Small boxes";
constexpr const char* kToriokiHeading = "Set aside";
constexpr const char* kShortHeading = "Parts left short";

// Draws on another canvas moved down by dy, so the pallet drawing keeps its own coordinates
// (starting at 0, 0) below the page's title strip.
class ShiftedCanvas : public Canvas {
  public:
    ShiftedCanvas(Canvas& target, int32_t dy) : target_(target), dy_(dy) {}
    void FillRectangle(const IntRect& rect, Rgb fill, Rgb pen) override {
        target_.FillRectangle(Shift(rect), fill, pen);
    }
    void DrawArcPrim(const IntRect& box, IntPoint start, IntPoint end, Rgb fill, Rgb pen) override {
        target_.DrawArcPrim(Shift(box), Shift(start), Shift(end), fill, pen);
    }
    void DrawLinePrim(IntPoint from, IntPoint to, Rgb colour, PenStyle style,
                      int32_t width) override {
        target_.DrawLinePrim(Shift(from), Shift(to), colour, style, width);
    }
    void DrawLabel(LabelMode mode, const std::string& text, int32_t fontSlot, IntPoint at,
                   const IntRect& rect, Rgb colour) override {
        target_.DrawLabel(mode, text, fontSlot, Shift(at), Shift(rect), colour);
    }

  private:
    IntRect Shift(IntRect r) const { return {r.Left, r.Top + dy_, r.Right, r.Bottom + dy_}; }
    IntPoint Shift(IntPoint p) const { return {p.X, p.Y + dy_}; }

    Canvas& target_;
    int32_t dy_;
};

// The first defined font among the message keys' fonts, then any defined font; -1 when the
// settings define none.
int32_t ChooseFont(const CKestoApp& app, const std::vector<int32_t>& preferred) {
    for (const int32_t slot : preferred) {
        if (FontDefined(app, slot))
            return slot;
    }
    for (int32_t slot = 0; slot < static_cast<int32_t>(app.FontHeight.size()); ++slot) {
        if (FontDefined(app, slot))
            return slot;
    }
    return -1;
}

int32_t KeyFont(const MessageTable& messages, const char* key) {
    return messages.GetFontText("MainDlg", key).Font;
}

std::string KeyText(const MessageTable& messages, const char* key, const char* fallback) {
    const std::string text = messages.GetFontText("MainDlg", key).Text;
    return text.empty() ? fallback : text;
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
    if (app.PalletCount > kPalletsPerPage) {
        const int32_t last = std::min(app.PalletCount, firstPallet + kPalletsPerPage - 1);
        title += " (" + PalletSelectLine(app.PalletPrefix, firstPallet) + " .. " +
                 PalletSelectLine(app.PalletPrefix, last) + ")";
    }
    return title;
}

// One page per four pallets of each process, as the window's 4PALLET view (FLAT for a job
// with one pallet) shows them; the other toggles are the operator's.
void AddProcessPages(CKestoApp& app, const ViewState& shown, const MessageTable& messages,
                     const std::string& jobName, int32_t width, int32_t height,
                     PictureDocument& document) {
    const int32_t titleFont = TitleFont(app, messages);
    const int32_t strip = TitleStripHeight(app, titleFont, height);
    ViewState pages = shown;
    pages.PalletMode = app.PalletCount > 1 ? view::kFourPallet : view::kFlat;
    pages.Is3D = 0;
    pages.AreaRect = IntRect{0, 0, width, height - strip};
    int32_t position = 0;
    for (const KouteiInfo& koutei : app.KouteiList) {
        pages.CurrentKoutei = ++position;
        for (int32_t first = 1; first == 1 || first <= app.PalletCount; first += kPalletsPerPage) {
            pages.CurrentPallet = first;
            PicturePage& page = document.Pages.emplace_back();
            page.Width = width;
            page.Height = height;
            page.Title = ProcessTitle(app, koutei, first, jobName);
            DrawTitle(app, page, titleFont, strip);
            PalletDrawing drawing(app, pages, messages);
            ShiftedCanvas area(page.Drawing, strip);
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

std::vector<ListingLine> ListingLines(const CKestoApp& app, const MessageTable& messages,
                                      const ListingFonts& fonts) {
    std::vector<ListingLine> lines;
    const auto emptySection = [&](size_t before) {
        if (lines.size() == before)
            lines.push_back({"-", fonts.Line, 2});
    };

    lines.push_back({KeyText(messages, "L-SMALLBOX", kSmallBoxHeading), fonts.Heading, 0});
    size_t before = lines.size();
    const std::string boxPrefix = messages.GetFontText("MainDlg", "B-SBOX1").Text;
    for (int32_t n = 1; n <= kSmallBoxSlots; ++n) {
        const int32_t code = SmallBoxCode(n);
        if (!HasPartFor(app, code))
            continue;
        lines.push_back({FormatText("%s%d", boxPrefix.c_str(), n), fonts.Box, 1});
        AddPartLines(
            app, [](const PartsInfo& p, int32_t c) { return InSmallBox(p, c); }, code, SmallBoxLine,
            fonts.Line, lines);
    }
    emptySection(before);

    lines.push_back({KeyText(messages, "L-TORIOKI", kToriokiHeading), fonts.Heading, 0});
    before = lines.size();
    AddPartLines(
        app, [](const PartsInfo& p, int32_t) { return InTorioki(p); }, 0, ToriokiLine, fonts.Line,
        lines);
    emptySection(before);

    lines.push_back({kShortHeading, fonts.Heading, 0});
    before = lines.size();
    AddPartLines(
        app, [](const PartsInfo& p, int32_t) { return LeftShort(p); }, 0, ShortLine, fonts.Line,
        lines);
    emptySection(before);
    return lines;
}

// The listing as pages of width x height, one line below the other, a new page whenever
// one is full.
void AddListingPages(const CKestoApp& app, const MessageTable& messages, const std::string& jobName,
                     int32_t width, int32_t height, PictureDocument& document) {
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
    for (const ListingLine& line : ListingLines(app, messages, fonts)) {
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

// --- document file -------------------------------------------------------------------

// "word n1 n2 ... rest": count numbers after the word, then the rest of the line (may be
// empty) after one blank.
bool ParseLine(const std::string& line, const std::string& word, std::vector<int32_t>& numbers,
               size_t count, std::string* rest) {
    std::istringstream in(line);
    std::string first;
    if (!(in >> first) || first != word)
        return false;
    numbers.assign(count, 0);
    for (int32_t& n : numbers) {
        if (!(in >> n))
            return false;
    }
    if (rest == nullptr) {
        std::string extra;
        return !(in >> extra);
    }
    const auto pos = in.tellg();
    if (pos < 0) {
        rest->clear();
        return true;
    }
    const size_t at = static_cast<size_t>(pos);
    *rest = at < line.size() ? line.substr(at + 1) : std::string();
    return at >= line.size() || line[at] == ' ';
}

std::optional<PicturePage> ReadPage(std::istream& in) {
    std::string line;
    std::vector<int32_t> numbers;
    PicturePage page;
    if (!ReadPictureLine(in, line) || !ParseLine(line, "page", numbers, 2, &page.Title))
        return std::nullopt;
    page.Width = numbers[0];
    page.Height = numbers[1];
    if (page.Width <= 0 || page.Height <= 0 || page.Width > kLargestPage ||
        page.Height > kLargestPage)
        return std::nullopt;
    std::optional<DisplayList> drawing = DisplayList::Read(in);
    if (!drawing)
        return std::nullopt;
    page.Drawing = std::move(*drawing);
    return page;
}

}  // namespace

PictureDocument BuildPlacementPictures(CKestoApp& app, const ViewState& shown,
                                       const MessageTable& messages, const std::string& jobName,
                                       int32_t width, int32_t height, bool withListing) {
    PictureDocument document;
    for (size_t i = 0; i < document.Fonts.size(); ++i) {
        document.Fonts[i] = PictureFont{app.FontHeight[i], app.FontCharSet[i], app.FontNames[i]};
    }
    if (width <= 0 || height <= 0)
        return document;
    AddProcessPages(app, shown, messages, jobName, width, height, document);
    if (withListing)
        AddListingPages(app, messages, jobName, width, height, document);
    return document;
}

void WritePictureDocument(const PictureDocument& document, std::ostream& out) {
    out << kDocumentHeader << "\n";
    for (size_t i = 0; i < document.Fonts.size(); ++i) {
        const PictureFont& f = document.Fonts[i];
        out << "font " << i << ' ' << f.Height << ' ' << f.CharSet << ' ' << OnePictureLine(f.Name)
            << "\n";
    }
    out << "pages " << document.Pages.size() << "\n";
    for (const PicturePage& page : document.Pages) {
        out << "page " << page.Width << ' ' << page.Height << ' ' << OnePictureLine(page.Title)
            << "\n";
        page.Drawing.Write(out);
    }
}

std::optional<PictureDocument> ReadPictureDocument(std::istream& in) {
    std::string line;
    if (!ReadPictureLine(in, line) || line != kDocumentHeader)
        return std::nullopt;
    PictureDocument document;
    std::vector<int32_t> numbers;
    for (size_t i = 0; i < document.Fonts.size(); ++i) {
        PictureFont& f = document.Fonts[i];
        if (!ReadPictureLine(in, line) || !ParseLine(line, "font", numbers, 3, &f.Name) ||
            numbers[0] != static_cast<int32_t>(i))
            return std::nullopt;
        f.Height = numbers[1];
        f.CharSet = numbers[2];
    }
    if (!ReadPictureLine(in, line) || !ParseLine(line, "pages", numbers, 1, nullptr) ||
        numbers[0] < 0)
        return std::nullopt;
    for (int32_t i = 0; i < numbers[0]; ++i) {
        std::optional<PicturePage> page = ReadPage(in);
        if (!page)
            return std::nullopt;
        document.Pages.push_back(std::move(*page));
    }
    // Nothing may follow the last page.
    if (in >> line)
        return std::nullopt;
    return document;
}

std::optional<PictureFormat> PictureFormatOf(const std::string& path) {
    std::string ext = std::filesystem::path(path).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (ext == ".pdf")
        return PictureFormat::Pdf;
    if (ext == ".png")
        return PictureFormat::Png;
    return std::nullopt;
}

std::vector<std::string> PictureFiles(const std::string& output, size_t pages) {
    if (PictureFormatOf(output) != PictureFormat::Png)
        return {output};
    const std::string ext = std::filesystem::path(output).extension().string();
    const std::string stem = output.substr(0, output.size() - ext.size());
    std::vector<std::string> files;
    for (size_t i = 0; i < pages; ++i)
        files.push_back(stem + FormatText("-%.2d", static_cast<int>(i + 1)) + ext);
    return files;
}

}  // namespace kesto

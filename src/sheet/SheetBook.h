// The pages of the sort sheet as they are made, each under the same header: the job file,
// the process, the pallet, the date, and "page n of m" once the last page is known.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sheet/PlacementPicture.h"
#include "sheet/SheetTexts.h"

namespace kesto {

// An A4 landscape page in pixels (297 x 210 mm at about 144 per inch).
inline constexpr int32_t kSheetWidth = 1684;
inline constexpr int32_t kSheetHeight = 1190;
inline constexpr int32_t kSheetMargin = 28;
// Where the header ends and the page's own content begins.
inline constexpr int32_t kSheetBodyTop = 100;
inline constexpr int32_t kSheetBodyBottom = kSheetHeight - kSheetMargin;

// What the header of every page names besides the process and the pallet.
struct SheetHeading {
    std::string JobName;  // the job file's name
    std::string Date;     // when the sheet was made
};

class SheetBook {
  public:
    SheetBook(PictureDocument& document, const SheetTexts& texts, SheetHeading heading);

    // A new page of a pallet, its header naming the process and the pallet; the title is
    // the page's name in the document.
    PicturePage& NewPalletPage(const std::string& process, const std::string& pallet,
                               const std::string& title);
    // A new page of the summary, which its header names in place of process and pallet.
    PicturePage& NewSummaryPage(const std::string& title);
    // Writes every page's header, now that the number of pages is known.
    void Finish();

  private:
    struct Header {
        std::string Process;  // empty on a summary page
        std::string Pallet;
    };
    PicturePage& NewPage(Header header, const std::string& title);
    void DrawHeader(PicturePage& page, const Header& header, size_t number) const;

    PictureDocument& document_;
    const SheetTexts& texts_;
    SheetHeading heading_;
    size_t first_;  // the document's first page of the sheet
    std::vector<Header> headers_;
};

}  // namespace kesto

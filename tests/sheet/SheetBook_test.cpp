// The sort sheet's pages and the header on every one: job, process, pallet, date and the
// page's number of all, once the last page is known.
#include "sheet/SheetBook.h"

#include <gtest/gtest.h>

#include "common/RecordingCanvasQueries.h"
#include "common/TestServices.h"
#include "sheet/SheetTable.h"

namespace kesto {
namespace {

struct Book {
    Book() : texts(SheetTexts::From(messages)), book(document, texts, {"job.txt", "2025-03-04"}) {}
    MessageTable messages;  // nothing loaded: the English words
    PictureDocument document;
    SheetTexts texts;
    SheetBook book;
};

const Primitive* LabelOf(const PicturePage& page, const std::string& text) {
    for (const Primitive& p : page.Drawing.Items()) {
        if (p.Kind == PrimitiveKind::Label && p.Text == text)
            return &p;
    }
    return nullptr;
}

TEST(SheetBook, EveryPageIsAnA4LandscapePageWithItsTitle) {
    Book b;
    b.book.NewPalletPage("01 CUT", "P-01", "01 CUT P-01");
    b.book.NewSummaryPage("Summary");
    ASSERT_EQ(b.document.Pages.size(), 2u);
    EXPECT_EQ(b.document.Pages[0].Width, 1684);
    EXPECT_EQ(b.document.Pages[0].Height, 1190);
    EXPECT_EQ(b.document.Pages[0].Title, "01 CUT P-01");
    EXPECT_EQ(b.document.Pages[1].Title, "Summary");
    // Nothing is written before the number of pages is known.
    EXPECT_TRUE(b.document.Pages[0].Drawing.Items().empty());
}

TEST(SheetBook, HeadersNameJobProcessPalletDateAndPageOfAll) {
    Book b;
    b.book.NewPalletPage("01 CUT", "P-01", "a");
    b.book.NewPalletPage("02 BEND", "P-03", "b");
    b.book.NewSummaryPage("c");
    b.book.Finish();
    EXPECT_EQ(test::LabelTexts(b.document.Pages[0].Drawing),
              (std::vector<std::string>{"Job", "job.txt", "Process", "01 CUT", "Pallet", "P-01",
                                        "Printed", "2025-03-04", "Page 1 of 3"}));
    EXPECT_EQ(test::LabelTexts(b.document.Pages[1].Drawing),
              (std::vector<std::string>{"Job", "job.txt", "Process", "02 BEND", "Pallet", "P-03",
                                        "Printed", "2025-03-04", "Page 2 of 3"}));
    // A summary page names the summary in place of process and pallet.
    EXPECT_EQ(test::LabelTexts(b.document.Pages[2].Drawing),
              (std::vector<std::string>{"Job", "job.txt", "Summary", "Printed", "2025-03-04",
                                        "Page 3 of 3"}));
}

TEST(SheetBook, HeaderFieldsStandInColumnsOfTheirOwnAboveARule) {
    Book b;
    b.book.NewPalletPage("01 A process with a very long name indeed", "P-01", "a");
    b.book.Finish();
    const PicturePage& page = b.document.Pages[0];
    const Primitive* job = LabelOf(page, "job.txt");
    const Primitive* process = LabelOf(page, "01 A process with a very long name indeed");
    const Primitive* count = LabelOf(page, "Page 1 of 1");
    ASSERT_NE(job, nullptr);
    ASSERT_NE(process, nullptr);
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(job->FontSlot, sheetfont::kHeading.Slot);
    EXPECT_EQ(job->Rect.Left, 28);
    // A long value ends where its column does, before the next one begins.
    EXPECT_EQ(process->Mode, LabelMode::Left);
    EXPECT_LE(process->Rect.Right, LabelOf(page, "Pallet")->Rect.Left);
    EXPECT_LE(job->Rect.Right, process->Rect.Left);
    // The page count stands at the right margin.
    EXPECT_EQ(count->Mode, LabelMode::Right);
    EXPECT_EQ(count->Rect.Right, 1684 - 28);
    // Every header label lies above the rule, and the rule above the body.
    const std::vector<Primitive> rules = test::Lines(page.Drawing);
    ASSERT_EQ(rules.size(), 1u);
    EXPECT_LT(rules[0].A.Y, kSheetBodyTop);
    for (const Primitive& label : test::Labels(page.Drawing))
        EXPECT_LE(label.Rect.Bottom, rules[0].A.Y) << label.Text;
}

TEST(SheetBook, CountsOnlyItsOwnPagesAfterOnesAlreadyInTheDocument) {
    MessageTable messages;
    const SheetTexts texts = SheetTexts::From(messages);
    PictureDocument document;
    document.Pages.emplace_back().Title = "before";
    SheetBook book(document, texts, {"job.txt", ""});
    book.NewSummaryPage("s");
    book.Finish();
    EXPECT_TRUE(document.Pages[0].Drawing.Items().empty());
    EXPECT_NE(LabelOf(document.Pages[1], "Page 1 of 1"), nullptr);
    // No date: no caption for it either.
    EXPECT_EQ(LabelOf(document.Pages[1], "Printed"), nullptr);
}

}  // namespace
}  // namespace kesto

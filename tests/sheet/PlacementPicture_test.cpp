// The pictures of a placed job: pages per process and four pallets at a time, titles,
// captions, stacks, the listing page, and that they reach the picture program whole. The job is a
// real one, read and placed by a job session.
#include "sheet/PlacementPicture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <sstream>

#include "common/PictureDocumentIo.h"
#include "common/PictureJob.h"
#include "rules/ListLines.h"
#include "sheet/SortSheet.h"
#include "view/Colours.h"
#include "view/PalletDrawing.h"

namespace kesto {
namespace {

using test::CutJob;
using test::kPalletBox;
using test::kSmallBox;
using test::MiniInstallation;
using test::OneStackInstallation;
using test::PictureInstallation;
using test::PictureJob;

constexpr int32_t kWidth = test::kPictureWidth;
constexpr int32_t kHeight = test::kPictureHeight;

std::vector<std::string> Labels(const PicturePage& page) {
    std::vector<std::string> texts;
    for (const Primitive& p : page.Drawing.Items()) {
        if (p.Kind == PrimitiveKind::Label)
            texts.push_back(p.Text);
    }
    return texts;
}

bool HasLabel(const PicturePage& page, const std::string& text) {
    const std::vector<std::string> texts = Labels(page);
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

std::vector<IntRect> Frames(const PicturePage& page) {
    std::vector<IntRect> frames;
    for (const Primitive& p : page.Drawing.Items()) {
        if (p.Kind == PrimitiveKind::Rectangle && p.Fill == colour::kPalletFrame)
            frames.push_back(p.Rect);
    }
    return frames;
}

TEST(PlacementPicture, SixPalletsGiveTwoPagesPerProcessAndAListingPage) {
    PictureJob job(PictureInstallation(6));
    const PictureDocument doc = job.Build();
    ASSERT_EQ(doc.Pages.size(), 5u);
    for (const PicturePage& page : doc.Pages) {
        EXPECT_EQ(page.Width, kWidth);
        EXPECT_EQ(page.Height, kHeight);
    }
    EXPECT_EQ(doc.Pages[0].Title, "01 CUT Pallet A - job.txt (P-01 .. P-04)");
    EXPECT_EQ(doc.Pages[1].Title, "01 CUT Pallet A - job.txt (P-05 .. P-06)");
    EXPECT_EQ(doc.Pages[2].Title, "02 BEND Pallet A - job.txt (P-01 .. P-04)");
    EXPECT_EQ(doc.Pages[3].Title, "02 BEND Pallet A - job.txt (P-05 .. P-06)");
    EXPECT_EQ(doc.Pages[4].Title, "job.txt");
    for (const PicturePage& page : doc.Pages)
        EXPECT_TRUE(HasLabel(page, page.Title)) << page.Title;
}

TEST(PlacementPicture, EachProcessPageShowsFourPalletsWithTheirCaptions) {
    PictureJob job(PictureInstallation(6));
    const PictureDocument doc = job.Build();
    ASSERT_GE(doc.Pages.size(), 2u);
    EXPECT_EQ(Frames(doc.Pages[0]).size(), 4u);
    for (const char* caption : {"P-01", "P-02", "P-03", "P-04"})
        EXPECT_TRUE(HasLabel(doc.Pages[0], caption)) << caption;
    // The second page starts at pallet 5; its last two slots wrap round as the window's do.
    EXPECT_EQ(Frames(doc.Pages[1]).size(), 4u);
    EXPECT_TRUE(HasLabel(doc.Pages[1], "P-05"));
    EXPECT_TRUE(HasLabel(doc.Pages[1], "P-06"));
}

TEST(PlacementPicture, DrawingLiesBelowTheTitleStrip) {
    PictureJob job(PictureInstallation(4));
    const PictureDocument doc = job.Build();
    ASSERT_EQ(doc.Pages.size(), 3u);
    const std::vector<Primitive>& items = doc.Pages[0].Drawing.Items();
    const auto background = std::find_if(items.begin(), items.end(), [](const Primitive& p) {
        return p.Kind == PrimitiveKind::Rectangle && p.Fill == colour::kAreaBackground;
    });
    ASSERT_NE(background, items.end());
    // The strip is 1/25 of the page (more than twice the 18-pixel title font): 47 pixels,
    // then the area's own caption strip of 4 % of the rest (45 pixels).
    EXPECT_EQ(background->Rect.Top, 47 + 45);
    EXPECT_EQ(background->Rect.Left, 0);
    EXPECT_EQ(background->Rect.Right, kWidth);
    for (const IntRect& frame : Frames(doc.Pages[0])) {
        EXPECT_GT(frame.Top, 47);
        EXPECT_LE(frame.Bottom, kHeight);
    }
}

TEST(PlacementPicture, StacksAreDrawnWithTheirLabelsOnTheirProcessPage) {
    PictureJob job(PictureInstallation(4));
    const PictureDocument doc = job.Build();
    ASSERT_EQ(doc.Pages.size(), 3u);
    EXPECT_TRUE(HasLabel(doc.Pages[0], "BRK-1"));
    EXPECT_FALSE(HasLabel(doc.Pages[0], "PLT-2"));
    EXPECT_TRUE(HasLabel(doc.Pages[1], "PLT-2"));
    EXPECT_TRUE(HasLabel(doc.Pages[1], "BLK-4"));
    const auto parts =
        std::count_if(doc.Pages[0].Drawing.Items().begin(), doc.Pages[0].Drawing.Items().end(),
                      [](const Primitive& p) { return p.Fill == colour::kPartNormal; });
    EXPECT_EQ(parts, 2);  // eight brackets, four to a stack
}

TEST(PlacementPicture, OnePalletIsDrawnFlatOnOnePagePerProcess) {
    PictureJob job(PictureInstallation(1));
    const PictureDocument doc = job.Build();
    ASSERT_EQ(doc.Pages.size(), 3u);
    EXPECT_EQ(Frames(doc.Pages[0]).size(), 1u);
    EXPECT_EQ(doc.Pages[0].Title, "01 CUT Pallet A - job.txt");
    EXPECT_TRUE(HasLabel(doc.Pages[0], "P-01"));
}

TEST(PlacementPicture, ListingPageHoldsSmallBoxesSetAsideShortPartsWithWhyAndCrossings) {
    PictureJob job(PictureInstallation(4));
    const PartsInfo& clip = job.Part("A003");
    const PartsInfo& block = job.Part("A004");
    ASSERT_TRUE(LeftShort(block));
    ASSERT_LT(block.PiecesPlaced, 500);
    const PictureDocument doc = job.Build();
    ASSERT_EQ(doc.Pages.size(), 3u);
    const std::vector<std::string> expected{
        "job.txt",
        "Small boxes",
        "Box1",
        "01  " + SmallBoxLine(clip),
        "Set aside",
        "02  " + ToriokiLine(block),
        "Parts left short",
        "02  " + ShortLine(block),
        "The stacking height allows 5 per stack where 500 were needed: piece height 100, "
        "limit 500",
        "Stacks across an offset line",
        "-",
    };
    EXPECT_EQ(Labels(doc.Pages[2]), expected);
    EXPECT_EQ(SmallBoxLine(clip), "003   20 CLP-3");
    EXPECT_EQ(ShortLine(block).substr(0, 12), "004 A004    ");
}

TEST(PlacementPicture, ListingWithNothingToListShowsADashPerSection) {
    MiniInstallation inst = PictureInstallation(4);
    inst.Job =
        CutJob(kPalletBox, "A001,1,Bracket,BRK-1,250,150,1,8,0,0,4,,,2,G01,0000,,0,,K001,10\n");
    PictureJob job(inst);
    const PictureDocument doc = job.Build();
    ASSERT_EQ(doc.Pages.size(), 2u);
    EXPECT_EQ(
        Labels(doc.Pages[1]),
        (std::vector<std::string>{"job.txt", "Small boxes", "-", "Set aside", "-",
                                  "Parts left short", "-", "Stacks across an offset line", "-"}));
}

// Offset B of 100 on the command line: the stacks standing from the front margin (y 10)
// reach 90 past the lower offset line.
TEST(PlacementPicture, ListingNamesTheStacksAcrossAnOffsetLineWithTheirProcess) {
    const MiniInstallation inst = OneStackInstallation();
    PictureJob job(inst, " 0 0 0 100 1");
    const PictureDocument doc = job.Build();
    ASSERT_EQ(doc.Pages.size(), 2u);
    const std::vector<std::string> labels = Labels(doc.Pages[1]);
    const auto heading = std::find(labels.begin(), labels.end(), "Stacks across an offset line");
    ASSERT_NE(heading, labels.end());
    ASSERT_NE(heading + 1, labels.end());
    EXPECT_EQ(*(heading + 1), "01  A001 BRK-1: 90 past the lower offset line of pallet 1");
}

TEST(PlacementPicture, LongListingContinuesOnFurtherPages) {
    MiniInstallation inst = PictureInstallation(4);
    std::string parts;
    for (int i = 1; i <= 120; ++i) {
        parts += "C" + std::to_string(100 + i) + ",1,Clip,CLIP-" + std::to_string(i) +
                 ",40,30,11,2,100,0,0,,,1,G02,0000,,0,,K" + std::to_string(100 + i) + ",1\n";
    }
    inst.Job = CutJob(std::string(kPalletBox) + kSmallBox, parts);
    PictureJob job(inst);
    const PictureDocument doc = job.Build();
    ASSERT_GE(doc.Pages.size(), 3u);
    EXPECT_EQ(doc.Pages[1].Title, "job.txt");
    EXPECT_EQ(doc.Pages[2].Title, "job.txt (2)");
    size_t lines = 0;
    for (size_t i = 1; i < doc.Pages.size(); ++i) {
        for (const Primitive& p : doc.Pages[i].Drawing.Items()) {
            EXPECT_LE(p.Rect.Top, kHeight);
            if (p.Text.rfind("01  ", 0) == 0)
                ++lines;
        }
    }
    EXPECT_EQ(lines, 120u);
}

// Every record of the job as text: what drawing must leave as it was.
std::string JobState(const CKestoApp& app) {
    std::ostringstream out;
    out << app.Run.ExitParam << ' ' << app.Settings.IsDirect.Stored() << ' '
        << app.Settings.PalletCount << ' ' << app.Blocks.Count() << '\n';
    for (const PartsInfo& p : app.PartsList) {
        out << "part " << p.Seq << ' ' << p.PiecesPlaced << ' ' << p.PiecesSetAside << ' '
            << p.PartialQuantity << ' ' << p.Destination << '\n';
    }
    for (const BlockInfo& b : app.Blocks.Entries()) {
        out << "block " << b.KouteiNo << ' ' << b.PalletNo << ' ' << b.MinX << ' ' << b.MinY << ' '
            << b.MaxX << ' ' << b.MaxY << ' ' << int{b.CornerMask} << ' ' << b.Occupant << '\n';
    }
    for (const HaichiInfo& h : app.HaichiList) {
        out << "stack " << h.Part << ' ' << h.Pieces << ' ' << h.BlockIndex << ' ' << h.Level << ' '
            << int{h.Corner} << ' ' << int{h.Edits} << ' ' << h.X << ' ' << h.Y << '\n';
    }
    return out.str();
}

TEST(PlacementPicture, DrawingEveryViewAndEveryPageLeavesTheJobAndTheViewAsTheyWere) {
    PictureJob job(PictureInstallation(6));
    CKestoApp& app = job.App();
    ViewState& shown = job.Shown();
    shown.SetMode(PalletView::Danmen);
    shown.SetKoutei(2);
    shown.SetPallet(3);
    shown.Set3D(true);
    const ViewState shownBefore = shown;
    const std::string before = JobState(app);
    ASSERT_FALSE(app.HaichiList.Empty());

    EXPECT_GT(job.Build().Pages.size(), 2u);
    EXPECT_GT(BuildSortSheet(app, job.services.Get(), SheetHeading{"job.txt", "now"}).Pages.size(),
              2u);
    ViewState every = shown;
    for (PalletView mode :
         {PalletView::Flat, PalletView::Danmen, PalletView::FourPallet, PalletView::TwoPallet}) {
        for (bool is3D : {false, true}) {
            for (int32_t koutei = 1; koutei <= app.KouteiList.Count; ++koutei) {
                every.SetMode(mode);
                every.Set3D(is3D);
                every.SetKoutei(koutei);
                PalletDrawing drawing(app, every, job.Messages());
                drawing.SetArea({0, 0, 640, 480});
                DisplayList picture;
                drawing.Refresh(picture);
                drawing.DrawParts(picture, DrawMode::PartPieces);
                EXPECT_FALSE(picture.Items().empty());
            }
        }
    }

    EXPECT_EQ(JobState(app), before);
    EXPECT_TRUE(shown == shownBefore);
}

TEST(PlacementPicture, FontsAreTheSettingsFonts) {
    PictureJob job(PictureInstallation(4));
    const PictureDocument doc = job.Build();
    EXPECT_EQ(doc.Fonts[0].Height, 0);
    EXPECT_EQ(doc.Fonts[1].Height, -12);
    EXPECT_EQ(doc.Fonts[1].Name, "Sans");
    EXPECT_EQ(doc.Fonts[2].Height, 13);
    EXPECT_EQ(doc.Fonts[2].Name, "Mono");
    EXPECT_EQ(doc.Fonts[4].Height, 18);
}

// --- the document file ------------------------------------------------------------------

TEST(PictureDocumentFile, PlacedJobReadsBackAsWritten) {
    PictureJob job(PictureInstallation(6));
    const PictureDocument doc = job.Build();
    const std::optional<PictureDocument> back = test::ReadBack(test::Written(doc));
    ASSERT_TRUE(back.has_value());
    test::ExpectSameDocument(doc, *back);
}

}  // namespace
}  // namespace kesto

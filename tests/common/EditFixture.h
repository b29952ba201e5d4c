// The drawing area's editing on a job filled in code: the session's grid pallet "PAL" (cells of
// 300 x 200; StartCorner 3 numbers the columns from the right and the rows from the bottom:
// blocks 0, 1, 2 span x 690..990, blocks 3, 4, 5 x 380..680, blocks 6, 7, 8 x 70..370; rows
// y 10..210, 220..420, 430..630), two pallets, drawn in FLAT into a 1080 x 900 area.
//
// Worked out by hand: the caption strip is trunc(0.04 x 900) = 36; the world window is
// x -40..1040, y -32..832, so the scale is max(1080 / 1080, 864 / 864) = 1; the 1000 x 800
// frame is centred at (40, 68)-(1040, 868). A point (x, y) in millimetres is at pixel
// (x + 40, 868 - y).
#pragma once

#include <vector>

#include "common/SessionFixture.h"
#include "placement/CKs_Block.h"
#include "session/DrawingEdit.h"
#include "view/DisplayList.h"
#include "view/PalletDrawing.h"

namespace kesto::test {

// The window around the drawing area, recorded: Refresh draws the picture into Picture.
class RecordingDrawAreaView : public DrawAreaView {
  public:
    explicit RecordingDrawAreaView(PalletDrawing& drawing) : drawing_(drawing) {}

    void Refresh() override {
        ++Refreshes;
        Picture.Clear();
        drawing_.Refresh(Picture);
    }
    void ShowDragImage(const std::vector<IntRect>& rects) override {
        Image = rects;
        ++ImageShows;
    }
    // The landing goes with the drag image.
    void HideDragImage() override {
        Image.clear();
        Landing.reset();
    }
    void ShowLanding(const std::optional<DropPreview>& landing) override { Landing = landing; }
    void SyncPartList(const std::vector<int32_t>& seqs) override {
        Synced = seqs;
        ++Syncs;
    }
    void SelectPartsAllLine(int32_t seq) override { AllPartsLine = seq; }
    void RefreshInfoPanel() override { ++InfoRefreshes; }
    void ShowRefusedDrop(DropRefusal why, const std::vector<IntRect>& rects) override {
        Refusals.push_back(why);
        RefusedAt = rects;
    }

    DisplayList Picture;
    std::vector<DropRefusal> Refusals;
    std::vector<IntRect> RefusedAt;
    std::vector<IntRect> Image;
    std::optional<DropPreview> Landing;
    std::vector<int32_t> Synced;
    int32_t AllPartsLine = 0;
    int Refreshes = 0;
    int ImageShows = 0;
    int Syncs = 0;
    int InfoRefreshes = 0;

  private:
    PalletDrawing& drawing_;
};

class EditTest : public SessionTest {
  protected:
    EditTest() {
        app.Settings.PalletCount = 2;
        shown.SetPallet(1);
        app.Settings.StartCorner = 3;
        app.Settings.IsDirect = 0;
        shown.SetHit(HitBy::Single);
        drawing.SetArea({0, 0, 1080, 900});
        EXPECT_TRUE(CKs_Block(app, session.Svc()).SetUp().Ok());
    }

    // The corner marks as the stacks make them, and the picture as the window shows it.
    void Show() {
        CKs_Haichi(app, session.Svc()).RebuildCorners(app.KouteiAt(1), {});
        view.Refresh();
    }
    void Click(int32_t x, int32_t y, bool shift = false) {
        edit.Press(canvas, x, y, shift);
        edit.Release(canvas, x, y);
    }
    // Press, the arming move one pixel on, the move to (x1, y1) and the release there.
    void Drag(int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
        edit.Press(canvas, x0, y0, false);
        edit.Move(canvas, x0 + 1, y0, true);
        edit.Move(canvas, x1, y1, true);
        edit.Release(canvas, x1, y1);
    }
    bool PickedIn(const DisplayList& list, const IntRect& r, Rgb fill) const {
        for (const Primitive& p : list.Items()) {
            if (p.Kind == PrimitiveKind::Rectangle && p.Rect == r && p.Fill == fill)
                return true;
        }
        return false;
    }

    PalletDrawing drawing{app, shown, testServices.Messages};
    RecordingDrawAreaView view{drawing};
    DrawingEdit edit{app, session.Svc(), drawing, view};
    DisplayList canvas;
};

// Two parts on pallet 1 of the shown job: A in two stacks of 3 (blocks 0 and 6), B in one
// stack of 2 (block 3).
class TwoPartsTest : public EditTest {
  protected:
    TwoPartsTest()
        : partA(test::AddPart(app, {.SizeX = 100, .SizeY = 50, .Quantity = 6, .PieceHeight = 1})),
          partB(test::AddPart(app, {.SizeX = 100, .SizeY = 50, .Quantity = 2, .PieceHeight = 1})),
          a(AddStack(app, partA,
                     {.Block = 0,
                      .Pieces = 3,
                      .X = 990,
                      .Y = 10,
                      .Corner = kCornerMaxMin,
                      .CountOnPart = true})),
          b(AddStack(app, partB,
                     {.Block = 3,
                      .Pieces = 2,
                      .X = 680,
                      .Y = 10,
                      .Corner = kCornerMaxMin,
                      .CountOnPart = true})),
          a2(AddStack(app, partA,
                      {.Block = 6,
                       .Pieces = 3,
                       .X = 370,
                       .Y = 10,
                       .Corner = kCornerMaxMin,
                       .CountOnPart = true})) {
        Show();
    }

    PartsInfo& partA;
    PartsInfo& partB;
    HaichiInfo& a;
    HaichiInfo& b;
    HaichiInfo& a2;
};

}  // namespace kesto::test

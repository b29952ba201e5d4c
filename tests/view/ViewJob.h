// A job built in code for the drawing tests: a message file with the drawing's font keys,
// fonts of known pixel heights, and helpers that append pallets, processes, parts, blocks and
// stacks to the application's lists.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "app/CKestoApp.h"
#include "app/ViewState.h"
#include "common/PartFields.h"
#include "common/StackFields.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "support/MessageFile.h"
#include "view/PalletDrawing.h"

namespace kesto::test {

// Font slots of the message file below and their pixel heights.
inline constexpr int32_t kViewFont = 1;     // VIEW-STRING, 12 pixels
inline constexpr int32_t kLabelFont = 2;    // DRAW-STRING, 14 pixels
inline constexpr int32_t kInfoFont = 3;     // INFO-STRING, 20 pixels
inline constexpr int32_t kCaptionFont = 4;  // L-PALLET-CAP, 15 pixels

inline const char* const kViewMessages =
    "[MainDlg]\n"
    "L-PALLET-CAP=4,\"Pallet\"\n"
    "DRAW-STRING=2,\"x\"\n"
    "INFO-STRING=3,\"\"\n"
    "INFO1-STRING=3,pcs\n"
    "INFO2-STRING=3,\"Per stack\"\n"
    "VIEW-STRING=1,\"\"\n";

class ViewJob {
  public:
    explicit ViewJob(const std::string& messageText = kViewMessages) {
        const std::string path = folder / "Kesto.ini";
        WriteFile(path, messageText);
        EXPECT_EQ(0, messages.Load(path, op));
        app.Settings.FontHeight = {0, 12, 14, 20, 15};
        app.Settings.PalletCount = 1;
        shown.SetPallet(1);
        shown.SetKoutei(1);
        app.Settings.PalletPrefix = "PL";
        app.Settings.IsDirect = 0;
        shown.SetStoredBlockDraw(0);
        shown.SetHit(HitBy::Single);
    }
    ViewJob(const ViewJob&) = delete;
    ViewJob& operator=(const ViewJob&) = delete;

    PalletInfo& AddPallet(const std::string& name, double lengthX, double lengthY,
                          double maxHeight) {
        PalletInfo& p = app.PalletList.Append();
        app.PalletList.Count++;
        p.No = 7;
        p.Name = name;
        p.LengthX = lengthX;
        p.LengthY = lengthY;
        p.MaxStackHeight = maxHeight;
        return p;
    }

    KouteiInfo& AddKoutei(int32_t no, const std::string& name1, const std::string& palletName) {
        KouteiInfo& k = app.KouteiList.Append();
        app.KouteiList.Count++;
        k.No = no;
        k.Name = name1;
        k.PalletName = palletName;
        return k;
    }

    // A part as named, its sensitive sides "0000" where not named.
    PartsInfo& AddPart(PartFields fields) {
        if (fields.SensitiveSides.empty())
            fields.SensitiveSides = "0000";
        return test::AddPart(app, fields);
    }

    // Appends a block entry and returns its index.
    int32_t AddBlock(int32_t kouteiNo, int32_t palletNo, double minX, double minY, double maxX,
                     double maxY, uint8_t cornerMask = 0) {
        BlockInfo b;
        b.KouteiNo = kouteiNo;
        b.PalletNo = palletNo;
        b.MinX = minX;
        b.MinY = minY;
        b.MaxX = maxX;
        b.MaxY = maxY;
        b.CornerMask = cornerMask;
        return app.Blocks.AddBlock(b);
    }

    TempFolder folder;
    RecordingOperator op;
    MessageTable messages;
    CKestoApp app;
    ViewState shown;
};

// The drawing area of the tests' window, in pixels.
inline constexpr IntRect kViewArea{0, 0, 1000, 700};

// A drawing of the job placed in area, as the window places its drawing area.
class PlacedDrawing : public PalletDrawing {
  public:
    explicit PlacedDrawing(ViewJob& job, const colour::Palette& palette = colour::kScreenPalette,
                           const IntRect& area = kViewArea)
        : PalletDrawing(job.app, job.shown, job.messages, palette) {
        SetArea(area);
    }
};

}  // namespace kesto::test

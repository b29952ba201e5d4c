// A window over a small job for the tests of the mouse editing and what follows it.
//
// The job: one pallet type of 1000 x 800 with a single cell of 900 x 700 (margins 50), two
// pallets. Part A1 (320 x 200, ten pieces, five a stack) comes first: its two stacks take the
// cell of pallet 1 in corners 4 and 8, at X 950 and Y 50 and 550. Part A2 (300 x 200, the same
// counts) finds that cell served and takes pallet 2's cell alike.
//
// The area is placed at 1080 x 900: caption strip 36, scale 1, a point (x, y) in millimetres at
// pixel (x + 40, 868 - y) in FLAT. A1's stacks: (670, 618)-(990, 818) and (670, 118)-(990, 318);
// the cell: (90, 118)-(990, 818).
#pragma once

#include <gtest/gtest.h>

#include <QListWidget>
#include <QPushButton>
#include <QtTest/QTest>
#include <iterator>

#include "common/WindowJob.h"
#include "ui/draw/CKs_DrawArea.h"

namespace kesto::test {

inline constexpr const char* kEditingPallets =
    "P1,PALW,0,0,1000,800,500,50,50,900,700,0,0,1,1,0,0,Wide\n";
inline constexpr const char* kEditingJob =
    "#BoxInfo\n"
    "PAL,1,0,0,2000,0,2000\n"
    "#End\n"
    "#KouteiInfo\n"
    "1,Cut,PALW\n"
    "#End\n"
    "#PartsInfo\n"
    "A1,1,PartA,TextA,320,200,1,10,1,0,5,,,1.0,G1,0000,,0,,X1,10\n"
    "A2,1,PartB,TextB,300,200,1,10,1,0,5,,,1.0,G1,0000,,0,,X2,10\n"
    "#End\n";

struct EditingWindow {
    EditingWindow() {
        job.Install.Write("pallet.txt", kEditingPallets);
        job.Install.Write("job/job.txt", kEditingJob);
        job.Install.Write("msg/Kesto.ini", KestoIniWithDrawing());
        opened = job.Open() && ShowLaidOut(*job.Dialog, 1600, 1000);
        Area().PlaceArea({0, 0, 1080, 900});
        Area().Refresh();
    }
    CKs_DrawArea& Area() { return *job.Dialog->DrawArea(); }
    PalletDrawing& Drawing() { return Area().Drawing(); }
    CKestoApp& App() { return job.App(); }
    ViewState& Shown() { return job.Shown(); }
    // The stacks in list order: A1's two, then A2's two.
    HaichiInfo& StackNo(int n) {
        auto it = App().HaichiList.begin();
        std::advance(it, n);
        return *it;
    }
    // What the operator sees: the picture with the drag image over it.
    Rgb Seen(int x, int y) {
        return PixelAt(Area().grab().toImage().convertToFormat(QImage::Format_RGB32), x, y);
    }
    Rgb Picture(int x, int y) { return PixelAt(Area().Image(), x, y); }

    void Click(QPoint at, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(&Area(), Qt::LeftButton, keys, at);
    }
    // Press, one arming move a pixel on, the move to `to` and the release there.
    void Drag(QPoint from, QPoint to) {
        QTest::mousePress(&Area(), Qt::LeftButton, {}, from);
        QTest::mouseMove(&Area(), from + QPoint(1, 0));
        QTest::mouseMove(&Area(), to);
        QTest::mouseRelease(&Area(), Qt::LeftButton, {}, to);
    }
    // A key as the operator presses it: to the main window, which has the focus.
    void Key(Qt::Key key, Qt::KeyboardModifiers keys) {
        job.Dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(job.Dialog.get()));
        QTest::keyClick(job.Dialog.get(), key, keys);
    }
    QPushButton* Button(const char* name) { return job.Dialog->findChild<QPushButton*>(name); }
    QListWidget* List(const char* name) { return job.Dialog->findChild<QListWidget*>(name); }
    QStringList Selected(const char* name) {
        QStringList lines;
        for (const QListWidgetItem* item : List(name)->selectedItems())
            lines << item->text();
        return lines;
    }

    WindowJob job;
    bool opened = false;
};

}  // namespace kesto::test

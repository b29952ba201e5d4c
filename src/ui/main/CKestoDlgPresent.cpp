// The one place where the main window follows a command: each change shows in the widgets
// that display it, in the order the operator sees them settle.
#include <QComboBox>
#include <QListWidget>
#include <QSignalBlocker>

#include "ui/dialogs/CKs_PartsAllDlg.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/CKestoDlg.h"

namespace kesto {

namespace {

// The changes the drawing is drawn again for.
constexpr ChangeSet kDrawingChanges = Change::Koutei | Change::Pallet | Change::Mode |
                                      Change::Display | Change::BlockCells | Change::Stacks |
                                      Change::Reloaded | Change::Place | Change::Zoom;
// The changes the all-parts dialog is filled again for: its lines and the parts in view.
constexpr ChangeSet kPartsAllChanges = Change::Koutei | Change::Pallet | Change::Mode |
                                       Change::Parts | Change::SetAsideParts | Change::Place;

}  // namespace

void CKestoDlg::ShowWholeJob() {
    // A drop the replay saw refused is not the operator's to read about.
    drawArea_->ForgetRefusal();
    layoutStep_ = LayoutStep::Due;
    ApplyLayout();
    // Every change but a reload: the lists are filled again, and the picks the journal left stay.
    ChangeSet everything;
    for (uint32_t bit = 1; bit <= static_cast<uint32_t>(kLastChange); bit <<= 1) {
        if (static_cast<Change>(bit) != Change::Reloaded)
            everything |= static_cast<Change>(bit);
    }
    Present(everything);
}

void CKestoDlg::Present(ChangeSet changed) {
    if (changed.Empty())
        return;
    if (changed.Has(Change::Reloaded)) {
        // The picks of the old job are gone; the lists were filled as the job was placed.
        editing_->JobReloaded();
        const QSignalBlocker block(allParts_);
        allParts_->clearSelection();
    }
    if (changed.Has(Change::Place)) {
        // The step is shown where it was taken: its process in the schedule, its pallet chosen.
        SelectScheduleRow(shown_.Koutei() - 1);
        FillPalletSelect();
        const QSignalBlocker block(palletSelect_);
        palletSelect_->setCurrentIndex(shown_.Pallet() - 1);
    }
    if (changed.Has(Change::Hit)) {
        SetChecked(kHitByBlock, shown_.Hit() == HitBy::Block);
        SetChecked(kHitSingle, shown_.Hit() == HitBy::Single);
    }
    if (changed.Has(Change::Direct)) {
        const size_t slot = app_.Settings.IsDirect.IsNotZero() ? 1 : 0;
        SetCaption(Control(kNestToggle), nestCaptionFonts_[slot], nestCaptionTexts_[slot]);
    }
    PresentLists(changed);
    // The part view showed the chosen set-aside line, which is gone.
    if (changed.Any(Change::Koutei | Change::SetAsideLine))
        partsView_->ShowSize(kNoPartSize, kNoPartSize);
    PresentDrawing(changed);
    if (changed.Has(Change::Place))
        RepaintPanels();
    // A sheet count leaves the all-parts dialog as it was.
    if (changed.Any(kPartsAllChanges) && !changed.Has(Change::Restacked))
        RefreshPartsAll();
    // The information panel names the process in view and describes the pick.
    if (changed.Any(Change::Koutei | Change::Selection))
        partsInfo_->Refresh();
    if (changed.Any(Change::Parts | Change::SetAsideParts | Change::Reloaded | Change::History))
        FollowSetAside();
    if (changed.Has(Change::Reloaded))
        EndIfJobEnded();
}

void CKestoDlg::PresentLists(ChangeSet changed) {
    // A set-aside line taken (Up, right) fills the small-box list again too.
    if (changed.Any(Change::Koutei | Change::Box | Change::Parts))
        FillSmallBox(shown_.Koutei(), shown_.Box());
    const ChangeSet setAside = Change::Koutei | Change::Parts | Change::SetAsideParts;
    if (changed.Any(setAside)) {
        FillTorioki(shown_.Koutei());
        FillAllParts(shown_.Koutei());
    }
}

void CKestoDlg::PresentDrawing(ChangeSet changed) {
    const bool viewChosen = changed.Has(Change::Mode);
    // FLAT hides the all-parts dialog; the other views hide it while the drawing changes and
    // show it again over the new view.
    if (viewChosen && shown_.Mode() == PalletView::Flat) {
        partsAll_->Place(Visibility::Hidden);
        partsAllState_ = Visibility::Hidden;
    } else if (viewChosen && partsAllState_ == Visibility::Shown) {
        partsAll_->Place(Visibility::Hidden);
    }
    if (!changed.Any(kDrawingChanges))
        return;
    drawArea_->Refresh();
    if (changed.Has(Change::Restacked)) {
        drawArea_->DrawParts(DrawMode::Highlight);
    } else if (changed.Has(Change::BlockCells)) {
        // With outlines shown the highlight is drawn even without a pick.
        if (drawArea_->Drawing().Selected().Picked() != kNoStack || app_.Settings.IsDirect.IsOne())
            drawArea_->DrawParts(DrawMode::Highlight);
    } else if (changed.Any(Change::Mode | Change::Place | Change::Zoom)) {
        DrawHitDisplay();
    }
    if (viewChosen && shown_.Mode() != PalletView::Flat && partsAllState_ == Visibility::Shown)
        partsAll_->Place(Visibility::Shown);
}

void CKestoDlg::RepaintPanels() {
    partsInfo_->Refresh();
    partsView_->Repaint();
}

void CKestoDlg::DrawHitDisplay() {
    if (drawArea_->Drawing().Selected().Picked() != kNoStack)
        drawArea_->DrawParts(DrawMode::Highlight);
}

}  // namespace kesto

// What the operator's buttons and list selections do to the job.
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

#include "app/Codes.h"
#include "render/TextCodec.h"
#include "rules/ListLines.h"
#include "rules/PartsAllList.h"
#include "ui/dialogs/CKs_PartsAllDlg.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/CKestoDlg.h"

namespace kesto {

std::optional<int32_t> CKestoDlg::SelectedSeq(const QListWidget* list) const {
    const QList<QListWidgetItem*> selected = list->selectedItems();
    if (selected.isEmpty())
        return std::nullopt;
    return SeqOfLine(EncodeText(selected.front()->text()));
}

void CKestoDlg::CommonRefresh() {
    FillSmallBox(shown_.CurrentKoutei, shown_.CurrentBox);
    FillTorioki(shown_.CurrentKoutei);
    FillAllParts(shown_.CurrentKoutei);
}

void CKestoDlg::RepaintPanels() {
    partsInfo_->Refresh();
    partsView_->Repaint();
}

void CKestoDlg::DrawHitDisplay() {
    if (drawArea_->Drawing().Selected().Picked() != kNoStack)
        drawArea_->DrawParts(DrawMode::Highlight);
}

bool CKestoDlg::RefusedForBand() {
    if (drawArea_->Drawing().Selected().Band() == BandState::Off)
        return false;
    session_.Svc().Op.AskKaku(kaku::kBandSelectionActive, kaku::kNone);
    return true;
}

void CKestoDlg::OnSelectKoutei() {
    const int row = schedule_->currentRow();
    if (row < 0)
        return;
    shown_.CurrentKoutei = row + 1;
    FillAllParts(shown_.CurrentKoutei);
    FillSmallBox(shown_.CurrentKoutei, shown_.CurrentBox);
    FillTorioki(shown_.CurrentKoutei);
    partsView_->ShowSize(kNoPartSize, kNoPartSize);
    drawArea_->Refresh();
    RefreshPartsAll();
    // The information panel names the process in view, as every repaint of the window shows.
    partsInfo_->Refresh();
}

void CKestoDlg::OnSelectSmallBox(int k) {
    for (int i = 1; i <= SmallBoxPages::kPerPage; ++i)
        SetChecked(kBoxButtons[i - 1], i == k);
    shown_.CurrentBox = SmallBoxCode(boxPages_.BoxOnButton(k));
    FillSmallBox(shown_.CurrentKoutei, shown_.CurrentBox);
}

void CKestoDlg::OnBoxPage(int direction) {
    if (TurnBoxPage(direction) == 1)
        UpdateBoxButtons();
}

void CKestoDlg::OnDown() {
    if (!session_.Down(SelectedSeq(smallBox_)))
        return;
    CommonRefresh();
    RefreshPartsAll();
    FollowSetAside();
}

void CKestoDlg::OnUp() {
    if (!session_.Up(SelectedSeq(torioki_)))
        return;
    CommonRefresh();
    partsView_->ShowSize(kNoPartSize, kNoPartSize);
    RefreshPartsAll();
    FollowSetAside();
}

void CKestoDlg::OnSelectTorioki() {
    const std::optional<int32_t> seq = SelectedSeq(torioki_);
    if (!seq)
        return;
    if (const PartsInfo* part = session_.FindPart(*seq, true))
        partsView_->ShowSize(part->SizeX, part->SizeY);
}

void CKestoDlg::OnPalletSelect() {
    shown_.CurrentPallet = palletSelect_->currentIndex() + 1;
    drawArea_->Refresh();
    RefreshPartsAll();
}

void CKestoDlg::OnGrid() {
    shown_.GridFlag = static_cast<QPushButton*>(Control(kGridToggle))->isChecked() ? 1 : 0;
    drawArea_->Refresh();
}

void CKestoDlg::On3D() {
    shown_.Is3D = shown_.Is3D == 0 ? 1 : 0;
    drawArea_->Refresh();
}

void CKestoDlg::OnHit(int byBlock) {
    shown_.HitByBlock = byBlock;
    SetChecked(kHitByBlock, byBlock == 1);
    SetChecked(kHitSingle, byBlock == 0);
}

// FLAT hides the all-parts dialog; the other views hide it while the drawing changes and show
// it again over the new view.
void CKestoDlg::OnView(PalletView mode) {
    if (RefusedForBand())
        return;
    if (mode == PalletView::Flat) {
        partsAll_->Place(Visibility::Hidden);
        shown_.PartsAllState = Visibility::Hidden;
    } else if (shown_.PartsAllState == Visibility::Shown) {
        partsAll_->Place(Visibility::Hidden);
    }
    shown_.PalletMode = mode;
    drawArea_->Refresh();
    DrawHitDisplay();
    if (mode != PalletView::Flat && shown_.PartsAllState == Visibility::Shown)
        partsAll_->Place(Visibility::Shown);
    RefreshPartsAll();
}

void CKestoDlg::OnDirect() {
    if (editing_->SwitchDirect()) {
        const QSignalBlocker block(allParts_);
        allParts_->clearSelection();
        OnHit(0);
    }
    const size_t slot = app_.Settings.IsDirect.IsNotZero() ? 1 : 0;
    SetCaption(Control(kNestToggle), nestCaptionFonts_[slot], nestCaptionTexts_[slot]);
    OnView(shown_.PalletMode);
}

void CKestoDlg::OnBlockDraw() {
    shown_.IsBlockDraw = shown_.IsBlockDraw == 0 ? 1 : 0;
    drawArea_->Refresh();
    // With outlines shown the highlight is drawn even without a pick.
    if (drawArea_->Drawing().Selected().Picked() != kNoStack || app_.Settings.IsDirect.IsOne())
        drawArea_->DrawParts(DrawMode::Highlight);
}

void CKestoDlg::OnInfo() {
    if (RefusedForBand())
        return;
    const Visibility state =
        shown_.PartsAllState == Visibility::Hidden ? Visibility::Shown : Visibility::Hidden;
    partsAll_->Place(state);
    shown_.PartsAllState = state;
    if (shown_.PartsAllState == Visibility::Hidden) {
        RepaintPanels();
        DrawHitDisplay();
    }
}

void CKestoDlg::ShowReloadedJob() {
    editing_->JobReloaded();
    {
        const QSignalBlocker block(allParts_);
        allParts_->clearSelection();
    }
    drawArea_->Refresh();
    FollowSetAside();
    EndIfJobEnded();
}

void CKestoDlg::OnRetry() {
    if (!session_.Retry())
        return;
    ShowReloadedJob();
    RefreshPartsAll();
}

void CKestoDlg::OnAuto() {
    if (session_.Auto())
        ShowReloadedJob();
}

void CKestoDlg::OnOK() {
    if (session_.Finish(OkCancel::Ok))
        EndIfJobEnded();
}

void CKestoDlg::OnCancel() {
    if (session_.Finish(OkCancel::Cancel))
        EndIfJobEnded();
}

void CKestoDlg::OnClose() {
    if (session_.Close())
        EndIfJobEnded();
}

}  // namespace kesto

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
    Present(session_.ChooseKoutei(row + 1));
}

void CKestoDlg::OnSelectSmallBox(int k) {
    for (int i = 1; i <= SmallBoxPages::kPerPage; ++i)
        SetChecked(kBoxButtons[i - 1], i == k);
    Present(session_.ChooseBox(SmallBoxCode(boxPages_.BoxOnButton(k))));
}

void CKestoDlg::OnBoxPage(int direction) {
    if (TurnBoxPage(direction) == 1)
        UpdateBoxButtons();
}

void CKestoDlg::OnDown() {
    Present(session_.Down(SelectedSeq(smallBox_)));
}

void CKestoDlg::OnUp() {
    Present(session_.Up(SelectedSeq(torioki_)));
}

void CKestoDlg::OnSelectTorioki() {
    const std::optional<int32_t> seq = SelectedSeq(torioki_);
    if (!seq)
        return;
    if (const PartsInfo* part = session_.FindPart(*seq, true))
        partsView_->ShowSize(part->SizeX, part->SizeY);
}

void CKestoDlg::OnPalletSelect() {
    Present(session_.ChoosePallet(palletSelect_->currentIndex() + 1));
}

void CKestoDlg::OnGrid() {
    // The drawing follows the button, which toggled itself.
    Present(session_.SetGrid(static_cast<QPushButton*>(Control(kGridToggle))->isChecked()) |
            Change::Display);
}

void CKestoDlg::On3D() {
    Present(session_.Set3D(!shown_.Is3D()));
}

void CKestoDlg::OnHit(HitBy hit) {
    Present(session_.SetHit(hit));
}

void CKestoDlg::OnView(PalletView mode) {
    if (RefusedForBand())
        return;
    Present(session_.ChooseView(mode));
}

void CKestoDlg::OnDirect() {
    ChangeSet changed = Change::Direct;
    if (editing_->SwitchDirect()) {
        const QSignalBlocker block(allParts_);
        allParts_->clearSelection();
        changed |= session_.SetHit(HitBy::Single);
    }
    Present(changed);
    // The view is shown anew in the new mode.
    OnView(shown_.Mode());
}

void CKestoDlg::OnBlockDraw() {
    Present(session_.SwitchBlockDraw());
}

void CKestoDlg::OnInfo() {
    if (RefusedForBand())
        return;
    const Visibility state =
        partsAllState_ == Visibility::Hidden ? Visibility::Shown : Visibility::Hidden;
    partsAll_->Place(state);
    partsAllState_ = state;
    if (partsAllState_ == Visibility::Hidden) {
        RepaintPanels();
        DrawHitDisplay();
    }
}

void CKestoDlg::OnRetry() {
    Present(session_.Retry());
}

void CKestoDlg::OnAuto() {
    Present(session_.Auto());
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

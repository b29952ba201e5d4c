// What the operator's buttons and list selections do to the job.
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>

#include "app/ExitCode.h"
#include "output/CKs_FileSave.h"
#include "support/MessageFile.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/Application.h"
#include "ui/main/CKestoDlg.h"
#include "ui/main/ListLines.h"
#include "ui/main/TextCodec.h"

namespace kesto {

namespace {

constexpr int kNoLineSelected = 7;
constexpr int kSeqLimit = 1000;

bool FitsBox(const PartsInfo& part, const BoxInfo& box) {
    return box.Size[0] <= part.SizeX && part.SizeX <= box.Size[1] && box.Size[2] <= part.SizeY &&
           part.SizeY <= box.Size[3];
}

}  // namespace

PartsInfo* CKestoDlg::PartOfSelectedLine(QListWidget* list, bool anyKoutei) {
    const QList<QListWidgetItem*> selected = list->selectedItems();
    if (selected.isEmpty())
        return nullptr;
    const int32_t seq = SeqOfLine(EncodeText(selected.front()->text()));
    for (PartsInfo& part : app_.PartsList) {
        if (part.Seq == seq && (anyKoutei || part.KouteiNo == app_.CurrentKoutei))
            return &part;
    }
    return nullptr;
}

void CKestoDlg::CommonRefresh() {
    FillSmallBox(app_.CurrentKoutei, app_.CurrentBox);
    FillTorioki(app_.CurrentKoutei);
    FillAllParts(app_.CurrentKoutei);
}

void CKestoDlg::OnSelectKoutei() {
    const int row = schedule_->currentRow();
    if (row < 0)
        return;
    app_.CurrentKoutei = row + 1;
    FillAllParts(app_.CurrentKoutei);
    FillSmallBox(app_.CurrentKoutei, app_.CurrentBox);
    FillTorioki(app_.CurrentKoutei);
    partsView_->ShowPart(kNoPartSize, kNoPartSize);
    drawArea_->Refresh();
}

void CKestoDlg::OnSelectSmallBox(int k) {
    for (int i = 1; i <= 3; ++i)
        SetChecked(1036 + i, i == k);
    app_.CurrentBox = (boxPage_ - 1) * 3 + 99 + k;
    FillSmallBox(app_.CurrentKoutei, app_.CurrentBox);
}

void CKestoDlg::OnBoxPage(int direction) {
    if (TurnBoxPage(direction) == 1)
        UpdateBoxButtons();
}

void CKestoDlg::OnDown() {
    if (smallBox_->selectedItems().isEmpty()) {
        app_.ShowKaku(kNoLineSelected, 0);
        return;
    }
    if (PartsInfo* part = PartOfSelectedLine(smallBox_, false)) {
        part->Num2 = 1000;
        part->Work[2] = part->Num1;
    }
    CommonRefresh();
}

void CKestoDlg::OnUp() {
    if (app_.CurrentBox < 100 || app_.CurrentBox > 198) {
        app_.ShowKaku(4, 0);
        return;
    }
    if (torioki_->selectedItems().isEmpty()) {
        app_.ShowKaku(kNoLineSelected, 0);
        return;
    }
    if (PartsInfo* part = PartOfSelectedLine(torioki_, false)) {
        for (const BoxInfo& box : app_.BoxList) {
            if (box.No != app_.CurrentBox)
                continue;
            if (!FitsBox(*part, box)) {
                app_.ShowKaku(5, 6);
                return;
            }
            break;
        }
        if (part->Work[1] > 0) {
            app_.ShowKaku(11, 12);
        } else {
            part->Num2 = app_.CurrentBox;
            part->Work[1] = 0;
            part->Work[2] = 0;
        }
    }
    CommonRefresh();
    partsView_->ShowPart(kNoPartSize, kNoPartSize);
}

void CKestoDlg::OnSelectTorioki() {
    if (const PartsInfo* part = PartOfSelectedLine(torioki_, true))
        partsView_->ShowPart(part->SizeX, part->SizeY);
}

void CKestoDlg::OnPalletSelect() {
    app_.CurrentPallet = palletSelect_->currentIndex() + 1;
    drawArea_->Refresh();
}

void CKestoDlg::OnGrid() {
    app_.GridFlag = static_cast<QPushButton*>(Control(1028))->isChecked() ? 1 : 0;
    drawArea_->Refresh();
}

void CKestoDlg::On3D() {
    app_.Is3D = app_.Is3D == 0 ? 1 : 0;
    drawArea_->Refresh();
}

void CKestoDlg::OnHit(int byBlock) {
    app_.HitByBlock = byBlock;
    SetChecked(1035, byBlock == 1);
    SetChecked(1036, byBlock == 0);
}

void CKestoDlg::OnView(int mode) {
    if (drawArea_->BandActive != 0) {
        app_.ShowKaku(15, 0);
        return;
    }
    if (mode == 0)
        app_.PartsAllState = 1;
    app_.PalletMode = mode;
    drawArea_->Refresh();
}

void CKestoDlg::OnDirect() {
    if (app_.IsDirect != 0) {
        app_.IsDirect = 0;
        if (drawArea_->BandActive >= 1) {
            drawArea_->ResetSelection();
            allParts_->clearSelection();
            OnHit(0);
        }
    } else {
        app_.IsDirect = 1;
    }
    const size_t slot = app_.IsDirect != 0 ? 1 : 0;
    SetCaption(Control(1031), app_.DisplayFlags[slot], app_.DisplayTexts[slot]);
    OnView(app_.PalletMode);
}

void CKestoDlg::OnBlockDraw() {
    app_.IsBlockDraw = app_.IsBlockDraw == 0 ? 1 : 0;
    drawArea_->Refresh();
}

void CKestoDlg::OnInfo() {
    if (drawArea_->BandActive != 0) {
        app_.ShowKaku(15, 0);
        return;
    }
    app_.PartsAllState = app_.PartsAllState == 1 ? 2 : 1;
}

void CKestoDlg::RereadJob() {
    app_.FreeJob();
    app_.ReadRegistrySettings();
    if (!MessageFileLoaded())
        app_.InitSettings();
    app_.ReadInput();
}

void CKestoDlg::OnRetry() {
    if (app_.ShowKaku(202, 203) != 1)
        return;
    drawArea_->ResetSelection();
    allParts_->clearSelection();
    RereadJob();
    LoadAndPlace(0, 1, {});
    drawArea_->Picked = nullptr;
    drawArea_->Refresh();
    drawArea_->LastPicked = nullptr;
}

void CKestoDlg::OnAuto() {
    if (app_.ShowKaku(204, 205) != 1)
        return;
    drawArea_->ResetSelection();
    allParts_->clearSelection();
    std::vector<int> keep(kSeqLimit, 0);
    for (const PartsInfo& part : app_.PartsList) {
        if (part.Work[1] != 0 && part.Seq >= 0 && part.Seq < kSeqLimit)
            keep[part.Seq] = part.Work[1];
    }
    RereadJob();
    LoadAndPlace(1, 0, keep);
    drawArea_->Picked = nullptr;
    drawArea_->Refresh();
    drawArea_->LastPicked = nullptr;
}

int CKestoDlg::FinishJob() {
    CKs_FileSave save(app_);
    if (!save.CheckOffsets())
        EndProcess(kExitOffsetAbort);
    return save.SaveAll();
}

void CKestoDlg::OnOK() {
    if (FinishJob())
        EndDialog(1);
}

void CKestoDlg::OnCancel() {
    if (FinishJob())
        EndDialog(2);
}

void CKestoDlg::OnClose() {
    CKs_FileSave save(app_);
    if (!save.CheckOffsets())
        EndProcess(kExitOffsetAbort);
    OnCancel();
}

}  // namespace kesto

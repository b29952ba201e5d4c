// The main window and the all-parts lists: its own multi-selection list picks a part in the
// drawing, and the all-parts dialog over the drawing is filled for the process in view.
#include <QListWidget>
#include <QSignalBlocker>
#include <vector>

#include "render/TextCodec.h"
#include "rules/ListLines.h"
#include "rules/PartsAllList.h"
#include "ui/dialogs/CKs_PartsAllDlg.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/CKestoDlg.h"

namespace kesto {

void CKestoDlg::ConnectPartsAll() {
    connect(allParts_, &QListWidget::itemSelectionChanged, this, [this] { OnAllPartsSelect(); });
    // A line chosen in the all-parts dialog shows its part in the information panel, also one
    // without a stack to pick.
    connect(partsAll_->List(), &QListWidget::itemSelectionChanged, this,
            [this] { partsInfo_->Choose(partsAll_->SelectedSeq().value_or(0)); });
}

WhyShortFn CKestoDlg::WhyShort() {
    return [this](int32_t seq) { return session_.WhyShortText(seq); };
}

void CKestoDlg::OnAllPartsSelect() {
    QListWidgetItem* caret = allParts_->currentItem();
    if (caret == nullptr)
        return;
    const int32_t seq = SeqOfLine(EncodeText(caret->text()));
    partsInfo_->Choose(seq);
    const QSignalBlocker block(allParts_);
    const bool picked = PickFromAllPartsList(app_, drawArea_->Drawing(), seq,
                                             [this](DrawMode mode) { drawArea_->DrawParts(mode); });
    // A rubber-band selection in force owns the list's selection: the click is undone.
    if (!picked) {
        caret->setSelected(false);
        return;
    }
    std::vector<int> selected;
    for (const QModelIndex& index : allParts_->selectionModel()->selectedIndexes())
        selected.push_back(index.row());
    for (int row : OtherSelectedRows(selected, allParts_->row(caret)))
        allParts_->item(row)->setSelected(false);
}

void CKestoDlg::RefreshPartsAll() {
    partsAll_->Fill(shown_.Koutei());
}

}  // namespace kesto

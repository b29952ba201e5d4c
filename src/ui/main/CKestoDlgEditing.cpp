// The drawing area's mouse editing as the main window sees it, and the left and right buttons.
#include <QComboBox>
#include <QEvent>
#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>

#include "render/TextCodec.h"
#include "rules/ListLines.h"
#include "ui/dialogs/CKs_MaiDlg.h"
#include "ui/dialogs/CKs_PartsAllDlg.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/CKestoDlg.h"

namespace kesto {

namespace {

// The number of a list line: its first three characters.
constexpr int kSeqDigits = 3;

}  // namespace

void CKestoDlg::ConnectEditing() {
    DrawAreaView& view = *this;
    editing_ = std::make_unique<DrawingEdit>(app_, session_.Svc(), drawArea_->Drawing(), view);
    drawArea_->SetEditing(editing_.get());
    zoom_ = std::make_unique<ViewZoom>(session_, drawArea_->Drawing());
    drawArea_->SetZoom(zoom_.get(), [this](ChangeSet changed) { Present(changed); });
    // Drops and the other corrections become steps that Ctrl+Z takes back.
    editing_->RecordStepsIn(&session_);
    session_.WatchSelection(&drawArea_->Drawing().Selected());
    undoAction_ = new QAction(this);
    undoAction_->setObjectName("Undo");
    undoAction_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    redoAction_ = new QAction(this);
    redoAction_->setObjectName("Redo");
    redoAction_->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    addAction(undoAction_);
    addAction(redoAction_);
    connect(undoAction_, &QAction::triggered, this, [this] { OnUndo(); });
    connect(redoAction_, &QAction::triggered, this, [this] { OnRedo(); });
    UpdateUndoActions();
    connect(static_cast<QPushButton*>(Control(kLeftButton)), &QPushButton::clicked, this,
            [this] { OnLeft(); });
    connect(static_cast<QPushButton*>(Control(kRightButton)), &QPushButton::clicked, this,
            [this] { OnRight(); });
    connect(static_cast<QPushButton*>(Control(kMaiChgButton)), &QPushButton::clicked, this,
            [this] { OnMaiChg(); });
    // After the Direct command itself: switching IsDirect forgets the last pick and history.
    connect(static_cast<QPushButton*>(Control(kNestToggle)), &QPushButton::clicked, this,
            [this] { editing_->DirectSwitched(); });
    installEventFilter(this);
}

void CKestoDlg::OnLeft() {
    ChangeSet changed;
    drawArea_->Draw([&](Canvas& canvas) { changed = session_.Left(drawArea_->Drawing(), canvas); });
    Present(changed);
}

void CKestoDlg::OnRight() {
    session_.Right(SelectedSeq(torioki_), [this](ChangeSet changed) { Present(changed); });
}

void CKestoDlg::OnMaiChg() {
    PalletDrawing& drawing = drawArea_->Drawing();
    const std::optional<SheetCountStart> start = session_.BeginSheetCount(drawing);
    if (!start)
        return;
    int count = -1;
    {
        const std::optional<IntRect> overArea = partsAllState_ == Visibility::Shown
                                                    ? std::optional(drawArea_->ScreenRect())
                                                    : std::nullopt;
        CKs_MaiDlg dialog(app_, overArea, session_.Svc().Messages, fonts_, session_.Svc().Op,
                          *drawing.PickedStack(), drawing.ViewPallet.MaxStackHeight, this);
        count = dialog.Run();
    }
    RepaintPanels();
    DrawHitDisplay();
    if (count == -1)
        return;
    session_.ApplySheetCount(drawing, *start, count,
                             [this](ChangeSet changed) { Present(changed); });
}

void CKestoDlg::ShowRefusedDrop(DropRefusal why, const std::vector<IntRect>& rects) {
    drawArea_->ShowRefusal(rects, DecodeText(DropRefusalText(why, session_.Svc().Messages)));
}

void CKestoDlg::ShowLanding(const std::optional<DropPreview>& landing) {
    drawArea_->ShowLanding(landing);
}

void CKestoDlg::UpdateUndoActions() {
    const EditHistory& history = session_.History();
    const MessageTable& messages = session_.Svc().Messages;
    undoAction_->setText(DecodeText(UndoMenuText(history, messages)));
    undoAction_->setEnabled(history.CanUndo());
    redoAction_->setText(DecodeText(RedoMenuText(history, messages)));
    redoAction_->setEnabled(history.CanRedo());
}

void CKestoDlg::OnUndo() {
    // Not in the middle of a drag: the press and the release belong to one step, and the
    // landing shown is worked out on the job as it stood at the press.
    if (!editing_->DragInProgress())
        Present(session_.Undo(drawArea_->Drawing()));
}

void CKestoDlg::OnRedo() {
    if (!editing_->DragInProgress())
        Present(session_.Redo(drawArea_->Drawing()));
}

void CKestoDlg::FollowSetAside() {
    // The job cannot be ended while parts are set aside, and can again once none is.
    Control(kOk)->setEnabled(!session_.AnyPartSetAside());
    if (undoAction_ != nullptr)
        UpdateUndoActions();
}

bool CKestoDlg::eventFilter(QObject* watched, QEvent* event) {
    if (watched == this && event->type() == QEvent::Close && !Control(kOk)->isEnabled()) {
        event->ignore();
        return true;
    }
    if (watched == drawArea_ && event->type() == QEvent::KeyPress)
        return DrawingKey(static_cast<QKeyEvent*>(event));
    return QDialog::eventFilter(watched, event);
}

// --- what the editing asks of the window ---------------------------------------------------

void CKestoDlg::Refresh() {
    drawArea_->Refresh();
    // A drop may have become a step.
    UpdateUndoActions();
}

void CKestoDlg::ShowDragImage(const std::vector<IntRect>& rects) {
    drawArea_->ShowDragImage(rects);
}

void CKestoDlg::HideDragImage() {
    drawArea_->HideDragImage();
}

void CKestoDlg::SyncPartList(const std::vector<int32_t>& seqs) {
    // Selecting from here is not the operator's choice of a line: no list command runs.
    const QSignalBlocker block(allParts_);
    allParts_->clearSelection();
    for (int row = 0; row < allParts_->count(); ++row) {
        QListWidgetItem* item = allParts_->item(row);
        const int32_t seq = SeqOfLine(EncodeText(item->text().left(kSeqDigits)));
        if (std::find(seqs.begin(), seqs.end(), seq) != seqs.end())
            item->setSelected(true);
    }
}

void CKestoDlg::SelectPartsAllLine(int32_t seq) {
    partsAll_->SelectLineOfSeq(seq);
}

void CKestoDlg::RefreshInfoPanel() {
    // A pick in the drawing, or a click on nothing there, replaces a part chosen in a list.
    partsInfo_->Choose(0);
}

}  // namespace kesto

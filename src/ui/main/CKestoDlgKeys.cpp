// The drawing's keys: Escape lets a drag go, Tab and Shift+Tab walk the stacks in view, the
// arrows move the pick to the next landing that way, Delete sets the pick aside. And what the
// controls tell a screen reader, for those who work by keys.
#include <QAction>
#include <QCursor>
#include <QKeyEvent>
#include <algorithm>

#include "render/TextCodec.h"
#include "sheet/SortSheet.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/dialogs/DialogTexts.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/CKestoDlg.h"
#include "view/ControlTexts.h"

namespace kesto {

namespace {

// The arrow keys and the way each moves the pick on the screen.
struct Arrow {
    int Key;
    int32_t X;
    int32_t Y;
};
constexpr Arrow kArrows[] = {
    {Qt::Key_Left, -1, 0}, {Qt::Key_Right, 1, 0}, {Qt::Key_Up, 0, -1}, {Qt::Key_Down, 0, 1}};

}  // namespace

void CKestoDlg::ConnectKeys() {
    // Clicked, reached with Tab or zoomed with the wheel, the drawing takes the keys that walk
    // its stacks and zoom it; so the space bar held to pan never presses a button instead.
    drawArea_->setFocusPolicy(Qt::WheelFocus);
    drawArea_->installEventFilter(this);
    setAsideAction_ = new QAction(this);
    setAsideAction_->setObjectName("SetAside");
    setAsideAction_->setShortcut(QKeySequence(Qt::Key_Delete));
    addAction(setAsideAction_);
    connect(setAsideAction_, &QAction::triggered, this, [this] {
        // The press and the release of a drag belong together: nothing leaves in between.
        if (!editing_->DragInProgress())
            OnLeft();
    });
}

void CKestoDlg::NameControls() {
    const MessageTable& messages = session_.Svc().Messages;
    const auto name = [&](QWidget* widget, std::string_view key) {
        Speak(*widget, AccessibleText(key, messages));
    };
    for (const ControlEntry& entry : kControls) {
        QWidget* control = entry.Key != nullptr ? Control(entry.Id) : nullptr;
        if (control != nullptr && entry.Kind != ControlKind::SecondCaption)
            name(control, entry.Key);
    }
    name(drawArea_, "DRAWING");
    name(partsInfo_, "INFO-STRING");
    name(partsView_, "VIEW-STRING");
}

void CKestoDlg::keyPressEvent(QKeyEvent* event) {
    // Escape during a drag lets the drag go; without one it stays the dialog's Cancel.
    if (event->key() == Qt::Key_Escape && editing_->DragInProgress()) {
        drawArea_->Draw([this](Canvas& canvas) { editing_->AbandonDrag(canvas); });
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

bool CKestoDlg::DrawingKey(QKeyEvent* event) {
    if ((event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0)
        return false;
    if (const std::optional<ChangeSet> zoomed = ZoomKey(event->key())) {
        Present(*zoomed);
        return true;
    }
    if (event->key() == Qt::Key_Backtab ||
        (event->key() == Qt::Key_Tab && event->modifiers().testFlag(Qt::ShiftModifier)))
        return WalkStacks(false);
    if (event->key() == Qt::Key_Tab)
        return WalkStacks(true);
    for (const auto& [key, x, y] : kArrows) {
        if (event->key() == key && (event->modifiers() & Qt::ShiftModifier) == 0) {
            drawArea_->Draw([&](Canvas& canvas) { editing_->Nudge(canvas, x, y); });
            return true;
        }
    }
    return false;
}

std::optional<ChangeSet> CKestoDlg::ZoomKey(int key) {
    const bool closer = key == Qt::Key_Plus || key == Qt::Key_Equal;
    const bool farther = key == Qt::Key_Minus;
    if ((!closer && !farther && key != Qt::Key_0) || editing_->DragInProgress() ||
        drawArea_->Panning())
        return std::nullopt;
    if (key == Qt::Key_0)
        return zoom_->Whole();
    // About the pointer when it is over the drawing, else about the plan's centre.
    const QPoint at = drawArea_->mapFromGlobal(QCursor::pos());
    return zoom_->ZoomBy(closer ? kZoomStep : 1 / kZoomStep, IntPoint{at.x(), at.y()});
}

std::vector<const HaichiInfo*> CKestoDlg::StacksInView() const {
    std::vector<const HaichiInfo*> stacks;
    const KouteiInfo* koutei = app_.KouteiAt(shown_.Koutei());
    if (koutei == nullptr)
        return stacks;
    const PalletDrawing& drawing = drawArea_->Drawing();
    std::vector<int32_t> walked;
    for (const int32_t pallet : drawing.PalletsInView()) {
        if (pallet < 0 || std::find(walked.begin(), walked.end(), pallet) != walked.end())
            continue;
        walked.push_back(pallet);
        for (const HaichiInfo* h : SheetOrder(app_, koutei->No, pallet)) {
            if (drawing.ScreenRect(*h))
                stacks.push_back(h);
        }
    }
    return stacks;
}

bool CKestoDlg::WalkStacks(bool forward) {
    // Not in the middle of a drag, and the focus stays with the drawing until the release.
    if (editing_->DragInProgress())
        return true;
    const std::vector<const HaichiInfo*> stacks = StacksInView();
    if (stacks.empty())
        return false;
    const StackId picked = drawArea_->Drawing().Selected().Picked();
    const auto at = std::find_if(stacks.begin(), stacks.end(),
                                 [&](const HaichiInfo* h) { return h->Id == picked; });
    const HaichiInfo* next = nullptr;
    if (at == stacks.end())
        next = forward ? stacks.front() : stacks.back();
    else if (forward && at + 1 != stacks.end())
        next = *(at + 1);
    else if (!forward && at != stacks.begin())
        next = *(at - 1);
    // Past the last stack (or before the first) the focus goes on to the next control.
    if (next == nullptr)
        return false;
    drawArea_->Draw([&](Canvas& canvas) { editing_->PickFromKeys(canvas, *next); });
    if (next->Part != nullptr)
        partsView_->ShowSize(next->Part->SizeX, next->Part->SizeY);
    return true;
}

}  // namespace kesto

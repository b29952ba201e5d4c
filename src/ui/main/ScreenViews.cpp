#include "ui/main/ScreenViews.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QListWidget>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <vector>

#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/CKestoDlg.h"
#include "ui/main/RectConvert.h"
#include "view/Colours.h"

namespace kesto {

namespace {

struct NamedView {
    ScreenView View;
    const char* Name;
};

constexpr NamedView kNames[] = {
    {ScreenView::Flat, "flat"},          {ScreenView::Danmen, "danmen"},
    {ScreenView::FourPallet, "4pallet"}, {ScreenView::TwoPallet, "2pallet"},
    {ScreenView::ThreeD, "3d"},          {ScreenView::Info, "info"},
    {ScreenView::Drag, "drag"},          {ScreenView::Zoom, "zoom"},
};

void Click(CKestoDlg& dialog, ControlId id) {
    if (auto* button = qobject_cast<QAbstractButton*>(dialog.Control(id)))
        button->click();
}

// The process whose stacks stand on all four pallets of the sample, with the tallest stacks.
constexpr int kFullestProcessRow = 2;

void SelectProcess(CKestoDlg& dialog, int row) {
    auto* schedule = qobject_cast<QListWidget*>(dialog.Control(kScheduleList));
    if (schedule != nullptr && row < schedule->count())
        schedule->setCurrentRow(row);
}

// The arrangement toggle until the stacks show their parts' outlines.
void ShowOutlines(CKestoDlg& dialog) {
    for (int i = 0; i < 2 && !dialog.App().Settings.IsDirect.IsOne(); ++i)
        Click(dialog, kNestToggle);
}

// A stack worth picking: its part has more than one stack on view, so the other pieces light
// up too, and no marked sides, so the pick shows in the pick colour.
HaichiInfo* StackToPick(CKestoDlg& dialog) {
    PalletDrawing& drawing = dialog.DrawArea()->Drawing();
    HaichiInfo* first = nullptr;
    for (HaichiInfo& record : dialog.App().HaichiList) {
        if (!drawing.ScreenRect(record))
            continue;
        if (first == nullptr)
            first = &record;
        const PartsInfo& part = *record.Part;
        const auto stacks = std::count_if(
            dialog.App().HaichiList.begin(), dialog.App().HaichiList.end(),
            [&](const HaichiInfo& h) { return h.Part == &part && drawing.ScreenRect(h); });
        if (stacks > 1 && MarkColour(part, colour::kPicked) == colour::kPicked)
            return &record;
    }
    return first;
}

// What a click on the stack would do: it becomes the pick, highlighted, and its part is
// described in the information panel; the part view shows its size.
void PickStack(CKestoDlg& dialog) {
    CKs_DrawArea& area = *dialog.DrawArea();
    HaichiInfo* record = StackToPick(dialog);
    if (record == nullptr)
        return;
    dialog.Editing().PickAlone(*record);
    area.DrawParts(DrawMode::Highlight);
    dialog.PartsInfoPanel()->Refresh();
    dialog.PartsViewPanel()->ShowSize(record->Part->SizeX, record->Part->SizeY);
}

// Notches of the wheel turned closer, with Ctrl held, over the pick.
constexpr int kZoomNotches = 4;
constexpr int kWheelNotch = 120;

void ZoomOnThePick(CKestoDlg& dialog) {
    CKs_DrawArea& area = *dialog.DrawArea();
    const HaichiInfo* picked = area.Drawing().PickedStack();
    const std::optional<IntRect> r =
        picked != nullptr ? area.Drawing().ScreenRect(*picked) : std::nullopt;
    if (!r)
        return;
    const QPointF at((r->Left + r->Right) / 2, (r->Top + r->Bottom) / 2);
    for (int i = 0; i < kZoomNotches; ++i) {
        QWheelEvent wheel(at, area.mapToGlobal(at), QPoint(), QPoint(0, kWheelNotch), Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&area, &wheel);
    }
}

// The left button as the operator uses it: pressed, or held while moving.
void SendMouse(QWidget& widget, QEvent::Type type, const QPoint& at) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, QPointF(at), widget.mapToGlobal(QPointF(at)), button, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

// The grid of points the screenshot's drag tries, in pixels.
constexpr int kDragStep = 8;

// A stack picked alone and carried to the nearest point of a grid around it where its landing
// shows clear of where it stands.
void DragToALanding(CKestoDlg& dialog) {
    CKs_DrawArea& area = *dialog.DrawArea();
    // The smallest stack on view: the one most corners have room for.
    std::optional<IntRect> r;
    for (const HaichiInfo& h : dialog.App().HaichiList) {
        const std::optional<IntRect> shown = area.Drawing().ScreenRect(h);
        const auto size = [](const IntRect& a) {
            return int64_t{a.Right - a.Left} * (a.Bottom - a.Top);
        };
        if (shown && (!r || size(*shown) < size(*r)))
            r = shown;
    }
    if (!r)
        return;
    const QPoint grab((r->Left + r->Right) / 2, (r->Top + r->Bottom) / 2);
    std::vector<QPoint> points;
    for (int y = kDragStep; y < area.height(); y += kDragStep) {
        for (int x = kDragStep; x < area.width(); x += kDragStep)
            points.emplace_back(x, y);
    }
    std::stable_sort(points.begin(), points.end(), [&](const QPoint& a, const QPoint& b) {
        return (a - grab).manhattanLength() < (b - grab).manhattanLength();
    });
    SendMouse(area, QEvent::MouseButtonPress, grab);
    SendMouse(area, QEvent::MouseMove, grab + QPoint(1, 0));
    for (const QPoint& at : points) {
        SendMouse(area, QEvent::MouseMove, at);
        const std::optional<DropPreview>& landing = area.Landing();
        if (landing && !landing->Refused && !landing->Landing.empty() &&
            !ToQRect(landing->Landing.front()).intersects(ToQRect(*r)))
            return;
    }
}

}  // namespace

const char* ScreenViewName(ScreenView view) {
    for (const NamedView& named : kNames) {
        if (named.View == view)
            return named.Name;
    }
    return "";
}

std::optional<ScreenView> ScreenViewByName(std::string_view name) {
    for (const NamedView& named : kNames) {
        if (name == named.Name)
            return named.View;
    }
    return std::nullopt;
}

void ShowScreenView(CKestoDlg& dialog, ScreenView view) {
    switch (view) {
        case ScreenView::Flat:
            ShowOutlines(dialog);
            Click(dialog, kFlatButton);
            break;
        case ScreenView::Danmen:
            SelectProcess(dialog, kFullestProcessRow);
            Click(dialog, kDanmenButton);
            break;
        case ScreenView::FourPallet:
            SelectProcess(dialog, kFullestProcessRow);
            Click(dialog, kFourPalletButton);
            break;
        case ScreenView::TwoPallet:
            SelectProcess(dialog, kFullestProcessRow);
            Click(dialog, kTwoPalletButton);
            break;
        case ScreenView::ThreeD:
            Click(dialog, kFourPalletButton);
            Click(dialog, k3DToggle);
            break;
        case ScreenView::Info:
            Click(dialog, kFlatButton);
            PickStack(dialog);
            break;
        case ScreenView::Drag:
            Click(dialog, kFlatButton);
            Click(dialog, kHitSingle);
            DragToALanding(dialog);
            break;
        case ScreenView::Zoom:
            SelectProcess(dialog, kFullestProcessRow);
            Click(dialog, kFlatButton);
            PickStack(dialog);
            ZoomOnThePick(dialog);
            break;
    }
}

}  // namespace kesto

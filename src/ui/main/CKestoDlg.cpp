#include "ui/main/CKestoDlg.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

#include "ui/dialogs/CAboutDlg.h"
#include "ui/dialogs/CKs_PartsAllDlg.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/ExtentList.h"

namespace kesto {

namespace {

// A toggle that is on looks pressed at a glance, whatever the style: in the selection colour,
// sunk into a dark frame. A toggle that is off keeps the style's own button.
constexpr const char* kToggleOnLook =
    "QPushButton:checked { background-color: palette(highlight); color: palette(highlighted-text);"
    " border: 2px inset palette(shadow); }";

}  // namespace

CKestoDlg::CKestoDlg(JobSession& session, const FontTable& fonts, QWidget* parent)
    : QDialog(parent),
      session_(session),
      app_(session.App()),
      shown_(session.Shown()),
      fonts_(fonts) {
    setObjectName("CKestoDlg");
    setWindowIcon(KestoIcon());
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    BuildControls();
    const MessageTable& messages = session_.Svc().Messages;
    drawArea_ = new CKs_DrawArea(app_, shown_, messages, fonts_, this);
    partsInfo_ =
        new CKs_PartsInfo(app_, shown_, messages, fonts_, drawArea_->Drawing(), WhyShort(), this);
    partsView_ = new CKs_PartsView(app_, messages, fonts_, this);
    partsAll_ = new CKs_PartsAllDlg(app_, shown_, messages, fonts_, *drawArea_, WhyShort(), this);
    partsAll_->SetSortKey(sortkey::kSeqUp);
    ConnectCommands();
    ConnectPartsAll();
    ConnectEditing();
    ConnectPrinting();
    ConnectKeys();
    NameControls();
    session_.SetView(this);
}

CKestoDlg::~CKestoDlg() {
    session_.SetView(nullptr);
    // The selection goes with the drawing area.
    session_.WatchSelection(nullptr);
}

void CKestoDlg::MakeControl(const ControlEntry& entry) {
    QWidget* control = nullptr;
    switch (entry.Kind) {
        case ControlKind::Label:
            control = new QLabel(QString::fromLatin1(entry.Caption), this);
            break;
        case ControlKind::Button:
        case ControlKind::Toggle: {
            auto* button = new QPushButton(QString::fromLatin1(entry.Caption), this);
            button->setCheckable(entry.Kind == ControlKind::Toggle);
            button->setAutoDefault(false);
            if (entry.Kind == ControlKind::Toggle)
                button->setStyleSheet(QString::fromLatin1(kToggleOnLook));
            control = button;
            break;
        }
        case ControlKind::List:
        case ControlKind::MultiList: {
            const int extent = entry.Id == kSmallBoxList ? kSmallBoxListExtent : kListExtent;
            auto* list = new ExtentList(extent, this);
            list->setSelectionMode(entry.Kind == ControlKind::MultiList
                                       ? QAbstractItemView::ExtendedSelection
                                       : QAbstractItemView::SingleSelection);
            control = list;
            break;
        }
        case ControlKind::Combo:
            control = new QComboBox(this);
            break;
        case ControlKind::Frame:
            control = new QWidget(this);
            control->hide();  // only its rectangle is used, by the panels
            break;
        case ControlKind::SecondCaption:
            return;  // its control is made by an earlier entry
    }
    control->setObjectName(entry.Key != nullptr ? QString::fromLatin1(entry.Key)
                                                : QString::number(entry.Id));
    // The layout gives every control its rectangle as the window is first shown; marked as
    // sized, the controls are not first measured for a size they would never keep. The pallet
    // box alone is still measured: the layout takes its height.
    if (entry.Kind != ControlKind::Combo)
        control->setAttribute(Qt::WA_Resized);
    controls_[entry.Id] = control;
}

void CKestoDlg::BuildControls() {
    for (const ControlEntry& entry : kControls)
        MakeControl(entry);
    palletSelect_ = static_cast<QComboBox*>(Control(kPalletCombo));
    torioki_ = static_cast<QListWidget*>(Control(kToriokiList));
    smallBox_ = static_cast<QListWidget*>(Control(kSmallBoxList));
    schedule_ = static_cast<QListWidget*>(Control(kScheduleList));
    allParts_ = static_cast<QListWidget*>(Control(kAllPartsList));
    // The page buttons wait for the paging to enable them.
    Control(kPagePrevious)->setEnabled(false);
    Control(kPageNext)->setEnabled(false);
}

QWidget* CKestoDlg::Control(ControlId id) const {
    auto it = controls_.find(id);
    return it == controls_.end() ? nullptr : it->second;
}

void CKestoDlg::ConnectCommands() {
    auto click = [this](ControlId id, auto handler) {
        connect(static_cast<QPushButton*>(Control(id)), &QPushButton::clicked, this, handler);
    };
    click(kBoxButton1, [this] { OnSelectSmallBox(1); });
    click(kBoxButton2, [this] { OnSelectSmallBox(2); });
    click(kBoxButton3, [this] { OnSelectSmallBox(3); });
    click(kPageNext, [this] { OnBoxPage(1); });
    click(kPagePrevious, [this] { OnBoxPage(-1); });
    click(kDownButton, [this] { OnDown(); });
    click(kUpButton, [this] { OnUp(); });
    click(kGridToggle, [this] { OnGrid(); });
    click(k3DToggle, [this] { On3D(); });
    click(kNestToggle, [this] { OnDirect(); });
    click(kBlockDrawToggle, [this] { OnBlockDraw(); });
    click(kHitByBlock, [this] { OnHit(HitBy::Block); });
    click(kHitSingle, [this] { OnHit(HitBy::Single); });
    click(kFlatButton, [this] { OnView(PalletView::Flat); });
    click(kDanmenButton, [this] { OnView(PalletView::Danmen); });
    click(kFourPalletButton, [this] { OnView(PalletView::FourPallet); });
    click(kTwoPalletButton, [this] { OnView(PalletView::TwoPallet); });
    click(kInfoButton, [this] { OnInfo(); });
    click(kRetryButton, [this] { OnRetry(); });
    click(kAutoButton, [this] { OnAuto(); });
    click(kOk, [this] { OnOK(); });
    click(kCancel, [this] { OnCancel(); });
    connect(schedule_, &QListWidget::itemSelectionChanged, this, [this] { OnSelectKoutei(); });
    connect(torioki_, &QListWidget::itemSelectionChanged, this, [this] { OnSelectTorioki(); });
    connect(palletSelect_, &QComboBox::currentIndexChanged, this, [this] { OnPalletSelect(); });
}

int CKestoDlg::OnInitDialog() {
    TitlePass();
    CountBoxPages();
    TurnBoxPage(0);
    const bool initialised = session_.Init();
    EndIfJobEnded();
    if (!initialised)
        return 1;
    if (!session_.AnySmallBoxDefined()) {
        Control(kDownButton)->setEnabled(false);
        Control(kUpButton)->setEnabled(false);
    }
    return 1;
}

int CKestoDlg::Run() {
    if (ended_)
        return endCode_;
    return exec();
}

void CKestoDlg::EndIfJobEnded() {
    if (session_.Ended() && !ended_)
        EndDialog(app_.Run.DialogEnd);
}

void CKestoDlg::EndDialog(OkCancel end) {
    ended_ = true;
    endCode_ = static_cast<int>(end);
    done(endCode_);
}

// The window is laid out as it is shown, so that its first picture is already the finished
// one, and again after every resize.
void CKestoDlg::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (layoutStep_ == LayoutStep::NeverShown) {
        layoutStep_ = LayoutStep::Due;
        ApplyLayout();
        // After the first picture has reached the screen.
        QTimer::singleShot(0, this, [this] { RunWhenShown(); });
    }
}

void CKestoDlg::WhenShown(std::function<void()> task) {
    whenShown_ = std::move(task);
    if (layoutStep_ == LayoutStep::LaidOut)
        QTimer::singleShot(0, this, [this] { RunWhenShown(); });
}

void CKestoDlg::RunWhenShown() {
    if (!whenShown_ || ended_)
        return;
    const std::function<void()> task = std::move(whenShown_);
    whenShown_ = nullptr;
    task();
}

void CKestoDlg::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    if (layoutStep_ != LayoutStep::NeverShown) {
        layoutStep_ = LayoutStep::Due;
        RequestLayout();
    }
}

void CKestoDlg::RequestLayout() {
    if (layoutQueued_)
        return;
    layoutQueued_ = true;
    QTimer::singleShot(0, this, [this] { ApplyLayout(); });
}

void CKestoDlg::ApplyLayout() {
    layoutQueued_ = false;
    if (layoutStep_ == LayoutStep::NeverShown)
        return;
    LayoutPass();
    // The images were made anew at the panels' new sizes: everything is drawn again.
    drawArea_->Refresh();
    RepaintPanels();
    DrawHitDisplay();
    if (layoutStep_ == LayoutStep::Due)
        layoutStep_ = LayoutStep::LaidOut;
    update();
}

void CKestoDlg::closeEvent(QCloseEvent* event) {
    event->ignore();
    OnClose();
}

void CKestoDlg::reject() {
    OnCancel();
}

void CKestoDlg::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    UpdateUndoActions();
    menu.addAction(undoAction_);
    menu.addAction(redoAction_);
    menu.addSeparator();
    menu.addAction(printAction_);
    menu.addSeparator();
    QAction* about = menu.addAction(QString::fromLatin1(kAboutMenuText));
    about->setObjectName(QString::number(kAboutCommand));
    connect(about, &QAction::triggered, this, [this] { ShowAbout(); });
    menu.exec(event->globalPos());
}

void CKestoDlg::ShowAbout() {
    CAboutDlg about(this);
    about.exec();
}

}  // namespace kesto

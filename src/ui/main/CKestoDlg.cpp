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
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/ExtentList.h"

namespace kesto {

namespace {

// Horizontal scroll extents of the lists, in pixels.
constexpr int kSmallBoxExtent = 650;
constexpr int kListExtent = 720;

}  // namespace

CKestoDlg::CKestoDlg(JobSession& session, const FontTable& fonts, QWidget* parent)
    : QDialog(parent), session_(session), app_(session.App()), fonts_(fonts) {
    setObjectName("CKestoDlg");
    setWindowIcon(KestoIcon());
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    BuildControls();
    drawArea_ = new CKs_DrawArea(app_, this);
    partsInfo_ = new CKs_PartsInfo(app_, this);
    partsView_ = new CKs_PartsView(app_, this);
    ConnectCommands();
    session_.SetView(this);
}

CKestoDlg::~CKestoDlg() {
    session_.SetView(nullptr);
}

QPushButton* CKestoDlg::AddButton(int id, const char* key, const char* caption, bool checkable) {
    auto* button = new QPushButton(QString::fromLatin1(caption), this);
    button->setObjectName(key);
    button->setCheckable(checkable);
    button->setAutoDefault(false);
    controls_[id] = button;
    return button;
}

QLabel* CKestoDlg::AddLabel(int id, const char* key, const char* caption) {
    auto* label = new QLabel(QString::fromLatin1(caption), this);
    label->setObjectName(key);
    controls_[id] = label;
    return label;
}

QListWidget* CKestoDlg::AddList(int id, const char* key, int extent) {
    auto* list = new ExtentList(extent, this);
    list->setObjectName(key);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    controls_[id] = list;
    return list;
}

void CKestoDlg::BuildControls() {
    palletSelect_ = new QComboBox(this);
    palletSelect_->setObjectName("LIST-PALLET-SEL");
    controls_[1044] = palletSelect_;
    torioki_ = AddList(1002, "LIST-TORIOKI", kListExtent);
    smallBox_ = AddList(1000, "LIST-SBOX", kSmallBoxExtent);
    schedule_ = AddList(1001, "LIST-SCH", kListExtent);
    allParts_ = AddList(1003, "LIST-PTALL", kListExtent);
    allParts_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    AddLabel(1004, "L-SMALLBOX", "SmallBox");
    AddLabel(1015, "L-SCH", "Sch");
    AddLabel(1005, "L-TORIOKI", "Torioki");
    AddLabel(1006, "L-ALLPARTS", "AllParts");
    AddLabel(1019, "L-HIT", "Hit");
    AddButton(1037, "B-SBOX1", "B1", true);
    AddButton(1038, "B-SBOX2", "B2", true);
    AddButton(1039, "B-SBOX3", "B3", true);
    // The page buttons wait for the paging to enable them.
    AddButton(1042, "B-SBOXP", "<<", true)->setEnabled(false);
    AddButton(1041, "B-SBOXN", ">>", true)->setEnabled(false);
    AddButton(1007, "B-STOT", "Down", false);
    AddButton(1008, "B-TTOS", "Up", false);
    AddButton(1012, "B-PTOT", "left", false);
    AddButton(1013, "B-TTOP", "right", false);
    AddButton(1016, "B-RETRY", "Retry", false);
    AddButton(1017, "B-AUTO", "Auto", false);
    AddButton(1018, "B-MAICHG", "MaiChg", false);
    AddButton(1035, "B-HITB", "Block", true);
    AddButton(1036, "B-HITS", "Single", true);
    AddButton(1029, "B-3D", "3D", true);
    AddButton(1028, "B-GRID", "Grid", true);
    AddButton(1031, "B-NEST-A", "Direct", true);
    AddButton(1032, "B-BLOCKDRAW", "Block", true);
    AddButton(1024, "B-INFO", "Info", false);
    AddButton(1025, "B-FLAT", "FLAT", false);
    AddButton(1026, "B-DANMEN", "DANMEN", false);
    AddButton(1027, "B-PALLET2", "2PALLET", false);
    AddButton(1030, "B-PALLET4", "4PALLET", false);
    AddButton(1, "B-OK", "OK", false);
    AddButton(2, "B-CAN", "Can", false);
    for (int id : {1014, 1040}) {
        auto* frame = new QWidget(this);
        frame->setObjectName(QString::number(id));
        frame->hide();  // only its rectangle is used, by the panels
        controls_[id] = frame;
    }
}

QWidget* CKestoDlg::Control(int id) const {
    auto it = controls_.find(id);
    return it == controls_.end() ? nullptr : it->second;
}

void CKestoDlg::ConnectCommands() {
    auto click = [this](int id, auto handler) {
        connect(static_cast<QPushButton*>(Control(id)), &QPushButton::clicked, this, handler);
    };
    click(1037, [this] { OnSelectSmallBox(1); });
    click(1038, [this] { OnSelectSmallBox(2); });
    click(1039, [this] { OnSelectSmallBox(3); });
    click(1041, [this] { OnBoxPage(1); });
    click(1042, [this] { OnBoxPage(-1); });
    click(1007, [this] { OnDown(); });
    click(1008, [this] { OnUp(); });
    click(1028, [this] { OnGrid(); });
    click(1029, [this] { On3D(); });
    click(1031, [this] { OnDirect(); });
    click(1032, [this] { OnBlockDraw(); });
    click(1035, [this] { OnHit(1); });
    click(1036, [this] { OnHit(0); });
    click(1025, [this] { OnView(0); });
    click(1026, [this] { OnView(1); });
    click(1030, [this] { OnView(2); });
    click(1027, [this] { OnView(3); });
    click(1024, [this] { OnInfo(); });
    click(1016, [this] { OnRetry(); });
    click(1017, [this] { OnAuto(); });
    click(1, [this] { OnOK(); });
    click(2, [this] { OnCancel(); });
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
        Control(1007)->setEnabled(false);
        Control(1008)->setEnabled(false);
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
        EndDialog(app_.DialogOk == 1 ? 1 : 2);
}

void CKestoDlg::EndDialog(int code) {
    ended_ = true;
    endCode_ = code;
    done(code);
}

// The first paint only shows the controls where they were made; the layout follows at once,
// and every resize lays the window out again.
void CKestoDlg::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    if (app_.LayoutState == 0) {
        app_.LayoutState = 2;
        RequestLayout();
    }
}

void CKestoDlg::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    if (app_.LayoutState != 0) {
        app_.LayoutState = 2;
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
    if (app_.LayoutState == 0)
        return;
    LayoutPass();
    if (app_.LayoutState == 3)
        drawArea_->Refresh();
    partsInfo_->update();
    partsView_->update();
    if (app_.LayoutState == 2)
        app_.LayoutState = 3;
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
    QAction* about = menu.addAction(QString::fromLatin1(kAboutMenuText));
    about->setObjectName("16");
    connect(about, &QAction::triggered, this, [this] { ShowAbout(); });
    menu.exec(event->globalPos());
}

void CKestoDlg::ShowAbout() {
    CAboutDlg about(this);
    about.exec();
}

}  // namespace kesto

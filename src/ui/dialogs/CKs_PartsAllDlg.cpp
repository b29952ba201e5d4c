#include "ui/dialogs/CKs_PartsAllDlg.h"

#include <utility>

#include <QPushButton>
#include <QSignalBlocker>
#include <string>
#include <vector>

#include "render/TextCodec.h"
#include "ui/dialogs/DialogTexts.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/ExtentList.h"

namespace kesto {

namespace {

constexpr const char* kSection = "PartsAlInfDlg";
constexpr const char* kKeepCaption = "?????";
constexpr int kListExtent = 850;

struct SortButtonEntry {
    int Id;
    const char* Key;
    const char* Caption;  // the template's, kept while the message file says "?????"
    SortButton Button;
};

// Left to right, as they stand above the list.
constexpr SortButtonEntry kSortButtons[] = {
    {1059, "BT4", "No.", SortButton::Seq},   {1056, "BT1", "Material", SortButton::Material},
    {1057, "BT2", "Size", SortButton::Size}, {1058, "BT3", "Quantity", SortButton::Quantity},
    {1060, "BT5", "Name", SortButton::Name},
};
static_assert(std::size(kSortButtons) == 5);

constexpr const char* kListKey = "LIST";
// The font whose height sets the buttons' height.
constexpr const char* kButtonFontKey = "BT1";

}  // namespace

CKs_PartsAllDlg::CKs_PartsAllDlg(CKestoApp& app, const ViewState& shown,
                                 const MessageTable& messages, const FontTable& fonts,
                                 CKs_DrawArea& area, WhyShortFn why, QWidget* parent)
    : QWidget(parent),
      app_(app),
      shown_(shown),
      messages_(messages),
      fonts_(fonts),
      area_(area),
      why_(std::move(why)) {
    setObjectName("CKs_PartsAllDlg");
    // It covers the drawing, so it paints its whole background.
    setAutoFillBackground(true);
    for (size_t i = 0; i < buttons_.size(); ++i) {
        const SortButtonEntry& entry = kSortButtons[i];
        buttons_[i] = new QPushButton(QString::fromLatin1(entry.Caption), this);
        buttons_[i]->setObjectName(QString::fromLatin1(entry.Key));
        buttons_[i]->setAutoDefault(false);
        connect(buttons_[i], &QPushButton::clicked, this,
                [this, button = entry.Button] { OnSortButton(button); });
    }
    auto* list = new ExtentList(kListExtent, this);
    list->setObjectName(QString::fromLatin1(kListKey));
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list_ = list;
    connect(list_, &QListWidget::itemSelectionChanged, this, [this] { OnSelectLine(); });
    SpeakDialogControls(*this, kSection, messages_);
    hide();
}

QListWidget* CKs_PartsAllDlg::List() const {
    return list_;
}

void CKs_PartsAllDlg::Place(Visibility state) {
    const PartsAllPlacement place = PlacePartsAll(area_.ScreenRect(), shown_.Mode(), state);
    const ControlRect& r = place.Rect;
    const QPoint screen(r.X, r.Y);
    const QPoint topLeft =
        parentWidget() != nullptr ? parentWidget()->mapFromGlobal(screen) : screen;
    setGeometry(topLeft.x(), topLeft.y(), r.Width, r.Height);
    if (!place.Shown) {
        hide();
        return;
    }
    show();
    raise();
    update();
    LayOutControls();
    Fill(shown_.Koutei());
}

void CKs_PartsAllDlg::LayOutControls() {
    const int buttonFont = messages_.GetFontText(kSection, kButtonFontKey).Font;
    const PartsAllControls layout =
        LayOutPartsAll(width(), height(), fonts_.PixelHeight(buttonFont));
    for (size_t i = 0; i < buttons_.size(); ++i) {
        const ControlRect& r = layout.Buttons[i];
        buttons_[i]->setGeometry(r.X, r.Y, r.Width, r.Height);
        SetCaption(buttons_[i], kSortButtons[i].Key);
    }
    list_->setGeometry(layout.List.X, layout.List.Y, layout.List.Width, layout.List.Height);
    SetCaption(list_, kListKey);
}

void CKs_PartsAllDlg::SetCaption(QWidget* control, const char* key) {
    const FontText value = messages_.GetFontText(kSection, key);
    control->setFont(fonts_.Font(value.Font));
    if (value.Text == kKeepCaption)
        return;
    if (auto* button = qobject_cast<QPushButton*>(control))
        button->setText(DecodeText(value.Text));
    else
        control->setWindowTitle(DecodeText(value.Text));
}

void CKs_PartsAllDlg::Fill(int32_t koutei) {
    const std::optional<std::vector<std::string>> lines =
        PartsAllLines(app_, shown_, koutei, sortKey_, area_.Drawing().PalletsInView());
    if (!lines)
        return;
    // Filling is no selection of the operator's.
    const QSignalBlocker block(list_);
    list_->clear();
    for (const std::string& line : *lines)
        list_->addItem(new ShortTipItem(DecodeText(line), SeqOfPartsAllLine(line), why_));
}

void CKs_PartsAllDlg::SelectLineOfPart() {
    SelectRow(LineOfPicked(Lines(), area_.Drawing().PickedStack()));
}

void CKs_PartsAllDlg::SelectLineOfSeq(int32_t seq) {
    SelectRow(LineOfSeq(Lines(), seq));
}

std::vector<std::string> CKs_PartsAllDlg::Lines() const {
    std::vector<std::string> lines;
    for (int i = 0; i < list_->count(); ++i)
        lines.push_back(EncodeText(list_->item(i)->text()));
    return lines;
}

void CKs_PartsAllDlg::SelectRow(std::optional<size_t> row) {
    // Selecting for the drawing is no pick of the operator's.
    const QSignalBlocker block(list_);
    if (row)
        list_->setCurrentRow(static_cast<int>(*row));
    else
        list_->clearSelection();
}

void CKs_PartsAllDlg::OnSortButton(SortButton button) {
    sortKey_ = NextSortKey(button, sortKey_);
    Fill(shown_.Koutei());
}

std::optional<int32_t> CKs_PartsAllDlg::SelectedSeq() const {
    const QList<QListWidgetItem*> selected = list_->selectedItems();
    if (selected.isEmpty())
        return std::nullopt;
    return SeqOfPartsAllLine(EncodeText(selected.front()->text()));
}

void CKs_PartsAllDlg::OnSelectLine() {
    const std::optional<int32_t> chosen = SelectedSeq();
    if (!chosen)
        return;
    const int32_t seq = *chosen;
    PickFirstStackOfSeq(app_, area_.Drawing(), seq,
                        [this](DrawMode mode) { area_.DrawParts(mode); });
}

}  // namespace kesto

// The main window's lists, the small-box paging and the placement run behind them.
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

#include "app/Codes.h"
#include "render/TextCodec.h"
#include "rules/ListLines.h"
#include "ui/main/CKestoDlg.h"

namespace kesto {

// The lists are sorted by their text without regard to case; equal lines keep their order.
void CKestoDlg::AddLine(QListWidget* list, const std::string& line, QListWidgetItem* item) {
    const QString text = DecodeText(line);
    int low = 0;
    int high = list->count();
    while (low < high) {
        const int mid = (low + high) / 2;
        if (QString::compare(list->item(mid)->text(), text, Qt::CaseInsensitive) <= 0) {
            low = mid + 1;
        } else {
            high = mid;
        }
    }
    if (item != nullptr) {
        item->setText(text);
        list->insertItem(low, item);
    } else {
        list->insertItem(low, text);
    }
}

void CKestoDlg::FillSchedule() {
    const QSignalBlocker block(schedule_);
    schedule_->clear();
    for (const KouteiInfo& koutei : app_.KouteiList)
        AddLine(schedule_, ScheduleLine(app_, koutei));
}

void CKestoDlg::FillAllParts(int koutei) {
    if (!app_.HasKoutei(koutei))
        return;
    const QSignalBlocker block(allParts_);
    allParts_->clear();
    for (const PartsInfo& part : app_.PartsList) {
        if (part.KouteiNo == koutei)
            AddLine(allParts_, AllPartsLine(part), new ShortTipItem({}, part.Seq, WhyShort()));
    }
}

void CKestoDlg::FillSmallBox(int koutei, int code) {
    if (!app_.HasKoutei(koutei))
        return;
    const QSignalBlocker block(smallBox_);
    smallBox_->clear();
    if (!IsSmallBox(code))
        return;
    for (const PartsInfo& part : app_.PartsList) {
        if (part.KouteiNo == koutei && InSmallBox(part, code))
            AddLine(smallBox_, SmallBoxLine(part));
    }
}

void CKestoDlg::FillTorioki(int koutei) {
    if (!app_.HasKoutei(koutei))
        return;
    const QSignalBlocker block(torioki_);
    torioki_->clear();
    for (const PartsInfo& part : app_.PartsList) {
        if (part.KouteiNo == koutei && InTorioki(part))
            AddLine(torioki_, ToriokiLine(part));
    }
}

void CKestoDlg::FillPalletSelect() {
    const QSignalBlocker block(palletSelect_);
    palletSelect_->clear();
    for (int i = 1; i <= app_.Settings.PalletCount; ++i)
        palletSelect_->addItem(DecodeText(PalletSelectLine(app_.Settings.PalletPrefix, i)));
    palletSelect_->setCurrentIndex(palletSelect_->count() > 0 ? 0 : -1);
}

void CKestoDlg::CountBoxPages() {
    boxPages_.Count(app_.BoxFlags);
}

int CKestoDlg::TurnBoxPage(int direction) {
    SetChecked(kPagePrevious, false);
    SetChecked(kPageNext, false);
    const std::optional<PageArrows> arrows = boxPages_.Turn(direction);
    if (!arrows)
        return 0;
    if (arrows->Previous)
        Control(kPagePrevious)->setEnabled(*arrows->Previous);
    if (arrows->Next)
        Control(kPageNext)->setEnabled(*arrows->Next);
    return 1;
}

void CKestoDlg::UpdateBoxButtons() {
    for (int k = 1; k <= SmallBoxPages::kPerPage; ++k) {
        const ControlId id = kBoxButtons[k - 1];
        const int n = boxPages_.BoxOnButton(k);
        SetChecked(id, false);
        if (fonts_.Defined(boxCaptionFont_))
            SetCaption(Control(id), boxCaptionFont_, boxCaptionPrefix_ + std::to_string(n));
        Control(id)->setEnabled(boxPages_.Defined(app_.BoxFlags, k));
        if (k == 1) {
            SetChecked(id, true);
            Present(session_.ChooseBox(SmallBoxCode(n)));
        }
    }
}

void CKestoDlg::SetChecked(ControlId id, bool checked) {
    if (auto* button = qobject_cast<QPushButton*>(Control(id)))
        button->setChecked(checked);
}

// The buttons as LoadAndPlace leaves them: hit by block, box 1 of the page, grid on.
void CKestoDlg::ResetToggles() {
    SetChecked(kHitSingle, false);
    SetChecked(kHitByBlock, true);
    SetChecked(kBoxButton1, true);
    SetChecked(kBoxButton2, false);
    SetChecked(kBoxButton3, false);
    SetChecked(kGridToggle, true);
    SetChecked(kNestToggle, true);
    SetChecked(kBlockDrawToggle, shown_.StoredBlockDraw() != 0);
    SetChecked(k3DToggle, false);
}

void CKestoDlg::SelectScheduleRow(int row) {
    const QSignalBlocker block(schedule_);
    if (row < schedule_->count())
        schedule_->setCurrentRow(row);
}

void CKestoDlg::ShowResetJob() {
    ResetToggles();
    FillSchedule();
    SelectScheduleRow(0);
    FillAllParts(shown_.Koutei());
    FillSmallBox(shown_.Koutei(), shown_.Box());
    FillPalletSelect();
}

void CKestoDlg::ShowPlacedJob() {
    FillAllParts(shown_.Koutei());
    FillTorioki(shown_.Koutei());
}

}  // namespace kesto

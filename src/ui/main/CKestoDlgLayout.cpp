// The main window's captions, fonts and control placement.
#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>

#include "render/TextCodec.h"
#include "rules/PartsAllList.h"
#include "support/MessageFile.h"
#include "ui/dialogs/CKs_PartsAllDlg.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/CKestoDlg.h"
#include "view/MainLayout.h"

namespace kesto {

namespace {

constexpr const char* kSection = "MainDlg";
// A text of "?????" keeps the control's own caption while its font still changes.
constexpr const char* kKeepCaption = "?????";

void SetControlText(QWidget* control, const QString& text) {
    if (auto* button = qobject_cast<QAbstractButton*>(control)) {
        button->setText(text);
    } else if (auto* label = qobject_cast<QLabel*>(control)) {
        label->setText(text);
    } else {
        control->setWindowTitle(text);
    }
}

}  // namespace

void CKestoDlg::SetCaption(QWidget* control, int font, const std::string& text) {
    if (control == nullptr)
        return;
    control->setFont(fonts_.Font(font));
    if (text != kKeepCaption)
        SetControlText(control, DecodeText(text));
}

void CKestoDlg::LabelPass() {
    for (size_t i = 0; i < kLabelledControls; ++i) {
        const ControlEntry& entry = kControls[i];
        const FontText value = session_.Svc().Messages.GetFontText(kSection, entry.Key);
        if (i == kBoxCaptionIndex) {
            boxCaptionFont_ = value.Font;
            boxCaptionPrefix_ = value.Text;
        }
        if (fonts_.Defined(value.Font))
            SetCaption(Control(entry.Id), value.Font, value.Text);
        if (i == kNestAIndex || i == kNestDIndex) {
            const size_t slot = i == kNestAIndex ? 0 : 1;
            nestCaptionFonts_[slot] = value.Font;
            nestCaptionTexts_[slot] = value.Text.substr(0, 31);
        }
    }
}

void CKestoDlg::TitlePass() {
    setWindowTitle(DecodeText(session_.Svc().Messages.GetFontText(kSection, "TitleName").Text));
}

void CKestoDlg::LayoutPass() {
    if (layoutStep_ == LayoutStep::NeverShown)
        return;
    LabelPass();
    UpdateBoxButtons();
    const MainLayout layout = ComputeMainLayout(width(), height(), palletSelect_->height());
    for (const auto& [id, r] : layout.Controls) {
        if (QWidget* control = Control(id))
            control->setGeometry(r.X, r.Y, r.Width, r.Height);
    }
    const size_t slot = app_.Settings.IsDirect.IsNotZero() ? 1 : 0;
    SetCaption(Control(kNestToggle), nestCaptionFonts_[slot], nestCaptionTexts_[slot]);
    layout_ = layout;
    drawArea_->PlaceArea(layout.AreaPlacement);
    const IntRect& client = drawArea_->Drawing().Area();
    session_.JournalArea(client.Right - client.Left, client.Bottom - client.Top);
    partsInfo_->PlacePanel(layout.InfoPlacement);
    partsView_->PlacePanel(layout.ViewPlacement);
    if (partsAllState_ != Visibility::Hidden)
        partsAll_->Place(partsAllState_);
}

}  // namespace kesto

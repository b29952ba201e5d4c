// The main window's captions, fonts and control placement.
#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>

#include "support/MessageFile.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/CKestoDlg.h"
#include "ui/main/MainLayout.h"
#include "ui/main/TextCodec.h"

namespace kesto {

namespace {

constexpr const char* kSection = "MainDlg";
// A text of "?????" keeps the control's own caption while its font still changes.
constexpr const char* kKeepCaption = "?????";

struct LabelEntry {
    const char* Key;
    int Control;
};

constexpr LabelEntry kLabels[36] = {
    {"L-SMALLBOX", 1004},      {"L-SCH", 1015},     {"L-TORIOKI", 1005},   {"L-ALLPARTS", 1006},
    {"B-SBOX1", 1037},         {"B-SBOX2", 1038},   {"B-SBOX3", 1039},     {"B-STOT", 1007},
    {"B-TTOS", 1008},          {"B-PTOT", 1012},    {"B-TTOP", 1013},      {"B-RETRY", 1016},
    {"B-AUTO", 1017},          {"B-MAICHG", 1018},  {"L-HIT", 1019},       {"B-HITB", 1035},
    {"B-HITS", 1036},          {"B-3D", 1029},      {"B-GRID", 1028},      {"B-INFO", 1024},
    {"B-FLAT", 1025},          {"B-DANMEN", 1026},  {"B-PALLET2", 1027},   {"B-OK", 1},
    {"LIST-PTALL", 1003},      {"LIST-SCH", 1001},  {"LIST-SBOX", 1000},   {"LIST-TORIOKI", 1002},
    {"LIST-PALLET-SEL", 1044}, {"B-PALLET4", 1030}, {"B-SBOXP", 1042},     {"B-SBOXN", 1041},
    {"B-NEST-A", 1031},        {"B-NEST-D", 1031},  {"B-BLOCKDRAW", 1032}, {"B-CAN", 2},
};

constexpr int kBoxCaptionIndex = 4;
constexpr int kNestAIndex = 32;
constexpr int kNestDIndex = 33;

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
    for (int i = 0; i < 36; ++i) {
        const FontText value = session_.Svc().Messages.GetFontText(kSection, kLabels[i].Key);
        if (i == kBoxCaptionIndex) {
            boxCaptionFont_ = value.Font;
            boxCaptionPrefix_ = value.Text;
        }
        if (fonts_.Defined(value.Font))
            SetCaption(Control(kLabels[i].Control), value.Font, value.Text);
        if (i == kNestAIndex || i == kNestDIndex) {
            const size_t slot = i == kNestAIndex ? 0 : 1;
            app_.DisplayFlags[slot] = value.Font;
            app_.DisplayTexts[slot] = value.Text.substr(0, 31);
        }
    }
}

void CKestoDlg::TitlePass() {
    setWindowTitle(DecodeText(session_.Svc().Messages.GetFontText(kSection, "TitleName").Text));
}

void CKestoDlg::LayoutPass() {
    if (app_.LayoutState == 0)
        return;
    LabelPass();
    UpdateBoxButtons();
    const MainLayout layout = ComputeMainLayout(width(), height(), palletSelect_->height());
    for (const auto& [id, r] : layout.Controls) {
        if (QWidget* control = Control(id))
            control->setGeometry(r.X, r.Y, r.Width, r.Height);
    }
    const size_t slot = app_.IsDirect != 0 ? 1 : 0;
    SetCaption(Control(1031), app_.DisplayFlags[slot], app_.DisplayTexts[slot]);
    app_.AreaRect = layout.AreaRect;
    app_.InfoRect = layout.InfoRect;
    app_.ViewRect = layout.ViewRect;
    drawArea_->Place();
    partsInfo_->Place();
    partsView_->Place();
}

}  // namespace kesto

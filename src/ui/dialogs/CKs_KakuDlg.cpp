#include "ui/dialogs/CKs_KakuDlg.h"
#include "app/Codes.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <algorithm>

#include "render/TextCodec.h"
#include "support/MessageFile.h"
#include "ui/dialogs/DialogTexts.h"
#include "view/KakuLayout.h"

namespace kesto {

namespace {

constexpr const char* kSection = "KakuDlg";
constexpr const char* kTemplateLine = "Static";
// A message value holds at most 255 bytes; the cut only keeps the width arithmetic in range.
constexpr size_t kMaxTextLength = 1024;

QLabel* MakeLine(QWidget* parent, const char* name) {
    auto* label = new QLabel(QString::fromLatin1(kTemplateLine), parent);
    label->setObjectName(name);
    // The lines span the whole box; their text keeps the margins of the platform's message
    // boxes from its edges.
    const QStyle* style = parent->style();
    label->setContentsMargins(style->pixelMetric(QStyle::PM_LayoutLeftMargin), 0,
                              style->pixelMetric(QStyle::PM_LayoutRightMargin), 0);
    return label;
}

QPushButton* MakeButton(QWidget* parent, const char* name, const char* caption) {
    auto* button = new QPushButton(QString::fromLatin1(caption), parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

}  // namespace

CKs_KakuDlg::CKs_KakuDlg(int no1, int no2, const MessageTable& messages, const FontTable& fonts,
                         QWidget* mainWindow)
    : QDialog(mainWindow),
      no1_(no1),
      no2_(no2),
      messages_(messages),
      fonts_(fonts),
      mainWindow_(mainWindow) {
    setObjectName("CKs_KakuDlg");
    line1_ = MakeLine(this, "1043");
    line2_ = MakeLine(this, "1044");
    ok_ = MakeButton(this, "ButtonOk", "OK");
    cancel_ = MakeButton(this, "ButtonCan", "Cancel");
    // OK is the dialog's default push button: Return answers OK, Escape Cancel.
    ok_->setDefault(true);
    connect(ok_, &QPushButton::clicked, this, [this] { done(1); });
    connect(cancel_, &QPushButton::clicked, this, [this] { done(2); });
    SpeakDialogControls(*this, kSection, messages_);
}

void CKs_KakuDlg::reject() {
    done(2);
}

OkCancel CKs_KakuDlg::Run() {
    Prepare();
    return exec() == QDialog::Accepted ? OkCancel::Ok : OkCancel::Cancel;
}

bool CKs_KakuDlg::ApplyLine(QLabel* label, int number, std::string& shown) {
    const FontText value = messages_.GetFontText(kSection, KakuKey(number));
    if (!fonts_.Defined(value.Font))
        return false;
    label->setFont(fonts_.Font(value.Font));
    label->setText(DecodeText(value.Text));
    shown = value.Text;
    charHeight_ = fonts_.PixelHeight(value.Font);
    return true;
}

void CKs_KakuDlg::ApplyButton(QPushButton* button, const char* key) {
    const FontText value = messages_.GetFontText(kSection, key);
    if (!fonts_.Defined(value.Font))
        return;
    button->setFont(fonts_.Font(value.Font));
    button->setText(DecodeText(value.Text));
}

void CKs_KakuDlg::Prepare() {
    charHeight_ = QFontMetrics(font()).height();
    const FontText title = messages_.GetFontText(kSection, "TitleName");
    if (fonts_.Defined(title.Font)) {
        setFont(fonts_.Font(title.Font));
        setWindowTitle(DecodeText(title.Text));
    }
    std::string shown1 = kTemplateLine;
    std::string shown2 = kTemplateLine;
    ApplyLine(line1_, no1_, shown1);
    if (no2_ < 1) {
        line2_->hide();
    } else {
        line2_->show();
        ApplyLine(line2_, no2_, shown2);
    }
    ApplyButton(ok_, "ButtonOk");
    ApplyButton(cancel_, "ButtonCan");
    // Lengths in bytes of the message file's text, as the box was sized for Shift_JIS text.
    size_t length = shown1.size();
    if (no2_ > 0 && shown2.size() > length)
        length = shown2.size();
    PlaceBox(static_cast<int>(std::min<size_t>(length, kMaxTextLength)));
}

void CKs_KakuDlg::PlaceBox(int textLength) {
    QRect owner;
    if (mainWindow_ != nullptr) {
        owner = mainWindow_->frameGeometry();
    } else if (QGuiApplication::primaryScreen() != nullptr) {
        owner = QGuiApplication::primaryScreen()->geometry();
    }
    const KakuLayout l = LayOutKakuDlg(
        textLength, charHeight_, ControlRect{owner.x(), owner.y(), owner.width(), owner.height()},
        kaku::OnlyInforms(no1_));
    const auto place = [](QWidget* w, const ControlRect& r) {
        w->setGeometry(r.X, r.Y, r.Width, r.Height);
    };
    place(this, l.Box);
    place(line1_, l.Line1);
    place(line2_, l.Line2);
    place(ok_, l.Ok);
    cancel_->setVisible(l.Cancel.has_value());
    if (l.Cancel)
        place(cancel_, *l.Cancel);
}

}  // namespace kesto

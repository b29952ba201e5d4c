#include "ui/dialogs/CKs_MaiDlg.h"

#include <QFontMetrics>
#include <QGroupBox>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

#include "render/QtCanvas.h"
#include "render/TextCodec.h"
#include "support/TextFile.h"
#include "ui/dialogs/DialogTexts.h"

namespace kesto {

namespace {

constexpr MaiButton kButtons[5] = {MaiButton::Max, MaiButton::Even, MaiButton::Half,
                                   MaiButton::Third, MaiButton::Quarter};
// The captions of the dialog template, kept when the message file gives no usable font.
constexpr const char* kButtonKeys[5] = {"BTKAI", "BT1", "BT2", "BT3", "BT4"};
constexpr const char* kButtonCaptions[5] = {"Max", "Even", "1/2", "1/3", "1/4"};

QRect ToQRect(const IntRect& r) {
    return QRect(r.Left, r.Top, r.Right - r.Left, r.Bottom - r.Top);
}

}  // namespace

CKs_MaiDlg::CKs_MaiDlg(CKestoApp& app, std::optional<IntRect> overArea,
                       const MessageTable& messages, const FontTable& fonts, Operator& op,
                       const HaichiInfo& picked, double heightLimit, QWidget* parent)
    : QDialog(parent),
      app_(app),
      overArea_(overArea),
      messages_(messages),
      fonts_(fonts),
      op_(op),
      choice_(app, picked, heightLimit),
      nameFontHeight_(MaiNameFontHeight(app, messages)) {
    setObjectName("CKs_MaiDlg");
    name_ = new QLineEdit(this);
    name_->setObjectName("PartsName");
    name_->setReadOnly(true);
    ok_ = MakeButton("ButtonOk", "OK");
    cancel_ = MakeButton("ButtonCan", "Cancel");
    for (int i = 0; i < 5; ++i) {
        buttons_[i] = MakeButton(kButtonKeys[i], kButtonCaptions[i]);
        connect(buttons_[i], &QPushButton::clicked, this, [this, i] { Press(kButtons[i]); });
    }
    // Made before the count's edit box, so that the box stays on top of it.
    group_ = new QGroupBox(QStringLiteral("Count"), this);
    group_->setObjectName("Label1");
    count_ = new QLineEdit(this);
    count_->setObjectName("MaiSet");
    connect(count_, &QLineEdit::textEdited, this, [this](const QString& text) {
        choice_.Type(EncodeText(text));
        update();
    });
    connect(ok_, &QPushButton::clicked, this, &CKs_MaiDlg::OnOk);
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    SpeakDialogControls(*this, kMaiSection, messages_);
    resize(kWidth, kHeight);
}

QPushButton* CKs_MaiDlg::MakeButton(const char* name, const char* caption) {
    auto* button = new QPushButton(QString::fromLatin1(caption), this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

void CKs_MaiDlg::Prepare() {
    ApplyCaptions();
    ShowEditText();
    ApplyLayout();
    if (overArea_)
        PlaceOverArea();
}

int CKs_MaiDlg::Run() {
    Prepare();
    if (exec() != QDialog::Accepted)
        return MaiChoice::kNoChange;
    // The count is read back from its edit box, where OK wrote the result.
    return AtoL(EncodeText(count_->text()));
}

void CKs_MaiDlg::ApplyCaptions() {
    for (const MaiCaption& caption : kMaiCaptions) {
        const MaiText value = ReadMaiText(messages_, caption.Key, caption.TextField);
        if (!fonts_.Defined(value.Font))
            continue;
        QWidget* control = caption.Control == kMaiTitle ? static_cast<QWidget*>(this)
                                                        : findChild<QWidget*>(caption.Key);
        control->setFont(fonts_.Font(value.Font));
        if (caption.Control == kMaiTitle)
            setWindowTitle(DecodeText(value.Text));
        else if (auto* button = qobject_cast<QPushButton*>(control))
            button->setText(DecodeText(value.Text));
        else if (auto* box = qobject_cast<QGroupBox*>(control))
            box->setTitle(DecodeText(value.Text));
    }
    const MaiText name = ReadMaiText(messages_, "PartsName", kMaiSecondField);
    if (fonts_.Defined(name.Font)) {
        name_->setFont(fonts_.Font(name.Font));
        name_->setText(DecodeText(choice_.Part().DisplayName));
    }
    const MaiText count = ReadMaiText(messages_, "MaiSet", kMaiSecondField);
    if (fonts_.Defined(count.Font))
        count_->setFont(fonts_.Font(count.Font));
}

MaiLayout CKs_MaiDlg::Layout() const {
    const QRect client = rect();
    return LayOutMaiDlg(IntRect{client.left(), client.top(), client.left() + client.width(),
                                client.top() + client.height()},
                        nameFontHeight_);
}

void CKs_MaiDlg::ApplyLayout() {
    const MaiLayout l = Layout();
    name_->setGeometry(ToQRect(l.NameEdit));
    ok_->setGeometry(ToQRect(l.Ok));
    cancel_->setGeometry(ToQRect(l.Cancel));
    for (int i = 0; i < 5; ++i)
        buttons_[i]->setGeometry(ToQRect(l.Buttons[i]));
    group_->setGeometry(ToQRect(l.Group));
    count_->setGeometry(ToQRect(l.CountEdit));
}

void CKs_MaiDlg::PlaceOverArea() {
    // Over the all-parts dialog's lower half: from the drawing area's left edge, ending at
    // its vertical middle.
    const IntRect& area = *overArea_;
    const int middle = area.Top + (area.Bottom - area.Top) / 2;
    move(area.Left + 2, middle - frameGeometry().height());
}

void CKs_MaiDlg::Press(MaiButton button) {
    choice_.Press(button);
    ShowEditText();
    update();
}

void CKs_MaiDlg::ShowEditText() {
    // Written by the program, the text needs no second reading: MaiChoice already read it.
    count_->setText(DecodeText(choice_.EditText()));
}

void CKs_MaiDlg::OnOk() {
    choice_.Confirm(op_);
    ShowEditText();
    accept();
}

void CKs_MaiDlg::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    ApplyLayout();
}

// Painting only paints: the controls were placed by the last resize, and placing them here
// would ask for another paint.
void CKs_MaiDlg::paintEvent(QPaintEvent*) {
    const MaiLayout l = Layout();
    QPainter painter(this);
    QtCanvas canvas(painter, fonts_);
    const MaiTextWidth width = [this](const std::string& text, int32_t slot) {
        return QFontMetrics(fonts_.Font(slot)).horizontalAdvance(DecodeText(text));
    };
    const MaiScene scene{&choice_.Picked(), choice_.HeightLimit(), choice_.Count(),
                         choice_.CompareCount(), nameFontHeight_};
    MaiPicture(app_, messages_, width).Draw(canvas, l.Picture, scene);
}

}  // namespace kesto

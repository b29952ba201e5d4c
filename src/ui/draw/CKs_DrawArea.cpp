#include "ui/draw/CKs_DrawArea.h"

#include <QLabel>

#include "render/TextCodec.h"
#include "ui/main/RectConvert.h"

namespace kesto {

namespace {

constexpr const char* kCaptionNames[] = {"1045", "1048", "1046", "1047"};

}  // namespace

CKs_DrawArea::CKs_DrawArea(CKestoApp& app, const MessageTable& messages, const FontTable& fonts,
                           QWidget* parent)
    : ImagePanel(fonts, parent), app_(app), fonts_(fonts), drawing_(app, messages) {
    setObjectName("CKs_DrawArea");
    for (size_t i = 0; i < captions_.size(); ++i) {
        captions_[i] = new QLabel(this);
        captions_[i]->setObjectName(QString::fromLatin1(kCaptionNames[i]));
        captions_[i]->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        captions_[i]->hide();
    }
}

void CKs_DrawArea::PlaceArea() {
    app_.AreaRect = PlaceAt(app_.AreaPlacement);
    const QPoint topLeft = isWindow() || parentWidget() == nullptr
                               ? geometry().topLeft()
                               : parentWidget()->mapToGlobal(geometry().topLeft());
    app_.AreaWindowRect = {topLeft.x(), topLeft.y(), topLeft.x() + app_.AreaRect.Right,
                           topLeft.y() + app_.AreaRect.Bottom};
}

void CKs_DrawArea::Refresh() {
    // The caption strips show the window's own background.
    ClearImage();
    Paint([this](Canvas& canvas) { drawing_.Refresh(canvas); });
    ShowCaptions();
}

void CKs_DrawArea::DrawParts(int mode, int32_t x, int32_t y) {
    Paint([&](Canvas& canvas) { drawing_.DrawParts(canvas, mode, x, y); });
}

void CKs_DrawArea::ShowCaptions() {
    for (size_t i = 0; i < captions_.size(); ++i) {
        const PalletCaption& caption = drawing_.Captions[i];
        QLabel* label = captions_[i];
        label->setGeometry(ToQRect(caption.Rect));
        if (caption.FontSlot >= 0)
            label->setFont(fonts_.Font(caption.FontSlot));
        label->setText(DecodeText(caption.Text));
        label->setVisible(caption.Visible);
    }
}

}  // namespace kesto

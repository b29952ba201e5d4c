#include "ui/dialogs/DialogTexts.h"

#include <QWidget>

#include "render/TextCodec.h"

namespace kesto {

void Speak(QWidget& widget, const ControlText& text) {
    if (!text.Name.empty())
        widget.setAccessibleName(DecodeText(text.Name));
    widget.setAccessibleDescription(DecodeText(text.Description));
}

void SpeakDialogControls(QWidget& dialog, std::string_view section, const MessageTable& messages) {
    for (const std::string_view key : DialogControlKeys(section)) {
        auto* control = dialog.findChild<QWidget*>(
            QString::fromLatin1(key.data(), static_cast<qsizetype>(key.size())));
        if (control != nullptr)
            Speak(*control, DialogControlText(section, key, messages));
    }
}

}  // namespace kesto

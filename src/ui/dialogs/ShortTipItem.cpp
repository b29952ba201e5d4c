#include "ui/dialogs/ShortTipItem.h"

#include <utility>

#include "render/TextCodec.h"

namespace kesto {

ShortTipItem::ShortTipItem(const QString& text, int32_t seq, WhyShortFn why)
    : QListWidgetItem(text), seq_(seq), why_(std::move(why)) {}

QVariant ShortTipItem::data(int role) const {
    if (role != Qt::ToolTipRole || !why_)
        return QListWidgetItem::data(role);
    const std::string why = why_(seq_);
    return why.empty() ? QVariant() : QVariant(DecodeText(why));
}

}  // namespace kesto

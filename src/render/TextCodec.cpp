#include "render/TextCodec.h"

#include <QByteArray>
#include <QStringDecoder>
#include <QStringEncoder>

namespace kesto {

QString DecodeText(const std::string& bytes) {
    const QByteArray data(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(data);
    if (!utf8.hasError())
        return text;
    QStringDecoder sjis("Shift_JIS");
    if (!sjis.isValid())
        return QString::fromLatin1(data);
    return sjis(data);
}

std::string EncodeText(const QString& text) {
    return text.toStdString();
}

}  // namespace kesto

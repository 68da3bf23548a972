#include "db/ForeignText.h"

#include "db/CodePage1252.h"

#include <QStringDecoder>

namespace {

QString fromWindowsText(const QByteArray& bytes) {
    QString text = QString::fromLatin1(bytes);
    for (QChar& letter : text) letter = CodePage1252::letter(uchar(letter.unicode()));
    return text;
}

} // namespace

QString foreignText(const QByteArray& bytes) {
    QStringDecoder decoder(QStringConverter::encodingForData(bytes).value_or(QStringConverter::Utf8));
    const QString text = decoder.decode(bytes);
    return decoder.hasError() ? fromWindowsText(bytes) : text;
}

QStringList foreignLines(const QByteArray& bytes) {
    QString text = foreignText(bytes).replace("\r\n", "\n");
    if (text.endsWith('\n')) text.chop(1);
    return text.isEmpty() ? QStringList() : text.split('\n');
}

#include "db/ForeignText.h"

#include <QStringDecoder>

namespace {

/// What Windows has at 0x80 to 0x9F; the rest is Latin-1.
constexpr char16_t windowsLetters[] = u"€\x81‚ƒ„…†‡ˆ‰Š‹Œ\x8dŽ\x8f\x90‘’“”•–—˜™š›œ\x9džŸ";

QString fromWindowsText(const QByteArray& bytes) {
    QString text = QString::fromLatin1(bytes);
    for (QChar& letter : text)
        if (letter >= u'\x80' && letter <= u'\x9f') letter = windowsLetters[letter.unicode() - 0x80];
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

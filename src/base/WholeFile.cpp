#include "base/WholeFile.h"

#include <QCryptographicHash>
#include <QSaveFile>

QString safeFileName(QString name) {
    constexpr qsizetype longest = 60; // letters, of three bytes each at most; file names end at 255
    const QByteArray mark =
        QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha256).toHex().left(8);
    name.removeIf([](QChar letter) {
        return letter.category() == QChar::Other_Control || letter.isSurrogate()
               || QStringView(u"/\\:*?\"<>|").contains(letter);
    });
    return name.size() <= longest ? name : name.left(longest) + '~' + mark;
}

QString writeWhole(const QString& path, const QByteArray& content, std::optional<QFile::Permissions> access) {
    QSaveFile file(path);
    const bool written = file.open(QIODevice::WriteOnly) && (!access || file.setPermissions(*access))
                         && file.write(content) == content.size() && file.commit();
    return written ? QString() : file.errorString();
}

#include "base/WholeFile.h"

#include <QSaveFile>

QString writeWhole(const QString& path, const QByteArray& content, std::optional<QFile::Permissions> access) {
    QSaveFile file(path);
    const bool written = file.open(QIODevice::WriteOnly) && (!access || file.setPermissions(*access))
                         && file.write(content) == content.size() && file.commit();
    return written ? QString() : file.errorString();
}

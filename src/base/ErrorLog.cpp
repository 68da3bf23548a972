#include "base/ErrorLog.h"

#include "db/DbError.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

namespace {

constexpr qint64 largestLog = 1'000'000; // bytes
constexpr qsizetype longestName = 60;    // letters, of three bytes each at most; file names end at 255

bool isFatal(int number) {
    return number < 0 || number == 7 || number == 61 || number == 68;
}

QString quoted(QString text) {
    return '"' + text.replace('"', "\"\"") + '"';
}

/// The user name becomes part of a file name. What no file system takes is left out, and a name that would
/// grow too long is cut; its mark tells it from others that begin alike.
QString safeFileName(QString name) {
    const QByteArray mark =
        QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha256).toHex().left(8);
    name.removeIf([](QChar letter) {
        return letter.category() == QChar::Other_Control || letter.isSurrogate()
               || QStringView(u"/\\:*?\"<>|").contains(letter);
    });
    return name.size() <= longestName ? name : name.left(longestName) + '~' + mark;
}

/// What is left of a log that cannot be moved away: its newer half.
void dropOlderHalf(const QString& path) {
    QFile log(path);
    if (!log.open(QIODevice::ReadWrite) || !log.seek(log.size() / 2)) return;
    log.readLine(); // to the end of the record that is cut
    const QByteArray newer = log.readAll();
    if (log.resize(0) && log.seek(0)) log.write(newer);
}

} // namespace

QString ErrorLog::file(const QString& name) const {
    return QDir::toNativeSeparators(QDir::cleanPath(m_folder + '/' + safeFileName(m_userName) + '_' + name));
}

void ErrorLog::rollOver() const {
    if (QFileInfo(path()).size() <= largestLog) return;
    QFile::remove(backupPath());
    if (!QFile::copy(path(), backupPath()) || !QFile::remove(path())) dropOlderHalf(path());
}

void ErrorLog::write(const QString& context, const DbError& error) const {
    QString description = error.text();
    if (!error.statement().isEmpty()) description += " [" + error.statement().left(2000) + ']';
    write(context, error.number() == 0 ? 1 : error.number(), description);
}

void ErrorLog::write(const QString& context, int number, const QString& description) const {
    rollOver();
    QStringList fields;
    if (isFatal(number)) fields << quoted("****** FATAL ERROR ");
    if (number != 0) fields << QDateTime::currentDateTime().toString("#yyyy-MM-dd HH:mm:ss#");
    fields << quoted(context);
    if (number != 0) fields << QString::number(number) << quoted(description);

    QFile log(path());
    if (!log.open(QIODevice::Append)) return;
    log.write((fields.join(',') + "\r\n").toUtf8());
}

#include "base/ErrorLog.h"

#include "base/WholeFile.h"

#include "db/DbError.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

namespace {

constexpr auto logName = "ZelvanSchedulerError.log";
constexpr qint64 largestLog = 1'000'000; // bytes

bool isFatal(int number) {
    return number < 0 || number == 7 || number == 61 || number == 68;
}

QString quoted(QString text) {
    return '"' + text.replace('"', "\"\"") + '"';
}

/// Found out by trying: what a folder allows, only its system knows.
bool isWritable(const QString& path) {
    QFile file(path);
    const bool isNew = !file.exists();
    if (!file.open(QIODevice::Append)) return false;
    if (isNew && file.size() == 0) file.remove();
    return true;
}

QString backupOf(const QString& log) {
    return log.chopped(qstrlen(".log")) + ".bak";
}

/// The user's own, of both programs.
QString ownFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/Zelvan Scheduler";
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

QString ErrorLog::inFolder(const QString& folder, const QString& name) const {
    return QDir::toNativeSeparators(QDir::cleanPath(folder + '/' + safeFileName(m_userName) + '_' + name));
}

QString ErrorLog::file(const QString& name) const {
    const QString beside = inFolder(m_folder, name);
    if (isWritable(beside) || !QDir().mkpath(ownFolder())) return beside;
    return inFolder(ownFolder(), name);
}

bool ErrorLog::isElsewhere() const {
    return path() != inFolder(m_folder, logName);
}

void ErrorLog::rollOver(const QString& path) const {
    if (QFileInfo(path).size() <= largestLog) return;
    const QString backup = backupOf(path);
    QFile::remove(backup);
    if (!QFile::copy(path, backup) || !QFile::remove(path)) dropOlderHalf(path);
}

void ErrorLog::write(const QString& context, const DbError& error) const {
    QString description = error.text();
    if (!error.statement().isEmpty()) description += " [" + error.statement().left(2000) + ']';
    write(context, error.number() == 0 ? 1 : error.number(), description);
}

void ErrorLog::write(const QString& context, int number, const QString& description) const {
    const QString place = path();
    rollOver(place);
    QStringList fields;
    if (isFatal(number)) fields << quoted("****** FATAL ERROR ");
    if (number != 0) fields << QDateTime::currentDateTime().toString("#yyyy-MM-dd HH:mm:ss#");
    fields << quoted(context);
    if (number != 0) fields << QString::number(number) << quoted(description);

    QFile log(place);
    if (!log.open(QIODevice::Append)) return;
    log.write((fields.join(',') + "\r\n").toUtf8());
}

QString ErrorLog::path() const {
    return file(logName);
}

QString ErrorLog::backupPath() const {
    return backupOf(path());
}

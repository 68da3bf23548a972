#include "base/cPathControl.h"

#include "base/WholeFile.h"
#include "db/ForeignText.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHash>

namespace {

QString withoutTrailingSeparator(const QString& folder) {
    return QDir::cleanPath(QDir::fromNativeSeparators(folder.trimmed()));
}

/// The older file goes only when the newer one is there whole.
bool replaceFile(const QString& from, const QString& to) {
    const QString unfinished = to + ".unfinished";
    QFile::remove(unfinished);
    if (!QFile::copy(from, unfinished)) return false;
    QFile::remove(to);
    return QFile::rename(unfinished, to);
}

int copyFiles(const QString& from, const QString& to, const QStringList& patterns,
              QDirIterator::IteratorFlag flag) {
    int failures = 0;
    QDirIterator files(from, patterns, QDir::Files, flag);
    while (files.hasNext()) {
        const QString source = files.next();
        const QString target = QDir(to).filePath(QDir(from).relativeFilePath(source));
        if (!QDir().mkpath(QFileInfo(target).path()) || !replaceFile(source, target)) ++failures;
    }
    return failures;
}

} // namespace

QString commonSystemFolder() {
#ifdef Q_OS_WIN
    const QString common = qEnvironmentVariable("ProgramData");
#else
    const QString common = "/var/lib";
#endif
    return common + "/Zelvan/System";
}

cPathControl::cPathControl(const QString& appFolder)
    : m_appFolder(withoutTrailingSeparator(appFolder)),
      m_projectFolder(m_appFolder + "/Projects"),
      m_backupFolder(m_projectFolder + "/Backup"),
      m_systemFolder(m_appFolder) {
    readPathSettingsFile();
}

void cPathControl::setSystemFolder(const QString& folder) {
    m_systemFolder = withoutTrailingSeparator(folder);
}

QString cPathControl::appFile(const QString& name) const {
    return QDir(m_appFolder).filePath(name);
}

void cPathControl::readPathSettingsFile() {
    QFile file(appFile("Paths.txt"));
    if (!file.open(QIODevice::ReadOnly)) return;
    for (const QString& line : foreignLines(file.readAll())) {
        const QString key = line.section('=', 0, 0).trimmed();
        const QString folder = withoutTrailingSeparator(line.section('=', 1));
        if (folder.isEmpty()) continue;
        // AppFolder is where the program was started, whatever the file says of an earlier place.
        if (key.compare("ProjectFolder", Qt::CaseInsensitive) == 0) m_projectFolder = folder;
        if (key.compare("BackupFolder", Qt::CaseInsensitive) == 0) m_backupFolder = folder;
        if (key.compare("SystemFolder", Qt::CaseInsensitive) == 0) m_systemFolder = folder;
    }
}

bool cPathControl::SavePathSettingsFile() const {
    const QList<std::pair<QString, QString>> folders{{"AppFolder", m_appFolder},
                                                     {"ProjectFolder", m_projectFolder},
                                                     {"BackupFolder", m_backupFolder},
                                                     {"SystemFolder", m_systemFolder}};
    QString lines;
    for (const auto& [key, folder] : folders) lines += key + '=' + QDir::toNativeSeparators(folder) + "\r\n";
    return writeWhole(appFile("Paths.txt"), lines.toUtf8()).isEmpty();
}

bool cPathControl::CanWriteToNorvaQXAppPath() const {
    QFile probe(appFile("Test.dat"));
    if (probe.exists()) return probe.open(QIODevice::Append); // somebody's own file stays as it is
    return probe.open(QIODevice::WriteOnly) && probe.remove();
}

int cPathControl::CopyFilesAndFolders(const QString& from, const QString& to) const {
    if (QDir(from) == QDir(to)) return 0;
    int failures = copyFiles(from, to, {"*.MDB", "*.TXT", "*.INI", "*.LOG", "*.DAT", "*.CSV"},
                             QDirIterator::NoIteratorFlags);
    for (const auto* folder : {"/Log", "/Archives"})
        failures += copyFiles(from + folder, to + folder, {"*"}, QDirIterator::Subdirectories);
    return failures;
}

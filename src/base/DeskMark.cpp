#include "base/DeskMark.h"

#include <QCryptographicHash>
#include <QDir>
#include <QRandomGenerator>
#include <QSysInfo>

namespace {

/// The same for all programs that one user runs on one computer.
QString deskName() {
    const QString desk = QSysInfo::machineHostName() + '\n' + QDir::homePath();
    return QCryptographicHash::hash(desk.toUtf8(), QCryptographicHash::Sha256).toHex().left(8);
}

QString lockFile(const QString& name) {
    return QDir::temp().filePath("zelvan-scheduler-" + name + ".lock");
}

} // namespace

DeskMark::DeskMark()
    : m_name(deskName() + QString::number(QRandomGenerator::system()->generate(), 16).rightJustified(8, '0')),
      m_lock(lockFile(m_name)) {
    m_lock.setStaleLockTime(0); // held until the program ends, however long that is
    m_lock.tryLock();
}

bool DeskMark::isLeftOver(const QString& name) {
    if (!name.startsWith(deskName())) return false;
    QLockFile lock(lockFile(name));
    lock.setStaleLockTime(0);
    return lock.tryLock();
}

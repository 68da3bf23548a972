#include "base/SettingsStore.h"

#include <QFile>
#include <QSettings>

namespace {

#ifdef Q_OS_WIN
QSettings::Format format = QSettings::NativeFormat;
#else
QSettings::Format format = QSettings::IniFormat;
#endif

QSettings storeOf(const QString& application) {
    return QSettings(format, QSettings::UserScope, "Zelvan Scheduler", application);
}

} // namespace

QString getSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue) {
    return storeOf(application).value(section + '/' + key, defaultValue).toString();
}

QString saveSetting(const QString& application, const QString& section, const QString& key,
                    const QString& value) {
    QSettings store = storeOf(application);
    store.setValue(section + '/' + key, value);
    store.sync();
    if (store.status() == QSettings::NoError) return {};
    if (format == QSettings::NativeFormat) return store.fileName() + " cannot be written.";
    if (store.status() == QSettings::FormatError) return store.fileName() + " is damaged.";
    QFile file(store.fileName()); // the store keeps the system's reason to itself
    const QString reason = file.open(QIODevice::Append) ? "it cannot be replaced" : file.errorString();
    return store.fileName() + ": " + reason;
}

void keepSettingsIn(const QString& folder) {
    format = QSettings::IniFormat;
    QSettings::setPath(format, QSettings::UserScope, folder);
}

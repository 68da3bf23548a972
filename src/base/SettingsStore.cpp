#include "base/SettingsStore.h"

#include <QSettings>

namespace {

QSettings storeOf(const QString& application) {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, "Zelvan Scheduler", application);
}

} // namespace

QString getSetting(const QString& application, const QString& section, const QString& key,
                   const QString& defaultValue) {
    return storeOf(application).value(section + '/' + key, defaultValue).toString();
}

void saveSetting(const QString& application, const QString& section, const QString& key,
                 const QString& value) {
    storeOf(application).setValue(section + '/' + key, value);
}

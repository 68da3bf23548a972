#include "app/openServer.h"

#include "base/SettingsStore.h"
#include "db/OdbcServer.h"
#include "embedded/EmbeddedServer.h"

namespace {

QString odbcSetting(const QString& key, const QString& defaultValue) {
    return getSetting("NorvaQuorraSQL", "Odbc", key, defaultValue);
}

OdbcSettings odbcSettings() {
    OdbcSettings settings;
    settings.driver = odbcSetting("Driver", "");
    settings.encrypt = odbcSetting("Encrypt", "yes") != "no";
    settings.trustServerCertificate = odbcSetting("TrustServerCertificate", "no") == "yes";
    return settings;
}

} // namespace

std::unique_ptr<Server> openServer(const ConnectionString& target) {
    if (target.dataSource.startsWith("file:", Qt::CaseInsensitive))
        return embedded::EmbeddedServer::open(target);
    return OdbcServer::open(target, odbcSettings());
}

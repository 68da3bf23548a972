#include "app/openServer.h"

#include "base/SettingsStore.h"
#include "db/OdbcServer.h"
#include "db/RecordingServer.h"
#include "embedded/EmbeddedServer.h"

#include <cstdio>
#include <utility>

namespace {

QString odbcSetting(const QString& key, const QString& defaultValue) {
    return getSetting("NorvaQuorraSQL", "Odbc", key, defaultValue);
}

OdbcSettings odbcSettings() {
    OdbcSettings settings;
    settings.driver = odbcSetting("Driver", "");
    const QString encrypt = odbcSetting("Encrypt", "yes");
    settings.encrypt = encrypt == "no"       ? OdbcSettings::No
                       : encrypt == "strict" ? OdbcSettings::Strict
                                             : OdbcSettings::Yes;
    settings.hostNameInCertificate = odbcSetting("HostNameInCertificate", "");
    settings.serverCertificate = odbcSetting("ServerCertificate", "");
    settings.trustServerCertificate = odbcSetting("TrustServerCertificate", "no") == "yes";
    settings.freetdsConf = odbcSetting("FreetdsConf", "no") == "yes";
    return settings;
}

bool isEmbedded(const QString& dataSource) {
    return dataSource.startsWith("file:", Qt::CaseInsensitive);
}

std::unique_ptr<Server> openUnrecorded(const ConnectionString& target) {
    if (isEmbedded(target.dataSource)) return embedded::EmbeddedServer::open(target);
    return OdbcServer::open(target, odbcSettings());
}

void tellOnce(const QString& message) {
    static bool told = false;
    if (!std::exchange(told, true)) std::fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

std::unique_ptr<Server> openServer(const ConnectionString& target) {
    std::unique_ptr<Server> server = openUnrecorded(target);
    const QString path = qEnvironmentVariable("ZELVAN_SCHEDULER_STATEMENTS");
    if (path.isEmpty()) return server;
    std::unique_ptr<QFile> record = RecordingServer::openRecord(path);
    if (!record) {
        tellOnce("Statements are not recorded, the file cannot be written: " + path);
        return server;
    }
    return std::make_unique<RecordingServer>(std::move(server), std::move(record));
}

QString missingProtection(const QString& dataSource) {
    return isEmbedded(dataSource) ? QString() : OdbcServer::shortcoming(odbcSettings());
}

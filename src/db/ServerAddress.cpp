#include "db/ServerAddress.h"

#include "db/Refusal.h"

ServerAddress ServerAddress::parse(const QString& typed) {
    ServerAddress address;
    QString name = typed;
    if (const qsizetype comma = typed.indexOf(u','); comma >= 0) {
        address.port = typed.mid(comma + 1).trimmed().toInt();
        if (address.port < 1 || address.port > 65535)
            throw Refusal(QString("The server name \"%1\" holds no valid port after the comma.").arg(typed));
        name.truncate(comma);
    }
    const qsizetype backslash = name.indexOf(u'\\');
    if (backslash >= 0) address.instance = name.mid(backslash + 1).trimmed();
    address.host = name.left(backslash).trimmed();
    if (address.host.isEmpty()) throw Refusal(QString("\"%1\" is not the name of a server.").arg(typed));
    return address;
}

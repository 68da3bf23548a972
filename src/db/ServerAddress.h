#pragma once

#include <QString>

/// Where a server listens, as users type it: host, host\instance, host,port or host\instance,port.
struct ServerAddress {
    QString host;
    QString instance; ///< empty for the default instance
    int port = 0;     ///< 0 when none was given

    /// Blanks around the parts do not count. Throws a Refusal when there is no host or the port is none.
    static ServerAddress parse(const QString& typed);
};

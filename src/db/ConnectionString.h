#pragma once

#include <QString>

/// What a connection needs to know.
struct ConnectionString {
    QString userId;
    QString password;
    QString initialCatalog; ///< the default database
    QString dataSource;     ///< host, host\instance, host,port, or file:<path> for the embedded server
    int loginTimeout = 0;   ///< seconds to wait for a session, 0 for no limit
};

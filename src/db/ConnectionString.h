#pragma once

#include <QString>

/// What a connection needs to know, in the "Key=Value;…" form that the users' administrators know.
struct ConnectionString {
    QString userId;
    QString password;
    QString initialCatalog; ///< the default database
    QString dataSource;     ///< host, host\instance, host,port, or file:<path> for the embedded server
    int loginTimeout = 0;   ///< seconds to wait for a session, 0 for no limit; not part of the text

    /// "Provider=SQLOLEDB.1;Persist Security Info=False;User ID=…;PWD=…;Initial Catalog=…;Data Source=…";
    /// a value that holds ; = or a quote stands in double quotes.
    QString toString() const;
    /// Keys match without regard to case or order; unknown keys are ignored. Throws DbError when a
    /// quote is not closed or the data source is missing.
    static ConnectionString parse(const QString& text);
};

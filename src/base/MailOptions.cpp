#include "base/MailOptions.h"

#include "db/ColumnText.h"
#include "db/Connection.h"
#include "db/SchedulerDatabase.h"

namespace {

/// Empty for a column that is missing, for NULL, and for a table without its row.
QString readOption(Connection& connection, const char* column) {
    const RecordSet rows = connection.query(sql("SELECT * FROM NorvaScheduler.dbo.tblOptions"));
    const bool there = rows.columns().contains(QLatin1StringView(column), Qt::CaseInsensitive);
    return rows.isEmpty() || !there ? QString() : rows.row(0).text(column);
}

} // namespace

QString readDefaultEmail(Connection& connection) {
    return readOption(connection, "DefaultEmail").trimmed();
}

int readMaxFileSize(Connection& connection) {
    return qMax(0, readOption(connection, "MaxFileSize").toInt());
}

QString GetMaxFileSizeDesc(Connection& connection) {
    const int megabytes = readMaxFileSize(connection);
    return megabytes == 0 ? "Unlimited" : QString("%1 MB").arg(megabytes);
}

void addMailOptionColumns(Connection& connection) {
    const QStringList columns{"DefaultEmail", "MaxFileSize"};
    QList<Sql> counts;
    for (const QString& column : columns)
        counts << sql("SELECT count(*) as [RowCount] From NorvaScheduler.dbo.sysobjects o WITH (NOLOCK) "
                      "INNER JOIN NorvaScheduler.dbo.syscolumns c WITH (NOLOCK) ON o.id = c.id "
                      "WHERE c.name = {} AND o.name = 'tblOptions'",
                      column);
    for (const QString& column : missingColumns(connection, columns, counts))
        addColumn(connection,
                  sql("ALTER TABLE NorvaScheduler.dbo.tblOptions ADD {} {} NULL ", Name(column),
                      column == "DefaultEmail" ? sql("[varchar] (254) COLLATE Latin1_General_CI_AS")
                                               : sql("[int]")));
}

void saveMailOptions(Connection& connection, const QString& defaultEmail, int maxFileSize) {
    requireFits("default e-mail address", defaultEmail, 254, CodePage::Latin1252);
    Transaction transaction(connection);
    addMailOptionColumns(connection);
    connection.execute(
        sql("IF EXISTS (SELECT * FROM NorvaScheduler.dbo.tblOptions WITH (UPDLOCK, HOLDLOCK)) "
            "UPDATE NorvaScheduler.dbo.tblOptions SET DefaultEmail = {}, MaxFileSize = {} "
            "ELSE INSERT INTO NorvaScheduler.dbo.tblOptions (OutputPath, CSV, Excel, DefaultEmail, "
            "MaxFileSize) VALUES (N'', 0, 0, {}, {})",
            defaultEmail, maxFileSize, defaultEmail, maxFileSize));
    transaction.commit();
}

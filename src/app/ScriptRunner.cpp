#include "app/ScriptRunner.h"

#include "db/Connection.h"
#include "db/DbError.h"
#include "db/ForeignText.h"

#include <QDir>
#include <QFile>

namespace {

QStringList readLines(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw DbError(0, QString("The script \"%1\" cannot be read: %2.")
                             .arg(QDir::toNativeSeparators(path), file.errorString()));
    return foreignLines(file.readAll());
}

} // namespace

QString readScript(const QString& path) {
    return readLines(path).join("\r\n");
}

void runScript(Connection& connection, const QString& path) {
    QString batch;
    int number = 0;
    const auto execute = [&] {
        if (batch.trimmed().isEmpty()) return;
        ++number;
        try {
            connection.execute(Sql::script(batch));
        } catch (const DbError& error) {
            throw DbError(error.number(),
                          QString("%1, batch %2: %3").arg(QDir::toNativeSeparators(path)).arg(number).arg(error.text()),
                          error.statement(), error.connectionLost());
        }
        batch.clear();
    };
    for (const QString& line : readLines(path)) {
        if (line.trimmed().compare("GO", Qt::CaseInsensitive) == 0) execute();
        else batch += line + "\r\n";
    }
    execute();
}

QString runJobs(Connection& connection, const QString& folder) {
    const QString path = QDir(folder).filePath("jobs.sql");
    if (!QFile::exists(path)) return {};
    QString failure;
    try {
        readScript(path); // one that cannot be read is kept for the next start
        try {
            runScript(connection, path);
        } catch (const DbError& error) {
            failure = error.text();
        }
        if (!QFile::remove(path)) failure += " The script could not be deleted and will run again.";
    } catch (const DbError& error) {
        failure = error.text();
    }
    return failure.trimmed();
}

#include "app/ScriptRunner.h"

#include "db/Connection.h"
#include "db/DbError.h"
#include "db/ForeignText.h"
#include "db/Refusal.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>

namespace {

QStringList readLines(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Refusal(QString("The script \"%1\" cannot be read: %2.")
                          .arg(QDir::toNativeSeparators(path), file.errorString()));
    return foreignLines(file.readAll());
}

/// The batches that lines "GO" end, blank ones left away.
QStringList readBatches(const QString& path) {
    QStringList batches;
    QString batch;
    const auto end = [&] {
        if (!batch.trimmed().isEmpty()) batches << batch;
        batch.clear();
    };
    for (const QString& line : readLines(path)) {
        if (line.trimmed().compare("GO", Qt::CaseInsensitive) == 0)
            end();
        else
            batch += line + "\r\n";
    }
    end();
    return batches;
}

/// Takes each batch out of the list once it has run; `path` is for words only.
void runBatches(Connection& connection, const QString& path, QStringList& batches) {
    const auto startAfresh = qScopeGuard([&] { connection.close(); });
    for (int number = 1; !batches.isEmpty(); ++number, batches.removeFirst()) {
        try {
            connection.execute(Sql::script(batches.first()));
        } catch (const DbError& error) {
            throw DbError(
                error.number(),
                QString("%1, batch %2: %3").arg(QDir::toNativeSeparators(path)).arg(number).arg(error.text()),
                error.statement(), error.connectionLost());
        }
    }
}

/// Nothing that the administrator wanted is lost: where the rest cannot be written, the whole file is kept
/// under a name that is free, beside what an earlier run left.
void keepUnrun(const QStringList& batches, const QString& path) {
    QString kept = path + ".failed";
    const QByteArray content = batches.join("GO\r\n").toUtf8() + "GO\r\n";
    QFile file(kept);
    const qint64 before = file.size();
    if (file.open(QIODevice::Append) && file.write(content) == content.size() && file.flush()) return;
    before > 0 ? file.resize(before) : file.remove();
    for (int number = 2; QFile::exists(kept); ++number) kept = path + QString(".failed.%1").arg(number);
    QFile::rename(path, kept);
}

} // namespace

QString readScript(const QString& path) {
    return readLines(path).join("\r\n");
}

void runScript(Connection& connection, const QString& path) {
    QStringList batches = readBatches(path);
    runBatches(connection, path, batches);
}

QString runJobs(Connection& connection, const QString& folder) {
    const QString path = QDir(folder).filePath("jobs.sql");
    if (!QFile::exists(path)) return {};
    QString failure;
    try {
        QStringList batches = readBatches(path); // a file that cannot be read is kept for the next start
        try {
            runBatches(connection, path, batches);
        } catch (const DbError& error) {
            keepUnrun(batches, path);
            failure = error.text() + "\r\n" + batches.first();
        }
        if (QFile::exists(path) && !QFile::remove(path))
            failure += " The script could not be deleted and will run again.";
    } catch (const Refusal& refusal) {
        failure = refusal.text();
    }
    return failure.trimmed();
}

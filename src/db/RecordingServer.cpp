#include "db/RecordingServer.h"

#include "db/DbError.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTime>

namespace {

QString failure(const Sql& batch, const DbError& error) {
    // The server's words may quote a value of the batch.
    const bool hasSecret = batch.text() != batch.shown();
    return QString("\nfailed: %1 %2").arg(error.number()).arg(hasSecret ? "***" : error.text());
}

} // namespace

std::unique_ptr<QFile> RecordingServer::openRecord(const QString& path) {
    auto record = std::make_unique<QFile>(path);
    // Statements hold the users' data: nobody else is to read them.
    const bool isOpen = record->open(QIODevice::Append | QIODevice::Unbuffered,
                                     QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return isOpen ? std::move(record) : nullptr;
}

RecordingServer::RecordingServer(std::unique_ptr<Server> server, std::unique_ptr<QFile> record)
    : m_server(std::move(server)), m_record(std::move(record)) {}

Results RecordingServer::recorded(const Sql& batch, const std::function<Results()>& action) {
    const QString begun = QTime::currentTime().toString("HH:mm:ss.zzz");
    QElapsedTimer timer;
    timer.start();
    const auto write = [&](const QString& outcome) {
        static const QRegularExpression lineBreaks("[\r\n]+");
        QString record = QString("%1 %2 ms [%3] ")
                             .arg(begun)
                             .arg(timer.elapsed(), 5)
                             .arg(QCoreApplication::applicationPid());
        record += (batch.shown() + outcome).trimmed().replace(lineBreaks, "\n    ") + '\n';
        m_record->write(record.toUtf8());
    };
    try {
        Results results = action();
        write({});
        return results;
    } catch (const DbError& error) {
        write(failure(batch, error));
        throw;
    }
}

Results RecordingServer::execute(const Sql& batch) {
    return recorded(batch, [&] { return m_server->execute(batch); });
}

void RecordingServer::begin() {
    recorded(sql("(begin)"), [&] {
        m_server->begin();
        return Results();
    });
}

void RecordingServer::commit() {
    recorded(sql("(commit)"), [&] {
        m_server->commit();
        return Results();
    });
}

void RecordingServer::rollback() {
    recorded(sql("(rollback)"), [&] {
        m_server->rollback();
        return Results();
    });
}

#pragma once

#include "db/Server.h"

#include <QFile>
#include <functional>
#include <memory>

/// A session that writes what it sends to a file, for whoever wants to know which statements a run needs and
/// how long they take. Each record is the time of day, the milliseconds until the answer, the number of the
/// process and the batch with its secrets masked; its further lines, and the error that it met, are indented.
/// A record is written whole when its answer is there, so several sessions and programs may share a file.
class RecordingServer : public Server {
public:
    /// Nothing when the file cannot be written.
    static std::unique_ptr<QFile> openRecord(const QString& path);
    RecordingServer(std::unique_ptr<Server> server, std::unique_ptr<QFile> record);

    Results execute(const Sql& batch) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    void cancel() override { m_server->cancel(); }

private:
    Results recorded(const Sql& batch, const std::function<Results()>& action);

    std::unique_ptr<Server> m_server;
    std::unique_ptr<QFile> m_record;
};

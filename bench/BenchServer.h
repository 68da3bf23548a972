#pragma once

#include "base/Session.h"

#include <QTemporaryDir>

/// A demo server of its own and a session that is logged in on it as the administrator.
class BenchServer {
public:
    BenchServer();

private:
    QTemporaryDir m_folder;

public:
    Session session;
};

/// The process's peak memory in MiB.
double peakMemory();

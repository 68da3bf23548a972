#include "BenchServer.h"

#include "app/SecurityFile.h"
#include "app/cLogin.h"
#include "app/openServer.h"
#include "demo/DemoServer.h"

#include <QFile>
#include <QSettings>
#include <QTextStream>

BenchServer::BenchServer() : session(m_folder.path(), openServer) {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
    DemoOptions options = DemoOptions::small();
    options.schedulerContent = false;
    const QString file = m_folder.filePath("server.db");
    DemoServer::build(file, options);
    WriteEncryptedSSSfile(m_folder.filePath("Zelvan.SSS"), DemoServer::loginPassword);
    const LoginOutcome login = cLogin(session, [] {
                                   return false;
                               }).logIn("file:" + file, Session::serverLoginName, DemoServer::loginPassword);
    if (login.result != LoginOutcome::Done) qFatal("%s", qPrintable(login.message));
}

double peakMemory() {
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly)) return 0;
    QTextStream text(&status);
    for (QString line = text.readLine(); !line.isNull(); line = text.readLine())
        if (line.startsWith("VmHWM:"))
            return line.section(':', 1).section("kB", 0, 0).trimmed().toDouble() / 1024;
    return 0;
}

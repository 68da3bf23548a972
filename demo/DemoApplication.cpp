#include "demo/DemoApplication.h"

#include "app/SecurityFile.h"
#include "base/WholeFile.h"
#include "demo/DemoServer.h"

#include <QDir>
#include <QFile>
#include <stdexcept>

namespace {

[[noreturn]] void fail(const QString& words) {
    throw std::runtime_error(words.toStdString());
}

void writeFile(const QString& path, const QByteArray& contents) {
    if (const QString problem = writeWhole(path, contents); !problem.isEmpty())
        fail(QString("The file \"%1\" cannot be written: %2.").arg(path, problem));
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail(QString("The file \"%1\" cannot be read: %2.").arg(path, file.errorString()));
    return file.readAll();
}

} // namespace

void demoApplication::create(const QString& folder) {
    if (!QDir().mkpath(folder)) fail(QString("The folder \"%1\" cannot be made.").arg(folder));
    const QDir app(folder);
    const auto add = [&](const QString& name, const QByteArray& contents) {
        if (!app.exists(name)) writeFile(app.filePath(name), contents);
    };
    add("Quorra Zelvan.exe",
        "This file stands for the analysis product's program, which the demo does without.\n");
    for (const QString script : {"SchDB.sql", "DBOptions.sql"})
        add(script, readFile(QDir(DemoServer::scriptsFolder).filePath(script)));
    if (!app.exists(SecurityFileName))
        WriteEncryptedSSSfile(app.filePath(SecurityFileName), DemoServer::loginPassword);
}

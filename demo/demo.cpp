#include "app/Terminal.h"
#include "db/DbError.h"
#include "demo/DemoApplication.h"
#include "demo/DemoServer.h"
#include "demo/DemoUser.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QTextStream>
#include <stdexcept>

namespace {

void makeDemo(const QString& folder, QTextStream& out) {
    if (!QDir().mkpath(folder))
        throw std::runtime_error("The folder \"" + folder.toStdString() + "\" cannot be made.");
    const QDir demo(folder);
    QLockFile lock(demo.filePath(".making"));
    lock.lock(); // somebody else may be making the same one
    const QString server = demo.absoluteFilePath("server.db");
    if (QFile::exists(server)) {
        out << "The server " << QDir::toNativeSeparators(server) << " is there already." << Qt::endl;
    } else {
        DemoOptions options;
        options.tell = [&](const QString& step) { out << step << Qt::endl; };
        DemoServer::build(server, options);
    }
    out << "Making the application folder…" << Qt::endl;
    demoApplication::create(demo.absoluteFilePath("app"));

    out << "Ready. Log in on the server \"file:" << server << "\"\n"
        << "  as QuorraAdmin with the password " << DemoServer::loginPassword << ", or with the password "
        << DemoUser::password << " as\n";
    for (const DemoUser& user : DemoUser::all())
        out << "  " << user.name << " (level " << user.level << (user.level == 5 ? ", not let in" : "")
            << ")\n";
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    writeUtf8();
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList arguments = application.arguments().mid(1);
    if (arguments == QStringList{"--password"}) {
        out << DemoServer::loginPassword << Qt::endl;
        return 0;
    }
    if (arguments.size() != 1 || arguments.first().startsWith('-')) {
        err << "Usage: zelvan-scheduler-demo <folder>\n"
               "Makes a demo server and its application folder there, unless they are there already.\n"
               "With --password instead: prints the password of QuorraAdmin."
            << Qt::endl;
        return 2;
    }
    try {
        makeDemo(arguments.first(), out);
        return 0;
    } catch (const DbError& error) {
        err << error.text() << "\n" << error.statement().left(500) << Qt::endl;
    } catch (const std::exception& error) {
        err << QString::fromUtf8(error.what()) << Qt::endl;
    }
    return 1;
}

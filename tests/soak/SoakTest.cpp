#include "soak/Soak.h"
#include "app/openServer.h"
#include "base/Session.h"
#include "demo/DemoServer.h"
#include "support/TestClass.h"

#include <QDir>
#include <QTemporaryDir>

class SoakTest : public QObject {
    Q_OBJECT

private slots:
    void killedProgramsLeaveNothingHalf() {
        const QTemporaryDir folder;
        soak::Soak soak(folder.path(), SOAK_PROGRAM, DEMO_ENGINE);
        constexpr int kills = 6;
        for (int i = 0; i < kills; ++i) soak.killOnce();
        // The marks of killed programs do not pile up: the engine, two savers, the windows and this program
        // have one.
        QVERIFY(QDir(folder.path()).entryList({"server.db-in-*"}).size() <= 5 + 1);
        soak.end();
        QCOMPARE(soak.problems(), QStringList());
        QVERIFY(soak.saves() > 0);

        // Half of a template is told; and a new session clears away what marked those of the dead programs.
        Connection db({Session::serverLoginName, DemoServer::loginPassword, "NorvaScheduler",
                       soak::Soak::server(folder.path())},
                      openServer);
        db.execute(sql("DELETE FROM tblTemplate_Report WHERE ReportID = (SELECT MAX(ReportID) FROM "
                       "tblTemplate_Report)"));
        QVERIFY(QDir(folder.path()).entryList({"server.db-in-*"}).size() < 6);
        soak.settle();
        QCOMPARE(soak.problems().size(), 1);
        QVERIFY(soak.problems().first().startsWith("half there"));
    }
};

static const AnnounceTest<SoakTest> announced;

#include "SoakTest.moc"

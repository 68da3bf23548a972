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

        // It would tell of what is lost or half there; and a new session clears away the marks of the dead
        // ones.
        soak::Journal(soak::Soak::journal(folder.path(), "steady"))
            .note(soak::Journal::Did, 0, {1'000'000, 0});
        Connection db({Session::serverLoginName, DemoServer::loginPassword, "NorvaScheduler",
                       soak::Soak::server(folder.path())},
                      openServer);
        db.execute(sql(
            "INSERT INTO tblTemplate_Report (TemplateID, ReportType, ReportSubType) VALUES (-5, 2, 161)"));
        soak.settle();
        QCOMPARE(soak.problems().filter("lost: steady 0").size(), 1);
        QVERIFY(!soak.problems().filter("rows without an owner: 1").isEmpty());
        QVERIFY(QDir(folder.path()).entryList({"server.db-in-*"}).size() < 6);
    }
};

static const AnnounceTest<SoakTest> announced;

#include "SoakTest.moc"

#include "demo/DemoProject.h"
#include "support/Files.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include "db/DbError.h"
#include "projects/ProjectList.h"
#include "projects/modProjects.h"
#include "schedules/ScheduleList.h"

#include <QDir>

namespace {

class DemoServerTest : public QObject {
    Q_OBJECT

private slots:
    void projectsOpenWithTheirBillType() {
        TestProgram program;
        program.logIn();
        const QStringList listed = loadProjectList(program.session).names;
        for (const DemoProject& project : demoProjects::all()) {
            QCOMPARE(listed.contains(project.database), project.isListed());
            if (!project.isListed()) continue;
            openProject(program.session, project.database);
            QCOMPARE(program.session.project.unitabAccount, project.account);
            QCOMPARE(program.session.project.billType, project.billType);
            QCOMPARE(program.session.project.wispera, project.is(DemoProject::Wispera));
            QVERIFY(program.session.project.defaultStart < program.session.project.defaultEnd);
            QVERIFY(masterCostCentresExist(program.session));
        }
        QVERIFY_THROWS_EXCEPTION(DbError, openProject(program.session, "Quillon Trust"));
    }

    void everyScheduleIsShown() {
        TestProgram program;
        program.logIn();
        const auto rows = readSchedules(program.session.db(), {{}, true}).all().rows;
        using enum ScheduleStatus;
        QSet<ScheduleStatus> states;
        qsizetype broken = 0;
        for (const ScheduleListRow& row : rows) {
            states.insert(row.status);
            if (!row.problem.isEmpty())
                ++broken;
            else
                QVERIFY2(row.contents.section(" : ", 1).toInt() > 0, qPrintable(row.title));
        }
        QCOMPARE(states,
                 (QSet<ScheduleStatus>{Pending, Disabled, Processing, CompletedWithErrors, Completed}));
        QCOMPARE(broken, 1);
    }

    void anUnfinishedServerIsReplaced() {
        const QTemporaryDir folder;
        const QString path = folder.filePath("server.db");
        writeFile(path + ".unfinished", "half a server");
        DemoOptions options = DemoOptions::small();
        options.callRecords = 0;
        options.schedulerDatabase = false;
        DemoServer::build(path, options);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{"server.db"});
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, DemoServer::build(path, options));
    }
};

const AnnounceTest<DemoServerTest> announced;

} // namespace

#include "DemoServerTest.moc"

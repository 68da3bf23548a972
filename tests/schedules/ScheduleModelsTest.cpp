#include "base/WallClock.h"
#include "schedules/ProjectHistory.h"
#include "schedules/ScheduleLog.h"
#include "schedules/ScheduleStatus.h"
#include "support/Files.h"
#include "support/Rows.h"
#include "support/TestClass.h"

#include "base/Session.h"
#include "db/DbError.h"

#include <QTemporaryDir>
#include <QTest>

/// The history file and the texts of the log view.
class ScheduleModelsTest : public QObject {
    Q_OBJECT

    struct Folder {
        QTemporaryDir folder;
        Session session{folder.path(), [](const ConnectionString&) -> std::unique_ptr<Server> {
                            throw DbError(0, "no server here");
                        }};

        explicit Folder(const QString& user = "Amelia") { session.log.setUserName(user); }
        QString history() const { return session.log.file("CallHistory.csv"); }
        QStringList projects() const {
            QStringList names;
            for (const auto& entry : projectHistory::read(session)) names << entry.project;
            return names;
        }
        QByteArray log() const { return readFile(session.log.path()); }
    };

private slots:
    void historyKeepsTheNewestFirstWithoutDoubles() {
        const Folder folder("Domain\\Amelia");
        for (int i = 1; i <= 20; ++i) projectHistory::remember(folder.session, QString("Project %1").arg(i));
        QCOMPARE(folder.projects().size(), projectHistory::mostEntries);
        projectHistory::remember(folder.session, "O'Dowd, \"Freight\" [x] Ω");
        projectHistory::remember(folder.session, "PROJECT 12");
        QCOMPARE(folder.projects().mid(0, 4),
                 QStringList({"PROJECT 12", "O'Dowd, \"Freight\" [x] Ω", "Project 20", "Project 19"}));
        QCOMPARE(folder.projects().filter("12").size(), 1);
        QVERIFY(folder.history().endsWith("DomainAmelia_CallHistory.csv"));
        QVERIFY(folder.log().isEmpty());
    }

    void badHistoryIsIgnoredAndReplaced_data() {
        QTest::addColumn<QByteArray>("content");
        const QByteArray good = "\"Brightwater\",\"2026-Nov-21 10:00:00\"\r\n";
        QTest::newRow("binary") << QByteArray("\x00\xff\xfe\x80", 4);
        QTest::newRow("cut off") << good + "\"Harcourt-Li";
        QTest::newRow("no date") << good + "\"Brightwater\",\"soon\"\r\n";
        QTest::newRow("nameless") << QByteArray("\"\",\"2026-Nov-21 10:00:00\"\r\n");
        QTest::newRow("control characters") << QByteArray("\"a\tb\",\"2026-Nov-21 10:00:00\"\r\n");
        QTest::newRow("megabytes") << good.repeated(50'000);
    }

    void badHistoryIsIgnoredAndReplaced() {
        QFETCH(QByteArray, content);
        const Folder folder;
        writeFile(folder.history(), content);
        QVERIFY(folder.projects().isEmpty());
        QVERIFY2(folder.log().contains("is ignored"), folder.log().constData());
        projectHistory::remember(folder.session, "Brightwater");
        QCOMPARE(folder.projects(), QStringList("Brightwater"));
    }

    void historyThatCannotBeWrittenThereIsTheUsersOwn() {
        const Folder folder;
        QVERIFY(QDir().mkpath(folder.history())); // a folder in its place
        projectHistory::remember(folder.session, "Brightwater");
        QCOMPARE(folder.projects(), QStringList("Brightwater"));
    }

    void longProjectsAreCutInTheMiddle_data() {
        const Rows<QString, QString> row;
        const QString part = QString(20, 'x');
        const QString path = "C:\\Data\\Bills\\" + (part + '\\').repeated(5) + "end";
        const QString hundred = QString(99, 'p') + '\\';
        row("100 fit", hundred, hundred);
        row("path", path, "C:\\Data\\Bills\\...\\" + part + '\\' + part + "\\end");
        row("long last part", "a\\b\\c\\" + QString(120, 'e'), "a\\b\\c\\..." + QString(49, 'e'));
        row("no backslash", QString(128, 'd'), QString(50, 'd') + "..." + QString(49, 'd'));
    }

    void longProjectsAreCutInTheMiddle() {
        const auto [project, shown] = thisRow<QString, QString>();
        QCOMPARE(shortenedProject(project), shown);
    }

    void delayOfARun() {
        const WallClock run(QDate(2026, 11, 21), QTime(9, 0));
        QCOMPARE(ranText(run, run.addSecs(2 * 86'400 + 3'900)),
                 "23 Nov 2026 10:05 (Delayed 2 Days, 1 Hour, 5 Mins)");
        QCOMPARE(ranText(run, run.addSecs(35)), "21 Nov 2026 09:00 (Delayed 35 Secs)");
        QCOMPARE(ranText(run, run.addDays(-1)), "20 Nov 2026 09:00"); // before its time
        QCOMPARE(ranText(run, WallClock()), "not specified");
    }
};

static const AnnounceTest<ScheduleModelsTest> announce;
#include "ScheduleModelsTest.moc"

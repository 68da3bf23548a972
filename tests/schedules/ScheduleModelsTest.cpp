#include "base/WallClock.h"
#include "schedules/ProjectHistory.h"
#include "schedules/ScheduleLog.h"
#include "schedules/ScheduleStatus.h"
#include "support/TestClass.h"

#include "base/Session.h"
#include "db/DbError.h"

#include <QFile>
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
        void write(const QByteArray& content) const {
            QFile file(history());
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        }
        QStringList projects() const {
            QStringList names;
            for (const auto& entry : projectHistory::read(session)) names << entry.project;
            return names;
        }
        QByteArray log() const {
            QFile file(session.log.path());
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        }
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
        folder.write(content);
        QVERIFY(folder.projects().isEmpty());
        QVERIFY2(folder.log().contains("is ignored"), folder.log().constData());
        projectHistory::remember(folder.session, "Brightwater");
        QCOMPARE(folder.projects(), QStringList("Brightwater"));
    }

    void historyThatCannotBeWrittenStopsNothing() {
        const Folder folder;
        QVERIFY(QDir().mkpath(folder.history())); // a folder in its place
        projectHistory::remember(folder.session, "Brightwater");
        QVERIFY(folder.log().contains("ProjectHistory.Remember"));
    }

    void longProjectsAreCutInTheMiddle_data() {
        QTest::addColumn<QString>("project");
        QTest::addColumn<QString>("shown");
        const QString part = QString(20, 'x');
        const QString path = "C:\\Data\\Bills\\" + (part + '\\').repeated(5) + "end";
        const QString hundred = QString(99, 'p') + '\\';
        QTest::newRow("100 fit") << hundred << hundred;
        QTest::newRow("path") << path << "C:\\Data\\Bills\\...\\" + part + '\\' + part + "\\end";
        QTest::newRow("long last part")
            << "a\\b\\c\\" + QString(120, 'e') << "a\\b\\c\\..." + QString(49, 'e');
        QTest::newRow("no backslash") << QString(128, 'd') << QString(50, 'd') + "..." + QString(49, 'd');
        QTest::newRow("one backslash") << "head\\" + QString(100, 'e') << "head\\..." + QString(49, 'e');
    }

    void longProjectsAreCutInTheMiddle() {
        QFETCH(QString, project);
        QFETCH(QString, shown);
        QCOMPARE(shortenedProject(project), shown);
    }

    void delayOfARun_data() {
        QTest::addColumn<QString>("run");
        QTest::addColumn<QString>("ran");
        QTest::addColumn<QString>("text");
        const QString run = "2026-Nov-21 09:00:00";
        QTest::newRow("late") << run << "2026-Nov-23 10:05:00"
                              << "23 Nov 2026 10:05 (Delayed 2 Days, 1 Hour, 5 Mins)";
        QTest::newRow("seconds") << run << "2026-Nov-21 09:00:35"
                                 << "21 Nov 2026 09:00 (Delayed 35 Secs)";
        QTest::newRow("in time") << run << run << "21 Nov 2026 09:00";
        QTest::newRow("before its time") << run << "2026-Nov-20 09:00:00"
                                         << "20 Nov 2026 09:00";
        QTest::newRow("never") << run << WallClock().stored() << "not specified";
    }

    void delayOfARun() {
        QFETCH(QString, run);
        QFETCH(QString, ran);
        QTEST(ranText(*WallClock::fromStored(run), *WallClock::fromStored(ran)), "text");
    }

    void summaryCountsReportsNotRows() {
        QCOMPARE(logSummary({}), QString());
        QCOMPARE(logSummary({{1, 7, 0, "A", ""}, {2, 8, 0, "B", ""}}), QString("None of 2 reports failed"));
        QCOMPARE(logSummary({{1, 7, 0, "A", ""},
                             {2, 7, 17, "A", "x"},
                             {3, 7, 18, "A", "y"},
                             {4, 8, 0, "B", ""},
                             {5, -1, -1, "Schedule", "reset"}}),
                 QString("1 of 2 reports failed; the schedule itself reported an error"));
    }
};

static const AnnounceTest<ScheduleModelsTest> announce;
#include "ScheduleModelsTest.moc"

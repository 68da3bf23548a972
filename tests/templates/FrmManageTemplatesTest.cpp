#include "Screens.h"

#include "demo/DemoTemplates.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "templates/frmManageTemplates.h"
#include "templates/frmTemplate.h"
#include "templates/frmTransfer.h"

/// The template manager over templates used in every way.
class FrmManageTemplatesTest : public QObject {
    Q_OBJECT

    struct Manager : TemplateProgram {
        std::unique_ptr<frmManageTemplates> screen;

        using TemplateProgram::TemplateProgram;
        uctListView& list() { return child<uctListView>(*screen, "lstTemplates"); }
        void show() {
            screen = std::make_unique<frmManageTemplates>(context);
            QCOMPARE(screen->Setup(), 0);
            screen->SetCallback(&caller, "Calledback");
            screen->show();
        }
        /// "reports|active|last used"
        QString figures(int id) {
            return QStringList{list().textOf(id, 3), list().textOf(id, 4), list().textOf(id, 5)}.join('|');
        }
    };

private slots:
    void usage_data() {
        const Rows<QStringList, QString> row;
        row("never used", {}, "-");
        row("no date", {"", "00:00:00"}, "-");
        row("zero date", {"1899-Dec-30 00:00:00"}, "-");
        row("months",
            {"2026-Sep-30 10:00:00", "2026-Nov-02 09:05:00", "1899-Dec-30 00:00:00", "2025-Dec-31 23:00:00"},
            "02 Nov 2026 09:05");
        row("other words", {"yesterday"}, "no date (yesterday)");
    }

    void usage() {
        const auto [ranDates, lastUsed] = thisRow<QStringList, QString>();
        Manager manager;
        const int id = manager.idOf("Weekly call review");
        for (const QString& ranDate : ranDates) manager.addSchedule(id, 4, ranDate);
        manager.show();
        QCOMPARE(manager.list().textOf(id, 5), lastUsed);
    }

    void everybodysTemplatesButOnesOwnFigures() {
        for (const bool administrator : {true, false}) {
            Manager manager(administrator ? QString(Session::serverLoginName) : "Amelia.Hart");
            const int id = manager.idOf("Weekly call review");
            manager.addSchedule(id, 0, "2026-Nov-02 09:05:00", "QuorraAdmin");
            manager.addSchedule(id, 0, "2026-Oct-01 09:05:00", "Amelia.Hart");
            manager.show();
            QCOMPARE(manager.list().model()->rowCount(),
                     manager.scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblTemplate")));
            QCOMPARE(manager.figures(id), administrator ? "4|2|02 Nov 2026 09:05" : "4|1|01 Oct 2026 09:05");
        }
    }

    void readingDoesNotGrowWithTheTemplates() {
        qint64 statements[2];
        for (const int count : {10, 1000}) {
            Manager manager;
            demoTemplates::createMany(manager.db(), count, 20);
            const qint64 before = manager.session.db().statementCount();
            manager.show();
            statements[count / 1000] = manager.session.db().statementCount() - before;
            QVERIFY(manager.list().model()->rowCount() > count);
            ListViewColumnSort(manager.list(), 3, false);
            QCOMPARE(texts(manager.list(), 3).last(), "20"); // as numbers: 4 before 20
            child<QLineEdit>(*manager.screen, "txtFilter").setText("linkvale hl2");
            QCOMPARE(texts(manager.list()), QStringList{"Linkvale invoice check"});
        }
        QCOMPARE(statements[0], statements[1]);
    }

    void aCopyIsATemplateOfItsOwn() {
        Manager manager;
        const int id = manager.idOf("Weekly call review");
        manager.show();
        for (const QString title : {"Weekly call review (2)", "Weekly call review (3)"}) {
            manager.list().selectId(id);
            press(*manager.screen, "cmdDuplicate");
            const int copy = manager.list().selectedId().value();
            QCOMPARE(manager.list().textOf(copy, 0), title);
            QCOMPARE(manager.list().textOf(copy, 3), manager.list().textOf(id, 3));
        }
        QVERIFY(manager.shown().isEmpty());
    }

    void deleting_data() {
        const Rows<QList<int>, QString> row;
        const QString sure = "Are you sure you want to delete this template";
        row("unused", {}, sure + "?");
        row("completed", {4, 3}, sure + " and all associated schedules?");
        row("one active", {0, 4},
            "There is currently 1 active schedule using this template,\n" + sure
                + " and all associated schedules?");
        row("two active", {0, 0},
            "There are currently 2 active schedules using this template,\n" + sure
                + " and all associated schedules?");
    }

    void deleting() {
        const auto [statuses, question] = thisRow<QList<int>, QString>();
        Manager manager;
        const int other = manager.idOf("Invoice only");
        manager.addSchedule(other, 0, "");
        const int id = manager.addTemplate("Doomed");
        const QStringList rest = manager.everything();
        manager.addReport(id, 2, 161);
        for (const int status : statuses) manager.addSchedule(id, status, "", "Amelia.Hart");
        const QStringList all = manager.everything();
        manager.show();
        manager.list().selectId(id);

        manager.messages.answer(false);
        QTest::keyClick(&manager.list(), Qt::Key_Delete);
        QCOMPARE(manager.shown(), QStringList{question});
        QCOMPARE(manager.everything(), all);

        manager.messages.answer(true);
        press(*manager.screen, "cmdDelete");
        QCOMPARE(manager.scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblSchedule")), 1);
        QCOMPARE(manager.scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblTemplate_Report WHERE "
                                    "TemplateID = {}",
                                    id)),
                 0);
        QVERIFY(manager.list().textOf(id, 0).isEmpty() && manager.everything().size() < rest.size());
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    /// A schedule that somebody adds while the question is open is asked about as well.
    void aScheduleAddedMeanwhileIsAskedAbout() {
        Manager manager;
        const int id = manager.addTemplate("Doomed");
        manager.show();
        manager.list().selectId(id);
        manager.messages.answer(true, [&] { manager.addSchedule(id, 0, ""); });
        manager.messages.answer(false);
        press(*manager.screen, "cmdDelete");
        QCOMPARE(manager.shown(),
                 (QStringList{"Are you sure you want to delete this template?",
                              "There is currently 1 active schedule using this template,\nAre you "
                              "sure you want to delete this template and all associated schedules?"}));
        QCOMPARE(manager.idOf("Doomed"), id);
    }

    void deletingIsAllOrNothing() {
        Manager manager;
        const int id = manager.idOf("Weekly call review");
        manager.addSchedule(id, 0, "");
        const QStringList before = manager.everything();
        manager.show();
        manager.list().selectId(id);
        int step = 0;
        do {
            QCOMPARE(manager.everything(), before);
            QVERIFY(manager.screen->isVisible() && !QGuiApplication::overrideCursor());
            manager.shown();
            if (manager.messages.finished()) manager.messages.answer(true); // else it failed before asking
            manager.fault.arm(++step);
            press(*manager.screen, "cmdDelete");
            manager.fault.arm(0);
            QCOMPARE(manager.shown().last(), "Made to fail."); // at last when the list is read anew
        } while (manager.idOf("Weekly call review") != 0);
        QCOMPARE(step, 2 + 2 + 2 + 4 + 1
                           + 1); // counts; locks, counts once more; deletions, the commit, and the list
    }

    void editingLeadsToTheEditor() {
        Manager manager;
        manager.show();
        manager.list().selectId(manager.idOf("Weekly call review"));
        manager.fault.arm(2); // the type is read, the template is not
        press(*manager.screen, "cmdEdit");
        manager.fault.arm(0);
        QCOMPARE(manager.shown(), QStringList{"Error loading template"});
        QCOMPARE(manager.messages.lastDetails(), "Made to fail.");
        inNextModal<frmTemplate>([](frmTemplate& editor) {
            child<QLineEdit>(editor, "txtTemplate").setText("Fortnightly call review");
            press(editor, "cmdSave");
        });
        QTest::keyClick(&manager.list(), Qt::Key_Return);
        QVERIFY(texts(manager.list()).contains("Fortnightly call review"));

        inNextModal<frmTemplate>([&](frmTemplate& editor) {
            manager.messages.type("Yearly call review");
            press(editor, "cmdSaveAs");
        });
        press(*manager.screen, "cmdEdit");
        QCOMPARE(manager.shown(), QStringList{"Please enter a new template title"});
        QCOMPARE(manager.list().selectedId(), manager.idOf("Yearly call review"));

        manager.list().selectId(manager.idOf("Pack for every department"));
        inNextModal<frmTransfer>([](frmTransfer& screen) { screen.close(); });
        press(*manager.screen, "cmdEdit");
        QVERIFY(manager.shown().isEmpty());

        manager.list().selectId(manager.idOf("Fortnightly call review"));
        manager.db().execute(
            sql("DELETE FROM NorvaScheduler.dbo.tblTemplate WHERE Title = N'Fortnightly call review'"));
        press(*manager.screen, "cmdEdit");
        QCOMPARE(manager.shown(),
                 QStringList{"This template has been deleted by somebody else in the meantime."});
        press(*manager.screen, "cmdClose");
        QCOMPARE(manager.caller.calls, 1);
    }
};

static const AnnounceTest<FrmManageTemplatesTest> announced;
#include "FrmManageTemplatesTest.moc"

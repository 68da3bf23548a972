#include "Screens.h"

#include "demo/BulkInsert.h"
#include "projects/modCostCentres.h"
#include "support/Office.h"
#include "support/TestClass.h"
#include "support/failing.h"
#include "templates/frmTransfer.h"
#include "templates/modSubProjects.h"
#include "ui/uctCheckList.h"

#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>
#include <QTreeView>

/// The set-up of cost-centre sub-projects.
class TransferTest : public QObject {
    Q_OBJECT

    struct Transfer : TemplateProgram {
        frmTransfer screen{context};

        explicit Transfer(const QString& project = "Brightwater")
            : TemplateProgram(Session::serverLoginName, project) {}
        bool open(int templateId = -1) {
            screen.SetCallback(&caller, "Calledback");
            const bool loaded = screen.Setup(templateId) == 0;
            screen.show();
            return loaded;
        }
        void name(const QString& title) { child<QLineEdit>(screen, "txtTemplate").setText(title); }
        void press(const char* button) { ::press(screen, button); }
        uctCheckList& list() { return child<uctCheckList>(screen, "lstCC"); }
        void tick(int row) {
            QAbstractItemModel& model = *child<QTreeView>(screen, "lstEntries").model();
            model.setData(model.index(row, 0), Qt::Checked, Qt::CheckStateRole);
        }
        bool isChecked(const char* button) { return child<QAbstractButton>(screen, button).isChecked(); }
        QStringList save() {
            press("cmdSave");
            return shown();
        }
        /// "type|subtype|level|email: centres" of a stored template.
        QString stored(const QString& title) {
            const int id = idOf(title);
            const RecordSet rows =
                db().query(sql("SELECT TemplateType, SubType, SubCCLevel, SubCCSendEmail, UnitabAccount FROM "
                               "NorvaScheduler.dbo.tblTemplate WHERE TemplateID = {}",
                               id));
            if (rows.isEmpty()) return {};
            QStringList centres;
            for (const Row row : db().query(sql("SELECT CCName FROM NorvaScheduler.dbo.tblCCSubProject_CCs "
                                                "WHERE TemplateID = {} ORDER BY CCName",
                                                id)))
                centres << row.text(0);
            const Row row = rows.row(0);
            return QStringList{row.text(0), row.text(1), row.text(2), row.text(3), row.text(4)}.join('|')
                   + ": " + centres.join(", ");
        }
    };

    static inline const QString overWritten =
        "Any existing files created for each cost centre will be over-written when this template runs.\r\r"
        "If you want to save any existing cost centre sub projects please move them to another directory.";

private slots:
    void aNewTemplate() {
        Transfer transfer;
        QVERIFY(transfer.open());
        QCOMPARE(transfer.save(), QStringList{"Please enter a Template name"});
        transfer.name("pack for every department");
        QCOMPARE(transfer.save().last(), QString("Template name already exists"));
        transfer.name(QString(101, 'x'));
        QVERIFY(transfer.save().last().startsWith("The template name is too long"));
        transfer.name("Packs");
        transfer.press("Option2");
        QCOMPARE(transfer.save(), QStringList{"Please select a cost centre."});
        transfer.press("OptCC1");
        QCOMPARE(transfer.list().count(), 6);
        transfer.tick(0);
        transfer.tick(5);
        QCOMPARE(transfer.list().tickedKeys(),
                 (QStringList{"Children's Services", "No Cost Centre allocated"}));
        transfer.press("chkEmailFiles");
        QCOMPARE(transfer.shown(),
                 QStringList{
                     "Cost centre sub projects can be very large in size.\r\rE-mailing large files may cause "
                     "problems to your or the recipients e-mail system."});
        QCOMPARE(child<QLabel>(transfer.screen, "lblAddressGaps").text(),
                 "Without an e-mail address of their own: Children's Services. Their files go to "
                 "reports@zelvan.example.com.");
        QCOMPARE(transfer.save(), QStringList{overWritten});
        QVERIFY(!transfer.screen.isVisible());
        QCOMPARE(transfer.caller.calls, 1);
        QCOMPARE(transfer.stored("Packs"),
                 QString("1|2|1|1|BW10023: Children's Services, No Cost Centre allocated"));
    }

    void byKeyboardAlone() {
        Transfer transfer;
        QVERIFY(transfer.open());
        transfer.screen.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&transfer.screen));
        const auto type = [&](Qt::Key key, Qt::KeyboardModifiers with = {}) {
            QTest::keyClick(transfer.screen.focusWidget(), key, with);
        };
        QTest::keyClicks(transfer.screen.focusWidget(), "Keys");
        type(Qt::Key_O, Qt::AltModifier);
        QTRY_VERIFY(transfer.isChecked("Option2"));
        type(Qt::Key_2, Qt::AltModifier);
        QTRY_COMPARE(transfer.list().count(), 15);
        for (int i = 0; i < 10 && transfer.screen.focusWidget()->objectName() != "txtSearch"; ++i)
            type(Qt::Key_Tab);
        QTest::keyClicks(transfer.screen.focusWidget(), "yard");
        type(Qt::Key_Down);
        type(Qt::Key_Space);
        type(Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(transfer.stored("Keys"), QString("1|2|2|0|BW10023: Engineers' Yard"));
    }

    void levelsKeepTheirTicks() {
        Transfer transfer;
        QVERIFY(transfer.open());
        transfer.press("Option2");
        transfer.tick(0);
        transfer.press("OptCC2");
        QVERIFY(transfer.list().tickedKeys().isEmpty());
        transfer.press("OptCC5");
        QCOMPARE(transfer.list().count(), 1); // nothing but "No Cost Centre allocated"
        transfer.press("OptCC1");
        QCOMPARE(transfer.list().tickedKeys(), QStringList{"Children's Services"});
        transfer.messages.answer(false); // to leave what was changed
        transfer.press("Command2");
        QVERIFY(transfer.screen.isVisible());
        transfer.messages.answer(true);
        QTest::keyClick(&transfer.screen, Qt::Key_Escape);
        QVERIFY(!transfer.screen.isVisible());
    }

    void withoutAProject() {
        Transfer transfer("");
        QVERIFY(transfer.open(transfer.idOf("Pack for every department")));
        transfer.press("OptCC3");
        QCOMPARE(transfer.shown(), QStringList{"You must select a project."});
        QVERIFY(transfer.isChecked("OptCC2"));
        transfer.press("Option2");
        QCOMPARE(transfer.shown(),
                 QStringList{"Please select a project to convert before selecting this option."});
        QVERIFY(transfer.isChecked("Option1"));
        transfer.press("Command2"); // nothing changed
        QVERIFY(!transfer.screen.isVisible());
        QCOMPARE(transfer.caller.calls, 1);
    }

    void chosenCentresOutliveAMissingProject() {
        Transfer transfer(""); // the account's project is not the current one
        QVERIFY(transfer.open(transfer.idOf("Pack for selected divisions")));
        QCOMPARE(transfer.list().tickedKeys(), (QStringList{"Children's Services", "Operations"}));
        transfer.name("Divisions");
        QCOMPARE(transfer.save(), QStringList{overWritten});
        QCOMPARE(transfer.stored("Divisions"), QString("1|2|1|0|OD40256: Children's Services, Operations"));
    }

    void choosingAProject() {
        Transfer transfer("Harcourt-Lisle");
        QVERIFY(transfer.open(transfer.idOf("Pack for selected divisions")));
        const auto choose = [&](const QString& project) {
            chooseProject(project);
            transfer.press("cmdOpen");
            return transfer.shown().join('\n');
        };
        QVERIFY(choose("Brightwater")
                    .endsWith("Please select a project with the bill account of 'OD40256' to continue."));
        QCOMPARE(transfer.session.project.database, QString("Harcourt-Lisle"));
        transfer.db().execute(sql("DROP TABLE {}.dbo.TblTele", Name("O'Dowd Freight")));
        transfer.db().execute(sql("DROP TABLE {}.dbo.Tbl407", Name("O'Dowd Freight")));
        choose("O'Dowd");
        QCOMPARE(child<QLabel>(transfer.screen, "lblProjectProblem").text(),
                 QString("Tables that sub-projects are made from and this project lacks: Tbl407, TblTele"));
        QVERIFY(child<QLineEdit>(transfer.screen, "txtProject").text().startsWith("O'Dowd Freight"));
        transfer.press("OptCC2");
        QVERIFY(transfer.list().count() > 1);
    }

    void activeSchedulesAreAskedAbout() {
        Transfer transfer;
        const int id = transfer.idOf("Pack for every department");
        transfer.addSchedule(id, 0, "");
        QVERIFY(transfer.open(id));
        transfer.messages.answer(false);
        QCOMPARE(transfer.save(), (QStringList{overWritten, "There is 1 active schedule using this template, "
                                                            "are you sure you want to save your changes?"}));
        QVERIFY(transfer.screen.isVisible());
        transfer.name("Pack for selected divisions"); // of another account
        transfer.messages.answer(true);
        transfer.save();
        QVERIFY(!transfer.screen.isVisible());
    }

    void changedByAnother() {
        Transfer transfer;
        const int id = transfer.idOf("Pack for every department");
        QVERIFY(transfer.open(id));
        transfer.db().execute(
            sql("UPDATE NorvaScheduler.dbo.tblTemplate SET SubCCLevel = 4 WHERE TemplateID = {}", id));
        transfer.messages.answer(false);
        QVERIFY(transfer.save().last().startsWith("Another user changed this template"));
        QVERIFY(transfer.stored("Pack for every department").startsWith("1|1|4|"));
        transfer.messages.answer(true);
        transfer.save();
        QVERIFY(transfer.stored("Pack for every department").startsWith("1|1|2|"));
    }

    void noFailureLosesTheTemplate() {
        for (const bool after : {false, true}) {
            Transfer transfer("O'Dowd Freight");
            QVERIFY(transfer.open(transfer.idOf("Pack for selected divisions")));
            const QString title = "Pack for selected divisions";
            const QString old = transfer.stored(title);
            transfer.tick(2);
            Fault& fault = transfer.fault;
            fault.after = after;
            int failures = 0;
            for (int step = 1; transfer.screen.isVisible() && failures < 50; ++step) {
                fault.arm(step);
                transfer.save();
                fault.arm(0);
                if (!transfer.screen.isVisible()) break;
                ++failures;
                QCOMPARE(transfer.list().tickedKeys().size(), 3);
                if (transfer.stored(title) == old) continue;
                QVERIFY(after); // the answer to the commit got lost: saving again finds that all is there
                QCOMPARE(transfer.save(), QStringList{overWritten});
                QVERIFY(!transfer.screen.isVisible());
            }
            QVERIFY(failures >= 5);
            QCOMPARE(transfer.stored(title),
                     QString("1|2|1|0|OD40256: Children's Services, Head Office, Operations"));
        }
    }

    /// What the database holds need not be what the screen would write.
    void oddStoredTemplates() {
        Transfer transfer("O'Dowd Freight");
        const QString title = "Pack for selected divisions";
        const int id = transfer.idOf(title);
        Connection& db = transfer.db();
        db.execute(sql(
            "UPDATE NorvaScheduler.dbo.tblCCSubProject_CCs SET CCName = Upper(CCName) WHERE TemplateID = {}",
            id));
        QVERIFY(transfer.open(id));
        const int listed = transfer.list().count();
        QCOMPARE(transfer.list().tickedKeys().size(), 2);

        Transfer other("O'Dowd Freight");
        other.db().execute(
            sql("UPDATE NorvaScheduler.dbo.tblTemplate SET SubCCLevel = 6 WHERE TemplateID = {}", id));
        QVERIFY(other.open(id));
        for (const char* level : {"OptCC1", "OptCC2", "OptCC3", "OptCC4", "OptCC5"})
            QVERIFY(!other.isChecked(level));
        QCOMPARE(other.save(), QStringList{"Please select a cost centre level."});
        other.press("OptCC1");
        QVERIFY(other.isChecked("OptCC1"));
        QCOMPARE(other.list().count(), listed);
    }

    /// A template can still be renamed when its account has no cost centres any more.
    void anAccountWithoutCostCentres() {
        Transfer transfer;
        transfer.db().execute(sql("DROP TABLE CostCentres.dbo.BW10023_TblCC"));
        QVERIFY(transfer.open(transfer.idOf("Pack for every department")));
        QCOMPARE(transfer.list().count(), 0);
        QVERIFY(child<QLabel>(transfer.screen, "lblProjectProblem").text().contains("has no cost centres"));
        transfer.name("Renamed");
        QCOMPARE(transfer.save().first(), overWritten);
        QVERIFY(transfer.idOf("Renamed") > 0);
    }

    void aLongFillCanBeStopped() {
        Transfer transfer;
        Connection& db = transfer.db();
        BulkInsert rows(db,
                        sql("INSERT INTO CostCentres.dbo.BW10023_TblCC (UnitabAccount, CostCentre1) VALUES"));
        for (int i = 0; i < 5000; ++i)
            rows.add(QString("BW10023"), QString("Centre %1").arg(i, 5, 10, QChar('0')));
        rows.finish();
        db.execute(sql("UPDATE NorvaScheduler.dbo.tblTemplate SET SubType = 2, SubCCLevel = 1 WHERE Title = "
                       "N'Pack for every department'"));
        const int id = transfer.idOf("Pack for every department");
        db.execute(
            sql("INSERT INTO NorvaScheduler.dbo.tblCCSubProject_CCs VALUES ({}, N'Centre 04999')", id));
        QVERIFY(transfer.open(id));
        QCOMPARE(transfer.list().count(), 5006);
        auto& stop = child<QAbstractButton>(transfer.screen, "cmdStop");
        QVERIFY(!stop.isVisible());
        QTimer user;
        connect(&user, &QTimer::timeout, [&] {
            if (stop.isVisible()) stop.click();
        });
        user.start(1);
        transfer.press("OptCC1");
        QVERIFY(transfer.list().count() < 5006);
        QCOMPARE(transfer.list().tickedKeys(), QStringList{"Centre 04999"}); // though not reached
        QVERIFY(child<QLabel>(transfer.screen, "lblFill").text().startsWith("Stopped: "));
        user.stop();
        transfer.press("OptCC1");
        QCOMPARE(transfer.list().count(), 5006);
        QVERIFY(!child<QLabel>(transfer.screen, "lblFill").isVisible());
    }

    void whatUsersMayChoose() {
        Office warehouse("Siobhan.Kelly"); // restricted to one cost centre on each of two levels
        Session& session = warehouse.program.session;
        QCOMPARE(subProjectCostCentres(session, 1), QStringList{"Operations"});
        QCOMPARE(addressCostCentres(session, 2), QStringList{"Warehouse"});
        QCOMPARE(subProjectCostCentres(session, 3), (QStringList{"Warehouse East", "Warehouse West"}));

        Office broken("Jonas.Weber"); // whose copies are not made at one go
        for (int step = 1; !broken.program.session.project.ownCentresReady; ++step) {
            survives(broken.program.fault, step, [&] { subProjectCostCentres(broken.program.session, 1); });
            if (step == 12)
                QCOMPARE(addressCostCentres(broken.program.session, 1), QStringList{"Children's Services"});
        }
        QCOMPARE(subProjectCostCentres(broken.program.session, 1), QStringList{"Children's Services"});

        Office own("Jonas.Weber"); // works on his own copies, which his first use makes
        Session& owner = own.program.session;
        QCOMPARE(subProjectCostCentres(owner, 1), QStringList{"Children's Services"});
        QCOMPARE(addressCostCentres(owner, 1), QStringList{"Children's Services"});
        own.db().execute(sql("UPDATE {}.dbo.{} SET CostCentre1 = N'children''s services' ",
                             Name(owner.project.database), Name(userTable(owner))));
        own.db().execute(
            sql("DELETE FROM CostCentres.dbo.{}", Name(masterTable(owner.project.unitabAccount))));
        QCOMPARE(subProjectCostCentres(owner, 1), QStringList{"children's services"});
        own.db().execute(
            sql("UPDATE CostCentres.dbo.{} SET CostCentre = N'CHILDREN''S SERVICES' WHERE [Level] = 1",
                Name(masterCentresTable(owner.project.unitabAccount))));
        openProject(owner, owner.project.database); // brings the list up to date as well
        QCOMPARE(addressCostCentres(owner, 1), QStringList{"CHILDREN'S SERVICES"});
    }
};

static const AnnounceTest<TransferTest> announced;
#include "TransferTest.moc"

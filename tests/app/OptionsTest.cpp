#include "app/frmOptions.h"
#include "support/Controls.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QCheckBox>
#include <QLineEdit>

/// The server-wide options.
class OptionsTest : public QObject {
    Q_OBJECT

    struct Options {
        TestProgram program;
        std::unique_ptr<frmOptions> screen;
        const QTemporaryDir folder;

        explicit Options(const QString& user = Session::serverLoginName, bool withRow = true) {
            program.logIn(user);
            program.other().execute(sql("DELETE FROM NorvaScheduler.dbo.tblOptions"));
            if (withRow)
                program.other().execute(
                    sql("INSERT INTO NorvaScheduler.dbo.tblOptions (OutputPath, Excel, CSV, DefaultEmail) "
                        "VALUES (N'D:\\Out', 1, 0, 'a@b.com')"));
            screen = std::make_unique<frmOptions>(program.context);
            screen->Setup();
            screen->show();
        }
        QStringList shown() { return program.messages.takeShown(); }
        QLineEdit& path() { return child<QLineEdit>(*screen, "txtOutput"); }
        QCheckBox& box(const QString& name) { return child<QCheckBox>(*screen, name); }
        void save() { press(*screen, "cmdSave"); }
        QString stored() {
            const RecordSet rows = program.other().query(sql("SELECT * FROM NorvaScheduler.dbo.tblOptions"));
            return rows.rowCount() == 1
                       ? rows.row(0).text("OutputPath") + rows.row(0).text("Excel") + rows.row(0).text("CSV")
                       : QString::number(rows.rowCount()) + " rows";
        }
    };

private slots:
    void onlyAdministratorsChangeThem() {
        Options user("Tom.Becker");
        QCOMPARE(user.path().text(), QString("D:\\Out"));
        QVERIFY(user.path().isReadOnly() && !user.box("chkCSV").isEnabled());
        QVERIFY(!child(*user.screen, "cmdSave").isVisible());
    }

    void savingIsChecked() {
        Options admin;
        admin.box("chkExcel").setChecked(false);
        admin.program.messages.answer(false);
        admin.save();
        QCOMPARE(admin.shown(),
                 QStringList("Please note that you do not have a default output option selected.\rDo you "
                             "wish to continue?"));
        admin.box("chkCSV").setChecked(true);
        admin.path().setText("/no/such/folder");
        admin.save();
        QCOMPARE(admin.shown(), QStringList("Selected output path does not exist."));
        QCOMPARE(admin.screen->focusWidget(), &admin.path());
        QCOMPARE(admin.stored(), QString("D:\\Out10"));
        admin.path().setText(admin.folder.path());
        admin.screen->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(admin.screen.get()));
        QTest::keyClick(&admin.path(), Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(admin.stored(), admin.folder.path() + "01");
        QCOMPARE(admin.program.session.options.outputPath, admin.folder.path());
        QCOMPARE(admin.program.other().scalar(sql("SELECT DefaultEmail FROM NorvaScheduler.dbo.tblOptions")),
                 QString("a@b.com"));
        press(*admin.screen, "cmdExit"); // nothing unsaved: no question
        QVERIFY(!admin.screen->isVisible());
    }

    void anEmptyTableGetsItsRow() {
        Options admin(Session::serverLoginName, false);
        QVERIFY(admin.path().text().isEmpty());
        admin.path().setText(admin.folder.path());
        admin.box("chkExcel").setChecked(true);
        for (int k = 1; k <= 4; ++k) { // old or new, and what was typed stays
            admin.program.fault.arm(k);
            admin.save();
            const QString stored = admin.stored();
            QVERIFY2(stored == "0 rows" || stored == admin.folder.path() + "10", qPrintable(stored));
            QCOMPARE(admin.path().text(), admin.folder.path());
        }
        admin.program.fault.arm(0);
        admin.save();
        QCOMPARE(admin.stored(), admin.folder.path() + "10");
    }

    void leavingAsksAboutChanges() {
        Options admin;
        admin.path().setText("elsewhere");
        admin.program.messages.answer(false);
        admin.screen->close();
        QVERIFY(admin.screen->isVisible());
        admin.program.messages.answer(true);
        QTest::keyClick(admin.screen.get(), Qt::Key_Escape);
        QVERIFY(!admin.screen->isVisible());
        QCOMPARE(admin.shown().last(), QString("Do you wish to cancel and lose any changes?"));
    }
};

static const AnnounceTest<OptionsTest> announced;
#include "OptionsTest.moc"

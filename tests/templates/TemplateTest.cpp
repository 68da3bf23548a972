#include "db/Refusal.h"
#include "reports/describe.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/failing.h"
#include "templates/TemplateSummary.h"
#include "templates/clsTemplate.h"

class TemplateTest : public QObject {
    Q_OBJECT

    using ChangeParameters = void (*)(clsReportParameters&);
    using ChangeTemplate = void (*)(clsTemplate&);

private slots:
    void initTestCase() {
        m_program = std::make_unique<TestProgram>();
        m_program->logIn();
        m_connection = m_program->session.connection.get();
    }

    void init() {
        m_program->fault = {};
        m_project.billType = 1;
        deleteRows();
    }

    void reportsSurviveSavingAndLoading_data() {
        // The third are the parameters beside those that all reports store, the last CallsToNumber.
        const Rows<int, int, ChangeParameters, QString> rows;
        const auto row = [&](const char* tag, int type, int subType, const QString& column,
                             ChangeParameters own) { rows(tag, type, subType, own, column); };
        // Reports that offer no accounts store no cost centres: theirs are emptied first.
        row("all calls", 2, 161, QString(), [](auto&) {});
        row("calls to", 2, 142, "01, 'x'", [](auto& p) { p.setCallsToNumber("01, 'x'"); });
        row("calls from", 2, 143, "02", [](auto& p) { p.setAccountFilter(2), p.setCallsFromNumber("02"); });
        row("calls not to", 2, 146, QString(5000, u'Ω'),
            [](auto& p) { p.setCallsNotToNumber(QString(5000, u'Ω')); });
        row("repeat callers", 2, 160, "7",
            [](auto& p) { p.setAccountFilter(2), p.setRepeatCallerThreshold("7"); });
        row("circuit", 3, 326, "C1", [](auto& p) { p.setAccountFilter(2), p.setSelectedCircuitID("C1"); });
        row("percentage", 3, 321, QString(), [](auto& p) { p.setCircuitsPercentage(50); });
        row("invoice", 4, 273, QString(),
            [](auto& p) { p.setAccountFilter(2), p.setLinkvaleBillNumber("B1"); });
    }

    void reportsSurviveSavingAndLoading() {
        const auto [type, subType, own, callsToNumber] = thisRow<int, int, ChangeParameters, QString>();
        clsTemplate original = newTemplate("T", "A");
        addReport(original, type, subType, "");
        clsReport& report = original.Reports().Item(1);
        fill(*report.Parameters());
        own(*report.Parameters());
        report.setOutputPrint(true);
        report.setOutputCSV(false);
        const bool excel = report.OutputExcel();

        const clsTemplate saved = savedAndLoaded(original);
        QCOMPARE(saved.Reports().Count(), 1);
        clsReport& copy = saved.Reports().Item(1);
        QCOMPARE(describe(*copy.Parameters()), describe(*report.Parameters()));
        QCOMPARE(saved.Reports().Key(1), "ID" + QString::number(copy.ID()));
        QVERIFY(copy.ReportType() == type && copy.ReportSubType() == subType);
        QCOMPARE(copy.OutputExcel(), excel);
        QVERIFY(!copy.OutputCSV() && copy.OutputEmail() && !copy.OutputPrint());
        const QString stored = cell(sql("SELECT CallsToNumber FROM NorvaScheduler.dbo.tblTemplate_Report"));
        QCOMPARE(stored, callsToNumber);
        QCOMPARE(stored.isNull(), callsToNumber.isNull());
    }

    void headerSurvivesSavingAndLoading() {
        clsTemplate original = newTemplate("5\" pipes, O'Brien Ω", "A'1");
        original.setBillType(4);
        original.setPrintReportDefs(true);
        original.setCSVReportDefs(true);
        original.setDefaultDates(true);
        original.setTemplateType(1);
        original.setCCSubType(2);
        original.setCCSubLevel(5);
        original.setCCSubEmail(true);
        original.CCs().SetFromStringList({"South", "O'North", "East"});

        clsTemplate loaded = savedAndLoaded(original);
        QCOMPARE(cell(sql("SELECT Title FROM NorvaScheduler.dbo.tblTemplate")), "5'' pipes, O'Brien Ω");
        QVERIFY(!original.HasChanged() && !loaded.HasChanged());
        QCOMPARE(loaded.UnitabAccount(), "A'1");
        QCOMPARE(loaded.BillType(), 4);
        QVERIFY(loaded.CSVReportDefs() && loaded.DefaultDates() && loaded.CCSubEmail()
                && !loaded.PrintReportDefs());
        QVERIFY(loaded.TemplateType() == 1 && loaded.CCSubType() == 2 && loaded.CCSubLevel() == 5);
        QCOMPARE(loaded.CCs().AsStringList("|", ""), "East|O'North|South");

        QVERIFY(!loaded.LoadTemplate(original.ID() + 1));
        QCOMPARE(loaded.Title(), original.Title());
        QVERIFY(loaded.LoadTemplate(original.ID()));
        QCOMPARE(loaded.CCs().Count(), 3); // not twice
    }

    void titlesAreUniquePerAccount() {
        newTemplate("Monthly \"A\"", "one").SaveTemplate();
        QCOMPARE(newTemplate("Monthly \"A\"", "two").SaveTemplate(), clsTemplate::Saved);
        clsTemplate weekly = newTemplate("Weekly", "one");
        weekly.SaveTemplate();
        const QStringList before = rows();
        weekly.setTitle("MONTHLY \"A\""); // the server compares without regard to case
        QCOMPARE(weekly.SaveTemplate(), clsTemplate::TitleUsed);
        QCOMPARE(weekly.SaveTemplate("Weekly"), clsTemplate::TitleUsed);
        QCOMPARE(weekly.SaveTemplate("  "), clsTemplate::TitleBlank);
        QCOMPARE(rows(), before);
        QVERIFY(weekly.HasChanged());
        const int id = weekly.ID();
        weekly.setUnitabAccount("three");
        QCOMPARE(weekly.SaveTemplate(), clsTemplate::Saved);
        QCOMPARE(weekly.SaveTemplate(), clsTemplate::Saved);
        QCOMPARE(weekly.ID(), id);
        QCOMPARE(weekly.SaveTemplate("Copy"), clsTemplate::Saved);
        QVERIFY(weekly.ID() != id && weekly.Title() == "Copy");
        QCOMPARE(cell(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblTemplate")), "4");
    }

    void eachTypeWritesItsOwnRows() {
        clsTemplate both = newTemplate("T", "A", 2);
        both.SaveTemplate();
        m_connection->run(
            sql("INSERT INTO NorvaScheduler.dbo.tblCCSubProject_CCs (TemplateID, CCName) VALUES ({}, 'old')",
                both.ID()));
        both.Reports().Remove(1);
        both.CCs().AddString("new");
        both.SaveTemplate();
        QCOMPARE(cell(sql("SELECT CCName FROM NorvaScheduler.dbo.tblCCSubProject_CCs")), "old");
        QCOMPARE(cell(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblTemplate_Report")), "1");
        both.setTemplateType(1);
        both.Reports().Clear();
        both.SaveTemplate();
        QCOMPARE(cell(sql("SELECT CCName FROM NorvaScheduler.dbo.tblCCSubProject_CCs")), "new");
        QCOMPARE(cell(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblTemplate_Report")), "1");
    }

    void savingReplacesReportsInOrder() {
        clsTemplate large = newTemplate("T", "A", 120); // more than one batch of rows
        clsTemplate other = newTemplate("other", "A", 1);
        other.SaveTemplate();
        clsTemplate loaded = savedAndLoaded(large);
        QCOMPARE(captions(loaded), captions(large));
        const int formerLast = loaded.Reports().Item(120).ID();
        for (clsTemplate* each : {&loaded, &large}) each->Reports().Remove(60);
        const clsTemplate again = savedAndLoaded(loaded);
        QCOMPARE(captions(again), captions(large));
        QVERIFY(again.Reports().Item(1).ID() > formerLast);
        QVERIFY(other.LoadTemplate(other.ID()));
        QCOMPARE(captions(other), QStringList("new 0"));
    }

    void excludedNumbersFollowANewTemplate() {
        m_connection->run(sql("INSERT INTO NorvaScheduler.dbo.TblExcludedNumbers (TemplateID, TelNo) "
                              "VALUES (-1, '0123'), (7, '0456')"));
        clsTemplate made = newTemplate("T", "A");
        made.SaveTemplate();
        const auto number = [&](int id) {
            return cell(
                sql("SELECT TelNo FROM NorvaScheduler.dbo.TblExcludedNumbers WHERE TemplateID = {}", id));
        };
        QCOMPARE(number(made.ID()), "0123");
        QCOMPARE(number(7), "0456");
        const int original = made.ID();
        QCOMPARE(made.SaveTemplate("copy"), clsTemplate::Saved);
        QVERIFY(made.ID() != original);
        QCOMPARE(number(made.ID()), "0123");
        QCOMPARE(number(original), "0123");
    }

    void textsThatDoNotFitAreRefused_data() {
        const Rows<QString, ChangeTemplate> row; // no message where the text fits
        const QString ofReport = " of the report 'Call Summary Reports - All Calls Summary'";
        row("longest title", "", [](auto& t) { t.setTitle(QString(50, '"')); });
        row("title", "The template name is too long: 102 characters were entered, 100 fit.",
            [](auto& t) { t.setTitle(QString(51, '"')); });
        row("account", "The account reference holds the letter 'Ω', which the database cannot store.",
            [](auto& t) { t.setUnitabAccount("Ωmega"); });
        row("caption", "The report caption" + ofReport + " is too long: 60 characters were entered, 50 fit.",
            [](auto& t) { t.Reports().Item(1).Parameters()->setReportCaption(QString(60, 'x')); });
        row("euro", "", [](auto& t) { t.Reports().Item(1).Parameters()->setWPUserId(QString(30, u'€')); });
        row("emoji",
            "The line selection" + ofReport + " holds the letter '😀', which the database cannot store.",
            [](auto& t) { t.Reports().Item(1).Parameters()->setLineSelection("1|😀"); });
        row("sub-project", "The cost centre is too long: 31 characters were entered, 30 fit.",
            [](auto& t) { t.setTemplateType(1), t.CCs().AddString(QString(31, 'x')); });
    }

    void textsThatDoNotFitAreRefused() {
        const auto [message, change] = thisRow<QString, ChangeTemplate>();
        clsTemplate unsaved = newTemplate("T", "A", 1);
        change(unsaved);
        const qint64 statements = m_connection->statementCount();
        QString refusal;
        try {
            unsaved.SaveTemplate();
        } catch (const Refusal& error) {
            refusal = error.text();
        }
        QCOMPARE(refusal, message);
        QCOMPARE(m_connection->statementCount() == statements, !message.isEmpty());
    }

    void deletedTemplateIsNoticed() {
        clsTemplate edited = newTemplate("T", "A", 1);
        edited.SaveTemplate();
        edited.setTitle("changed");
        deleteRows();
        QVERIFY_EXCEPTION_THROWN(edited.SaveTemplate(), Refusal);
        QCOMPARE(rows(), QStringList());
        QVERIFY(edited.HasChanged());
        QCOMPARE(edited.SaveTemplate("rescued"), clsTemplate::Saved);
    }

    void failedSaveChangesNothing_data() {
        const Rows<QString, bool, bool> row;
        for (const QString kind : {"new", "existing", "copy", "sub-project"}) {
            row(kind + ", refused", kind, false, false);
            row(kind + ", answer is an error", kind, true, false);
            row(kind + ", connection lost", kind, false, true);
            row(kind + ", answer lost", kind, true, true);
        }
    }

    void failedSaveChangesNothing() {
        const auto [kind, after, lost] = thisRow<QString, bool, bool>();
        clsTemplate edited = newTemplate("T", "A", 3);
        edited.SaveTemplate();
        QVERIFY(edited.LoadTemplate(edited.ID())); // so that what others change is noticed
        edited.Reports().Item(1).Parameters()->setCostRangeMinimum("5");
        m_connection->run(
            sql("INSERT INTO NorvaScheduler.dbo.TblExcludedNumbers (TemplateID, TelNo) VALUES (-1, '0')"));
        if (kind == "new" || kind == "sub-project") edited.Clear();
        edited.setTemplateType(kind == "sub-project");
        edited.setTitle("changed");
        edited.CCs().SetFromStringList({"North", "South"});
        for (int i = 0; i < 60; ++i) addReport(edited, 2, 161, "added");

        const QString title = kind == "copy" ? "copied" : "";
        const QStringList before = rows();
        const int id = edited.ID();
        m_program->fault.after = after;
        m_program->fault.lost = lost;
        int failures = 0;
        for (int step = lost ? 2 : 1;; ++step) { // the first is a read, which a lost connection only repeats
            if (survives(m_program->fault, step, [&] { edited.SaveTemplate(title); })) break;
            ++failures;
            QCOMPARE(edited.ID(), id);
            QVERIFY(edited.HasChanged());
            const QStringList now = rows();
            if (now == before) continue;
            // A commit whose answer went astray has left the new rows, all of them.
            QVERIFY(after);
            QCOMPARE(now.filter("|added").size(), kind == "sub-project" ? 0 : 60);
            QCOMPARE(now.filter("|North").size() + now.filter("|South").size(),
                     kind == "sub-project" ? 2 : 0);
            QCOMPARE(edited.SaveTemplate(title), clsTemplate::Saved); // not taken for somebody else's
            QCOMPARE(rows().size(), now.size());                      // nor stored a second time
            clsTemplate twin = newTemplate(edited.Title(), edited.UnitabAccount(), 3);
            QCOMPARE(twin.SaveTemplate(), clsTemplate::TitleUsed); // which is none of ours
            return;
        }
        QVERIFY(failures >= 4);
        QVERIFY(rows() != before);
        QVERIFY(!edited.HasChanged());
    }

    void oddRowsAreLoaded() {
        allowOddRows();
        m_connection->run(sql("INSERT INTO NorvaScheduler.dbo.tblTemplate (Title) VALUES ('bare')"));
        const int id = cell(sql("SELECT TemplateID FROM NorvaScheduler.dbo.tblTemplate")).toInt();
        m_connection->run(
            sql("INSERT INTO NorvaScheduler.dbo.tblTemplate_Report (TemplateID, ReportType, "
                "ReportSubType, TimeStart, TimeEnd, CostStart, CallFilter, CircuitPercentage) VALUES "
                "({}, NULL, NULL, NULL, NULL, NULL, NULL, NULL), "
                "({}, 3, 987654, '1899-12-30 08:05:00.000', '6:30:15 PM', '1,5', 77, '300'), "
                "({}, -4, 0, '25:99', 'noon', NULL, NULL, NULL)",
                id, id, id));
        clsTemplate loaded(*m_connection, m_project);
        QVERIFY(loaded.LoadTemplate(id));
        QVERIFY(loaded.UnitabAccount().isEmpty());
        QCOMPARE(int(loaded.CCSubLevel()), 1);
        QCOMPARE(loaded.Reports().Count(), 3);

        clsReportParameters expected(m_project);
        for (int band = 1; band <= 23; ++band) expected.setDistanceBandSelected(band, false);
        expected.setCostCentreSummarySelectionLevel(1); // the column's default
        QCOMPARE(describe(*loaded.Reports().Item(1).Parameters()), describe(expected));
        const clsReportParameters& odd = *loaded.Reports().Item(2).Parameters();
        QCOMPARE(odd.TimeRangeStart(), QTime(8, 5));
        QCOMPARE(odd.TimeRangeEnd(), QTime(18, 30, 15));
        QCOMPARE(odd.CostRangeMinimum(), "1,5");
        QCOMPARE(odd.CallFilter(), 77);
        QCOMPARE(int(odd.CircuitsPercentage()), 255);
        QCOMPARE(loaded.Reports().Item(3).Parameters()->TimeRangeStart(), QTime(0, 0));
        QCOMPARE(loaded.Reports().Item(3).Parameters()->TimeRangeEnd(), QTime(23, 59, 59));
        QCOMPARE(loaded.SaveTemplate(), clsTemplate::Saved); // and what was loaded can be saved
    }

    void summariesEqualLoading() {
        newTemplate("5\" pipes", "A", 3).SaveTemplate();
        clsTemplate sub = newTemplate("sub", "B");
        sub.setTemplateType(1);
        sub.setCCSubType(2);
        sub.setCCSubLevel(4);
        sub.CCs().AddString("Sales");
        sub.CCs().AddString("Engineers' Yard");
        sub.SaveTemplate();
        allowOddRows();
        m_connection->run(sql("INSERT INTO NorvaScheduler.dbo.tblTemplate (Title) VALUES (NULL)"));
        m_connection->run(
            sql("INSERT INTO NorvaScheduler.dbo.tblTemplate_Report (TemplateID) VALUES (NULL), (99999)"));

        const qint64 statements = m_connection->statementCount();
        const auto summaries = loadTemplateSummaries(*m_connection);
        QCOMPARE(m_connection->statementCount() - statements, 1);
        QCOMPARE(summaries.size(), 3);
        for (auto it = summaries.begin(); it != summaries.end(); ++it) {
            const auto& [header, reportCount, tickedCentres] = *it;
            clsTemplate loaded(*m_connection, m_project);
            QVERIFY(loaded.LoadTemplate(it.key()));
            QCOMPARE(header.title, loaded.Title());
            QCOMPARE(header.unitabAccount, loaded.UnitabAccount());
            QCOMPARE(header.billType, loaded.BillType());
            QVERIFY(header.templateType == loaded.TemplateType() && header.subType == loaded.CCSubType()
                    && header.subLevel == loaded.CCSubLevel());
            QCOMPARE(reportCount, loaded.Reports().Count());
            QCOMPARE(tickedCentres, loaded.CCs().Count());
            QCOMPARE(clsTemplate::iconOf(header), loaded.GetIconID());
        }
    }

private:
    QString cell(const Sql& query) { return m_connection->scalar(query); }

    /// Tables of older versions took what the shipped ones refuse.
    void allowOddRows() {
        m_connection->run(
            sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate ALTER COLUMN Title nvarchar(100) NULL"));
        for (const char* column : {"TemplateID", "ReportType", "ReportSubType", "CallFilter"})
            m_connection->run(sql(
                "ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ALTER COLUMN {} int NULL", Name(column)));
        m_connection->run(
            sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ALTER COLUMN TimeStart varchar(30) NULL"));
        m_connection->run(
            sql("ALTER TABLE NorvaScheduler.dbo.tblTemplate_Report ALTER COLUMN TimeEnd varchar(30) NULL"));
    }

    void deleteRows() {
        for (const char* table : tables)
            m_connection->run(sql("DELETE FROM NorvaScheduler.dbo.{}", Name(table)));
    }

    QStringList rows() {
        QStringList rows;
        for (const char* table : tables) {
            const RecordSet set =
                m_connection->query(sql("SELECT * FROM NorvaScheduler.dbo.{}", Name(table)));
            for (const Row row : set) {
                QStringList cells{table};
                for (int column = 0; column < set.columns().size(); ++column) cells << row.text(column);
                rows << cells.join(u'|');
            }
        }
        return rows;
    }

    void addReport(clsTemplate& target, int type, int subType, const QString& caption) {
        const auto parameters = std::make_shared<clsReportParameters>(m_project);
        parameters->setReportCaption(caption);
        QString key;
        target.Reports().Add(0, parameters, type, subType, true, true, true, key);
    }

    clsTemplate newTemplate(const QString& title, const QString& account, int reports = 0) {
        clsTemplate made(*m_connection, m_project);
        made.setTitle(title);
        made.setUnitabAccount(account);
        for (int i = 0; i < reports; ++i) addReport(made, 2, 161, QString("new %1").arg(i));
        return made;
    }

    clsTemplate savedAndLoaded(clsTemplate& original) {
        clsTemplate loaded(*m_connection, m_project);
        if (original.SaveTemplate() != clsTemplate::Saved || !loaded.LoadTemplate(original.ID()))
            qFatal("a template cannot be saved and loaded");
        return loaded;
    }

    static QStringList captions(const clsTemplate& of) {
        QStringList captions;
        for (const clsReport& report : of.Reports()) captions << report.Parameters()->ReportCaption();
        return captions;
    }

    static constexpr const char* tables[] = {"tblTemplate", "tblTemplate_Report", "tblCCSubProject_CCs",
                                             "TblExcludedNumbers"};
    std::unique_ptr<TestProgram> m_program;
    Connection* m_connection = nullptr;
    CurrentProject m_project;
};

static const AnnounceTest<TemplateTest> announced;

#include "TemplateTest.moc"

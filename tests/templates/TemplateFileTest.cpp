#include "Screens.h"

#include "db/Refusal.h"
#include "projects/modProjects.h"
#include "reports/ReportColumns.h"
#include "support/Files.h"
#include "support/Rows.h"
#include "support/TestClass.h"
#include "support/failing.h"
#include "templates/TemplateImport.h"
#include "templates/frmManageTemplates.h"
#include "templates/frmTemplateImport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>

/// Templates that travel in files.
class TemplateFileTest : public QObject {
    Q_OBJECT

    struct Traveller : TemplateProgram {
        using TemplateProgram::TemplateProgram;

        QByteArray exported(const QStringList& titles) {
            QList<int> ids;
            for (const QString& title : titles) ids << idOf(title);
            return templateFile::write(templateFile::load(session.db(), ids));
        }
        TemplateImport import(const QByteArray& document) { return {session, templateFile::read(document)}; }
        /// All that is stored of a template but keys, NULL as "-".
        QStringList rowsOf(int id) {
            QStringList cells;
            for (const Sql& reading :
                 {sql("SELECT * FROM NorvaScheduler.dbo.tblTemplate WHERE TemplateID = {}", id),
                  sql("SELECT * FROM NorvaScheduler.dbo.tblTemplate_Report WHERE TemplateID = {} ORDER BY "
                      "ReportID",
                      id),
                  sql("SELECT * FROM NorvaScheduler.dbo.tblCCSubProject_CCs WHERE TemplateID = {} ORDER BY "
                      "CCName",
                      id),
                  sql("SELECT * FROM NorvaScheduler.dbo.TblExcludedNumbers WHERE TemplateID = {} ORDER BY ID",
                      id)}) {
                const RecordSet rows = db().query(reading);
                for (const Row row : rows)
                    for (int i = 0; i < rows.columns().size(); ++i)
                        if (!QStringList{"TemplateID", "ReportID", "ID", "Title"}.contains(rows.columns()[i]))
                            cells << rows.columns()[i] + (row.isNull(i) ? QString("-") : '=' + row.text(i));
            }
            return cells;
        }
        QStringList allRows() {
            QStringList rows = everything();
            for (const char* table : {"tblCCSubProject_CCs", "TblExcludedNumbers"})
                rows << QString::number(
                    scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.{}", Name(table))));
            return rows;
        }
        /// A template whose columns hold values that differ, with NULL beside empty texts.
        int addFullTemplate() {
            const int id = addTemplate("5\" \u03a9 & 'full'");
            db().execute(
                sql("UPDATE NorvaScheduler.dbo.tblTemplate SET Title = N'5'''' \u03a9 & ''full''', CSVDefs = "
                    "1, DefaultDates = 1, TemplateType = 1, SubType = 2, SubCCLevel = 4, SubCCSendEmail = "
                    "1 WHERE TemplateID = {}",
                    id));
            for (const bool null : {false, true, false}) {
                QList<Sql> names, values;
                int number = 0;
                forEachReportColumn([&](const ReportColumn& column, int place) {
                    if (!column.get) return;
                    ++number;
                    const bool text = column.kind == ReportColumn::Text;
                    names << sql("{}", Name(column.columnName(place)));
                    if (null
                        && (text || column.kind == ReportColumn::Date || column.kind == ReportColumn::Time))
                        values << Sql::null();
                    else if (column.kind == ReportColumn::Flag)
                        values << Sql::value(number % 3 == 0);
                    else if (column.kind == ReportColumn::Number)
                        values << Sql::value(number % 3); // codes as well
                    else if (column.kind == ReportColumn::Date)
                        values << sql("'20240229 13:14:15'");
                    else if (column.kind == ReportColumn::Time)
                        values << sql("'8:30 PM'");
                    else
                        values << Sql::value(number % 4 == 0 ? QString("")
                                                             : QString::number(number) + " '|\"\\");
                });
                db().execute(
                    sql("INSERT INTO NorvaScheduler.dbo.tblTemplate_Report (TemplateID, {}) VALUES ({}, {})",
                        Sql::join(names, sql(", ")), id, Sql::join(values, sql(", "))));
            }
            db().execute(
                sql("INSERT INTO NorvaScheduler.dbo.tblCCSubProject_CCs VALUES ({}, NULL), ({}, ''), ({}, "
                    "N'North \u03a9')",
                    id, id, id));
            db().execute(
                sql("INSERT INTO NorvaScheduler.dbo.TblExcludedNumbers (TemplateID, TelNo, Include) VALUES "
                    "({}, NULL, NULL), ({}, '', 0), ({}, '0800 1', 1)",
                    id, id, id));
            return id;
        }
    };

    static QJsonObject object(const QByteArray& document) {
        return QJsonDocument::fromJson(document).object();
    }

    std::unique_ptr<Traveller> m_shared; ///< by the rows of one test

private slots:
    void cleanupTestCase() { m_shared.reset(); }

    void nothingIsLostOnTheWay() {
        Traveller program;
        const int id = program.addFullTemplate();
        const QByteArray document = templateFile::write(templateFile::load(program.session.db(), {id}));
        TemplateImport import = program.import(document);
        QCOMPARE(import.entries().first().title, QString("5\" \u03a9 & 'full' (2)"));
        const int copy = import.write();
        QVERIFY(copy != id && program.rowsOf(id).size() > 3 * 60);
        QCOMPARE(program.rowsOf(copy), program.rowsOf(id));
        QVERIFY(program.rowsOf(copy).contains("CCName-") && program.rowsOf(copy).contains("CCName="));
        // An editor that saves in another encoding does no harm.
        const QByteArray marked = "\xEF\xBB\xBF" + document;
        QCOMPARE(templateFile::write(templateFile::read(marked)), document);
    }

    void hostileFilesWriteNothing_data() {
        const Rows<QByteArray, QString> row;
        const auto document = [](const QString& column, const QJsonValue& value, const char* part = nullptr) {
            QJsonObject filed =
                object(QByteArray(R"({"format": "zelvan-scheduler-templates", "version": 1})"));
            QJsonObject one{
                {"Title", "Pack"},
                {"UnitabAccount", "A"},
                {"BillType", 1},
                {"CSVDefs", true},
                {"DefaultDates", false},
                {"TemplateType", 0},
                {"SubType", 0},
                {"SubCCLevel", 1},
                {"SubCCSendEmail", false},
                {"CostCentres", QJsonArray()},
                {"ExcludedNumbers", QJsonArray{QJsonObject{{"TelNo", "0800"}, {"Include", true}}}}};
            QJsonObject report;
            forEachReportColumn([&](const ReportColumn& each, int number) {
                const QJsonValue values[]{true, 1, "2026-12-01", "08:00:00", "x"};
                if (each.get) report[each.columnName(number)] = values[each.kind];
            });
            if (part == QByteArray("report")) report[column] = value;
            one["Reports"] = QJsonArray{report};
            if (part == QByteArray("template")) one[column] = value;
            filed["templates"] = QJsonArray{one};
            if (!part) filed[column] = value;
            return QJsonDocument(filed).toJson();
        };
        const auto inReport = [&](const QString& column, const QJsonValue& value) {
            return document(column, value, "report");
        };
        const auto inTemplate = [&](const QString& column, const QJsonValue& value) {
            return document(column, value, "template");
        };
        const QString report = "Template 1 'Pack', Reports 1, ";
        row("good", inReport("ReportCaption", QJsonValue::Null), "");
        row("empty", "", "It is no file of templates");
        row("no JSON", "<xml/>", "It is no file of templates");
        row("cut off", inReport("CC1", "x").chopped(20), "It is no file of templates");
        row("a list", "[]", "It is no file of templates.");
        row("deep", QByteArray(100'000, '['), "too deeply nested");
        row("huge", QByteArray(templateFile::longest + 1, ' '), "longer than 50 million bytes");
        row("other JSON", R"({"templates": []})", "It is no file of templates.");
        row("version", document("version", 2), "another version than 1");
        row("no list", document("templates", "x"), "'templates' has to be a list");
        row("none", document("templates", QJsonArray()), "It holds no template.");
        row("unknown entry", document("server", "x"), "The column 'server' is not known.");
        row("no object", document("templates", QJsonArray{7}), "Template 1: It has to be an object");
        row("unknown column", inReport("Distance24", true),
            report.chopped(2) + ": The column 'Distance24' is not known.");
        row("missing column", QByteArray(inReport("CC1", "x")).replace("\"CC2\"", "\"CC1\""),
            "The column 'CC2' is missing.");
        row("text for a flag", inReport("Day1", "true"), report + "Day1: It has to be true or false.");
        row("number for a text", inReport("CC1", 7), report + "CC1: It has to be a text.");
        row("text for a number", inReport("CallFilter", "7"),
            report + "CallFilter: It has to be a whole number");
        row("half a number", inReport("CallFilter", 1.5), "It has to be a whole number");
        row("endless number", inReport("CallFilter", 1e300), "It has to be a whole number");
        row("number of 33 bits", inReport("ReportType", 4294967296.), "from -2147483648 to 2147483647.");
        for (const char* column : {"CallFilter", "AccountFilter", "CostCentreLevel"})
            for (const int code : {-1, 9})
                row(QString("%1 %2").arg(column).arg(code), inReport(column, code),
                    report + column + ": It has to be a whole number from 0 to ");
        for (const char* column : {"BillType", "TemplateType", "SubType", "SubCCLevel"})
            row(QString("%1 below").arg(column), inTemplate(column, -1), "a whole number from 0 to ");
        for (const char* column : {"BillType", "SubType", "SubCCLevel"})
            row(QString("%1 above").arg(column), inTemplate(column, 6),
                QString("Template 1 'Pack', %1: It has to be").arg(column));
        row("no date", inReport("DateStart", "31.12.2026"), report + "DateStart: '31.12.2026' is no date");
        row("no such date", inReport("DateStart", "2026-02-30"), "is no date");
        row("early date", inReport("DateStart", "0001-01-01"), "is no date");
        row("no time", inReport("TimeEnd", "noon"), report + "TimeEnd: 'noon' is no time");
        row("long text", inReport("ReportCaption", QString(51, 'x')),
            "The report caption is too long: 51 characters");
        row("foreign letter", inReport("UserId", QString::fromUtf8("\xce\xa9")),
            "Wispera user ID holds the letter");
        row("NUL", inReport("ReportCaption", QString("a") + QChar::Null), "holds a NUL");
        row("null it needs", inReport("Day7", QJsonValue::Null), "Day7: A value is needed instead of null.");
        row("no name", inTemplate("Title", " "), "It has no name.");
        row("null name", inTemplate("Title", QJsonValue::Null), "Title: A value is needed");
        row("long name", inTemplate("Title", QString(101, 'x')), "too long");
        row("quotes that outgrow the name", inTemplate("Title", QString(99, '"')), "too long");
        row("rows as an object", inTemplate("Reports", QJsonObject()), "'Reports' has to be a list");
        const QJsonArray twice{object(inReport("CC1", "x"))["templates"].toArray().first(),
                               object(inTemplate("Title", "PACK "))["templates"].toArray().first()};
        row("two of a name", document("templates", twice), "Template 2 'PACK ': The file holds another one");
    }

    void hostileFilesWriteNothing() {
        const auto [document, problem] = thisRow<QByteArray, QString>();
        if (!m_shared) m_shared = std::make_unique<Traveller>();
        Traveller& program = *m_shared;
        const QStringList before = program.everything();
        QString told;
        try {
            program.import(document).write();
        } catch (const Refusal& refusal) {
            told = refusal.text();
        }
        QVERIFY2(problem.isEmpty() ? told.isEmpty() : told.contains(problem), qPrintable(told));
        QCOMPARE(program.everything() == before, !problem.isEmpty());
    }

    void importIsAllOrNothing() {
        for (const bool after : {false, true}) {
            Traveller program;
            program.addFullTemplate();
            const QByteArray document = program.exported({"Weekly call review", "5'' \u03a9 & 'full'"});
            const QStringList before = program.allRows();
            TemplateImport import = program.import(document);
            program.fault.after = after;
            int step = 1;
            while (!survives(program.fault, step, [&] { import.write(); })) {
                // A commit whose answer got lost has written all.
                if (after && program.allRows() != before) {
                    const QStringList written = program.allRows();
                    import.setLeftOut({0}, true); // too late
                    QVERIFY(import.write() > 0 && import.wantedCount() == 2);
                    QCOMPARE(program.allRows(), written);
                    break;
                }
                QCOMPARE(program.allRows(), before);
                ++step;
            }
            QVERIFY(step > 5);
            QCOMPARE(program.scalar(
                         sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblTemplate WHERE Title LIKE '%(2)'")),
                     2);
        }
    }

    void anExportThatNoImportTakesIsRefused() {
        FiledTemplate one;
        one.header.billType = 9;
        one.header.title = "Pack";
        const auto refusal = [&] {
            try {
                templateFile::write({one});
            } catch (const Refusal& told) {
                return told.text();
            }
            return QString();
        };
        QVERIFY(refusal().startsWith("Template 1 'Pack', BillType: "));
        one.header.title = QString(templateFile::longest, 'x');
        QVERIFY(refusal().contains("in parts"));
    }

    void titlesAreFreeWhenTheyAreWritten() {
        Traveller program;
        const QByteArray document = program.exported({"Weekly call review", "Linkvale invoice check"});
        TemplateImport import = program.import(document);
        import.setLeftOut({1}, true);
        program.addTemplate("WEEKLY call review (2)");
        const QStringList before = program.everything();
        QVERIFY_EXCEPTION_THROWN(import.write(), Refusal);
        QCOMPARE(program.everything(), before);
        import.write(); // under the next one
        QVERIFY(program.idOf("Weekly call review (3)") != 0);
        QCOMPARE(
            program.scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.tblTemplate WHERE Title = 'Linkvale "
                               "invoice check'")),
            1);
    }

    /// Two templates of a name, of two accounts, both get into one.
    void managerExportsAndImports() {
        Traveller program;
        const int twin = program.addTemplate("Weekly call review", "OD40256", 4);
        program.addReport(twin, 2, 116);
        program.addReport(twin, 2, 987'654);
        frmManageTemplates manager(program.context);
        QCOMPARE(manager.Setup(), 0);
        manager.show();
        auto& list = child<uctListView>(manager, "lstTemplates");
        child<QLineEdit>(manager, "txtFilter").setText("weekly");
        list.selectAll();
        QVERIFY(!child<QAbstractButton>(manager, "cmdDelete").isEnabled());
        QTest::keyClick(&list, Qt::Key_Delete);
        QCOMPARE(program.shown(), QStringList{"Please select only one template to delete."});
        const QString path = program.appFile("weekly");
        program.messages.pick(path);
        press(manager, "cmdExport");
        QCOMPARE(program.shown(), QStringList{"2 templates have been exported to the file."});
        program.messages.pick(path + ".json");
        program.messages.answer(false);
        press(manager, "cmdExport");
        QVERIFY(program.shown().first().contains("exists already"));

        openProject(program.session, "Harcourt-Lisle");
        program.messages.pick(path + ".json");
        inNextModal<frmTemplateImport>([&](frmTemplateImport& screen) {
            auto& preview = child<uctListView>(screen, "lstPreview");
            QVERIFY(child<QLabel>(screen, "lblTarget").text().contains("'HL20417'"));
            QCOMPARE(texts(preview, 3), (QStringList{"new", "new, as 'Weekly call review (2)'"}));
            const QString notes = texts(preview, 4).join('|');
            QVERIFY2(notes.contains("made for Norva Unitab bills, the account's are Linkvale")
                         && notes.contains("does not know 1 report")
                         && notes.contains("does not offer 1 report"),
                     qPrintable(notes));
            preview.selectAll();
            press(screen, "cmdLeaveOut");
            QVERIFY(!child<QAbstractButton>(screen, "cmdImport").isEnabled());
            preview.selectId(1);
            QTest::keyClick(&preview, Qt::Key_Return);
            QCOMPARE(texts(preview, 3), (QStringList{"left out", "new"}));
            press(screen, "cmdImport");
        });
        press(manager, "cmdImport");
        QCOMPARE(program.shown(), QStringList{"1 template has been imported."});
        QCOMPARE(list.textOf(list.selectedId().value(), 1), "HL20417");

        writeFile(path + ".json", "{}");
        program.messages.pick(path + ".json");
        press(manager, "cmdImport");
        QCOMPARE(program.shown(), QStringList{"The file cannot be imported."});
        QVERIFY(program.messages.lastDetails().contains("no file of templates"));
    }
};

static const AnnounceTest<TemplateFileTest> announced;
#include "TemplateFileTest.moc"

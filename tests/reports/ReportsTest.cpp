#include "reports/Catalogue.h"
#include "reports/clsReports_Collection.h"
#include "support/Rows.h"
#include "support/TestClass.h"

#include <stdexcept>

class ReportsTest : public QObject {
    Q_OBJECT

private slots:
    void flagsAreReadByPosition() {
        const auto offers = [](int type, int id, int position) {
            return catalogueEntry(type, id, {})->offers(position);
        };
        QVERIFY(offers(2, 161, 1) && offers(2, 141, 12) && offers(5, 115, 14));
        QVERIFY(!offers(1, 231, 9) && !offers(2, 178, 12)); // beyond the end of the word
        QVERIFY(!offers(2, 161, 0) && !offers(2, 161, -1));
    }

    void argumentSelectsVariants() {
        const auto flags = [](ListChoice choice) { return catalogueEntry(CallReport, 113, choice)->flags; };
        QVERIFY(flags(ListChoice::forProject(CallReport, 4, false)) == "YYYYYNNNNNYN");
        QVERIFY(flags(ListChoice::forProject(CallReport, 0, false)) == "YYNYYNNNNNYN");
        QVERIFY(flags(ListChoice::forLookUp(CallReport, false)) == "YYNYYNNNNNYN");
        // Only the call list follows the project.
        QVERIFY(catalogueEntry(CircuitReport, 311, ListChoice::forProject(CircuitReport, 2, false)));
        QVERIFY(catalogueEntry(MobileReport, 116, ListChoice::forProject(MobileReport, 2, false)));
        QVERIFY(!catalogueEntry(CallReport, 116, ListChoice::forProject(CallReport, 2, false)));
        QVERIFY(!catalogueEntry(CallReport, 131, {1, false}));
        QVERIFY(!catalogueEntry(0, 161, {}) && !catalogueEntry(6, 161, {}));
    }

    void titlesCarryTheirValue_data() {
        const Rows<int, int, QString> row;
        row("plain", 2, 161, "Call Summary Reports - All Calls Summary");
        row("to", 2, 142, "General Reports - Calls To Number 'to'");
        row("not to", 2, 146, "General Reports - Calls Not To Number 'not'");
        row("in no list", 2, 160, "Unknown Report '9'");
        row("circuit", 3, 326, "Circuit Details - Selected Circuit 'C1'");
        row("not in a Linkvale list", 2, 116, "100 Most Expensive - Roamed From Mobile");
        row("Wispera without its flag", 2, 131, "Unknown Report");
        row("mobile list", 5, 142, "Unknown Report 'to'");
    }

    void titlesCarryTheirValue() {
        const auto [type, subType, title] = thisRow<int, int, QString>();
        CurrentProject project;
        project.billType = 2;
        clsReport report = reportOf(project, type, subType);
        report.Parameters()->setCallsToNumber("to");
        report.Parameters()->setCallsFromNumber("from");
        report.Parameters()->setCallsNotToNumber("not");
        report.Parameters()->setRepeatCallerThreshold("9");
        report.Parameters()->setSelectedCircuitID("C1");
        QCOMPARE(report.GetReportTitle(), title);
    }

    void shownTitlesAreShort() {
        const CurrentProject project;
        clsReport report = reportOf(project, 2, 142);
        const QString general = "General Reports - Calls To Number '%1'";
        report.Parameters()->setCallsToNumber("1, 2, 3, 4, 5, 6, 7, 8");
        QCOMPARE(report.ShownTitle(), general.arg("1, 2, 3, 4, 5, 6, 7, 8"));
        report.Parameters()->setCallsToNumber("1, 2, 3, 4, 5, 6, 7, 8, 9, 10");
        QCOMPARE(report.ShownTitle(), general.arg("1, 2, 3, 4, 5, 6, 7, 8, …"));
        QCOMPARE(report.GetReportTitle(), general.arg("1, 2, 3, 4, 5, 6, 7, 8, 9, 10"));
    }

    void outputsFollowTheCatalogue() {
        const CurrentProject project;
        const auto allowed = [&](int type, int subType) {
            clsReport report = reportOf(project, type, subType);
            report.setOutputExcel(true);
            report.setOutputCSV(true);
            report.setOutputPrint(true);
            const auto outputs = [&] {
                return QString(report.OutputExcel() ? "E" : "") + (report.OutputCSV() ? "C" : "")
                       + (report.OutputPrint() ? "P" : "");
            };
            const QString text = report.GetParameterOptions() + ':' + outputs();
            report.setReportType(1);
            report.setReportSubType(211); // allows all, but what was read as not allowed stays off
            return text.section(u':', 1) == outputs() ? text : "switched on again";
        };
        QCOMPARE(allowed(2, 141), "YYYYYNNNNYYY LMVD CP:CP");
        QCOMPARE(allowed(2, 164), "NNNNYNNNNNNN LMV EP:EP");
        QCOMPARE(allowed(1, 211), "NNNNNNNN ECP:ECP");
        QCOMPARE(allowed(2, 999), "NNNNNNNN:ECP"); // nothing is known of it
        QCOMPARE(allowed(5, 164), "NNNNNNNN:EP");
    }

    void gateFollowsTheProject() {
        const auto passes = [](int type, int subType, int position, int billType) {
            CurrentProject project;
            project.billType = billType;
            return reportOf(project, type, subType).ValidateParameter(position, "Sales") == "Sales";
        };
        QVERIFY(passes(1, 221, 5, 1) && !passes(1, 211, 5, 1));
        QVERIFY(passes(2, 113, 3, 4) && !passes(2, 113, 3, 0));
        QVERIFY(passes(2, 116, 5, 1) && !passes(2, 116, 5, 2));
        QVERIFY(passes(3, 321, 3, 2)); // circuits do not depend on the project
        QVERIFY(passes(5, 161, 5, 1) && !passes(5, 197, 5, 1));
    }

    void restrictedSelectionIsChecked() {
        const CurrentProject project;
        const auto added = [&](int type, int subType, int accountFilter) {
            const auto parameters = std::make_shared<clsReportParameters>(project);
            parameters->setAccountFilter(accountFilter);
            parameters->setCostCentre(1, "Sales");
            QString key;
            clsReports_Collection(project).Add(0, parameters, type, subType, true, true, true, key);
            return QString::number(parameters->AccountFilter()) + parameters->CostCentre(1);
        };
        QCOMPARE(added(2, 161, 8), "8Sales");
        QCOMPARE(added(2, 1460, 8), "8Sales");
        QCOMPARE(added(2, 164, 8), "2");
        QCOMPARE(added(2, INT_MAX, 8), "2");
        QCOMPARE(added(2, 164, 7), "7Sales");
    }

    void collectionKeepsKeysApart() {
        const CurrentProject project;
        clsReports_Collection reports(project);
        const auto add = [&](int id, QString key) {
            reports.Add(id, std::make_shared<clsReportParameters>(project), 2, 161, true, false, true, key);
            return key;
        };
        QCOMPARE(add(10, ""), "ID0");
        QCOMPARE(add(11, ""), "ID1");
        QCOMPARE(add(12, ""), "ID2");
        reports.Remove("id1");
        const QString third = add(13, ""); // "ID2" is taken by the report that is now second
        QVERIFY(third != "ID2");
        QCOMPARE(reports.Item(third).ID(), 13);
        QVERIFY(add(14, "id2").compare("ID2", Qt::CaseInsensitive) != 0);
        QCOMPARE(add(15, "ID1"), "ID1"); // free again

        QList<int> ids;
        for (const clsReport& report : reports) ids << report.ID();
        QCOMPARE(ids, QList<int>({10, 12, 13, 14, 15}));
        reports.Remove(1);
        QCOMPARE(reports.Item(1).ID(), 12);
        QCOMPARE(reports.Key(1), "ID2");
        QVERIFY_EXCEPTION_THROWN(reports.Remove(5), std::out_of_range);
        QVERIFY_EXCEPTION_THROWN(reports.Item("ID0"), std::out_of_range);
    }

private:
    static clsReport reportOf(const CurrentProject& project, int type, int subType) {
        clsReport report(project);
        report.setReportType(type);
        report.setReportSubType(subType);
        return report;
    }
};

static const AnnounceTest<ReportsTest> announced;

#include "ReportsTest.moc"

#include "describe.h"
#include "reports/clsReports_Collection.h"
#include "reports/clsStrings.h"

#include <QTest>
#include <stdexcept>

class TestReports : public QObject {
    Q_OBJECT

private slots:
    void titlesCarryTheirValue_data();
    void titlesCarryTheirValue();
    void outputsFollowTheCatalogue_data();
    void outputsFollowTheCatalogue();
    void gateFollowsTheProject_data();
    void gateFollowsTheProject();
    void restrictedSelectionIsChecked_data();
    void restrictedSelectionIsChecked();
    void collectionKeepsKeysApart();
    void stringsMakeLists();
};

void TestReports::titlesCarryTheirValue_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("subType");
    QTest::addColumn<int>("billType");
    QTest::addColumn<QString>("title");
    QTest::newRow("plain") << 2 << 161 << 1 << "Call Summary Reports - All Calls Summary";
    QTest::newRow("to") << 2 << 142 << 1 << "General Reports - Calls To Number 'to'";
    QTest::newRow("from") << 2 << 143 << 1 << "General Reports - Calls From Number 'from'";
    QTest::newRow("not to") << 2 << 146 << 1 << "General Reports - Calls Not To Number 'not'";
    QTest::newRow("repeat callers, in no list") << 2 << 160 << 1 << "Unknown Report '9'";
    QTest::newRow("circuit") << 3 << 326 << 1 << "Circuit Details - Selected Circuit 'C1'";
    QTest::newRow("circuit invoice of another project")
        << 3 << 311 << 1 << "Billing - Private Circuit Invoice";
    QTest::newRow("dropped for Linkvale") << 2 << 116 << 2 << "100 Most Expensive - Roamed From Mobile";
    QTest::newRow("Wispera without its flag") << 2 << 131 << 1 << "Unknown Report";
    QTest::newRow("mobile type") << 5 << 161 << 1 << "Unknown Report";
    QTest::newRow("mobile type with a value") << 5 << 142 << 1 << "Unknown Report 'to'";
}

void TestReports::titlesCarryTheirValue() {
    QFETCH(int, type);
    QFETCH(int, subType);
    QFETCH(int, billType);
    CurrentProject project;
    project.billType = billType;
    clsReport report(project);
    report.setReportType(type);
    report.setReportSubType(subType);
    report.Parameters()->setCallsToNumber("to");
    report.Parameters()->setCallsFromNumber("from");
    report.Parameters()->setCallsNotToNumber("not");
    report.Parameters()->setRepeatCallerThreshold("9");
    report.Parameters()->setSelectedCircuitID("C1");
    QTEST(report.GetReportTitle(), "title");
}

void TestReports::outputsFollowTheCatalogue_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("subType");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("outputs");
    QTest::newRow("all") << 2 << 161 << "YYYYYNNNNNYN LMVD ECP"
                         << "ECP";
    QTest::newRow("no Excel") << 2 << 141 << "YYYYYNNNNYYY LMVD CP"
                              << "CP";
    QTest::newRow("no CSV") << 2 << 164 << "NNNNYNNNNNNN LMV EP"
                            << "EP";
    QTest::newRow("no kinds of line") << 1 << 211 << "NNNNNNNN ECP"
                                      << "ECP";
    QTest::newRow("unknown report") << 2 << 999 << "NNNNNNNN"
                                    << "";
    QTest::newRow("mobile type") << 5 << 161 << "NNNNNNNN"
                                 << "";
}

void TestReports::outputsFollowTheCatalogue() {
    QFETCH(int, type);
    QFETCH(int, subType);
    const CurrentProject project;
    clsReport report(project);
    report.setReportType(type);
    report.setReportSubType(subType);
    report.setOutputExcel(true);
    report.setOutputCSV(true);
    report.setOutputPrint(true);
    report.setOutputEmail(true);
    QTEST(report.GetParameterOptions(), "options");
    const auto outputs = [&] {
        return QString(report.OutputExcel() ? "E" : "") + (report.OutputCSV() ? "C" : "")
               + (report.OutputPrint() ? "P" : "");
    };
    QTEST(outputs(), "outputs");
    QVERIFY(report.OutputEmail());
    // An output that was switched off stays off when the report becomes one that allows it.
    report.setReportType(1);
    report.setReportSubType(211);
    QTEST(outputs(), "outputs");
}

void TestReports::gateFollowsTheProject_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("subType");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("billType");
    QTest::addColumn<bool>("passes");
    QTest::newRow("offered") << 1 << 221 << 5 << 1 << true;
    QTest::newRow("not offered") << 1 << 211 << 5 << 1 << false;
    QTest::newRow("bands of the countries, IDC") << 2 << 113 << 3 << 4 << true;
    QTest::newRow("bands of the countries, unknown") << 2 << 113 << 3 << 0 << false;
    QTest::newRow("dropped for Linkvale") << 2 << 116 << 5 << 2 << false;
    QTest::newRow("kept elsewhere") << 2 << 116 << 5 << 1 << true;
    QTest::newRow("circuits are not the project's") << 3 << 321 << 3 << 2 << true;
    QTest::newRow("mobile type") << 5 << 161 << 5 << 1 << false;
}

void TestReports::gateFollowsTheProject() {
    QFETCH(int, type);
    QFETCH(int, subType);
    QFETCH(int, position);
    QFETCH(int, billType);
    QFETCH(bool, passes);
    CurrentProject project;
    project.billType = billType;
    clsReport report(project);
    report.setReportType(type);
    report.setReportSubType(subType);
    QCOMPARE(report.ValidateParameter(position, "Sales"), passes ? "Sales" : "");
}

void TestReports::restrictedSelectionIsChecked_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("subType");
    QTest::addColumn<int>("given");
    QTest::addColumn<int>("kept");
    QTest::newRow("accepted") << 2 << 161 << 8 << 8;
    QTest::newRow("accepted, four digits") << 2 << 1460 << 8 << 8;
    QTest::newRow("a variant's code is no report") << 2 << 1612 << 8 << 8;
    QTest::newRow("not accepted") << 2 << 164 << 8 << 2;
    QTest::newRow("unknown report") << 2 << INT_MAX << 8 << 2;
    QTest::newRow("other filter") << 2 << 164 << 7 << 7;
    QTest::newRow("other list") << 1 << 221 << 8 << 8;
}

void TestReports::restrictedSelectionIsChecked() {
    QFETCH(int, type);
    QFETCH(int, subType);
    QFETCH(int, given);
    QFETCH(int, kept);
    const CurrentProject project;
    const auto parameters = std::make_shared<clsReportParameters>(project);
    parameters->setAccountFilter(given);
    parameters->setCostCentre(1, "Sales");
    clsReports_Collection reports(project);
    QString key;
    reports.Add(0, parameters, type, subType, true, true, true, key);
    QCOMPARE(parameters->AccountFilter(), kept);
    QCOMPARE(parameters->CostCentre(1), kept == given ? "Sales" : "");
}

void TestReports::collectionKeepsKeysApart() {
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
    QCOMPARE(reports.Count(), 2);
    const QString third = add(13, ""); // "ID2" is taken by the report that is now second
    QCOMPARE(reports.Item(third).ID(), 13);
    QVERIFY(third.compare("ID2") != 0);
    QVERIFY(add(14, "ID0") != "ID0");
    QVERIFY(add(15, "id2").compare("ID2", Qt::CaseInsensitive) != 0);
    QCOMPARE(add(16, "ID1"), "ID1"); // free again

    QList<int> ids;
    for (const clsReport& report : reports) ids << report.ID();
    QCOMPARE(ids, QList<int>({10, 12, 13, 14, 15, 16}));
    QCOMPARE(reports.Item(2).ID(), 12);
    QCOMPARE(reports.Key(2), "ID2");
    reports.Remove(1);
    QCOMPARE(reports.Item(1).ID(), 12);
    for (const int position : {0, 6, -1})
        QVERIFY_EXCEPTION_THROWN(reports.Remove(position), std::out_of_range);
    QVERIFY_EXCEPTION_THROWN(reports.Item("ID0"), std::out_of_range);
    reports.Clear();
    QCOMPARE(add(1, ""), "ID0");
}

void TestReports::stringsMakeLists() {
    clsStrings strings;
    QCOMPARE(strings.AsStringList(",", ""), "");
    strings.SetFromStringList({" a ", "", "  ", "b"});
    QCOMPARE(strings.AsStringList(",", "'"), "'a','b'");
    strings.Item(2).Value = "c";
    strings.Delete(1);
    QCOMPARE(strings.AsStringList(",", ""), "c");
    QVERIFY_EXCEPTION_THROWN(strings.Delete(2), std::out_of_range);
    QVERIFY_EXCEPTION_THROWN(strings.Item(0), std::out_of_range);
    QCOMPARE(strings.Count(), 1);
}

int testReports(int argc, char** argv) {
    TestReports test;
    return QTest::qExec(&test, argc, argv);
}

#include "TestReports.moc"

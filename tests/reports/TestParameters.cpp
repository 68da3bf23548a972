#include "describe.h"

#include <QTest>
#include <functional>
#include <stdexcept>

class TestParameters : public QObject {
    Q_OBJECT

private slots:
    void defaultsFollowTheProject();
    void clearKeepsThreeFields();
    void filtersClearWhatDependsOnThem();
    void thresholdsBecomeAmounts_data();
    void thresholdsBecomeAmounts();
    void indexesAreChecked();
    void projectDatesReplaceStoredOnes();
    void cloneCopiesEverything();
    void bandsHaveNames();
    void summary_data();
    void summary();
};

void TestParameters::defaultsFollowTheProject() {
    CurrentProject project;
    const clsReportParameters plain(project);
    QVERIFY(plain.HasChanged());
    QCOMPARE(plain.DateRangeStart(), QDate(2000, 1, 1));
    QCOMPARE(plain.DateRangeEnd(), QDate(2020, 12, 31));
    QCOMPARE(plain.CallFilter(), 0);
    QCOMPARE(plain.AccountFilter(), 2);
    QCOMPARE(plain.TimeRangeEnd(), QTime(23, 59, 59));
    QVERIFY(plain.DistanceBandSelected(23) && plain.DaySelected(7));

    project.billType = 4;
    project.defaultEnd = QDate(2025, 6, 30);
    const clsReportParameters idc(project);
    QCOMPARE(idc.CallFilter(), 1);
    QVERIFY(idc.DistanceBandSelected(18));
    QCOMPARE(idc.DateRangeStart(), QDate(2000, 1, 1));
    QCOMPARE(idc.DateRangeEnd(), QDate(2025, 6, 30));
}

void TestParameters::clearKeepsThreeFields() {
    const CurrentProject project;
    clsReportParameters parameters(project);
    fill(parameters);
    parameters.setCallsToNumber("1");
    parameters.setSelectedCircuitID("C1");
    parameters.setCircuitsPercentage(5);
    parameters.Clear();
    clsReportParameters expected(project);
    expected.setLineSelection("01234|05678");
    expected.setCallClassParams("A|B");
    expected.setCostCentreSummarySelectionLevel(3);
    QCOMPARE(describe(parameters), describe(expected));
}

void TestParameters::filtersClearWhatDependsOnThem() {
    const CurrentProject project;
    clsReportParameters parameters(project);
    fill(parameters);
    parameters.setAccountFilter(5);
    QCOMPARE(parameters.CostCentre(1), "Zürich 1");
    parameters.setAccountFilter(3);
    QVERIFY(parameters.ServiceNumber().isEmpty());
    for (int level = 1; level <= 5; ++level) QVERIFY(parameters.CostCentre(level).isEmpty());
    parameters.setCallFilter(parameters.CallFilter());
    for (int band = 1; band <= 23; ++band) QVERIFY(!parameters.DistanceBandSelected(band));
}

void TestParameters::thresholdsBecomeAmounts_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("amount"); // -1 where the text is refused
    QTest::newRow("empty") << "" << qint64(0);
    QTest::newRow("leading point") << ".5" << qint64(5000);
    QTest::newRow("trailing point") << "7." << qint64(70000);
    QTest::newRow("four decimals") << "12.3456" << qint64(123456);
    QTest::newRow("five decimals") << "0.00005" << qint64(1);
    QTest::newRow("large") << "900000000000000" << qint64(9000000000000000000);
    QTest::newRow("too large") << "1000000000000000" << qint64(-1);
    QTest::newRow("absurdly large") << QString(400, '9') << qint64(-1);
    QTest::newRow("decimal comma") << "1,5" << qint64(-1);
    QTest::newRow("two points") << "1.2.3" << qint64(-1);
    QTest::newRow("negative") << "-1" << qint64(-1);
    QTest::newRow("exponent") << "1e3" << qint64(-1);
    QTest::newRow("hexadecimal") << "x10" << qint64(-1);
    QTest::newRow("blank inside") << "1 000" << qint64(-1);
    QTest::newRow("line break") << "1\n" << qint64(-1);
    QTest::newRow("other digits") << "٣" << qint64(-1);
    QTest::newRow("word") << "inf" << qint64(-1);
}

void TestParameters::thresholdsBecomeAmounts() {
    QFETCH(QString, text);
    QFETCH(qint64, amount);
    const CurrentProject project;
    clsReportParameters parameters(project);
    parameters.setCostRangeMaximum("2");
    if (amount < 0) {
        QVERIFY_EXCEPTION_THROWN(parameters.setCostRangeMaximum(text), std::invalid_argument);
        amount = 20000;
    } else {
        parameters.setCostRangeMaximum(text);
    }
    QCOMPARE(parameters.CostRangeMaximum(), text);
    QCOMPARE(parameters.CostRangeMaximumAmount(), amount);
    // Opening such a report for editing, which clones it, is how the text gets corrected.
    QCOMPARE(describe(*parameters.Clone()), describe(parameters));
}

void TestParameters::indexesAreChecked() {
    const CurrentProject project;
    clsReportParameters parameters(project);
    const QStringList before = describe(parameters);
    for (const int index : {-1, 0, 24, INT_MIN, INT_MAX}) {
        QVERIFY_EXCEPTION_THROWN(parameters.setDaySelected(index, false), std::out_of_range);
        QVERIFY_EXCEPTION_THROWN(parameters.setDistanceBandSelected(index, false), std::out_of_range);
        QVERIFY_EXCEPTION_THROWN(parameters.setCostCentre(index, "x"), std::out_of_range);
        QVERIFY_EXCEPTION_THROWN(parameters.DaySelected(index), std::out_of_range);
    }
    QVERIFY_EXCEPTION_THROWN(parameters.setDaySelected(8, false), std::out_of_range);
    QVERIFY_EXCEPTION_THROWN(parameters.CostCentre(6), std::out_of_range);
    QCOMPARE(describe(parameters), before);
}

void TestParameters::projectDatesReplaceStoredOnes() {
    CurrentProject project;
    clsReportParameters parameters(project);
    parameters.setDateRangeStart(QDate(2010, 1, 1));
    parameters.setDateRangeEnd(QDate(2010, 2, 2));
    project.refreshBillDates = [&] { project.defaultStart = QDate(2026, 1, 1); };

    project.useDefaultDates = true;
    QCOMPARE(parameters.DateRangeStart(), QDate(2010, 1, 1)); // no project is chosen
    project.database = "P";
    QCOMPARE(parameters.DateRangeStart(), QDate(2026, 1, 1));
    QCOMPARE(parameters.DateRangeEnd(), QDate(2010, 2, 2)); // the project's is not known
    const auto copy = parameters.Clone();
    project.useDefaultDates = false;
    QCOMPARE(parameters.DateRangeStart(), QDate(2010, 1, 1));
    QCOMPARE(copy->DateRangeStart(), QDate(2026, 1, 1));
}

void TestParameters::cloneCopiesEverything() {
    const CurrentProject project;
    clsReportParameters parameters(project);
    fill(parameters);
    parameters.setAccountFilter(1);
    parameters.setServiceNumber("0123");
    parameters.setCallsToNumber("to");
    parameters.setCallsNotToNumber("not to");
    parameters.setCallsFromNumber("from");
    parameters.setRepeatCallerThreshold("3");
    parameters.setLinkvaleBillNumber("B1");
    parameters.setCircuitsPercentage(25);
    parameters.setSelectedCircuitID("C1");
    const auto copy = parameters.Clone();
    QCOMPARE(describe(*copy), describe(parameters));
    copy->setServiceNumber("other");
    QCOMPARE(parameters.ServiceNumber(), "0123");
}

void TestParameters::bandsHaveNames() {
    for (int band = 1; band <= 23; ++band)
        QCOMPARE(clsReportParameters::DistanceBandByName(clsReportParameters::DistanceBandToName(band)),
                 band);
    QCOMPARE(clsReportParameters::DistanceBandToName(14), "Mobile to Mobile On-Net");
    QCOMPARE(clsReportParameters::DistanceBandToName(18), "Domestic On-net");
    for (const char* name : {"line to local", "Domestic On-Net", "", " Line to Local"})
        QCOMPARE(clsReportParameters::DistanceBandByName(name), 0);
    for (const int index : {0, 24, -1}) QVERIFY(clsReportParameters::DistanceBandToName(index).isEmpty());
}

void TestParameters::summary_data() {
    using Change = std::function<void(clsReportParameters&)>;
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("options");
    QTest::addColumn<int>("billType");
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* tag, int type, const QString& options, int billType, Change change,
                        const QString& expected) {
        QTest::newRow(tag) << type << options << billType << change << expected;
    };
    row(
        "defaults", 2, "YYYYYNNNNNYN LMVD ECP", 1, [](auto&) {}, "Overnight:Not Selected");
    row(
        "nothing offered", 2, "NNNNNNNN", 1, [](auto& p) { fill(p); }, "");
    row(
        "thresholds", 2, "NNNYNNNN ECP", 1, [](auto& p) { fill(p); },
        "Cost(£)>.5, Cost(£)<100.25, Duration(mins)>1, Duration(mins)<60");
    row(
        "some days", 2, "YNNN ECP", 1, [](auto& p) { p.setDaySelected(1, false); },
        "Days:Mon Tue Wed Thu Fri Sat");
    row(
        "no day", 2, "YNNN ECP", 1,
        [](auto& p) {
            for (int day = 1; day <= 7; ++day) p.setDaySelected(day, false);
        },
        "Days:None");
    row(
        "overnight", 2, "NYNN ECP", 1, [](auto& p) { p.setTimeRangeOvernight(true); }, "Overnight:Selected");
    row(
        "no band of a filter", 2, "NNYN LMVD ECP", 1, [](auto& p) { p.setCallFilter(2); },
        "Distance Bands:[], Calls From:All Mobiles");
    row(
        "bands of lines", 2, "NNYN ECP", 1,
        [](auto& p) {
            p.setCallFilter(1);
            p.setDistanceBandSelected(1, true);
            p.setDistanceBandSelected(3, true);
            p.setDistanceBandSelected(6, true);
        },
        "Distance Bands:[Line to Local, Line to Mobile]");
    row(
        "all bands of mobiles", 2, "NNYN ECP", 1,
        [](auto& p) {
            p.setCallFilter(2);
            for (int band = 6; band <= 17; ++band) p.setDistanceBandSelected(band, true);
        },
        "");
    row(
        "bands of an IDC bill", 2, "NNYN ECP", 4,
        [](auto& p) {
            p.setCallFilter(1);
            p.setDistanceBandSelected(20, true);
        },
        "Distance Bands:[Domestic Mobile]");
    row(
        "all bills", 4, "NNNNNYNN ECP", 1, [](auto&) {}, "Account Filter:Selected Bill No:All");
    row(
        "one bill, not offered", 4, "NNNNNNNN ECP", 1, [](auto& p) { p.setLinkvaleBillNumber("B7"); },
        "Account Filter:Selected Bill No:B7");
    row(
        "several levels", 2, "NNNNY ECP", 1,
        [](auto& p) {
            p.setAccountFilter(0);
            p.setCostCentre(2, "North");
            p.setCostCentre(5, "Desk");
        },
        "Account Filter:Multi Level Cost Centres Selected : CC2 = North, CC5 = Desk");
    row(
        "fourth level", 2, "NNNNY ECP", 1,
        [](auto& p) {
            p.setAccountFilter(6);
            p.setCostCentre(4, "Desk");
        },
        "Account Filter:Cost Centre 4 = Desk");
    const auto oneNumber = [](clsReportParameters& p) {
        p.setAccountFilter(1);
        p.setServiceNumber("0123");
    };
    row("service number", 2, "NNNNY ECP", 1, oneNumber, "Account Filter:Service Number = 0123");
    row("circuit", 3, "NNYNY ECP", 1, oneNumber, "Account Filter:Circuit ID = 0123, Compare Percentage:0%");
    row(
        "beyond the levels", 2, "NNNNY ECP", 1, [](auto& p) { p.setAccountFilter(8); }, "Account Filter:");
    row(
        "source bill", 1, "NNNNNNNY ECP", 1, [](auto& p) { p.setSourceBillRef("S1"); }, "Source Bill Ref:S1");
    row(
        "dates and hours", 2, "YYNN ECP", 1,
        [](auto& p) {
            p.setDateRangeStart(QDate(2008, 2, 29));
            p.setTimeRangeEnd(QTime(8, 30));
        },
        "Dates From 29.02.2008 To 31.12.2020, Times From 00:00 To 08:30, Overnight:Not Selected");
}

void TestParameters::summary() {
    QFETCH(int, type);
    QFETCH(QString, options);
    QFETCH(int, billType);
    QFETCH(std::function<void(clsReportParameters&)>, change);
    QFETCH(QString, expected);
    CurrentProject project;
    clsReportParameters parameters(project);
    project.billType = billType;
    change(parameters);
    QCOMPARE(parameters.ParameterSummary(type, options), expected);

    project.useDefaultDates = true;
    QCOMPARE(parameters.ParameterSummary(type, options).contains("Project Default Dates"),
             options.startsWith(u'Y'));
}

int testParameters(int argc, char** argv) {
    TestParameters test;
    return QTest::qExec(&test, argc, argv);
}

#include "TestParameters.moc"

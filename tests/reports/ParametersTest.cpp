#include "reports/describe.h"
#include "support/Rows.h"
#include "support/TestClass.h"

#include <stdexcept>

using Change = void (*)(clsReportParameters&);

class ParametersTest : public QObject {
    Q_OBJECT

private slots:
    void defaultsFollowTheProject() {
        CurrentProject project;
        const clsReportParameters plain(project);
        QCOMPARE(plain.DateRangeEnd(), QDate(2020, 12, 31));
        QCOMPARE(plain.CallFilter(), 0);

        project.billType = 4;
        project.defaultEnd = QDate(2025, 6, 30);
        const clsReportParameters idc(project);
        QCOMPARE(idc.CallFilter(), 1);
        QVERIFY(idc.DistanceBandSelected(18));
        QCOMPARE(idc.DateRangeStart(), QDate(2000, 1, 1));
        QCOMPARE(idc.DateRangeEnd(), QDate(2025, 6, 30));
    }

    void filtersClearWhatDependsOnThem() {
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

    void thresholdsBecomeAmounts_data() {
        const Rows<QString, qint64> row;
        row("empty", "", qint64(0));
        row("leading point", ".5", qint64(5000));
        row("trailing point", "7.", qint64(70000));
        row("five decimals", "12.34567", qint64(123457));
        row("large", "900000000000000", qint64(9000000000000000000));
        const qint64 refused = -1;
        for (const char* text :
             {"1000000000000000", "1,5", "1.2.3", "-1", "1e3", "x10", "1 000", "1\n", "٣", "inf", "nan"})
            row(text, QString(text), refused);
        row("absurdly large", QString(400, '9'), refused);
    }

    void thresholdsBecomeAmounts() {
        const auto [text, typed] = thisRow<QString, qint64>();
        qint64 amount = typed;
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

    void projectDatesReplaceStoredOnes() {
        CurrentProject project;
        clsReportParameters parameters(project);
        parameters.setDateRangeStart(QDate(2010, 1, 1));
        parameters.setDateRangeEnd(QDate(2010, 2, 2));
        project.defaultStart = QDate(2026, 1, 1);

        project.edited.useDefaultDates = true;
        QCOMPARE(parameters.DateRangeStart(), QDate(2010, 1, 1)); // no project is chosen
        project.database = "P";
        QCOMPARE(parameters.DateRangeStart(), QDate(2026, 1, 1));
        QCOMPARE(parameters.DateRangeEnd(), QDate(2010, 2, 2)); // the project's is not known
        const auto copy = parameters.Clone();
        project.edited.useDefaultDates = false;
        QCOMPARE(parameters.DateRangeStart(), QDate(2010, 1, 1));
        QCOMPARE(copy->DateRangeStart(), QDate(2026, 1, 1));
    }

    void summary_data() {
        const Rows<int, QString, QString, Change> rows;
        const auto row = [&](int type, const QString& options, const QString& expected, Change change) {
            rows(options + ' ' + expected, type, options, expected, change);
        };
        row(2, "YYYYYNNNNNYN LMVD ECP", "Overnight:Not Selected", [](auto&) {});
        row(2, "NNNNNNNN", "", [](auto& p) { fill(p); });
        row(2, "NNNYNNNN ECP", "Cost(£)>.5, Cost(£)<100.25, Duration(mins)>1, Duration(mins)<60",
            [](auto& p) { fill(p); });
        row(2, "YNNN ECP", "Days:Mon Tue Wed Thu Fri Sat", [](auto& p) { p.setDaySelected(1, false); });
#ifndef Q_OS_WIN // whose formats are not told by a variable
        row(2, "YYNN ECP",
            "Dates From 29.02.2008 To 31.12.2020, Times From 00:00 To 08:30, Overnight:Selected",
            [](auto& p) {
                p.setDateRangeStart(QDate(2008, 2, 29));
                p.setTimeRangeEnd(QTime(8, 30));
                p.setTimeRangeOvernight(true);
            });
#endif
        row(2, "NNYN LMVD ECP", "Distance Bands:[], Calls From:All Mobiles",
            [](auto& p) { p.setCallFilter(2); });
        row(2, "NNYN ECP", "Distance Bands:[Line to Local, Line to Mobile]", [](auto& p) {
            p.setCallFilter(1);
            for (const int band : {1, 3, 6, 20}) p.setDistanceBandSelected(band, true);
        });
        row(4, "NNNNNYNN ECP", "Account Filter:Selected Bill No:All", [](auto&) {});
        row(2, "NNNNY ECP", "Account Filter:Multi Level Cost Centres Selected : CC2 = North, CC5 = Desk",
            [](auto& p) {
                p.setAccountFilter(0);
                p.setCostCentre(2, "North");
                p.setCostCentre(5, "Desk");
            });
        row(2, "NNNNY ECP", "Account Filter:Service Number = 0123", chooseNumber);
        row(3, "NNYNY ECP", "Account Filter:Circuit ID = 0123, Compare Percentage:0%", chooseNumber);
        row(1, "NNNNNNNY ECP", "Source Bill Ref:S1", [](auto& p) { p.setSourceBillRef("S1"); });
    }

    void summary() {
        const auto [type, options, expected, change] = thisRow<int, QString, QString, Change>();
        CurrentProject project;
        clsReportParameters parameters(project);
        change(parameters);
        QCOMPARE(parameters.ParameterSummary(type, options), expected);
        project.edited.useDefaultDates = true;
        QCOMPARE(parameters.ParameterSummary(type, options).contains("Project Default Dates"),
                 options.startsWith(u'Y'));
    }

private:
    static void chooseNumber(clsReportParameters& parameters) {
        parameters.setAccountFilter(1);
        parameters.setServiceNumber("0123");
    }
};

static const AnnounceTest<ParametersTest> announced;

#include "ParametersTest.moc"

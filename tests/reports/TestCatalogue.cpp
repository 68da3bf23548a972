#include "reports/Catalogue.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

class TestCatalogue : public QObject {
    Q_OBJECT

private slots:
    void listsHoldTheirEntries_data();
    void listsHoldTheirEntries();
    void everyListIsWellFormed();
    void flagsAreReadByPosition_data();
    void flagsAreReadByPosition();
    void argumentSelectsVariants();
    void titlesMatchExactly();
    void groupsAreDescribed();
};

void TestCatalogue::listsHoldTheirEntries_data() {
    QTest::addColumn<QString>("list");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("end");
    const QString wispera = "137,Wispera Reports - Top 100 Users By Cost,";
    QTest::newRow("billing") << gsReportsArray_Billing() << 19
                             << "282,Cost Elements By Category - Recurring Charges,NNNNYNNY ECP";
    QTest::newRow("calls 1") << gsReportsArray_Calls(1, false) << 40
                             << "176,Telemarketing Reports - International - All Records,YNNNYNNNNNNN LV ECP";
    QTest::newRow("calls 2") << gsReportsArray_Calls(2, false) << 26
                             << "145,100 Longest - Calls by Duration,YYYYYNNNNYYY LMVD ECP";
    QTest::newRow("calls 4") << gsReportsArray_Calls(4, false) << 40 << "LV ECP";
    QTest::newRow("calls 1 Wispera") << gsReportsArray_Calls(1, true) << 47 << wispera + "YYNYYNNNYNNY ECP";
    QTest::newRow("calls 2 Wispera") << gsReportsArray_Calls(2, true) << 33 << wispera + "YYNYYNNNYNNY ECP";
    QTest::newRow("circuits 1") << gsReportsArray_Circuits(1) << 9
                                << "328,Circuit Details - Maintenance,NNNNYNNN ECP";
    QTest::newRow("circuits 3") << gsReportsArray_Circuits(3) << 10 << "NNNNYNNN ECP";
    QTest::newRow("invoice") << gsReportsArray_Invoice() << 9
                             << "279,Invoice Summary By Group Bill,NNNNNNNNN ECP";
    QTest::newRow("mobile 1") << gsReportsArray_Mobile(1, false) << 33 << "YYYYYNNNNNNNN M ECP";
    QTest::newRow("mobile 2") << gsReportsArray_Mobile(2, false) << 31 << "YYYYYNNNNNNNN M ECP";
    QTest::newRow("mobile Wispera") << gsReportsArray_Mobile(1, true) << 40 << wispera + "YYNYYNNNYNNNN ECP";
}

void TestCatalogue::listsHoldTheirEntries() {
    QFETCH(QString, list);
    QFETCH(int, count);
    QFETCH(QString, end);
    QCOMPARE(list.split(u',').size(), count * 3);
    QVERIFY2(list.endsWith(end), qPrintable(list.right(100)));
}

void TestCatalogue::everyListIsWellFormed() {
    const QRegularExpression options("\\A[YN]{8,14}( L?M?V?D?)? E?C?P\\z");
    for (int type = BillingReport; type <= MobileReport; ++type) {
        for (int argument = 0; argument <= 5; ++argument) {
            QSet<int> ids;
            for (const CatalogueEntry* entry : catalogueEntries(type, {argument, true})) {
                QVERIFY2(!ids.contains(entry->id), qPrintable(entry->titleText()));
                ids.insert(entry->id);
                QVERIFY(!entry->titleText().contains(u','));
                QVERIFY2(options.match(entry->options()).hasMatch(), qPrintable(entry->options()));
            }
        }
    }
}

void TestCatalogue::flagsAreReadByPosition_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("position");
    QTest::addColumn<bool>("offered");
    QTest::newRow("first") << 2 << 161 << 1 << true;
    QTest::newRow("last of twelve") << 2 << 141 << 12 << true;
    QTest::newRow("last of fourteen") << 5 << 115 << 14 << true;
    QTest::newRow("beyond eight letters") << 1 << 231 << 9 << false;
    QTest::newRow("beyond ten letters") << 2 << 178 << 12 << false;
    QTest::newRow("before the first") << 2 << 161 << 0 << false;
    QTest::newRow("negative") << 2 << 161 << -1 << false;
}

void TestCatalogue::flagsAreReadByPosition() {
    QFETCH(int, type);
    QFETCH(int, id);
    QFETCH(int, position);
    const CatalogueEntry* entry = catalogueEntry(type, id, {});
    QVERIFY(entry);
    QTEST(entry->offers(position), "offered");
}

void TestCatalogue::argumentSelectsVariants() {
    const auto flags = [](ListChoice choice) {
        return catalogueEntry(CallReport, 113, choice)->options().section(u' ', 0, 0);
    };
    QCOMPARE(flags(ListChoice::forProject(CallReport, 4, false)), "YYYYYNNNNNYN");
    QCOMPARE(flags(ListChoice::forProject(CallReport, 0, false)), "YYNYYNNNNNYN");
    QCOMPARE(flags(ListChoice::forLookUp(CallReport, false)), "YYNYYNNNNNYN");
    // A Linkvale project neither hides the circuit invoice from look-ups nor drops mobile reports.
    QVERIFY(catalogueEntry(CircuitReport, 311, ListChoice::forProject(CircuitReport, 2, false)));
    QVERIFY(catalogueEntry(MobileReport, 116, ListChoice::forProject(MobileReport, 2, false)));
    QVERIFY(!catalogueEntry(CallReport, 116, ListChoice::forProject(CallReport, 2, false)));
    QVERIFY(!catalogueEntry(CallReport, 131, {1, false}));
    QVERIFY(!catalogueEntry(0, 161, {}));
    QVERIFY(!catalogueEntry(6, 161, {}));
}

void TestCatalogue::titlesMatchExactly() {
    const CatalogueEntry* gprs = catalogueEntry(MobileReport, "Call Summary Reports - GPRS Details", {});
    QCOMPARE(gprs ? gprs->id : 0, 100);
    QVERIFY(!catalogueEntry(MobileReport, "call summary reports - gprs details", {}));
    QVERIFY(!catalogueEntry(CallReport, "Call Summary Reports - GPRS", {}));
    QVERIFY(!catalogueEntry(CallReport, QString(), {}));
}

void TestCatalogue::groupsAreDescribed() {
    QCOMPARE(parameterGroupTexts(*catalogueEntry(CircuitReport, 321, {}), CircuitReport),
             QStringList({"This report has selectable Percentage Value for comparison",
                          "This report has Account and Cost Centre Selection"}));
    QCOMPARE(
        parameterGroupTexts(*catalogueEntry(CallReport, 143, {}), CallReport),
        QStringList({"This report has selectable Call Dates and Days",
                     "This report has selectable Call Hours", "This report has selectable Distance Bands",
                     "This report has selectable Thresholds", "This report has Call Classes associated"}));
    QVERIFY(parameterGroupTexts(*catalogueEntry(CallReport, 177, {}), CallReport).isEmpty());
}

int testCatalogue(int argc, char** argv) {
    TestCatalogue test;
    return QTest::qExec(&test, argc, argv);
}

#include "TestCatalogue.moc"

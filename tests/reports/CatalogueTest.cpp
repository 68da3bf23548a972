#include "reports/Catalogue.h"
#include "support/TestClass.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

class CatalogueTest : public QObject {
    Q_OBJECT

private slots:
    void listsHoldTheirEntries_data() {
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("end");
        const QString wispera = "137,Wispera Reports - Top 100 Users By Cost,";
        QTest::newRow("billing") << gsReportsArray_Billing() << 19 << "Recurring Charges,NNNNYNNY ECP";
        QTest::newRow("calls 1") << gsReportsArray_Calls(1, false) << 40 << "All Records,YNNNYNNNNNNN LV ECP";
        QTest::newRow("calls 2") << gsReportsArray_Calls(2, false) << 26 << "Duration,YYYYYNNNNYYY LMVD ECP";
        QTest::newRow("Wispera") << gsReportsArray_Calls(1, true) << 47 << wispera + "YYNYYNNNYNNY ECP";
        QTest::newRow("Linkvale, Wispera")
            << gsReportsArray_Calls(2, true) << 33 << wispera + "YYNYYNNNYNNY ECP";
        QTest::newRow("circuits 1") << gsReportsArray_Circuits(1) << 9 << "Maintenance,NNNNYNNN ECP";
        QTest::newRow("circuits 3") << gsReportsArray_Circuits(3) << 10 << "Maintenance,NNNNYNNN ECP";
        QTest::newRow("invoice") << gsReportsArray_Invoice() << 9 << "By Group Bill,NNNNNNNNN ECP";
        QTest::newRow("mobile 1") << gsReportsArray_Mobile(1, false) << 33 << "Calls,YYYYYNNNNNNNN M ECP";
        QTest::newRow("mobile 2") << gsReportsArray_Mobile(2, false) << 31 << "Calls,YYYYYNNNNNNNN M ECP";
        QTest::newRow("mobile, Wispera")
            << gsReportsArray_Mobile(1, true) << 40 << wispera + "YYNYYNNNYNNNN ECP";
    }

    void listsHoldTheirEntries() {
        QFETCH(QString, list);
        QFETCH(int, count);
        QFETCH(QString, end);
        QCOMPARE(list.split(u',').size(), count * 3);
        QVERIFY2(list.endsWith(end), qPrintable(list.right(100)));
    }

    void everyListIsWellFormed() {
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

    void titlesMatchExactly() {
        QCOMPARE(GetReportTypeIdFromTitle(MobileReport, "Call Summary Reports - GPRS Details", {}), 100);
        QCOMPARE(GetReportTypeIdFromTitle(MobileReport, "call summary reports - gprs details", {}), 0);
        QCOMPARE(GetReportTypeIdFromTitle(CallReport, "Call Summary Reports - GPRS", {}), 0);
        QCOMPARE(GetReportTypeIdFromTitle(CallReport, QString(), {}), 0);
    }
};

static const AnnounceTest<CatalogueTest> announced;

#include "CatalogueTest.moc"

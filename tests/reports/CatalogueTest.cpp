#include "reports/Catalogue.h"
#include "support/Rows.h"
#include "support/TestClass.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

class CatalogueTest : public QObject {
    Q_OBJECT

private slots:
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
};

static const AnnounceTest<CatalogueTest> announced;

#include "CatalogueTest.moc"

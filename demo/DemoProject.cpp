#include "demo/DemoProject.h"

#include "reports/BillType.h"

namespace demoProjects {

const QList<DemoProject>& all() {
    static const QList<DemoProject> projects{
        {"Brightwater", "BW10023", "Brightwater Foods plc", UnitabBill, "0117496",
         DemoProject::Wispera | DemoProject::Appended},
        {"Harcourt-Lisle", "HL20417", "Harcourt & Lisle Solicitors", LinkvaleBill, "0161715"},
        {"Peverell Networks", "PV30881", "Peverell Networks Ltd", PrivateCircuitsBill, "0131446"},
        {"O'Dowd Freight", "OD40256", "O'Dowd Freight (Ireland) Ltd", IdcBill, "0289018"},
        {"Marchetti2007", "MR50011", "Marchetti Ceramics", UnitabBill, "0151496", DemoProject::Older},
        {"Vantry Estates", "VE60140", "Vantry Estates", UnitabBill, "0121446", DemoProject::WithoutCentres},
        {"Brightwater_Archive_2006", "BW10023", "Brightwater Foods plc", UnitabBill, "0117496",
         DemoProject::Archive},
        {"Quillon Trust", "QT70305", "The Quillon Trust", UnitabBill, "0141496", DemoProject::Inaccessible}};
    return projects;
}

QList<DemoBill> bills(const QDate& today) {
    // 12 and 112: the one must not be taken for a part of the other.
    QList<DemoBill> bills{{12, QDate(2008, 3, 1), QDate(2008, 4, 30)}};
    const QDate thisMonth(today.year(), today.month(), 1);
    for (int back = 3; back >= 1; --back) {
        const QDate month = thisMonth.addMonths(-back);
        bills.append({115 - back, month, month.addMonths(1).addDays(-1)});
    }
    return bills;
}

} // namespace demoProjects

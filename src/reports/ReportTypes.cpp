#include "reports/ReportTypes.h"

#include "reports/BillType.h"
#include "reports/Catalogue.h"

QString reportTypeName(int reportType) {
    switch (reportType) {
    case BillingReport:
        return "Summary Report";
    case CallReport:
        return "Itemised Call Report";
    case CircuitReport:
        return "Private Circuits Report";
    case InvoiceReport:
        return "Linkvale Summary Report";
    case MobileReport:
        return "Mobile Report";
    default:
        return {};
    }
}

QList<ReportTypeChoice> reportTypeChoices(int billType) {
    QList<int> types;
    switch (billType) {
    case UnitabBill:
        types = {BillingReport, CallReport, CircuitReport};
        break;
    case LinkvaleBill:
        types = {CallReport, InvoiceReport};
        break;
    case PrivateCircuitsBill:
        types = {CircuitReport};
        break;
    case IdcBill:
        types = {CallReport, MobileReport};
        break;
    default:
        return {{0, "unknown project type"}};
    }
    QList<ReportTypeChoice> choices{{0, "Please select a report type"}};
    for (const int type : types) choices.append({type, reportTypeName(type)});
    return choices;
}

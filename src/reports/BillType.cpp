#include "reports/BillType.h"

QString billTypeName(int billType) {
    switch (billType) {
    case UnitabBill:
        return "Norva Unitab";
    case LinkvaleBill:
        return "Linkvale";
    case PrivateCircuitsBill:
        return "Private Circuits";
    case IdcBill:
        return "IDC";
    default:
        return "Unknown";
    }
}

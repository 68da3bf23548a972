#pragma once

#include <QString>

/// The kinds of bill that a project or template is made for; the codes are stored in the database.
enum BillType { UnknownBill = 0, UnitabBill = 1, LinkvaleBill = 2, PrivateCircuitsBill = 3, IdcBill = 4 };

inline bool isBillType(int code) {
    return code >= UnitabBill && code <= IdcBill;
}
/// "Unknown" for any other code.
QString billTypeName(int billType);

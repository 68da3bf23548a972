#pragma once

#include "db/Connection.h"

/// One bill of a project as the list of bills shows it.
struct Bill {
    int id = 0;
    QString account;
    QString customer;
    QString invoiceReference; ///< of bills of import kind "O" only
    QString created;          ///< "dd/mm/yyyy"
    QString total;            ///< pounds, "0.00"; added up from its calls for a bill without one
};

struct Bills {
    bool hasImports = false; ///< bills of import kind "O" are among them
    QList<Bill> bills;       ///< by their identifiers
};

/// The bills of a project, in a few statements however many there are. Throws DbError.
Bills loadBills(Connection& connection, const QString& project);

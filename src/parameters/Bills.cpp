#include "parameters/Bills.h"

#include <QHash>
#include <QLocale>
#include <cmath>

namespace {

QString optional(const Row& row, const RecordSet& rows, const char* column) {
    return rows.columns().contains(QLatin1StringView(column), Qt::CaseInsensitive) ? row.text(column)
                                                                                   : QString();
}

/// Two decimals of an amount that the server writes with up to four, half a penny rounded up.
QString pounds(const QString& amount) {
    return QString::number(std::round(std::round(amount.toDouble() * 10'000) / 100) / 100, 'f', 2);
}

QString invoiceReference(const Bill& bill, const QString& locAd1, const QString& reportReference) {
    const QString prefix = locAd1.trimmed() == "Recosted" ? "AA " : "VP ";
    return prefix + bill.account.trimmed().left(8) + ' ' + reportReference.mid(12);
}

/// The call tables that the project has: those that are missing have no calls to add up.
QStringList callTables(Connection& connection, const Name& project) {
    QStringList tables;
    for (const Row row : connection.query(sql("SELECT [Name] FROM {}.dbo.sysobjects WHERE [Name] IN "
                                              "('TblCallRecords', 'TblMobCalls', 'TblWisperaEvents')",
                                              project)))
        tables << row.text(0);
    return tables;
}

/// The recosted totals of bills that have none of their own, by bill.
QHash<int, QString> recostedTotals(Connection& connection, const Name& project) {
    QList<Sql> parts;
    for (const QString& table : callTables(connection, project))
        parts << sql(" Select BillID, Isnull(Sum(OrigCost),0) NewCost from {}.dbo.{} Where BillID in "
                     "(Select BillId From {}.dbo.Tbl50 Where BillTotal Is Null) Group By BillID ",
                     project, Name(table), project);
    QHash<int, QString> totals;
    if (parts.isEmpty()) return totals;
    for (const Row row :
         connection.query(sql("SELECT BillID, Cast(SUM(NewCost) as decimal(15,2)) MyTotal From ({}) Tbl "
                              "Group By BillID",
                              Sql::join(parts, sql("Union all")))))
        totals.insert(row.integer(0), row.text(1));
    return totals;
}

} // namespace

Bills loadBills(Connection& connection, const QString& projectName) {
    const Name project(projectName);
    Bills found;
    found.hasImports =
        !connection.query(sql("SELECT TOP 1 Imports FROM {}.dbo.Tbl50 WHERE Imports = 'O' ", project))
             .isEmpty();
    const RecordSet rows = connection.query(sql("SELECT * FROM {}.dbo.Tbl50 ORDER BY BillId ", project));
    bool allHaveTotals = true;
    for (const Row row : rows) {
        Bill bill;
        bill.id = row.integer("BillId");
        bill.account = optional(row, rows, "CurrentUnitabAccount");
        bill.customer = optional(row, rows, "Customer");
        bill.created = QLocale::c().toString(row.date("CreateDate"), "dd/MM/yyyy");
        if (row.text("Imports") == "O")
            bill.invoiceReference =
                invoiceReference(bill, optional(row, rows, "LocAd1"), optional(row, rows, "ReportReference"));
        if (row.isNull("BillTotal"))
            allHaveTotals = false;
        else
            bill.total = pounds(row.text("BillTotal"));
        found.bills << bill;
    }
    if (allHaveTotals) return found;
    const QHash<int, QString> totals = recostedTotals(connection, project);
    for (Bill& bill : found.bills)
        if (bill.total.isNull()) bill.total = pounds(totals.value(bill.id, "0"));
    return found;
}

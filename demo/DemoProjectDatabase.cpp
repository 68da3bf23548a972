#include "demo/DemoProjectDatabase.h"

#include "demo/BulkInsert.h"
#include "demo/DemoCalls.h"
#include "demo/DemoCentres.h"

#include <QDateTime>

namespace demoProjectDatabase {

namespace {

struct BillText {
    std::optional<double> total; ///< pounds; without one the calls are added up
    QString imports;
    QString locAd1;
    QString reportReference;
};

BillText billText(const DemoProject& project, int billId) {
    const QString reference = QString("%1-%2-00INV2008/%1/%2").arg(project.account).arg(billId);
    if (!project.is(DemoProject::Appended)) return {1000.5 + billId, "", project.customer, reference};
    switch (billId) {
    case 12:
        return {18250.0, "O", "Recosted", reference};
    case 112:
        return {std::nullopt, "O", project.customer, reference};
    case 113:
        return {std::nullopt, "N", project.customer, reference};
    default:
        return {940.07, "", project.customer, ""};
    }
}

/// An older project has bills that do not yet hold their current account.
std::optional<QString> currentAccount(const DemoProject& project, int billId) {
    if (project.is(DemoProject::Older) && billId == 112) return std::nullopt;
    if (project.is(DemoProject::Older) && billId == 113) return QString("");
    return project.account;
}

void createBills(Connection& connection, const DemoProject& project) {
    const Sql later =
        project.is(DemoProject::Older)
            ? Sql()
            : sql(", [BillType] [int] NULL, [BillStart] [datetime] NULL, [BillEnd] [datetime] NULL");
    // The account comes first: it is found there by its place.
    connection.execute(
        sql("CREATE TABLE {}.dbo.Tbl50 ([UnitabAccount] [varchar] (20) COLLATE Latin1_General_CI_AS NULL, "
            "[RecID] [int] IDENTITY (1, 1) NOT NULL, [BillID] [int] NOT NULL, [LocID] [int] NULL, "
            "[Flags] [int] NULL, [CurrentUnitabAccount] [varchar] (20) COLLATE Latin1_General_CI_AS NULL, "
            "[Customer] [varchar] (50) COLLATE Latin1_General_CI_AS NULL, [CreateDate] [datetime] NULL, "
            "[BillTotal] [money] NULL, [Imports] [varchar] (1) COLLATE Latin1_General_CI_AS NULL, "
            "[LocAd1] [varchar] (50) COLLATE Latin1_General_CI_AS NULL, "
            "[ReportReference] [varchar] (60) COLLATE Latin1_General_CI_AS NULL{}) ON [PRIMARY]",
            Name(project.database), later));
}

void fillBills(Connection& connection, const DemoProject& project, const QDate& today) {
    const bool older = project.is(DemoProject::Older);
    BulkInsert rows(
        connection,
        sql("INSERT INTO {}.dbo.Tbl50 (UnitabAccount, BillID, LocID, Flags, CurrentUnitabAccount, Customer, "
            "CreateDate, BillTotal, Imports, LocAd1, ReportReference{}) VALUES",
            Name(project.database), older ? Sql() : sql(", BillType, BillStart, BillEnd")));
    for (const DemoBill& bill : demoProjects::bills(today)) {
        const BillText text = billText(project, bill.id);
        const Sql later = older ? Sql() : sql(", {}, {}, {}", project.billType, bill.start, bill.end);
        rows.add(project.account, bill.id, 1, 0, currentAccount(project, bill.id), project.customer,
                 bill.end.addDays(4), text.total, text.imports, text.locAd1,
                 sql("{}{}", text.reportReference, later));
    }
    rows.finish();
}

/// The tables of charges, all alike: what the engine adds up for its billing reports.
void createCharges(Connection& connection, const DemoProject& project, const QDate& today) {
    const QStringList tables{"Tbl017",          "Tbl307",        "Tbl407",    "Tbl507",      "Tbl997",
                             "TblCallSummary1", "TblCctSummary", "TblFCC",    "TblFCallSum", "TblFCharge",
                             "TblFCommitment",  "TblFDiscount",  "TblFOther", "TblFile7Sum", "TblfInvoice",
                             "TblMobSum",       "TblTele"};
    const QList<DemoNumber> numbers = demoCentres::numbers(project);
    for (const QString& table : tables) {
        connection.execute(
            sql("CREATE TABLE {}.dbo.{} ([RecID] [int] IDENTITY (1, 1) NOT NULL, [BillID] [int] NOT NULL, "
                "[ServiceNo] [varchar] (25) COLLATE Latin1_General_CI_AS NULL, "
                "[Description] [varchar] (50) COLLATE Latin1_General_CI_AS NULL, [Amount] [money] NULL)",
                Name(project.database), Name(table)));
        BulkInsert rows(connection,
                        sql("INSERT INTO {}.dbo.{} (BillID, ServiceNo, Description, Amount) VALUES",
                            Name(project.database), Name(table)));
        for (const DemoBill& bill : demoProjects::bills(today))
            for (int line = 0; line < 3; ++line)
                rows.add(bill.id, numbers.at(line * 7).telNo, QString("Line rental, site %1").arg(line + 1),
                         12.75 * (line + 1));
        rows.finish();
    }
}

void createCircuits(Connection& connection, const DemoProject& project) {
    connection.execute(
        sql("CREATE TABLE {}.dbo.TblCcts ([CircuitID] [varchar] (25) COLLATE Latin1_General_CI_AS NOT NULL, "
            "[AEnd] [varchar] (50) COLLATE Latin1_General_CI_AS NULL, "
            "[BEnd] [varchar] (50) COLLATE Latin1_General_CI_AS NULL, [Rental] [money] NULL)",
            Name(project.database)));
    BulkInsert rows(connection, sql("INSERT INTO {}.dbo.TblCcts (CircuitID, AEnd, BEnd, Rental) VALUES",
                                    Name(project.database)));
    const QStringList sites{"Leith Depot", "Queen's Quay", "Head Office", "Data Centre North",
                            "Data Centre South"};
    for (int i = 0; i < 15; ++i)
        rows.add(QString("KX%1/%2").arg(480210 + i * 13).arg(project.billType), sites.at(i % 5),
                 sites.at((i + 1 + i / 5) % 5), 210.0 + 35 * (i % 4));
    rows.finish();
}

void createWisperaEvents(Connection& connection, const DemoProject& project, const QDate& today) {
    connection.execute(
        sql("CREATE TABLE {}.dbo.TblWisperaEvents ([RecID] [int] IDENTITY (1, 1) NOT NULL, "
            "[UserID] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, [BillID] [int] NOT NULL, "
            "[Hotspot] [varchar] (50) COLLATE Latin1_General_CI_AS NULL, [EventDate] [datetime] NULL, "
            "[Duration] [int] NULL, [OrigCost] [money] NULL)",
            Name(project.database)));
    if (!project.is(DemoProject::Wispera)) return;
    BulkInsert rows(connection,
                    sql("INSERT INTO {}.dbo.TblWisperaEvents (UserID, BillID, Hotspot, EventDate, Duration, "
                        "OrigCost) VALUES",
                        Name(project.database)));
    const QStringList users{"amelia.hart", "m.o'connor", "tom.becker", "visitor-01"};
    const QStringList hotspots{"Temple Meads", "King's Cross", "Harbourside Café"};
    for (const DemoBill& bill : demoProjects::bills(today))
        for (int i = 0; i < 12; ++i)
            rows.add(users.at(i % 4), bill.id, hotspots.at(i % 3), bill.start.addDays(i), 300 + i * 60,
                     1.5 + i * 0.25);
    rows.finish();
}

} // namespace

void create(Connection& connection, const DemoProject& project) {
    connection.execute(sql("CREATE DATABASE {}", Name(project.database)));
}

void fill(Connection& connection, const DemoProject& project, int calls, const QDate& today) {
    createBills(connection, project);
    fillBills(connection, project, today);
    demoCalls::createTables(connection, project);
    demoCalls::fill(connection, project, calls, today);
    if (!project.isListed()) return;
    createCharges(connection, project, today);
    createCircuits(connection, project);
    if (!project.is(DemoProject::Older)) createWisperaEvents(connection, project, today);
    demoCentres::createAllocation(connection, project);
}

} // namespace demoProjectDatabase

#include "demo/DemoCentres.h"

#include "demo/BulkInsert.h"

#include <QSet>

namespace demoCentres {

namespace {

constexpr int NumbersPerAccount = 60;

struct Division {
    QString name;
    QStringList departments;
};

const QList<Division>& divisions() {
    static const QList<Division> divisions{
        {"Operations", {"Warehouse", "Transport", "Engineers' Yard"}},
        {"Sales & Marketing", {"Field Sales", "Telesales", "O'Connell Street Shop"}},
        {"Finance", {"Accounts Payable", "Payroll", "Audit"}},
        {"Children's Services", {"Nursery", "Holiday Club", ""}},
        {"Head Office", {"Directors", "Legal", "IT \"Blue\" Team"}}};
    return divisions;
}

/// Level 3 is empty for some, level 4 is used by the Unitab customers only, level 5 by nobody.
std::array<std::optional<QString>, 5> centresOf(const DemoProject& project, int number) {
    if (number % 17 == 16) return {};
    const Division& division = divisions().at(number % 5);
    const QString department = division.departments.at(number / 5 % 3);
    const QString team =
        number % 4 == 0 || department.isEmpty() ? "" : department + (number % 2 ? " East" : " West");
    const QString desk =
        project.billType == 1 && number % 3 == 0 ? QString("Desk %1").arg(number % 6 + 1) : "";
    return {division.name, department, team, desk, std::nullopt};
}

void createTable(Connection& connection, const QString& database, const QString& account) {
    connection.execute(sql("CREATE TABLE {}.dbo.{} ("
                           "[ID] [int] IDENTITY (1, 1) NOT NULL, "
                           "[UnitabAccount] [varchar] (20) COLLATE Latin1_General_CI_AS NOT NULL, "
                           "[CostCentre1] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, "
                           "[CostCentre2] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, "
                           "[CostCentre3] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, "
                           "[CostCentre4] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, "
                           "[CostCentre5] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, "
                           "[TelNo] [varchar] (25) COLLATE Latin1_General_CI_AS NULL, "
                           "[SourceAccount] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, "
                           "[Found] [varchar] (10) COLLATE Latin1_General_CI_AS NULL, "
                           "[Checked] [smallint] NULL) ON [PRIMARY]",
                           Name(database), Name(account + "_TblCC")));
}

void fillTable(Connection& connection, const QString& database, const DemoProject& project) {
    BulkInsert rows(connection,
                    sql("INSERT INTO {}.dbo.{} (UnitabAccount, CostCentre1, CostCentre2, CostCentre3, "
                        "CostCentre4, CostCentre5, TelNo, SourceAccount) VALUES",
                        Name(database), Name(project.account + "_TblCC")));
    for (const DemoNumber& number : numbers(project)) {
        const auto& centres = number.centres;
        rows.add(project.account, centres[0], centres[1], centres[2], centres[3], centres[4], number.telNo,
                 number.sourceAccount);
    }
    rows.finish();
}

void createCentreList(Connection& connection, const DemoProject& project) {
    const Name table(project.account + "_TblCentres");
    connection.execute(sql("CREATE TABLE CostCentres.dbo.{} ("
                           "[Account] [varchar] (50) COLLATE Latin1_General_CI_AS NULL, "
                           "[CostCentre] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, "
                           "[Level] [smallint] NULL) ON [PRIMARY]",
                           table));
    BulkInsert rows(connection,
                    sql("INSERT INTO CostCentres.dbo.{} (Account, CostCentre, Level) VALUES", table));
    QSet<std::pair<int, QString>> listed;
    for (const DemoNumber& number : numbers(project)) {
        for (int level = 1; level <= 5; ++level) {
            const QString centre = number.centres[std::size_t(level - 1)].value_or(QString());
            if (centre.isEmpty() || listed.contains({level, centre})) continue;
            listed.insert({level, centre});
            rows.add(project.account, centre, level);
        }
    }
    rows.finish();
}

} // namespace

QList<DemoNumber> numbers(const DemoProject& project) {
    QList<DemoNumber> numbers;
    for (int i = 0; i < NumbersPerAccount; ++i) {
        const QString site = i % 3 == 2 ? project.account + "-B" : project.account;
        numbers.append({project.numberPrefix + QString::number(1000 + i * 37), QString::number(200 + i), site,
                        centresOf(project, i)});
    }
    return numbers;
}

void createMasters(Connection& connection, const DemoProject& project) {
    createTable(connection, "CostCentres", project.account);
    fillTable(connection, "CostCentres", project);
    createCentreList(connection, project);
}

void createAllocation(Connection& connection, const DemoProject& project) {
    createTable(connection, project.database, project.account);
    fillTable(connection, project.database, project);
}

} // namespace demoCentres

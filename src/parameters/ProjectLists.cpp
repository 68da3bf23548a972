#include "parameters/ProjectLists.h"

#include "db/DbError.h"
#include "projects/modCostCentres.h"

namespace {

bool meansMissing(const DbError& error) {
    return error.number() == DbError::InvalidObject || error.number() == DbError::InvalidColumn
           || error.isDatabaseMissing();
}

Name levelColumn(int level) {
    return Name(QString("CostCentre%1").arg(level));
}

/// Narrows to the cost centres chosen at the levels up to `lastLevel`.
Sql chosenCentres(const ProjectLists::CostCentres& chosen, int lastLevel) {
    Sql filter;
    for (int level = 1; level <= lastLevel; ++level) {
        const QString& centre = chosen[std::size_t(level) - 1];
        if (centre.isEmpty()) continue;
        filter += centre == noCostCentre ? sql(" AND {} Is Null", levelColumn(level))
                                         : sql(" AND {} = {}", levelColumn(level), centre);
    }
    return filter;
}

/// The place of the column that names the circuit; the other columns differ from project to project.
int circuitColumn(const RecordSet& circuits) {
    for (int column = 0; column < circuits.columns().size(); ++column) {
        const QString& name = circuits.columns()[column];
        for (const char* known : {"CircuitID", "CctID", "Circuit"})
            if (name.compare(QLatin1StringView(known), Qt::CaseInsensitive) == 0) return column;
    }
    return 0;
}

} // namespace

ProjectLists::ProjectLists(Connection& connection, const CurrentProject& project)
    : m_connection(connection), m_project(project) {}

template <class MakeSql>
RecordSet ProjectLists::read(MakeSql statement) const {
    if (m_project.database.isEmpty()) return {};
    try {
        return m_connection.query(statement(Name(m_project.database)));
    } catch (const DbError& error) {
        if (!meansMissing(error)) throw;
        return {};
    }
}

/// The first column, without NULL and blank texts.
template <class MakeSql>
QStringList ProjectLists::readTexts(MakeSql statement) const {
    QStringList texts;
    for (const Row row : read(statement))
        if (const QString text = row.text(0).trimmed(); !text.isEmpty()) texts << text;
    return texts;
}

Name ProjectLists::costCentreTable() const {
    return Name(masterTable(m_project.unitabAccount));
}

QStringList ProjectLists::costCentres(int level, const CostCentres& chosen) const {
    const Name column = levelColumn(level);
    QStringList centres;
    const RecordSet rows = read([&](const Name& project) {
        return sql("SELECT Distinct {} FROM {}.dbo.{} Where UnitabAccount = {}{} Order By {}", column,
                   project, costCentreTable(), m_project.unitabAccount, chosenCentres(chosen, level - 1),
                   column);
    });
    for (const Row row : rows) {
        const QString centre = row.isNull(0) ? QString(noCostCentre) : row.text(0);
        if (!centre.trimmed().isEmpty()) centres << centre;
    }
    return centres;
}

QStringList ProjectLists::serviceNumbers(const CostCentres& chosen) const {
    return readTexts([&](const Name& project) {
        return sql("SELECT Distinct TelNo FROM {}.dbo.{} Where UnitabAccount = {}{} Order By TelNo", project,
                   costCentreTable(), m_project.unitabAccount, chosenCentres(chosen, 5));
    });
}

QStringList ProjectLists::handsets() const {
    return readTexts([](const Name& project) {
        return sql("SELECT DISTINCT CallingNo FROM {}.dbo.TblMobCalls ORDER BY CallingNo", project);
    });
}

QStringList ProjectLists::sourceBills() const {
    QStringList bills = readTexts([&](const Name& project) {
        return sql("SELECT [SourceAccount] FROM {}.dbo.{} GROUP BY [SourceAccount]", project,
                   costCentreTable());
    });
    bills.sort(Qt::CaseInsensitive); // the statement asks for no order
    return bills;
}

QStringList ProjectLists::circuits() const {
    const RecordSet rows =
        read([](const Name& project) { return sql("SELECT * From {}.dbo.TblCcts", project); });
    const int column = circuitColumn(rows);
    QStringList circuits;
    for (const Row row : rows)
        if (const QString id = row.text(column).trimmed(); !id.isEmpty()) circuits << id;
    circuits.sort();
    circuits.removeDuplicates();
    return circuits;
}

QStringList ProjectLists::wisperaUsers() const {
    return readTexts([](const Name& project) {
        return sql("SELECT UserID FROM {}.dbo.TblWisperaEvents GROUP BY UserID ORDER BY UserID", project);
    });
}

QList<CallClass> ProjectLists::callClasses() const {
    QList<CallClass> classes;
    const RecordSet rows = read([](const Name& project) {
        return sql("SELECT DISTINCT CC.CallClass, CC.CallDescription  FROM {}.dbo.TblMobCalls MC "
                   "JOIN QXSpNum.dbo.TblMobileCallClass CC ON MC.CallClass = CC.CallClass "
                   "ORDER BY CC.CallDescription ",
                   project);
    });
    for (const Row row : rows) classes.append({row.text(0), row.text(1)});
    return classes;
}

bool ProjectLists::hasUnclassedCalls() const {
    return !read([](const Name& project) {
                return sql("SELECT TOP 1 * FROM {}.dbo.tblMobCalls WHERE CallClass = ''", project);
            }).isEmpty();
}

QList<ProjectLine> ProjectLists::lines() const {
    QList<ProjectLine> lines;
    const RecordSet rows = read([](const Name& project) {
        return sql("SELECT DISTINCT CallingNo, Extension FROM {}.[dbo].[tblCallRecords] "
                   "ORDER BY CallingNo, Extension ",
                   project);
    });
    for (const Row row : rows) {
        const QString number = row.text(0).trimmed();
        if (number.isEmpty()) continue;
        if (lines.isEmpty() || lines.last().number != number) lines.append({number, {}});
        if (const QString extension = row.text(1).trimmed(); !extension.isEmpty())
            lines.last().extensions << extension;
    }
    return lines;
}

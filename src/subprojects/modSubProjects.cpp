#include "subprojects/modSubProjects.h"

#include "app/Session.h"
#include "db/DbError.h"
#include "projects/modCostCentres.h"
#include "templates/CostCentreLimits.h"

#include <QSet>

namespace {

const QStringList& neededTables() {
    static const QStringList tables{
        "Tbl50",          "Tbl017",          "Tbl307",       "Tbl407",        "Tbl507",      "Tbl997",
        "TblCallRecords", "TblCallSummary1", "TblCcts",      "TblCctSummary", "TblFCC",      "TblFCallSum",
        "TblFCharge",     "TblFCommitment",  "TblFDiscount", "TblFOther",     "TblFile7Sum", "TblfInvoice",
        "TblMiscBill",    "TblMobCalls",     "TblMobSum",    "TblTele"};
    return tables;
}

/// Users of this cost-centre mode work on their own copies of the cost-centre tables.
bool hasOwnCostCentres(const Session& session) {
    constexpr int ownCopies = 2;
    return session.multiLevel == ownCopies;
}

/// A user's first use of his copies makes them.
template <class Read>
QStringList readOwn(Session& session, Read read) {
    try {
        return read();
    } catch (const DbError& error) {
        if (error.number() != DbError::InvalidObject) throw;
        prepareAccountCostCentres(session, true);
        return read();
    }
}

QStringList withinLimits(Session& session, int level, QStringList centres) {
    const ProjectLists::CostCentres limits = costCentreLimits(session);
    if (!isLimited(limits)) return centres << noCostCentre;
    const QString& own = limits[std::size_t(level) - 1];
    const QStringList allowed = own.isEmpty()
                                    ? ProjectLists(session.db(), session.project).costCentres(level, limits)
                                    : QStringList{own};
    centres.removeIf([&](const QString& centre) { return !allowed.contains(centre, Qt::CaseInsensitive); });
    return centres;
}

QStringList readCentresList(Session& session, int level, const QString& table) {
    QStringList centres;
    for (const Row row : session.db().query(
             sql("SELECT Distinct CostCentre FROM Costcentres.dbo.{} WHERE Account = {} and Level = {}",
                 Name(table), session.project.unitabAccount, level)))
        if (!row.text(0).isEmpty()) centres << row.text(0);
    centres.sort(Qt::CaseInsensitive);
    return centres;
}

} // namespace

QStringList missingSubProjectTables(Session& session) {
    QList<Sql> names;
    for (const QString& table : neededTables()) names << Sql::value(table);
    const RecordSet rows =
        session.db().query(sql("SELECT [name] FROM {}.dbo.sysobjects WITH (NOLOCK) WHERE [name] IN ({})",
                               Name(session.project.database), Sql::join(names, sql(", "))));
    QSet<QString> found;
    for (const Row row : rows) found.insert(row.text(0).toCaseFolded());
    QStringList missing;
    for (const QString& table : neededTables())
        if (!found.contains(table.toCaseFolded())) missing << table;
    return missing;
}

QStringList subProjectCostCentres(Session& session, int level) {
    const QStringList centres =
        hasOwnCostCentres(session) ? readOwn(
            session, [&] { return readCostCentres(session, level, CostCentreSource::UserInProject); })
                                   : readCostCentres(session, level, CostCentreSource::Master);
    return withinLimits(session, level, centres);
}

QStringList addressCostCentres(Session& session, int level) {
    QStringList centres;
    if (hasOwnCostCentres(session)) {
        centres =
            readOwn(session, [&] { return readCentresList(session, level, userCentresTable(session)); });
    } else {
        try {
            centres = readCentresList(session, level, masterCentresTable(session.project.unitabAccount));
        } catch (const DbError& error) {
            if (error.number() != DbError::InvalidObject) throw;
        }
    }
    return withinLimits(session, level, centres);
}

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

/// The first use in a project makes the user's copies, or brings them up to date: the tables alone do not
/// say whether an earlier run came to its end.
void prepareOwnCostCentres(Session& session) {
    if (session.project.ownCentresReady) return;
    prepareAccountCostCentres(session, true);
    session.project.ownCentresReady = true;
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
    const bool own = hasOwnCostCentres(session);
    if (own) prepareOwnCostCentres(session);
    const auto source = own ? CostCentreSource::UserInProject : CostCentreSource::Master;
    return withinLimits(session, level, readCostCentres(session, level, source));
}

QStringList addressCostCentres(Session& session, int level) {
    QStringList centres;
    try {
        const bool own = hasOwnCostCentres(session);
        if (own) prepareOwnCostCentres(session);
        centres = readCentresList(session, level,
                                  own ? userCentresTable(session)
                                      : masterCentresTable(session.project.unitabAccount));
    } catch (const DbError& error) {
        if (error.number() != DbError::InvalidObject) throw; // an account without cost centres
    }
    return withinLimits(session, level, centres);
}

#include "templates/modSubProjects.h"

#include "base/Session.h"
#include "db/DbError.h"
#include "db/ServerText.h"
#include "parameters/CostCentreLimits.h"
#include "projects/modCostCentres.h"

#include <optional>

namespace {

const QStringList& subProjectTables() {
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

/// The first use after a project was chosen makes the user's copy and list, or adds what the master gained:
/// the tables alone do not say whether an earlier run came to its end. What cannot be brought up to date, for
/// want of rights say, is used as it is: then the reason is returned.
std::optional<DbError> bringOwnCentresUpToDate(Session& session, bool withList) {
    CurrentProject& project = session.project;
    if (withList ? project.ownCentresListReady : project.ownCentresReady) return {};
    try {
        prepareAccountCostCentres(session, withList);
        project.ownCentresReady = true;
        project.ownCentresListReady |= withList;
        return {};
    } catch (const DbError& error) {
        if (error.connectionLost()) throw;
        session.log.write("prepareAccountCostCentres", error);
        return error;
    }
}

QStringList readOwnAllocation(Session& session, int level) {
    const std::optional<DbError> problem = bringOwnCentresUpToDate(session, false);
    const QStringList centres = readCostCentres(session, level, CostCentreSource::UserInProject);
    if (problem && centres.isEmpty()) throw *problem;
    return centres;
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
    for (const QString& table : subProjectTables()) names << Sql::value(table);
    const RecordSet rows =
        session.db().query(sql("SELECT [name] FROM {}.dbo.sysobjects WITH (NOLOCK) WHERE [name] IN ({})",
                               Name(session.project.database), Sql::join(names, sql(", "))));
    QSet<QString> found;
    for (const Row row : rows) found.insert(serverKey(row.text(0)));
    QStringList missing;
    for (const QString& table : subProjectTables())
        if (!found.contains(serverKey(table))) missing << table;
    return missing;
}

QStringList subProjectCostCentres(Session& session, int level) {
    const QStringList centres = hasOwnCostCentres(session)
                                    ? readOwnAllocation(session, level)
                                    : readCostCentres(session, level, CostCentreSource::Master);
    return withinLimits(session, level, centres);
}

QStringList addressCostCentres(Session& session, int level) {
    const bool own = hasOwnCostCentres(session);
    const QString table = own ? userCentresTable(session) : masterCentresTable(session.project.unitabAccount);
    QStringList centres;
    try {
        if (own) bringOwnCentresUpToDate(session, true);
        centres = readCentresList(session, level, table);
    } catch (const DbError& error) {
        if (error.number() != DbError::InvalidObject) throw; // an account without cost centres
    }
    return withinLimits(session, level, centres);
}

QSet<QString> centresWithAddress(Session& session, const QString& account, int level) {
    QSet<QString> centres;
    for (const Row row :
         session.db().query(sql("SELECT CostCentre FROM NorvaScheduler.dbo.tblMailAddresses WITH "
                                "(NOLOCK) WHERE BillAccount = {} AND CCLevel = {}",
                                account, level)))
        centres.insert(serverKey(row.text(0)));
    return centres;
}

#include "projects/modProjects.h"

#include "base/Session.h"
#include "db/DbError.h"
#include "db/Refusal.h"

#include <QScopeGuard>

namespace {

/// A column that projects of some ages lack.
QString optional(const RecordSet& rows, const char* column, const QString& whenLacking) {
    return rows.columns().contains(QLatin1StringView(column), Qt::CaseInsensitive) ? rows.row(0).text(column)
                                                                                   : whenLacking;
}

QDate dateOf(QStringView datetime) {
    return QDate::fromString(datetime.left(10), Qt::ISODate);
}

/// Whether a query found both dates; a table or column that the project lacks finds none.
bool readDates(Connection& db, const Sql& query, CurrentProject& project) {
    try {
        const RecordSet dates = db.query(query);
        if (dates.isEmpty()) return false;
        project.defaultStart = dateOf(dates.cell(0, 0));
        project.defaultEnd = dateOf(dates.cell(0, 1));
    } catch (const DbError& error) {
        if (error.number() != DbError::InvalidColumn && error.number() != DbError::InvalidObject) throw;
    }
    return project.defaultStart.isValid() && project.defaultEnd.isValid();
}

/// The first and the last day of the project's bills; where the bills do not say, of its calls.
void readBillDates(Connection& db, CurrentProject& project) {
    const Name database(project.database);
    if (!readDates(db, sql("SELECT MIN(BillStart), MAX(BillEnd) FROM {}.dbo.Tbl50 WITH (NOLOCK)", database),
                   project))
        readDates(db,
                  sql("SELECT MIN([Date]), MAX([Date]) FROM {}.dbo.TblCallRecords WITH (NOLOCK)", database),
                  project);
}

bool holdsWisperaEvents(Connection& db, const QString& database) {
    try {
        return !db.query(
                      sql("SELECT TOP 1 UserID FROM {}.dbo.TblWisperaEvents WITH (NOLOCK)", Name(database)))
                    .isEmpty();
    } catch (const DbError& error) {
        if (error.number() != DbError::InvalidObject) throw;
        return false;
    }
}

} // namespace

void openProject(Session& session, const QString& database) {
    Connection& db = session.db();
    const RecordSet bill =
        db.query(sql("SELECT TOP 1 * FROM {}.dbo.Tbl50 WITH (NOLOCK) ORDER BY BillID", Name(database)));
    if (bill.isEmpty()) throw Refusal(QString("The project '%1' holds no bills yet.").arg(database));

    CurrentProject project;
    project.database = database;
    project.unitabAccount = bill.row(0).text("UnitabAccount");
    project.billType = optional(bill, "BillType", "1").toInt();
    readBillDates(db, project);
    project.wispera = holdsWisperaEvents(db, database);
    project.edited = session.project.edited;
    project.sinceDatesRead.start();
    session.project = project;
}

void refreshBillDates(Session& session) {
    CurrentProject& project = session.project;
    if (project.database.isEmpty() || project.sinceDatesRead.elapsed() < 60'000) return;
    project.sinceDatesRead.restart();
    try {
        readBillDates(session.db(), project);
    } catch (const DbError& error) {
        session.log.write("modProjects.RefreshBillDates", error);
    }
}

bool CheckForCurrentUnitabAccountField(Session& session, bool inOneStatement) {
    Connection& db = session.db();
    const Name project(session.project.database);
    if (db.scalar(sql("SELECT Count(*) FROM {}.dbo.tbl50 Where CurrentUnitabAccount = '' or "
                      "CurrentUnitabAccount is null ",
                      project))
            .toInt()
        == 0)
        return false;
    if (inOneStatement) {
        const QString account = db.scalar(sql("select Top 1 * from {}.dbo.Tbl50 order by BillID", project));
        db.execute(sql("Update {}.dbo.Tbl50 Set UnitabAccount = {}, CurrentUnitabAccount = UnitabAccount ",
                       project, account));
        return true;
    }
    const RecordSet bills = db.query(sql("select * from {}.dbo.Tbl50 ", project));
    const QString account = bills.cell(0, 0).toString();
    Transaction transaction(db);
    for (const Row bill : bills)
        db.execute(
            sql("Update {}.dbo.Tbl50 Set UnitabAccount = {}, CurrentUnitabAccount = {} Where RecID = {}",
                project, account, bill.text("UnitabAccount"), bill.integer("RecID")));
    transaction.commit();
    return true;
}

bool masterCostCentresExist(Session& session) {
    Connection& db = session.db();
    const Name project(session.project.database);
    DefaultDatabase inProject(db, session.project.database);
    db.query(sql("SELECT LocID,Flags From {}.dbo.Tbl50 order by RecID",
                 project)); // a project that cannot answer this is broken
    const QString account = db.scalar(sql("SELECT UnitabAccount From {}.dbo.Tbl50", project));
    const QString table = "[dbo]." + Name(account + "_TblCC").quoted();
    return db.scalar(sql("if exists (select * from dbo.sysobjects where id = object_id({}) and "
                         "OBJECTPROPERTY(id, N'IsUserTable') = 1) Select 'Yes' Else Select 'No'",
                         table))
           == "Yes";
}

QString takeProject(Session& session, const QString& database) {
    auto restoreFormer = qScopeGuard([&, former = session.project] { session.project = former; });
    openProject(session, database);
    if (CheckForCurrentUnitabAccountField(session, true))
        openProject(session, database); // another account now
    if (!masterCostCentresExist(session))
        return "No master Cost Centre entries can be found for this project.";
    restoreFormer.dismiss();
    return {};
}

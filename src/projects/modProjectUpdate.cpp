#include "projects/modProjectUpdate.h"

#include "base/Session.h"

#include <QFile>

namespace {

/// The band of one call: weekend, cheap before 0700 and after 1900, day.
Sql bandOf(const Sql& date) {
    return sql(" case when DatePart(dw,{}) = 1 or DatePart(dw,{}) = 7 then 'W' "
               " Else"
               "     case when cast(calltime as int) > 1900 or cast(calltime as int) < 700 Then 'C' "
               "     Else    'D'"
               "     End"
               " End",
               date, date);
}

/// Of the default database. Projects of some kinds lack whole tables.
bool tableExists(Connection& db, const QString& table) {
    return !db.scalar(sql("SELECT OBJECT_ID({})", "[dbo]." + Name(table).quoted())).isNull();
}

void addColumn(Connection& db, const QString& project, const QString& table, const QString& column) {
    const bool there = db.scalar(sql("if exists (select * from syscolumns where id = object_id({}) and "
                                     "lower([name]) = {}) select 1 else select 0",
                                     "[dbo]." + Name(table).quoted(), column.toLower()))
                           .toInt()
                       == 1;
    if (!there)
        db.execute(sql("ALTER TABLE {}.dbo.{} ADD {} [varchar] (2) COLLATE Latin1_General_CI_AS NULL",
                       Name(project), Name(table), Name(column)));
}

/// Calls that are not updated yet. One that the rule does not reach and that has no band keeps none, so it
/// never counts: it would bring the question back at every save.
int callsToUpdate(Connection& db, const Name& project, const Sql& hint) {
    return db
        .scalar(sql(
            "Select count(*) from {}.DBO.tblCallrecords {}Where (TimeBandCopy = '' or TimeBandCopy is null) "
            "and not (([Date] < '2008/04/01' or [Date] is null) and (TimeBand = '' or TimeBand is null))",
            project, hint))
        .toInt();
}

} // namespace

void addTimeBandColumns(Session& session) {
    const QString& project = session.project.database;
    DefaultDatabase inProject(session.db(), project); // syscolumns and object_id look there
    for (const char* table : {"TblCallRecords", "TblMobCalls"}) {
        if (!tableExists(session.db(), table)) continue;
        for (const char* column : {"TimebandCopy", "Timeband0719", "Timeband0818"})
            addColumn(session.db(), project, table, column);
    }
}

bool updateTimeBands(Session& session, bool askFirst, const std::function<bool(const QString& question)>& ask,
                     const std::function<void(int step, int steps)>& tell) {
    Connection& db = session.db();
    const Name project(session.project.database);
    DefaultDatabase inProject(db, session.project.database); // tblMiscBill is named without its database
    if (!tableExists(db, "TblCallRecords")) return true;
    if (callsToUpdate(db, project, sql("")) == 0) return true;
    if (askFirst && !QFile::exists(session.paths.appFile("MorvaneZelvan.exe"))
        && !ask(
            "An important one-off update needs to be applied to this project, this may take a few minutes. "
            "Would you like to update now?"))
        return false;

    const Sql callBand = bandOf(sql("Date"));
    QList<Sql> steps{
        // Calls that an earlier update has reached keep the band that was kept then.
        sql("Update {}.DBO.tblcallrecords set TimeBand0818 = TimeBand Where TimeBandCopy = '' or "
            "TimeBandCopy is null",
            project),
        sql("Update {}.DBO.tblcallrecords set TimeBand = {} Where  [Date] >= '2008/04/01' ", project,
            callBand),
        sql("Update {}.DBO.tblcallrecords set TimeBandCopy = TimeBand", project),
        sql("Update {}.DBO.tblcallrecords set TimeBand0719 = {}", project, callBand),
    };
    if (tableExists(db, "tblMiscBill"))
        steps << sql("UPDATE tblMiscBill set TimeBand = {} WHERE  [DateStart] >= '2008/04/01' AND TimeBand "
                     "IS NOT NULL ",
                     bandOf(sql("DateStart")));
    // One transaction: were the first statement repeated after a run that broke off, or after another
    // user's run while the question was open, the new bands would be kept as the old ones.
    Transaction transaction(db);
    if (callsToUpdate(db, project, sql("WITH (UPDLOCK, HOLDLOCK) ")) == 0) return true;
    for (qsizetype i = 0; i < steps.size(); ++i) {
        tell(int(i) + 1, int(steps.size()));
        db.execute(steps[i]);
    }
    transaction.commit();
    return true;
}

#include "projects/modProjectUpdate.h"

#include "base/Session.h"
#include "db/DbError.h"

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

Sql objectId(const QString& table) {
    return sql("SELECT OBJECT_ID({})", "[dbo]." + Name(table).quoted());
}

/// Of the default database. Projects of some kinds lack whole tables.
bool tableExists(Connection& db, const QString& table) {
    return !db.scalar(objectId(table)).isNull();
}

Sql findColumn(const QString& table, const QString& column) {
    return sql("if exists (select * from syscolumns where id = object_id({}) and "
               "lower([name]) = {}) select 1 else select 0",
               "[dbo]." + Name(table).quoted(), column.toLower());
}

/// Calls that are not updated yet; none in a project without a table of them. One that the rule does not
/// reach and that has no band keeps none, so it never counts: it would bring the question back at every save.
int callsToUpdate(Connection& db, const Name& project, const Sql& hint) try {
    return db
        .scalar(sql(
            "Select count(*) from {}.DBO.tblCallrecords {}Where (TimeBandCopy = '' or TimeBandCopy is null) "
            "and not (([Date] < '2008/04/01' or [Date] is null) and (TimeBand = '' or TimeBand is null))",
            project, hint))
        .toInt();
} catch (const DbError& error) {
    if (error.number() != DbError::InvalidObject) throw;
    return 0;
}

} // namespace

void addTimeBandColumns(Session& session) {
    const QString& project = session.project.database;
    const QStringList tables{"TblCallRecords", "TblMobCalls"};
    const QStringList columns{"TimebandCopy", "Timeband0719", "Timeband0818"};
    QList<Sql> readings;
    for (const QString& table : tables) {
        readings << objectId(table);
        for (const QString& column : columns) readings << findColumn(table, column);
    }
    // Both catalogue functions look into the default database.
    const std::vector<RecordSet> answers = session.db().queryAll(readings, project);
    auto answer = answers.begin();
    for (const QString& table : tables) {
        const bool tableIsThere = !(answer++)->row(0).isNull(0);
        for (const QString& column : columns) {
            const bool columnIsThere = (answer++)->row(0).flag(0);
            if (tableIsThere && !columnIsThere)
                session.db().execute(
                    sql("ALTER TABLE {}.dbo.{} ADD {} [varchar] (2) COLLATE Latin1_General_CI_AS NULL",
                        Name(project), Name(table), Name(column)));
        }
    }
}

bool updateTimeBands(Session& session, bool askFirst, const std::function<bool(const QString& question)>& ask,
                     const std::function<void(int step, int steps)>& tell) {
    Connection& db = session.db();
    const Name project(session.project.database);
    if (callsToUpdate(db, project, sql("")) == 0) return true;
    if (askFirst && !QFile::exists(session.paths.appFile("MorvaneZelvan.exe"))
        && !ask(
            "An important one-off update needs to be applied to this project, this may take a few minutes. "
            "Would you like to update now?"))
        return false;

    DefaultDatabase inProject(db, session.project.database); // tblMiscBill is named without its database
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

#include "Screens.h"

#include "projects/modProjects.h"

TemplateProgram::TemplateProgram(const QString& user, const QString& project) {
    logIn(user);
    db().execute(sql("DELETE FROM NorvaScheduler.dbo.tblSchedule"));
    if (!project.isEmpty()) openProject(session, project);
}

int TemplateProgram::idOf(const QString& title) {
    return scalar(sql("SELECT TemplateID FROM NorvaScheduler.dbo.tblTemplate WHERE Title = {}", title));
}

int TemplateProgram::addTemplate(const QString& title, const QString& account, int billType) {
    db().execute(sql("INSERT INTO NorvaScheduler.dbo.tblTemplate (Title, UnitabAccount, BillType, "
                     "TemplateType) VALUES ({}, {}, {}, 0)",
                     title, account, billType));
    return idOf(title);
}

void TemplateProgram::addReport(int templateId, int type, int subType, bool excel) {
    db().execute(sql("INSERT INTO NorvaScheduler.dbo.tblTemplate_Report (TemplateID, ReportType, "
                     "ReportSubType, OutputExcel, EmailFiles, AccountFilter, CC1) VALUES ({}, {}, {}, {}, 1, "
                     "3, N'Sales')",
                     templateId, type, subType, excel));
}

void TemplateProgram::addSchedule(int templateId, int status, const QString& ranDate, const QString& user) {
    db().execute(sql("INSERT INTO NorvaScheduler.dbo.tblSchedule (ScheduleTitle, TemplateID, ProjectRef, "
                     "RunDate, Status, RanDate, Username) VALUES (N's', {}, N'Brightwater', '', {}, {}, {})",
                     templateId, status, ranDate, user));
    db().execute(sql("INSERT INTO NorvaScheduler.dbo.tblLogs (ScheduleID, ReportID, ErrorCode) SELECT "
                     "MAX(ScheduleID), 0, 0 FROM NorvaScheduler.dbo.tblSchedule"));
}

QStringList TemplateProgram::reports(int templateId) {
    QStringList reports;
    const RecordSet rows =
        db().query(sql("SELECT ReportType, ReportSubType, OutputExcel, OutputCSV, ServiceNo, CC1 FROM "
                       "NorvaScheduler.dbo.tblTemplate_Report WHERE TemplateID = {} ORDER BY ReportID",
                       templateId));
    for (const Row row : rows)
        reports << QString("%1/%2/%3%4/%5%6")
                       .arg(row.text(0), row.text(1), row.flag(2) ? "E" : "", row.flag(3) ? "C" : "",
                            row.text(4), row.text(5));
    return reports;
}

QStringList TemplateProgram::everything() {
    QStringList cells;
    for (const Sql& table : {sql("SELECT * FROM NorvaScheduler.dbo.tblTemplate ORDER BY TemplateID"),
                             sql("SELECT * FROM NorvaScheduler.dbo.tblTemplate_Report ORDER BY ReportID"),
                             sql("SELECT * FROM NorvaScheduler.dbo.tblSchedule ORDER BY ScheduleID"),
                             sql("SELECT * FROM NorvaScheduler.dbo.tblLogs")}) {
        const RecordSet rows = db().query(table);
        for (const Row row : rows)
            for (int i = 0; i < rows.columns().size(); ++i) cells << row.text(i);
    }
    return cells;
}

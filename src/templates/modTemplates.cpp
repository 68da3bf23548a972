#include "templates/modTemplates.h"

ScheduleCounts countSchedules(Connection& connection, int templateId) {
    const int all = connection
                        .scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.[tblSchedule] WHERE "
                                    "[TemplateID] = {}",
                                    templateId))
                        .toInt();
    const int active = connection
                           .scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.[tblSchedule] WHERE "
                                       "[TemplateID] = {} AND [Status] = 0",
                                       templateId))
                           .toInt();
    return {all, active};
}

QString deleteQuestion(const ScheduleCounts& schedules) {
    QString question;
    if (schedules.active == 1)
        question = "There is currently 1 active schedule using this template,\n";
    else if (schedules.active > 1)
        question =
            QString("There are currently %1 active schedules using this template,\n").arg(schedules.active);
    question += "Are you sure you want to delete this template";
    if (schedules.all > 0) question += " and all associated schedules";
    return question + "?";
}

void lockTemplates(Connection& connection) {
    connection.query(
        sql("SELECT TOP 1 [TemplateID] FROM NorvaScheduler.dbo.[tblTemplate] WITH (TABLOCKX, HOLDLOCK)"));
}

void lockSchedules(Connection& connection) {
    connection.query(
        sql("SELECT TOP 1 [ScheduleID] FROM NorvaScheduler.dbo.[tblSchedule] WITH (TABLOCKX, HOLDLOCK)"));
}

bool deleteTemplate(Connection& connection, int templateId, const ScheduleCounts& agreed) {
    Transaction transaction(connection);
    lockTemplates(connection);
    lockSchedules(connection); // none may come or go between the counting and the deletion
    if (countSchedules(connection, templateId) != agreed) return false;
    if (agreed.all > 0) {
        connection.execute(sql("DELETE FROM NorvaScheduler.dbo.[tblLogs] WHERE [ScheduleID] IN (SELECT "
                               "[ScheduleID] FROM NorvaScheduler.dbo.[tblSchedule] WHERE [TemplateID] = {})",
                               templateId));
        connection.execute(
            sql("DELETE FROM NorvaScheduler.dbo.[tblSchedule] WHERE [TemplateID] = {}", templateId));
    }
    connection.execute(
        sql("DELETE FROM NorvaScheduler.dbo.[tblTemplate_Report] WHERE [TemplateID] = {}", templateId));
    connection.execute(
        sql("DELETE FROM NorvaScheduler.dbo.[tblTemplate] WHERE [TemplateID] = {}", templateId));
    transaction.commit();
    return true;
}

std::optional<int> readTemplateType(Connection& connection, int templateId) {
    const RecordSet rows = connection.query(sql(
        "SELECT TemplateType FROM NorvaScheduler.dbo.[tblTemplate] WHERE ([TemplateID] = {})", templateId));
    return rows.isEmpty() ? std::nullopt : std::optional(rows.row(0).integer(0));
}

QString activeSchedulesQuestion(Connection& connection, int templateId) {
    const int count = connection
                          .scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.[tblSchedule] WHERE "
                                      "([Status] = 0) AND ([TemplateID] = {})",
                                      templateId))
                          .toInt();
    if (count == 0) return {};
    const QString schedules =
        count == 1 ? "There is 1 active schedule" : QString("There are %1 active schedules").arg(count);
    return schedules + " using this template, are you sure you want to save your changes?";
}

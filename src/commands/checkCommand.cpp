#include "commands/checkCommand.h"

#include "app/openServer.h"
#include "base/Session.h"
#include "base/Version.h"
#include "base/modOptions.h"
#include "commands/TerminalText.h"
#include "schedules/ScheduleList.h"
#include "templates/TemplateReportRow.h"

#include <QJsonObject>
#include <QVariant>
#include <tuple>

namespace {

QString serverProperty(Session& session, const QString& name) {
    return session.db().scalar(sql("SELECT CONVERT(nvarchar(1000), SERVERPROPERTY({}))", name));
}

/// The tables that the lists leave out. Throws DbError of what is lacking, by its name.
void readOneOfEach(Session& session) {
    session.db().queryAll(
        {sql("SELECT TOP 1 [LogID], [ScheduleID], [ReportID], [ErrorCode], [ErrorDescription], [ReportName] "
             "FROM NorvaScheduler.dbo.[tblLogs] WITH (NOLOCK)"),
         sql("SELECT TOP 1 [OutputPath], [Excel], [CSV], [DefaultEmail], [MaxFileSize] "
             "FROM NorvaScheduler.dbo.[tblOptions] WITH (NOLOCK)"),
         sql("SELECT TOP 1 [BillAccount], [CostCentre], [EmailAddress], [CCLevel] "
             "FROM NorvaScheduler.dbo.[tblMailAddresses] WITH (NOLOCK)"),
         sql("SELECT TOP 1 [TemplateID], [CCName] FROM NorvaScheduler.dbo.[tblCCSubProject_CCs] WITH "
             "(NOLOCK)"),
         sql("SELECT TOP 1 [TemplateID], [TelNo], [Include] "
             "FROM NorvaScheduler.dbo.[TblExcludedNumbers] WITH (NOLOCK)")});
}

QString rightsOf(const Session& session) {
    QString rights = session.isAdministrator() ? "everybody's schedules" : "own schedules";
    if (mayChangeOptions(session)) rights += ", options";
    QStringList centres = session.costCentres;
    centres.removeAll(QString());
    return centres.isEmpty() ? rights : rights + "; cost centres " + centres.join(", ");
}

} // namespace

ExitCode checkServer(CommandContext& context) {
    Session& session = context.session;
    const ScheduleReading schedules =
        readSchedules(session.db(), {session.userName, session.isAdministrator()});
    templateReportRow::read(session.db(), -1); // names every column
    readOneOfEach(session);
    const QString protection = missingProtection(session.serverName);
    const std::tuple<QString, QString, QVariant> answers[]{
        {"server", "Server", session.serverName},
        {"serverVersion", "Server version",
         serverProperty(session, "ProductVersion") + ' ' + serverProperty(session, "Edition")},
        {"protection", "Protection", protection.isEmpty() ? QString("as the settings ask") : protection},
        {"login", "Login",
         QString("%1, with the roles dbcreator and bulkadmin").arg(Session::serverLoginName)},
        {"user", "User", QString("%1, level %2").arg(session.userName).arg(int(session.userLevel))},
        {"rights", "Rights", rightsOf(session)},
        {"database", "Database", QString("NorvaScheduler, as Scheduler %1 needs it").arg(programVersion)},
        {"schedules", "Schedules", schedules.schedules.rowCount()},
        {"templates", "Templates", schedules.templates.size()}};
    if (context.isSet("json")) {
        QJsonObject json;
        for (const auto& [key, caption, answer] : answers) json[key] = QJsonValue::fromVariant(answer);
        context.console.write(jsonText(QJsonDocument(json)));
    } else {
        QList<QStringList> lines;
        for (const auto& [key, caption, answer] : answers) lines << QStringList{caption, answer.toString()};
        context.console.write(tableText({}, lines));
    }
    return ExitCode::Done;
}

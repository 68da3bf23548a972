#include "soak/Work.h"

namespace soak {

namespace {

int numberIn(const QString& title) {
    return title.section(' ', 1).section('/', 0, 0).toInt();
}

int versionIn(const QString& title) {
    return title.section('/', 1).toInt();
}

QString likeTitlesOf(const QString& saver) {
    return saver + " %/%";
}

void requireWholeReports(Connection& connection, int number, const StoredWork& work, const Tell& tell) {
    const RecordSet reports = connection.query(
        sql("SELECT [ReportCaption] FROM NorvaScheduler.dbo.[tblTemplate_Report] WHERE [TemplateID] = {}",
            work.templateId));
    bool isWhole = reports.rowCount() == reportCount(work.templateVersion);
    for (const Row report : reports) isWhole = isWhole && report.integer(0) == work.templateVersion;
    if (!isWhole)
        tell(Fault::Half,
             QString("the reports of template %1, version %2").arg(number).arg(work.templateVersion));
}

} // namespace

QString titleOf(const QString& saver, int number, int version) {
    return QString("%1 %2/%3").arg(saver).arg(number).arg(version);
}

int reportCount(int version) {
    return 1 + version % 4;
}

WallClock runDate(int number, int version) {
    return WallClock(QDate(number % 2 == 0 ? 2100 : 2001, 1, 1), QTime(0, 0)).addSecs(version * qint64(60));
}

QMap<int, StoredWork> readWorks(Connection& connection, const QString& saver, const Tell& tell) {
    QMap<int, StoredWork> works;
    for (const Row row : connection.query(
             sql("SELECT [TemplateID], [Title] FROM NorvaScheduler.dbo.[tblTemplate] WHERE [Title] LIKE {}",
                 likeTitlesOf(saver)))) {
        StoredWork& work = works[numberIn(row.text(1))];
        if (work.templateVersion != 0) tell(Fault::Doubled, "template " + row.text(1));
        work.templateVersion = versionIn(row.text(1));
        work.templateId = row.integer(0);
        requireWholeReports(connection, numberIn(row.text(1)), work, tell);
    }
    for (const Row row :
         connection.query(sql("SELECT [ScheduleID], [ScheduleTitle], [TemplateID], [RunDate] FROM "
                              "NorvaScheduler.dbo.[tblSchedule] WHERE [ScheduleTitle] LIKE {}",
                              likeTitlesOf(saver)))) {
        const int number = numberIn(row.text(1));
        StoredWork& work = works[number];
        if (work.scheduleVersion != 0) tell(Fault::Doubled, "schedule " + row.text(1));
        work.scheduleVersion = versionIn(row.text(1));
        work.scheduleId = row.integer(0);
        if (row.integer(2) != work.templateId
            || row.text(3) != runDate(number, work.scheduleVersion).stored())
            tell(Fault::Half, "schedule " + row.text(1));
    }
    return works;
}

} // namespace soak

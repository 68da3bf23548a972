#include "schedules/ScheduleRow.h"

#include "base/WallClock.h"
#include "db/ServerText.h"
#include "db/StoredTitle.h"

ScheduleRow ScheduleRow::read(const Row& row) {
    return {row.text("ScheduleTitle"),
            row.integer("TemplateID"),
            row.text("ProjectRef"),
            row.text("RunDate"),
            scheduleStatus(row.integer("Status")),
            row.text("Username")};
}

Sql ScheduleRow::insertion() const {
    return sql("INSERT INTO NorvaScheduler.dbo.[tblSchedule] ([ScheduleTitle], [TemplateID], [ProjectRef], "
               "[RunDate], [Status], [RanDate], [Username]) VALUES ({}, {}, {}, {}, {}, {}, {})",
               title, templateId, project, runDate, ScheduleStatus::Pending, WallClock().stored(), userName);
}

QStringList ScheduleRow::changesSince(const ScheduleRow& earlier) const {
    QStringList changes;
    if (title != earlier.title) changes << QString("the title is now '%1'").arg(shownTitle(title));
    if (project != earlier.project) changes << QString("the project is now '%1'").arg(project);
    if (templateId != earlier.templateId) changes << "it has another template";
    if (!sameOnServer(userName, earlier.userName)) changes << QString("it belongs to '%1' now").arg(userName);
    if (runDate != earlier.runDate) changes << "the run date is now " + shownStoredDate(runDate);
    return changes;
}

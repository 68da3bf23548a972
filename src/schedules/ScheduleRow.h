#pragma once

#include "db/RecordSet.h"
#include "db/Sql.h"
#include "schedules/ScheduleStatus.h"

/// What a user decides about a schedule, in the form in which tblSchedule holds it, and how far it is.
struct ScheduleRow {
    QString title;
    int templateId = -1;
    QString project;
    QString runDate;
    ScheduleStatus status = ScheduleStatus::Pending;
    QString userName; ///< who saved it last

    static ScheduleRow read(const Row& row);

    /// Whether the user's decisions are the same; status and user are not among them.
    bool decidesAs(const ScheduleRow& other) const {
        return title == other.title && templateId == other.templateId && project == other.project
               && runDate == other.runDate;
    }
    /// Writes it as a new schedule that waits for its run.
    Sql insertion() const;
    /// In words, what this row decides otherwise than an earlier one: "the title is now 'March'".
    QStringList changesSince(const ScheduleRow& earlier) const;
};

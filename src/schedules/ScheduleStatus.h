#pragma once

#include <QString>

/// The codes of tblSchedule.Status.
enum class ScheduleStatus {
    Pending = 0,
    Disabled = 1,            ///< not to be run
    Processing = 2,          ///< the engine is running it
    CompletedWithErrors = 3, ///< also what a user's reset leaves
    Completed = 4,
    NoSuchSchedule = 5, ///< never stored: the answer for a row that is gone
};

/// Any stored value without a meaning of its own counts as pending.
inline ScheduleStatus scheduleStatus(int stored) {
    const bool known = stored > 0 && stored < int(ScheduleStatus::NoSuchSchedule);
    return known ? ScheduleStatus(stored) : ScheduleStatus::Pending;
}

inline bool isFinished(ScheduleStatus status) {
    return status == ScheduleStatus::CompletedWithErrors || status == ScheduleStatus::Completed;
}

/// The status as the lists show it.
inline QString statusText(ScheduleStatus status) {
    using enum ScheduleStatus;
    switch (status) {
    case Disabled:
        return "Disabled";
    case Processing:
        return "Processing";
    case CompletedWithErrors:
        return "Completed with Errors";
    case Completed:
        return "Completed";
    default:
        return "Pending";
    }
}

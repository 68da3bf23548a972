#pragma once

#include <QString>

/// The codes of tblSchedule.Status. Any other stored value counts as pending.
enum ScheduleStatus {
    Pending = 0,
    Disabled = 1,            ///< not to be run; set outside this program
    Processing = 2,          ///< the engine is running it
    CompletedWithErrors = 3, ///< also what a user's reset leaves
    Completed = 4,
    NoSuchSchedule = 5, ///< never stored: the answer for a row that is gone
};

inline bool isFinished(int status) {
    return status == CompletedWithErrors || status == Completed;
}

/// The status as the lists show it.
inline QString statusText(int status) {
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

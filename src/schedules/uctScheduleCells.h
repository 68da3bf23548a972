#pragma once

#include "schedules/ScheduleList.h"
#include "ui/ListModel.h"

/// How the main screen's two lists show a schedule: their columns and cells.
namespace scheduleCells {

enum Column { Title, Status, Date };

/// With the owner for whoever sees the schedules of others.
std::vector<ListColumn> pendingColumns(bool withOwner);
std::vector<ListColumn> finishedColumns(bool withOwner);

ListRow row(const ScheduleListRow& schedule, const WallClock& now,
            const std::optional<WallClock>& runningSince);
/// A pending one's says how long it is overdue, a running one's since when it runs, where that is known.
ListCell status(const ScheduleListRow& schedule, const WallClock& now,
                const std::optional<WallClock>& runningSince);
bool isDelayed(const ScheduleListRow& schedule, const WallClock& now);

} // namespace scheduleCells

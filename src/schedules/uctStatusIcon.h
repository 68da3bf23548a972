#pragma once

#include "schedules/ScheduleStatus.h"

#include <QColor>
#include <QIcon>

/// The mark of a status, told apart by its shape as well as by its colour.
QIcon statusIcon(ScheduleStatus status, bool delayed);
/// The colour of that mark, which is seen on light and on dark.
QColor statusColour(ScheduleStatus status, bool delayed);

#pragma once

#include "schedules/ScheduleStatus.h"

#include <QIcon>

/// The mark of a status, told apart by its shape as well as by its colour.
QIcon statusIcon(ScheduleStatus status, bool delayed);

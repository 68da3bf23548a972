#pragma once

#include "base/WallClock.h"

#include <QList>
#include <QString>

struct Session;

/// How the schedules of the user (of everybody, for the administrator) use one template.
struct TemplateUsage {
    int templateId = 0;
    int activeCount = 0;
    QString lastUsed; ///< "05 Apr 2008 14:30"; "-" for a template never used
    std::optional<WallClock> lastRun;
};

/// Every template in the server's order, in two statements however many there are. Throws DbError.
QList<TemplateUsage> loadTemplateUsage(Session& session);

#pragma once

#include "schedules/ScheduleRow.h"

#include <QList>
#include <QMap>
#include <QTime>
#include <optional>

struct Session;

/// What is to become of several schedules alike; what is not given stays as it is.
struct BulkChange {
    std::optional<QTime> time;
    qint64 moveBy = 0; ///< seconds, after the time was set
    std::optional<QString> project;
    std::optional<int> templateId;
    std::optional<QString> owner; ///< the administrator's to change
    std::optional<bool> enabled;

    /// Whether anything is decided that only a schedule which has not run yet can take.
    bool concernsTheRun() const {
        return time || moveBy != 0 || project || templateId || enabled.has_value();
    }
    bool isEmpty() const { return !concernsTheRun() && !owner; }
};

/// Stored schedules by their identifiers; those that are gone are left out.
QMap<int, ScheduleRow> readScheduleRows(Session& session, const QList<int>& ids);

struct BulkOutcome {
    int changed = 0;       ///< not among them those that were so already
    QStringList leftAlone; ///< "March: somebody else has deleted it."
};

/// Changes all schedules that are still as their user saw them, in one transaction: after a failure none is
/// changed. Left alone, and told, are those that others or the engine have changed, and those that the editor
/// would refuse. Throws a Refusal of what is wrong for all of them, DbError.
BulkOutcome changeSchedules(Session& session, const QMap<int, ScheduleRow>& seen, const BulkChange& change);

/// A user of the product to whom schedules can be given.
struct ProductUser {
    QString name;
    bool mayRunSubProjects = true;
};
/// Those who can log in, in the order of their names; the administrator is one of them.
QList<ProductUser> readProductUsers(Session& session);

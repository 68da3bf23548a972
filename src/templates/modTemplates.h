#pragma once

#include "db/Connection.h"

#include <optional>

/// How many schedules of all users name a template.
struct ScheduleCounts {
    int all = 0;
    int active = 0; ///< of these, pending ones
    bool operator==(const ScheduleCounts&) const = default;
};

ScheduleCounts countSchedules(Connection& connection, int templateId);
/// What is asked before a template with so many schedules is deleted.
QString deleteQuestion(const ScheduleCounts& schedules);
/// Whoever saves or deletes a template at the same moment waits until this transaction is through.
void lockTemplates(Connection& connection);

/// The same for schedules, whoever changes them.
void lockSchedules(Connection& connection);

/// Deletes a template with its reports and, when it has schedules, these and their logs: all or nothing.
/// False, and nothing is deleted, when its schedules are others than the user was asked about.
bool deleteTemplate(Connection& connection, int templateId, const ScheduleCounts& agreed);

/// 0 ordinary, any other a cost-centre sub-project; nothing for a template that is gone.
std::optional<int> readTemplateType(Connection& connection, int templateId);

/// What is asked before the changes of a template are saved; empty while no pending schedule uses it.
QString activeSchedulesQuestion(Connection& connection, int templateId);

#pragma once

#include "db/Connection.h"
#include "templates/TemplateHeader.h"

#include <QHash>

/// What lists show of a template: the same as loading it would yield.
struct TemplateSummary {
    TemplateHeader header;
    int reportCount = 0;
    bool operator==(const TemplateSummary&) const = default;
};

/// What is read of all templates: their headers, and how many reports each has.
QList<Sql> templateSummaryReadings();
/// All templates by their keys, from the answers to these two.
QHash<int, TemplateSummary> templateSummaries(const RecordSet& headers, const RecordSet& counts);
QHash<int, TemplateSummary> loadTemplateSummaries(Connection& connection);

#pragma once

#include "db/Connection.h"
#include "templates/TemplateHeader.h"

#include <QHash>
#include <span>

/// What lists show of a template: the same as loading it would yield.
struct TemplateSummary {
    TemplateHeader header;
    int reportCount = 0;
    int tickedCentres = 0; ///< as stored, whether or not files are made for these only
    bool operator==(const TemplateSummary&) const = default;
};

/// What is read of all templates: their headers, how many reports each has, and how many ticked cost centres.
QList<Sql> templateSummaryReadings();
/// All templates by their keys, from the answers to these three.
QHash<int, TemplateSummary> templateSummaries(std::span<const RecordSet> answers);
QHash<int, TemplateSummary> loadTemplateSummaries(Connection& connection);

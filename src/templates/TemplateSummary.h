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

/// All templates by their keys, in two statements however many there are.
QHash<int, TemplateSummary> loadTemplateSummaries(Connection& connection);

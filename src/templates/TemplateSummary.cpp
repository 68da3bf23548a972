#include "templates/TemplateSummary.h"

namespace {

void takeCounts(QHash<int, TemplateSummary>& summaries, const RecordSet& counts,
                int TemplateSummary::*count) {
    for (const Row row : counts)
        if (const auto found = summaries.find(row.integer(0)); found != summaries.end())
            *found.*count = row.integer(1);
}

} // namespace

QList<Sql> templateSummaryReadings() {
    return {sql("SELECT * FROM NorvaScheduler.dbo.[tblTemplate] WITH (NOLOCK)"),
            sql("SELECT [TemplateID], COUNT(*) AS [ReportCount] "
                "FROM NorvaScheduler.dbo.[tblTemplate_Report] WITH (NOLOCK) GROUP BY [TemplateID]"),
            sql("SELECT [TemplateID], COUNT(*) AS [CentreCount] "
                "FROM NorvaScheduler.dbo.[tblCCSubProject_CCs] WITH (NOLOCK) GROUP BY [TemplateID]")};
}

QHash<int, TemplateSummary> templateSummaries(std::span<const RecordSet> answers) {
    QHash<int, TemplateSummary> summaries;
    summaries.reserve(answers[0].rowCount());
    for (const Row row : answers[0]) {
        const TemplateHeader header = TemplateHeader::read(row);
        summaries.insert(header.id, {header, 0, 0});
    }
    takeCounts(summaries, answers[1], &TemplateSummary::reportCount);
    takeCounts(summaries, answers[2], &TemplateSummary::tickedCentres);
    return summaries;
}

QHash<int, TemplateSummary> loadTemplateSummaries(Connection& connection) {
    return templateSummaries(connection.queryAll(templateSummaryReadings()));
}

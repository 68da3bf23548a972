#include "templates/TemplateSummary.h"

QList<Sql> templateSummaryReadings() {
    return {sql("SELECT * FROM NorvaScheduler.dbo.[tblTemplate] WITH (NOLOCK)"),
            sql("SELECT [TemplateID], COUNT(*) AS [ReportCount] "
                "FROM NorvaScheduler.dbo.[tblTemplate_Report] WITH (NOLOCK) GROUP BY [TemplateID]")};
}

QHash<int, TemplateSummary> templateSummaries(const RecordSet& headers, const RecordSet& counts) {
    QHash<int, TemplateSummary> summaries;
    summaries.reserve(headers.rowCount());
    for (const Row row : headers) {
        const TemplateHeader header = TemplateHeader::read(row);
        summaries.insert(header.id, {header, 0});
    }
    for (const Row row : counts)
        if (const auto found = summaries.find(row.integer(0)); found != summaries.end())
            found->reportCount = row.integer(1);
    return summaries;
}

QHash<int, TemplateSummary> loadTemplateSummaries(Connection& connection) {
    const std::vector<RecordSet> answers = connection.queryAll(templateSummaryReadings());
    return templateSummaries(answers[0], answers[1]);
}

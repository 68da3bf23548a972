#include "templates/TemplateSummary.h"

QHash<int, TemplateSummary> loadTemplateSummaries(Connection& connection) {
    QHash<int, TemplateSummary> summaries;
    const RecordSet headers =
        connection.query(sql("SELECT * FROM NorvaScheduler.dbo.[tblTemplate] WITH (NOLOCK)"));
    summaries.reserve(headers.rowCount());
    for (const Row row : headers) {
        const TemplateHeader header = TemplateHeader::read(row);
        summaries.insert(header.id, {header, 0});
    }
    const RecordSet counts = connection.query(
        sql("SELECT [TemplateID], COUNT(*) AS [ReportCount] "
            "FROM NorvaScheduler.dbo.[tblTemplate_Report] WITH (NOLOCK) GROUP BY [TemplateID]"));
    for (const Row row : counts)
        if (const auto found = summaries.find(row.integer(0)); found != summaries.end())
            found->reportCount = row.integer(1);
    return summaries;
}

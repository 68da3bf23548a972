#include "templates/TemplateReportRow.h"

#include "reports/ReportColumns.h"

#include <QRegularExpression>
#include <algorithm>
#include <numeric>

namespace templateReportRow {

namespace {

/// Invalid for NULL and for what is no value of the kind: the report then keeps what a new one has.
QVariant storedValue(const Row& row, int place, ReportColumn::Kind kind) {
    if (row.isNull(place)) return {};
    switch (kind) {
    case ReportColumn::Flag:
        return row.flag(place);
    case ReportColumn::Number:
        return row.integer(place);
    case ReportColumn::Date: {
        const QDate date = QDate::fromString(row.text(place).left(10), Qt::ISODate);
        return date.isValid() ? QVariant(date) : QVariant();
    }
    case ReportColumn::Time: {
        const QTime time = clockTime(row.text(place));
        return time.isValid() ? QVariant(time) : QVariant();
    }
    case ReportColumn::Text:
        break;
    }
    return row.text(place);
}

Sql literal(const QVariant& value, ReportColumn::Kind kind) {
    if (!value.isValid()) return Sql::null();
    switch (kind) {
    case ReportColumn::Flag:
        return Sql::value(value.toBool());
    case ReportColumn::Number:
        return Sql::value(value.toInt());
    case ReportColumn::Date:
        return Sql::value(value.toDate());
    case ReportColumn::Time:
        return Sql::value(value.toTime().toString("HH:mm:ss"));
    case ReportColumn::Text:
        break;
    }
    return Sql::value(value.toString());
}

/// A server returns rows in any order it likes; their keys grow in the order of saving.
RecordSet inOrderOfSaving(const RecordSet& rows) {
    const int key = rows.column("ReportID");
    std::vector<qsizetype> order(std::size_t(rows.rowCount()));
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [&](qsizetype row) { return rows.row(row).integer(key); });
    return rows.arranged(order);
}

clsReport readReport(const Row& row, const CurrentProject& project) {
    clsReport report(project);
    for (int band = 1; band <= distanceBands::Count; ++band) // those that a row does not name are not chosen
        report.Parameters()->setDistanceBandSelected(band, false);
    int place = 0;
    forEachReportColumn([&](const ReportColumn& column, int number) {
        const QVariant value = storedValue(row, place++, column.kind);
        if (value.isValid()) column.set(report, number, value);
    });
    return report;
}

} // namespace

QTime clockTime(const QString& text) {
    static const QRegularExpression clock("(\\d{1,2}):(\\d{2})(?::(\\d{2}))?(?:\\.\\d*)?\\s*([AaPp][Mm])?");
    const auto match = clock.match(text);
    if (!match.hasMatch()) return {};
    int hour = match.captured(1).toInt();
    if (match.hasCaptured(4))
        hour = hour % 12 + (match.captured(4).startsWith(u'p', Qt::CaseInsensitive) ? 12 : 0);
    return {hour, match.captured(2).toInt(), match.captured(3).toInt()};
}

RecordSet read(Connection& connection, int templateId) {
    QList<Sql> names;
    forEachReportColumn(
        [&](const ReportColumn& column, int number) { names << sql("{}", Name(column.columnName(number))); });
    return inOrderOfSaving(connection.query(
        sql("SELECT {} FROM NorvaScheduler.dbo.[tblTemplate_Report] WITH (NOLOCK) WHERE ([TemplateID] = {})",
            Sql::join(names, sql(", ")), templateId)));
}

void addReports(const RecordSet& rows, const CurrentProject& project, clsReports_Collection& reports) {
    for (const Row row : rows) {
        clsReport report = readReport(row, project);
        QString key = "ID" + QString::number(report.ID());
        reports.Add(report.ID(), report.Parameters(), report.ReportType(), report.ReportSubType(),
                    report.OutputExcel(), report.OutputCSV(), report.OutputEmail(), key);
    }
}

ColumnValues columns(clsReport& report) {
    ColumnValues columns(" of the report '" + report.ShownTitle() + "'");
    forEachReportColumn([&](const ReportColumn& column, int number) {
        if (!column.get) return;
        const QVariant value = column.get(report, number);
        if (column.width > 0)
            columns.requireText(column.fieldLabel(number), value.toString(), column.width, column.codePage);
        columns.add(column.columnName(number), literal(value, column.kind));
    });
    return columns;
}

} // namespace templateReportRow

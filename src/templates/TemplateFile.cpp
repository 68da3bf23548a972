#include "templates/TemplateFile.h"

#include "db/ColumnText.h"
#include "db/ForeignText.h"
#include "db/Refusal.h"
#include "db/ServerText.h"
#include "reports/BillType.h"
#include "reports/ReportColumns.h"
#include "templates/TemplateReportRow.h"
#include "templates/modTemplates.h"

#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSet>
#include <cmath>
#include <limits>

namespace {

const QString format = "zelvan-scheduler-templates";
constexpr int version = 1;
constexpr int widthOfTimes = 8; ///< letters
constexpr int greatest = std::numeric_limits<int>::max();
/// For human readers; what a report is, its type says.
const QString reportTitle = "Report";

/// A column of a part's table, and what it can hold.
struct Column {
    QString name;
    ReportColumn::Kind kind;
    QString label; ///< of a text
    int width = 0; ///< of a text; 0 for any
    CodePage codePage = CodePage::Unicode;
    bool nullable = true;
    std::optional<int> highest = {}; ///< of a number that begins at 0; nothing for any
};

struct Table {
    QString key; ///< in the file
    Sql name;
    Sql order;
    QList<Column> columns;
};

QList<Column> columnsOfReports() {
    QList<Column> columns;
    forEachReportColumn([&](const ReportColumn& column, int number) {
        if (!column.get) return; // the row's key
        const QString name = column.columnName(number);
        Column filed{name, column.kind, column.fieldLabel(number), column.width, column.codePage};
        if (column.kind == ReportColumn::Time) {
            filed.width = widthOfTimes;
            filed.codePage = CodePage::Latin1252;
        }
        if (filed.label.isEmpty()) filed.label = name;
        filed.highest = column.highestCode;
        columns << filed;
    });
    return columns;
}

const Table& tableOf(int part) {
    using enum ReportColumn::Kind;
    static const Table tables[]{
        {"Reports", sql("tblTemplate_Report"), sql("[ReportID]"), columnsOfReports()},
        {"CostCentres", sql("tblCCSubProject_CCs"), sql("[CCName]"), {{"CCName", Text, "cost centre", 30}}},
        {"ExcludedNumbers",
         sql("TblExcludedNumbers"),
         sql("[ID]"),
         {{"TelNo", Text, "excluded number", 25, CodePage::Latin1252}, {"Include", Flag, "Include"}}}};
    return tables[part];
}

const QList<Column>& headerColumns() {
    using enum ReportColumn::Kind;
    static const QList<Column> columns{
        {"Title", Text, "template name", 100, CodePage::Unicode, false},
        {"UnitabAccount", Text, "account reference", 50, CodePage::Latin1252, false},
        {"BillType", Number, {}, 0, {}, false, IdcBill},
        {"CSVDefs", Flag, {}, 0, {}, false},
        {"DefaultDates", Flag, {}, 0, {}, false},
        {"TemplateType", Number, {}, 0, {}, false, greatest},
        {"SubType", Number, {}, 0, {}, false, TickedCostCentres},
        {"SubCCLevel", Number, {}, 0, {}, false, 5},
        {"SubCCSendEmail", Flag, {}, 0, {}, false}};
    return columns;
}

Sql namesOf(const QList<Column>& columns) {
    QList<Sql> names;
    for (const Column& column : columns) names << sql("{}", Name(column.name));
    return Sql::join(names, sql(", "));
}

/// "2008-04-01", or with a time where the server's text "2008-04-01 13:00:00.000" has one.
QString filedDate(const QString& stored) {
    const bool midnight = stored.mid(10).remove(':').remove('.').remove('0').trimmed().isEmpty();
    return midnight ? stored.left(10) : QString(stored).replace(10, 1, 'T');
}

/// Whether a text is a time of the day and nothing else.
bool isTime(const QString& filed) {
    static const QRegularExpression form("^\\d{1,2}:\\d{2}(:\\d{2})?(\\.\\d+)?( *[AaPp][Mm])?\\z");
    return form.match(filed).hasMatch() && templateReportRow::clockTime(filed).isValid();
}

/// As the shipped column holds it; older ones are wider.
QString filedTime(const QString& stored) {
    const QTime time = templateReportRow::clockTime(stored);
    return (stored.size() <= widthOfTimes && isTime(stored)) || !time.isValid() ? stored
                                                                                : time.toString("HH:mm:ss");
}

bool isDate(const QString& filed) {
    static const QRegularExpression form("^\\d{4}-\\d{2}-\\d{2}(T\\d{2}:\\d{2}:\\d{2}(\\.\\d{1,3})?)?\\z");
    if (!form.match(filed).hasMatch()) return false;
    const QDate day = QDate::fromString(filed.left(10), Qt::ISODate);
    const bool plain = filed.size() == 10;
    return day.isValid() && day.year() >= 1753 // the server's first
           && (plain || (filed[10] == 'T' && QTime::fromString(filed.mid(11), Qt::ISODateWithMs).isValid()));
}

QJsonValue filedValue(const Row& row, int place, ReportColumn::Kind kind) {
    if (row.isNull(place)) return QJsonValue::Null;
    switch (kind) {
    case ReportColumn::Flag:
        return row.flag(place);
    case ReportColumn::Number:
        return row.integer(place);
    case ReportColumn::Date:
        return filedDate(row.text(place));
    case ReportColumn::Time:
        return filedTime(row.text(place));
    case ReportColumn::Text:
        break;
    }
    return row.text(place);
}

Sql literal(const QJsonValue& value) {
    if (value.isNull()) return Sql::null();
    if (value.isBool()) return Sql::value(value.toBool());
    if (value.isDouble()) return Sql::value(value.toInt());
    return Sql::value(value.toString());
}

/// A date without dashes, which servers read alike whatever order of day and month they are set to.
Sql literalOf(const QJsonObject& row, const Column& column) {
    const QJsonValue value = row[column.name];
    const bool isDay = column.kind == ReportColumn::Date && value.toString().size() == 10;
    return isDay ? Sql::value(QDate::fromString(value.toString(), Qt::ISODate)) : literal(value);
}

QString textProblem(const Column& column, const QString& text) {
    if (text.contains(QChar::Null)) return "The " + column.label + " holds a NUL, which cannot be stored.";
    if (column.kind == ReportColumn::Date && !isDate(text))
        return QString("'%1' is no date such as 2026-12-01.").arg(text);
    if (column.kind == ReportColumn::Time && !text.isEmpty() && !isTime(text))
        return QString("'%1' is no time of the day.").arg(text);
    const int width = column.width > 0 ? column.width : std::numeric_limits<int>::max();
    return fittingProblem(column.label, text, width, column.codePage);
}

/// Why a column cannot hold a value; empty when it can.
QString valueProblem(const Column& column, const QJsonValue& value) {
    if (value.isNull()) return column.nullable ? QString() : "A value is needed instead of null.";
    switch (column.kind) {
    case ReportColumn::Flag:
        return value.isBool() ? QString() : "It has to be true or false.";
    case ReportColumn::Number: {
        const int least = column.highest ? 0 : std::numeric_limits<int>::min();
        const int most = column.highest.value_or(greatest);
        const double number = value.toDouble(0.5); // of another type: no whole one
        const bool fits = number >= least && number <= most && number == std::floor(number);
        return fits ? QString() : QString("It has to be a whole number from %1 to %2.").arg(least).arg(most);
    }
    default:
        return value.isString() ? textProblem(column, value.toString()) : "It has to be a text.";
    }
}

[[noreturn]] void refuse(const QString& where, const QString& problem) {
    throw Refusal(where + ": " + problem);
}

QJsonObject objectOf(const QJsonValue& value, const QString& where) {
    if (!value.isObject()) refuse(where, "It has to be an object in braces.");
    return value.toObject();
}

QJsonArray arrayOf(const QJsonObject& object, const QString& key, const QString& where) {
    if (!object[key].isArray()) refuse(where, QString("'%1' has to be a list in brackets.").arg(key));
    return object[key].toArray();
}

void checkKeys(const QJsonObject& object, const QSet<QString>& known, const QString& where) {
    const QStringList keys = object.keys();
    for (const QString& key : keys)
        if (!known.contains(key)) refuse(where, QString("The column '%1' is not known.").arg(key.left(100)));
    QStringList missing = QSet<QString>(known).subtract(QSet<QString>(keys.begin(), keys.end())).values();
    missing.sort();
    if (!missing.isEmpty()) refuse(where, QString("The column '%1' is missing.").arg(missing.first()));
}

void checkValues(const QJsonObject& object, const QList<Column>& columns, const QString& where) {
    for (const Column& column : columns)
        if (const QString problem = valueProblem(column, object[column.name]); !problem.isEmpty())
            refuse(where + ", " + column.name, problem);
}

QSet<QString> namesIn(const QList<Column>& columns) {
    QSet<QString> names;
    for (const Column& column : columns) names << column.name;
    return names;
}

QJsonObject filedHeader(const TemplateHeader& header) {
    return {{"Title", header.title},
            {"UnitabAccount", header.unitabAccount},
            {"BillType", header.billType},
            {"CSVDefs", header.csvReportDefs},
            {"DefaultDates", header.defaultDates},
            {"TemplateType", header.templateType},
            {"SubType", header.subType},
            {"SubCCLevel", header.subLevel},
            {"SubCCSendEmail", header.subEmail}};
}

TemplateHeader headerOf(const QJsonObject& filed) {
    TemplateHeader header;
    header.title = filed["Title"].toString();
    header.unitabAccount = filed["UnitabAccount"].toString();
    header.billType = filed["BillType"].toInt();
    header.csvReportDefs = filed["CSVDefs"].toBool();
    header.defaultDates = filed["DefaultDates"].toBool();
    header.templateType = filed["TemplateType"].toInt();
    header.subType = qint16(filed["SubType"].toInt());
    header.subLevel = qint16(filed["SubCCLevel"].toInt());
    header.subEmail = filed["SubCCSendEmail"].toBool();
    return header;
}

QList<QJsonObject> rowsOf(const QJsonObject& filed, int part, const QString& where) {
    const Table& table = tableOf(part);
    const QSet<QString> known = namesIn(table.columns);
    QList<QJsonObject> rows;
    for (const QJsonValue value : arrayOf(filed, table.key, where)) {
        const QString place = QString("%1, %2 %3").arg(where, table.key, QString::number(rows.size() + 1));
        QJsonObject row = objectOf(value, place);
        if (part == FiledTemplate::Reports) row.remove(reportTitle);
        checkKeys(row, known, place);
        checkValues(row, table.columns, place);
        rows << row;
    }
    return rows;
}

FiledTemplate templateOf(const QJsonValue& value, qsizetype number) {
    QString where = QString("Template %1").arg(number);
    const QJsonObject filed = objectOf(value, where);
    const QString title = filed["Title"].toString();
    if (!title.isEmpty()) where += QString(" '%1'").arg(title.left(100));
    QSet<QString> known = namesIn(headerColumns());
    for (int part = 0; part < FiledTemplate::partCount; ++part) known << tableOf(part).key;
    checkKeys(filed, known, where);
    checkValues(filed, headerColumns(), where);
    if (title.trimmed().isEmpty()) refuse(where, "It has no name.");
    FiledTemplate result{headerOf(filed), {}};
    for (int part = 0; part < FiledTemplate::partCount; ++part)
        result.rows[std::size_t(part)] = rowsOf(filed, part, where);
    return result;
}

QString titleOfReport(const QJsonObject& row) {
    const CurrentProject none;
    clsReport report(none);
    report.setReportType(row["ReportType"].toInt());
    report.setReportSubType(row["ReportSubType"].toInt());
    return report.ShownTitle();
}

QJsonObject filedTemplate(const FiledTemplate& each) {
    QJsonObject filed = filedHeader(each.header);
    for (int part = 0; part < FiledTemplate::partCount; ++part) {
        QJsonArray rows;
        for (QJsonObject row : each.rows[std::size_t(part)]) {
            if (part == FiledTemplate::Reports) row[reportTitle] = titleOfReport(row);
            rows << row;
        }
        filed[tableOf(part).key] = rows;
    }
    return filed;
}

/// Half of a character would become another one in the file.
void checkStoredTexts(const QJsonObject& row, const QString& where) {
    for (auto value = row.begin(); value != row.end(); ++value)
        if (!value->toString().isValidUtf16())
            refuse(where + ", " + value.key(), "It holds half of a character, which no file can hold.");
}

/// Headers and parts of templates, in as many round trips however many there are.
QList<Sql> readingsOf(const QList<int>& ids) {
    QList<Sql> values;
    for (const int id : ids) values << Sql::value(id);
    const Sql wanted = Sql::join(values, sql(", "));
    QList<Sql> readings{sql(
        "SELECT * FROM NorvaScheduler.dbo.[tblTemplate] WITH (NOLOCK) WHERE ([TemplateID] IN ({}))", wanted)};
    for (int part = 0; part < FiledTemplate::partCount; ++part) {
        const Table& table = tableOf(part);
        readings << sql("SELECT [TemplateID], {} FROM NorvaScheduler.dbo.{} WITH (NOLOCK) "
                        "WHERE [TemplateID] IN ({}) ORDER BY [TemplateID], {}",
                        namesOf(table.columns), table.name, wanted, table.order);
    }
    return readings;
}

QString placeOf(const FiledTemplate& each) {
    return QString("Template '%1'").arg(each.header.title);
}

/// From the answers to these readings.
QHash<int, FiledTemplate> templatesIn(const std::vector<RecordSet>& answers) {
    QHash<int, FiledTemplate> templates;
    for (const Row row : answers[0]) {
        FiledTemplate each{TemplateHeader::read(row), {}};
        const int id = std::exchange(each.header.id, -1);
        checkStoredTexts(filedHeader(each.header), placeOf(each));
        templates.insert(id, each);
    }
    for (int part = 0; part < FiledTemplate::partCount; ++part)
        for (const Row stored : answers[std::size_t(part) + 1]) {
            const auto owner = templates.find(stored.integer(0));
            if (owner == templates.end()) continue;
            QJsonObject row;
            for (int place = 1; const Column& column : tableOf(part).columns)
                row[column.name] = filedValue(stored, place++, column.kind);
            checkStoredTexts(row, placeOf(*owner));
            owner->rows[std::size_t(part)] << row;
        }
    return templates;
}

/// "(7, N'x', NULL)"
Sql valuesOf(const QJsonObject& row, int part, int templateId) {
    QList<Sql> values{Sql::value(templateId)};
    for (const Column& column : tableOf(part).columns) values << literalOf(row, column);
    return sql("({})", Sql::join(values, sql(", ")));
}

/// In an order of their own, for a server may return cost centres in another one.
QStringList wordingOf(const FiledTemplate& each, int part) {
    QStringList rows;
    for (const QJsonObject& row : each.rows[std::size_t(part)]) rows << valuesOf(row, part, 0).text();
    rows.sort();
    return rows;
}

} // namespace

bool FiledTemplate::holdsSameRows(const FiledTemplate& other) const {
    for (int part = 0; part < partCount; ++part)
        if (wordingOf(*this, part) != wordingOf(other, part)) return false;
    return true;
}

QList<Sql> templateFile::insertions(const QList<FiledTemplate>& templates) {
    constexpr qsizetype rowsAtOnce = 50; // alone, a row would have more names of columns than values
    QList<Sql> statements;
    for (int part = 0; part < FiledTemplate::partCount; ++part) {
        const Table& table = tableOf(part);
        QList<Sql> rows;
        for (const FiledTemplate& each : templates)
            for (const QJsonObject& row : each.rows[std::size_t(part)])
                rows << valuesOf(row, part, each.header.id);
        for (qsizetype first = 0; first < rows.size(); first += rowsAtOnce)
            statements << sql("INSERT INTO NorvaScheduler.dbo.{} ([TemplateID], {}) VALUES {}", table.name,
                              namesOf(table.columns), Sql::join(rows.mid(first, rowsAtOnce), sql(", ")));
    }
    return statements;
}

void templateFile::checkNulls(Connection& connection, const QList<FiledTemplate>& templates) {
    QList<Sql> readings;
    for (int part = 0; part < FiledTemplate::partCount; ++part)
        readings << sql("SELECT [name] FROM syscolumns WHERE id = OBJECT_ID({}) AND isnullable = 0",
                        "[dbo].[" + tableOf(part).name.text() + "]");
    const std::vector<RecordSet> needed = connection.queryAll(readings, "NorvaScheduler");
    for (const FiledTemplate& each : templates)
        for (int part = 0; part < FiledTemplate::partCount; ++part)
            for (qsizetype i = 0; const QJsonObject& row : each.rows[std::size_t(part)]) {
                ++i;
                for (const Row column : needed[std::size_t(part)])
                    if (row.value(column.text(0)).isNull())
                        refuse(QString("Template '%1', %2 %3, %4")
                                   .arg(each.header.title.left(100), tableOf(part).key, QString::number(i),
                                        column.text(0)),
                               "A value is needed instead of null.");
            }
}

QList<FiledTemplate> templateFile::load(Connection& connection, const QList<int>& ids) {
    constexpr qsizetype idsAtOnce = 1000;
    std::vector<std::vector<RecordSet>> answers;
    {
        Transaction oneMoment(connection);
        lockTemplates(connection); // or a save would come between a template and its reports
        for (qsizetype first = 0; first < ids.size(); first += idsAtOnce)
            answers.push_back(connection.queryAll(readingsOf(ids.mid(first, idsAtOnce))));
    }
    QHash<int, FiledTemplate> found;
    for (const std::vector<RecordSet>& some : answers) found.insert(templatesIn(some));
    QList<FiledTemplate> templates;
    for (const int id : ids) {
        const auto each = found.constFind(id);
        if (each == found.constEnd())
            throw Refusal("This template has been deleted by somebody else in the meantime.");
        templates << *each;
    }
    return templates;
}

QByteArray templateFile::write(const QList<FiledTemplate>& templates) {
    QJsonArray filed;
    for (const FiledTemplate& each : templates) filed << filedTemplate(each);
    const QByteArray document =
        QJsonDocument(QJsonObject{{"format", format}, {"version", version}, {"templates", filed}}).toJson();
    if (document.size() > longest)
        throw Refusal(QString("The file would be longer than %1 million bytes, which no import takes. Please "
                              "export the templates in parts.")
                          .arg(longest / 1'000'000));
    read(document);
    return document;
}

QList<FiledTemplate> templateFile::read(const QByteArray& document) {
    const QString file = "The file";
    if (document.size() > longest)
        refuse(file, QString("It is longer than %1 million bytes.").arg(longest / 1'000'000));
    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(foreignText(document).toUtf8(), &error);
    if (error.error != QJsonParseError::NoError || !json.isObject())
        refuse(file,
               "It is no file of templates"
                   + (json.isNull() ? QString(" (%1, at byte %2).").arg(error.errorString()).arg(error.offset)
                                    : QString(".")));
    const QJsonObject content = json.object();
    if (content["format"] != format) refuse(file, "It is no file of templates.");
    if (content["version"] != version)
        refuse(file, QString("It is of another version than %1, which this program reads.").arg(version));
    checkKeys(content, {"format", "version", "templates"}, file);
    QList<FiledTemplate> templates;
    QSet<std::pair<QString, QString>> titles;
    for (const QJsonValue value : arrayOf(content, "templates", file)) {
        templates << templateOf(value, templates.size() + 1);
        const TemplateHeader& header = templates.last().header;
        const std::pair title(serverKey(header.title), serverKey(header.unitabAccount));
        if (titles.contains(title))
            refuse(QString("Template %1 '%2'").arg(templates.size()).arg(header.title),
                   "The file holds another one of this name and account.");
        titles << title;
    }
    if (templates.isEmpty()) refuse(file, "It holds no template.");
    return templates;
}

QList<FiledTemplate> templateFile::readFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Refusal(QString("The file '%1' cannot be read: %2.").arg(path, file.errorString()));
    const QByteArray document = file.read(longest + 1);
    if (file.error() != QFileDevice::NoError)
        throw Refusal(QString("The file '%1' cannot be read: %2.").arg(path, file.errorString()));
    return read(document);
}

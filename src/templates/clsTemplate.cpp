#include "templates/clsTemplate.h"

#include "db/DbError.h"
#include "db/Refusal.h"
#include "reports/BillType.h"
#include "templates/TemplateReportRow.h"
#include "templates/modTemplates.h"

namespace {

QStringList sorted(QStringList texts) {
    texts.sort();
    return texts;
}

} // namespace

clsTemplate::clsTemplate(Connection& connection, const CurrentProject& project)
    : m_connection(connection), m_project(project), m_reports(project) {}

void clsTemplate::Clear() {
    const int type = m_header.templateType;
    m_header = {};
    m_header.templateType = type;
    m_loaded.reset();
    m_reports.Clear();
    m_ccs.Clear();
    m_printReportDefs = false;
    m_hasChanged = false;
}

void clsTemplate::StartNew() {
    Clear();
    TakeProject();
    m_hasChanged = false;
}

void clsTemplate::TakeProject() {
    setUnitabAccount(m_project.unitabAccount);
    setBillType(m_project.billType);
}

int clsTemplate::BillType() const {
    const bool known = isBillType(m_header.billType) || !m_project.isOfAccount(m_header.unitabAccount);
    return known ? m_header.billType : m_project.billType;
}

void clsTemplate::setCCSubType(qint16 type) {
    if (type == m_header.subType) return;
    change(m_header.subType, type);
    if (type == 2) m_ccs.Clear();
}

clsTemplate::SaveResult clsTemplate::SaveTemplate(const QString& newTitle, WhenChanged whenChanged) {
    TemplateHeader header = m_header;
    header.billType = BillType();
    if (!newTitle.isEmpty()) {
        header.id = -1;
        header.title = newTitle;
    }
    if (header.title.trimmed().isEmpty()) return TitleBlank;

    const NewRows rows = newRows(header); // what no column can hold is found before anything is sent
    Transaction transaction(m_connection);
    lockTemplates(m_connection); // two titles counted before either is written would both be free
    if (titleIsUsed(header)) {
        header.id = m_outcomeUnknown ? storedTwin(header, rows) : -1;
        if (header.id == -1) return TitleUsed;
    }
    if (header.id != -1 && whenChanged == KeepTheirs && isChangedSinceLoad(header.id)
        && !isStored(header.id, rows))
        return ChangedMeanwhile;
    const bool copies = header.id == -1 && m_header.id != -1;
    header.id = writeHeader(header, rows.header);
    if (m_header.id == -1 || copies) handOverExcludedNumbers(header.id);
    if (copies) copyExcludedNumbers(m_header.id, header.id);
    if (header.isOrdinary())
        replaceReports(header.id, rows.reports);
    else
        replaceCostCentres(header.id);
    m_outcomeUnknown = true; // until the answer is there
    transaction.commit();

    m_header = header;
    m_loaded.reset();
    m_hasChanged = m_outcomeUnknown = false;
    return Saved;
}

/// Throws a Refusal when a text does not fit.
clsTemplate::NewRows clsTemplate::newRows(const TemplateHeader& header) {
    NewRows rows{header.columns(), {}, {}};
    if (header.isOrdinary())
        for (clsReport& report : m_reports) rows.reports << templateReportRow::columns(report);
    else
        for (const clsString& costCentre : m_ccs) {
            requireFits("cost centre", costCentre.Value, 30, CodePage::Unicode);
            rows.costCentres << costCentre.Value;
        }
    return rows;
}

/// A server returns the cost centres in any order.
bool clsTemplate::StoredRows::operator==(const StoredRows& other) const {
    return header == other.header && reports == other.reports
           && sorted(costCentres) == sorted(other.costCentres);
}

QString clsTemplate::NewRows::wording() const {
    QStringList texts = sorted(costCentres);
    texts << header.values().text();
    for (const ColumnValues& report : reports) texts << report.values().text();
    return texts.join('\n');
}

/// Whether saving would write just what is there: by an earlier save, whose answer got lost.
bool clsTemplate::isStored(int id, const NewRows& rows) const {
    clsTemplate stored(m_connection, m_project);
    try {
        return stored.LoadTemplate(id) && stored.newRows(stored.m_header).wording() == rows.wording();
    } catch (const Refusal&) {
        return false; // what older versions stored may not fit any more
    }
}

/// The template of the same title and account that holds just what is to be saved; -1 when that differs.
int clsTemplate::storedTwin(const TemplateHeader& header, const NewRows& rows) const {
    const int id = m_connection
                       .scalar(sql("SELECT TemplateID FROM NorvaScheduler.dbo.[tblTemplate] WITH (NOLOCK) "
                                   "WHERE ([Title] = {}) AND ([UnitabAccount] = {})",
                                   header.storedTitle(), header.unitabAccount))
                       .toInt();
    return isStored(id, rows) ? id : -1;
}

bool clsTemplate::titleIsUsed(const TemplateHeader& header) const {
    Sql count = sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.[tblTemplate] WITH (NOLOCK) "
                    "WHERE ([Title] = {}) AND ([UnitabAccount] = {})",
                    header.storedTitle(), header.unitabAccount);
    if (header.id != -1) count += sql(" AND ([TemplateID] <> {})", header.id);
    return m_connection.scalar(count).toInt() > 0;
}

/// The key of the header's row.
int clsTemplate::writeHeader(const TemplateHeader& header, const ColumnValues& columns) {
    if (header.id != -1) {
        const Sql update = sql("UPDATE NorvaScheduler.dbo.tblTemplate SET {} WHERE [TemplateID] = {}",
                               columns.assignments(), header.id);
        if (m_connection.changedRows(update) == 0)
            throw Refusal(
                "The template was deleted by another user. Nothing was saved; to keep your changes, "
                "save it under a new title.");
        return header.id;
    }
    return m_connection.insertedKey(sql("INSERT INTO NorvaScheduler.dbo.tblTemplate ({}) VALUES ({})",
                                        columns.names(), columns.values()));
}

/// Those that were entered before the template had a key.
void clsTemplate::handOverExcludedNumbers(int id) {
    m_connection.execute(
        sql("UPDATE [NorvaScheduler].dbo.TblExcludedNumbers SET TemplateID = {} WHERE TemplateID = -1", id));
}

void clsTemplate::copyExcludedNumbers(int from, int to) {
    m_connection.execute(
        sql("INSERT INTO [NorvaScheduler].dbo.TblExcludedNumbers (TemplateID, TelNo, Include) "
            "SELECT {}, TelNo, Include FROM [NorvaScheduler].dbo.TblExcludedNumbers "
            "WHERE TemplateID = {}",
            to, from));
}

void clsTemplate::replaceReports(int id, const QList<ColumnValues>& rows) {
    m_connection.execute(
        sql("DELETE FROM NorvaScheduler.dbo.[tblTemplate_report] WHERE [TemplateID] = {}", id));
    QList<Sql> inserts;
    for (const ColumnValues& row : rows)
        inserts << sql("INSERT INTO NorvaScheduler.dbo.tblTemplate_report ([TemplateID], {}) VALUES ({}, {})",
                       row.names(), id, row.values());
    m_connection.executeAll(inserts);
}

void clsTemplate::replaceCostCentres(int id) {
    m_connection.execute(
        sql("DELETE FROM NorvaScheduler.dbo.[tblCCSubProject_CCs] WHERE [TemplateID] = {}", id));
    QList<Sql> inserts;
    for (const clsString& costCentre : m_ccs)
        inserts << sql(
            "INSERT INTO NorvaScheduler.dbo.tblCCSubProject_CCs (TemplateID, CCName) VALUES ({}, {})", id,
            costCentre.Value);
    m_connection.executeAll(inserts);
}

clsTemplate::StoredRows clsTemplate::readRows(int templateId) const {
    StoredRows rows;
    rows.header = m_connection.query(
        sql("SELECT * FROM NorvaScheduler.dbo.[tblTemplate] WITH (NOLOCK) WHERE ([TemplateID] = {})",
            templateId));
    if (rows.header.isEmpty()) return rows;
    if (!TemplateHeader::read(rows.header.row(0)).isOrdinary())
        for (const Row row :
             m_connection.query(sql("SELECT CCName FROM NorvaScheduler.dbo.[tblCCSubProject_CCs] WITH "
                                    "(NOLOCK) WHERE ([TemplateID] = {})",
                                    templateId)))
            rows.costCentres << row.text(0);
    rows.costCentres.sort(Qt::CaseInsensitive); // the statement asks for no order
    rows.reports = templateReportRow::read(m_connection, templateId);
    return rows;
}

/// A template that is gone counts as unchanged: writing its header finds that out.
bool clsTemplate::isChangedSinceLoad(int id) const {
    if (!m_loaded || id != m_header.id) return false;
    const StoredRows now = readRows(id);
    return !now.header.isEmpty() && now != *m_loaded;
}

bool clsTemplate::LoadTemplate(int templateId) {
    StoredRows rows = readRows(templateId);
    if (rows.header.isEmpty()) return false;
    clsReports_Collection reports(m_project);
    templateReportRow::addReports(rows.reports, m_project, reports);

    m_header = TemplateHeader::read(rows.header.row(0));
    m_ccs.Clear();
    for (const QString& name : rows.costCentres) m_ccs.AddString(name);
    m_reports = std::move(reports);
    m_loaded = std::move(rows);
    m_printReportDefs = false;
    m_hasChanged = false;
    return true;
}

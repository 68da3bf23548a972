#include "demo/DemoTemplates.h"

#include "demo/BulkInsert.h"
#include "demo/DemoProject.h"
#include "templates/clsTemplate.h"

#include <stdexcept>

void DemoTemplates::add(const QString& title, int id, const QString& project, const QList<Report>& reports) {
    m_ids.insert(title, id);
    m_projects.insert(id, project);
    m_reports.insert(title, reports);
    m_lastId = qMax(m_lastId, id);
}

QString DemoTemplates::projectOf(int templateId) const {
    return m_projects.value(templateId, demoProjects::all().first().database);
}

namespace demoTemplates {

namespace {

CurrentProject currentProject(const DemoProject& demo, const QDate& today) {
    const QList<DemoBill> bills = demoProjects::bills(today);
    CurrentProject project;
    project.database = demo.database;
    project.unitabAccount = demo.account;
    project.billType = demo.billType;
    project.defaultStart = bills.first().start;
    project.defaultEnd = bills.last().end;
    project.wispera = demo.is(DemoProject::Wispera);
    return project;
}

/// Makes templates of one project, one after the other.
class TemplateMaker {
public:
    TemplateMaker(Connection& connection, DemoTemplates& made, const DemoProject& demo, const QDate& today)
        : m_made(made), m_project(currentProject(demo, today)), m_template(connection, m_project) {}
    TemplateMaker(const TemplateMaker&) = delete; // the template refers to the project beside it

    TemplateMaker& begin(const QString& title) {
        m_template.setTemplateType(0);
        m_template.Clear();
        m_template.setTitle(title);
        m_template.setUnitabAccount(m_project.unitabAccount);
        m_template.setBillType(m_project.billType);
        return *this;
    }
    TemplateMaker& subProjects(qint16 subType, qint16 level, const QStringList& costCentres) {
        m_template.setTemplateType(1);
        m_template.setCCSubType(subType);
        m_template.setCCSubLevel(level);
        m_template.setCCSubEmail(subType != 2);
        for (const QString& centre : costCentres) m_template.CCs().AddString(centre);
        return *this;
    }
    /// Adds a report and returns its parameters to be set further.
    clsReportParameters& report(int type, int subType) {
        const auto parameters = std::make_shared<clsReportParameters>(m_project);
        QString key;
        m_template.Reports().Add(0, parameters, type, subType, true, type == CallReport, false, key);
        return *parameters;
    }
    void reports(int type, const QList<int>& subTypes) {
        for (const int subType : subTypes) report(type, subType);
    }
    void save() {
        if (m_template.SaveTemplate() != clsTemplate::Saved || !m_template.LoadTemplate(m_template.ID()))
            throw std::runtime_error("The template " + m_template.Title().toStdString() + " cannot be made.");
        QList<DemoTemplates::Report> stored;
        for (const clsReport& each : m_template.Reports()) stored.append({each.ID(), each.GetReportTitle()});
        m_made.add(m_template.Title(), m_template.ID(), m_project.database, stored);
    }

private:
    DemoTemplates& m_made;
    CurrentProject m_project;
    clsTemplate m_template;
};

void makeForUnitab(TemplateMaker maker) {
    maker.begin(ManagementPack);
    maker.reports(BillingReport, {211, 212, 213, 221, 241});
    maker.reports(CallReport, {161, 162, 165, 145, 121});
    auto& expensive = maker.report(CallReport, 111);
    expensive.setCostRangeMinimum("0.50");
    expensive.setReportCaption("Dear calls");
    maker.report(CallReport, 163).setTimeRangeOvernight(true);
    maker.save();

    maker.begin(InvoiceOnly).report(BillingReport, 211);
    maker.save();

    maker.begin(WeeklyReview);
    maker.reports(CallReport, {161, 145});
    maker.report(CallReport, 142).setCallsToNumber("02079461042, 08001111000");
    auto& late = maker.report(CallReport, 141);
    late.setTimeRangeStart(QTime(18, 0));
    late.setTimeRangeEnd(QTime(8, 0));
    late.setTimeRangeOvernight(true);
    late.setDaySelected(1, false);
    late.setReportHeader("Calls outside the office's hours");
    maker.save();

    maker.begin(Hotspots);
    maker.reports(CallReport, {131, 135});
    maker.save();

    maker.begin(CentrePacks).subProjects(1, 2, {}).save();
}

void makeForOthers(Connection& connection, DemoTemplates& made, const QDate& today) {
    const QList<DemoProject>& projects = demoProjects::all();
    TemplateMaker linkvale(connection, made, projects[1], today);
    linkvale.begin(LinkvaleCheck);
    linkvale.reports(InvoiceReport, {271, 273, 278});
    linkvale.report(CallReport, 162);
    linkvale.save();

    TemplateMaker circuits(connection, made, projects[2], today);
    circuits.begin(CircuitAudit);
    circuits.reports(CircuitReport, {341, 311});
    circuits.report(CircuitReport, 321).setCircuitsPercentage(10);
    circuits.report(CircuitReport, 326).setSelectedCircuitID("KX480223/3");
    circuits.save();

    TemplateMaker idc(connection, made, projects[3], today);
    idc.begin(IdcUsage);
    idc.reports(CallReport, {161, 113});
    idc.report(BillingReport, 221);
    idc.save();
    idc.begin(SelectedCentres).subProjects(2, 1, {"Children's Services", "Operations"}).save();

    TemplateMaker older(connection, made, projects[4], today);
    auto& parameters = older.begin(Dormant).report(CallReport, 161);
    parameters.setDateRangeStart(QDate(2001, 1, 1));
    parameters.setDateRangeEnd(QDate(2001, 12, 31));
    older.save();
}

} // namespace

DemoTemplates create(Connection& connection, const QDate& today) {
    DemoTemplates made;
    makeForUnitab(TemplateMaker(connection, made, demoProjects::all().first(), today));
    makeForOthers(connection, made, today);
    return made;
}

QList<int> createMany(Connection& connection, int count, int reportsPerTemplate) {
    const QString lastBefore =
        connection.scalar(sql("SELECT ISNULL(MAX(TemplateID), 0) FROM NorvaScheduler.dbo.tblTemplate"));
    BulkInsert templates(connection,
                         sql("INSERT INTO NorvaScheduler.dbo.tblTemplate (Title, UnitabAccount, BillType, "
                             "TemplateType) VALUES"));
    const DemoProject& project = demoProjects::all().first();
    for (int i = 0; i < count; ++i)
        templates.add(QString("Template %1").arg(i + 1, 5, 10, QChar('0')), project.account, project.billType,
                      0);
    templates.finish();

    QList<int> ids;
    const RecordSet stored = connection.query(sql("SELECT TemplateID FROM NorvaScheduler.dbo.tblTemplate "
                                                  "WHERE TemplateID > {} ORDER BY TemplateID",
                                                  lastBefore.toInt()));
    for (const Row row : stored) ids << row.integer(0);

    const QList<int> kinds{161, 162, 163, 166, 165, 141, 111, 112, 113, 114, 115, 121, 122, 123, 145};
    BulkInsert reports(connection,
                       sql("INSERT INTO NorvaScheduler.dbo.tblTemplate_Report (TemplateID, ReportType, "
                           "ReportSubType, OutputExcel, DateStart, DateEnd) VALUES"));
    for (const int id : ids)
        for (int i = 0; i < reportsPerTemplate; ++i)
            reports.add(id, int(CallReport), kinds.at(i % kinds.size()), true, QDate(2008, 3, 1),
                        QDate(2008, 4, 30));
    reports.finish();
    return ids;
}

} // namespace demoTemplates

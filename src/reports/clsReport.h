#pragma once

#include "reports/Catalogue.h"
#include "reports/ReportTraits.h"
#include "reports/clsReportParameters.h"

#include <optional>

/// One report of a template: which catalogue report it is, its parameters and its outputs.
class clsReport {
public:
    /// The project must outlive the object.
    explicit clsReport(const CurrentProject& project);

    /// "General Reports - Calls To Number '01234'": the catalogue's title, with the value that the
    /// report carries if it is one of the five that carry one; "Unknown Report" without an entry.
    QString GetReportTitle() const;
    /// The report's entry in any of the lists, those of mobile and Wispera reports included whatever the
    /// current project is; null when no list holds it.
    const CatalogueEntry* Entry() const;
    /// The title as editors show it: like GetReportTitle(), but by Entry(), and with the first few of many
    /// numbers.
    QString ShownTitle() const;
    /// The value that the report carries beside its groups, if it is one of the five that carry one.
    std::optional<QString> SingleValue() const;
    /// Changes nothing in a report that carries none.
    void setSingleValue(const QString& value);
    /// Whether the list that the current project offers holds the report.
    bool IsOffered() const { return offeredEntry() != nullptr; }
    /// The key of its row as last loaded; 0 or less for a report not yet saved.
    int ID() const { return m_id; }
    void setID(int id) { m_id = id; }
    int ReportSubType() const { return m_reportSubType; }
    void setReportSubType(int reportSubType) { m_reportSubType = reportSubType; }
    /// One of enum ReportType.
    int ReportType() const { return m_reportType; }
    void setReportType(int reportType) { m_reportType = reportType; }
    /// Never null.
    const std::shared_ptr<clsReportParameters>& Parameters() const { return m_parameters; }
    void setParameters(std::shared_ptr<clsReportParameters> parameters) {
        m_parameters = std::move(parameters);
    }

    /// Reading an output that the catalogue does not allow for the report switches it off for good. The
    /// outputs of a report that no list holds stay as they are.
    bool OutputExcel() { return keepIfAllowed(m_outputExcel, 'E'); }
    void setOutputExcel(bool output) { m_outputExcel = output; }
    bool OutputPrint() { return keepIfAllowed(m_outputPrint, 'P'); }
    void setOutputPrint(bool output) { m_outputPrint = output; }
    bool OutputCSV() { return keepIfAllowed(m_outputCSV, 'C'); }
    void setOutputCSV(bool output) { m_outputCSV = output; }
    bool OutputEmail() const { return m_outputEmail; }
    void setOutputEmail(bool output) { m_outputEmail = output; }

    /// "YYYYYNNNNNYN LMVD ECP"; "NNNNNNNN" without an entry.
    QString GetParameterOptions() const;
    /// The value when the report, in the list that the current project offers, has the parameter group
    /// at this place (counted from 1); else the empty text.
    QString ValidateParameter(int position, const QString& value) const;

private:
    const CatalogueEntry* lookedUpEntry() const;
    const CatalogueEntry* offeredEntry() const;
    bool keepIfAllowed(bool& output, char letter);

    const CurrentProject* m_project;
    int m_id = 0;
    int m_reportSubType = 0;
    int m_reportType = 0;
    std::shared_ptr<clsReportParameters> m_parameters;
    bool m_outputExcel = false;
    bool m_outputPrint = false;
    bool m_outputCSV = false;
    bool m_outputEmail = false;
};

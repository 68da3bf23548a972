#pragma once

#include "db/Connection.h"
#include "reports/clsReports_Collection.h"
#include "reports/clsStrings.h"
#include "templates/TemplateHeader.h"

#include <optional>

/// A named set of reports, or of cost centres to make sub-projects for, that schedules run.
class clsTemplate {
public:
    enum SaveResult { Saved = 0, TitleUsed = -1, TitleBlank = -2, ChangedMeanwhile = -3 };
    enum WhenChanged { KeepTheirs, Overwrite };
    enum Icon { OrdinaryIcon = 0, SubProjectIcon = 1 };

    /// Both must outlive the object.
    clsTemplate(Connection& connection, const CurrentProject& project);

    /// An empty template not yet saved; only TemplateType stays.
    void Clear();
    /// The same for the current project, with nothing changed yet.
    void StartNew();
    /// Makes it a template for the current project, of which it is to be the account's.
    void TakeProject();
    /// Saves in place, or, given a new title, as a new template under that title. The title must not
    /// be used by another template of the account. A template that another user changed since it was
    /// loaded is not saved in place unless it is to be overwritten. All rows are written or none: after
    /// a DbError, which is also thrown when another user deleted the template, the object is as it was.
    /// The rows of the reports get new keys; the reports' ID() are those of the last load.
    SaveResult SaveTemplate(const QString& newTitle = {}, WhenChanged whenChanged = KeepTheirs);
    /// False, with the object as it was, when there is no such template.
    bool LoadTemplate(int templateId);
    /// The place of the icon that lists show for the template, one of enum Icon.
    int GetIconID() const { return iconOf(m_header); }
    static int iconOf(const TemplateHeader& header) {
        return header.isOrdinary() ? OrdinaryIcon : SubProjectIcon;
    }

    /// -1 until it is saved.
    int ID() const { return m_header.id; }
    /// 0 ordinary, any other a cost-centre sub-project.
    void setTemplateType(int type) { m_header.templateType = type; }
    int TemplateType() const { return m_header.templateType; }
    void setUnitabAccount(const QString& account) { change(m_header.unitabAccount, account); }
    const QString& UnitabAccount() const { return m_header.unitabAccount; }
    void setTitle(const QString& title) { change(m_header.title, title); }
    const QString& Title() const { return m_header.title; }
    /// What is changed inside is not noticed by HasChanged(): call MarkChanged().
    clsReports_Collection& Reports() { return m_reports; }
    const clsReports_Collection& Reports() const { return m_reports; }
    bool HasChanged() const { return m_hasChanged; }
    void MarkChanged() { m_hasChanged = true; }
    /// While the stored one is unknown, that of a current project of the template's account: its bills
    /// may not have told theirs when the template was made.
    int BillType() const;
    void setBillType(int billType) { change(m_header.billType, billType); }
    /// Not stored.
    bool PrintReportDefs() const { return m_printReportDefs; }
    void setPrintReportDefs(bool print) { change(m_printReportDefs, print); }
    bool CSVReportDefs() const { return m_header.csvReportDefs; }
    void setCSVReportDefs(bool csv) { change(m_header.csvReportDefs, csv); }
    /// The reports use the project's default dates.
    bool DefaultDates() const { return m_header.defaultDates; }
    void setDefaultDates(bool use) { change(m_header.defaultDates, use); }
    /// 2 makes sub-projects of the cost centres in CCs only; changing to it empties CCs.
    qint16 CCSubType() const { return m_header.subType; }
    void setCCSubType(qint16 type);
    /// Cost-centre level 1 to 5.
    qint16 CCSubLevel() const { return m_header.subLevel; }
    void setCCSubLevel(qint16 level) { change(m_header.subLevel, level); }
    /// The files of each sub-project are e-mailed.
    bool CCSubEmail() const { return m_header.subEmail; }
    void setCCSubEmail(bool email) { change(m_header.subEmail, email); }
    clsStrings& CCs() { return m_ccs; }
    const clsStrings& CCs() const { return m_ccs; }
    void setCCs(const clsStrings& costCentres) { m_ccs = costCentres; }

private:
    template <class T>
    void change(T& field, const T& value) {
        field = value;
        m_hasChanged = true;
    }
    /// All rows of one template as they are stored.
    struct StoredRows {
        RecordSet header;
        QStringList costCentres;
        RecordSet reports;
        bool operator==(const StoredRows& other) const;
    };
    StoredRows readRows(int templateId) const;
    bool isChangedSinceLoad(int id) const;
    /// What a save writes.
    struct NewRows {
        ColumnValues header;
        QList<ColumnValues> reports;
        QStringList costCentres;
        QString wording() const;
    };
    NewRows newRows(const TemplateHeader& header);
    bool isStored(int id, const NewRows& rows) const;
    int storedTwin(const TemplateHeader& header, const NewRows& rows) const;
    bool titleIsUsed(const TemplateHeader& header) const;
    int writeHeader(const TemplateHeader& header, const ColumnValues& columns);
    void handOverExcludedNumbers(int id);
    void copyExcludedNumbers(int from, int to);
    void replaceReports(int id, const QList<ColumnValues>& rows);
    void replaceCostCentres(int id);

    Connection& m_connection;
    const CurrentProject& m_project;
    TemplateHeader m_header;
    std::optional<StoredRows> m_loaded; ///< until it is saved
    clsReports_Collection m_reports;
    clsStrings m_ccs;
    bool m_printReportDefs = false;
    bool m_hasChanged = false;
    bool m_outcomeUnknown = false; ///< a commit failed, or its answer got lost
};

#pragma once

#include "parameters/ProjectLists.h"
#include "ui/ScreenDialog.h"

#include <memory>
#include <optional>

class QListWidgetItem;
class clsReport;
class clsReportParameters;
class frmRangeSel;
class uctParameterGroup;
class uctTextChoice;
struct CatalogueEntry;
struct EditedReport;
namespace Ui {
class frmSelectParameters;
}

/// Edits the parameters of one report in the groups that its catalogue entry offers. It works on a
/// copy: on Save the copy becomes the report's parameters and the caller is told.
class frmSelectParameters : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmSelectParameters(ScreenContext& context, QWidget* parent = nullptr);
    ~frmSelectParameters() override;

    /// Shows the report's parameters; 0 on success. The report must outlive the screen. `templateId` says
    /// whose exclusion list it has: -1 for a template never saved.
    int Setup(clsReport& report, int templateId);
    /// Shows the working copy anew in all groups.
    void RefreshParams();

public slots:
    void CalledBackCallsTo();
    void CalledBackCallsFrom();
    void CalledBackCallsNotTo();

protected:
    bool mayClose() override;
    bool tellsWhenCancelled() const override { return false; }

private slots:
    void cmdSave_Click();
    void cmdReportCaption_Click();
    void cmdReportHeader_Click();
    void cmdCalls_Click();

private:
    struct Group {
        uctParameterGroup* widget;
        QWidget* frame;
        QListWidgetItem* item;
    };

    void buildGroups(const EditedReport& report);
    void buildLineGroups(const EditedReport& report);
    void buildChoiceGroups(const EditedReport& report);
    /// Adds a group, made from `arguments` and its parent, in a frame of this object name.
    template <class GroupWidget, class... Arguments>
    GroupWidget* add(const QString& frame, const QString& title, const Arguments&... arguments);
    void announce(uctParameterGroup* group, QWidget* frame, const QString& title);
    void buildFooter();
    void goTo(int group, bool focus);
    /// Marks the group at the top of the scrolled area in the list.
    void followScrolling();
    void save();
    void goToFault();
    void showTexts();
    /// Asks until the answer can be used; nothing when the user gives up.
    std::optional<QString> askText(const QString& prompt, QString text, QString (*fault)(const QString&));
    void editNumbers(const QString& title, const QString& routine);

    std::unique_ptr<Ui::frmSelectParameters> m_ui;
    ProjectLists m_lists;
    clsReport* m_report = nullptr;
    const CatalogueEntry* m_entry = nullptr;
    std::shared_ptr<clsReportParameters> m_working;
    std::vector<Group> m_groups; ///< in the order shown
    uctTextChoice* m_sourceBill = nullptr;
    std::unique_ptr<frmRangeSel> m_rangeSel; ///< while it is open
    bool m_changed = false;
};

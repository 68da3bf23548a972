#pragma once

#include "schedules/clsSchedule.h"
#include "ui/ScreenDialog.h"

#include <functional>
#include <memory>

class QToolButton;
namespace Ui {
class frmSchedule;
}

/// Makes a new schedule or edits one that waits for its run: its title, the project, the template and
/// the time. The project that is chosen becomes the session's current one.
class frmSchedule : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmSchedule(ScreenContext& context, QWidget* parent = nullptr);
    ~frmSchedule() override;

    /// clsSchedule::notStored prepares a new schedule. 0 when the schedule could be loaded; a project
    /// that cannot be used any more is told and left to be chosen anew.
    int Setup(int scheduleId);

public slots:
    /// For the template screens that close.
    void CalledBack();

protected:
    bool mayClose() override;

private slots:
    void cmdOpen_Click();
    void cmbTemplate_Click();
    void cmdSave_Click();
    void cmdSaveAs_Click();
    void cmdDelete_Click();
    void cmdEditTemplate_Click();
    void cmdAddTemplate_Click();
    void cmdReports_Click();
    void cmdCCSub_Click();
    void txtTitle_Change();
    void dtRunOn_Change();

private:
    void buildFooter();
    void connectControls();
    void RefreshForm();
    void showTitleLength();
    void showProject();
    void fillHistory();
    void fillTemplates();
    void selectTemplate();
    void editTemplate(const QString& failure);
    void takeTemplate(int id);

    void openStoredProject();
    void chooseFromHistory(int row);
    void takeCurrentProject();
    bool isProjectChosen() const;
    bool makeProjectCurrent();

    bool checkTitle(const QString& title);
    bool checkProject();
    bool checkTemplate();
    bool checkRunDate();
    void save(const QString& newTitle);
    bool prepareProject(bool keepsProject);
    bool isTemplateThere();
    void showUpdateStep(int step, int steps);
    bool store(const QString& newTitle);
    bool refused(const QString& text, QWidget* field);
    void tellRunMeanwhile();

    std::unique_ptr<Ui::frmSchedule> m_ui;
    QToolButton* m_cmdSaveAs = nullptr;
    QToolButton* m_cmdDelete = nullptr;
    clsSchedule m_schedule;
    QString m_projectProblem; ///< why the schedule's project cannot be used; empty while it can
    QString m_newTitle;       ///< as typed for the last save-as, which was refused
    bool m_ready = false;     ///< changes of the controls are the user's
    bool m_saving = false;
};

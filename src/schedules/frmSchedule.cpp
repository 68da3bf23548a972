#include "schedules/frmSchedule.h"

#include "base/Session.h"
#include "base/modCommonFunctions.h"
#include "db/DbError.h"
#include "db/Refusal.h"
#include "projects/frmSQLServerDatabases.h"
#include "schedules/ProjectHistory.h"
#include "schedules/ScheduleChoices.h"
#include "schedules/frmSeries.h"
#include "schedules/modScheduler.h"
#include "templates/frmTemplate.h"
#include "templates/frmTransfer.h"
#include "templates/modTemplates.h"
#include "ui/Cursors.h"
#include "ui/FollowFocus.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/SlotGuard.h"
#include "ui/TypedSeparators.h"
#include "ui/WindowSize.h"
#include "ui/openScreen.h"
#include "ui_frmSchedule.h"

#include <QScopedValueRollback>

namespace {

const QString selectProject = "Please select a project";

} // namespace

frmSchedule::frmSchedule(ScreenContext& screenContext, QWidget* parent)
    : ScreenDialog(screenContext, parent), m_ui(std::make_unique<Ui::frmSchedule>()), m_schedule(session()) {
    m_ui->setupUi(this);
    m_ui->dtRunOn->setLocale(QLocale::c()); // English month names, whatever the desktop's language
    m_ui->dtRunOnTime->setLocale(QLocale::c());
    for (QDateTimeEdit* edit :
         {static_cast<QDateTimeEdit*>(m_ui->dtRunOn), static_cast<QDateTimeEdit*>(m_ui->dtRunOnTime)})
        takeTypedSeparators(*edit);
    m_ui->cmdCCSub->setVisible(session().userLevel != UserLevel::Restricted);
    setReadOnly(*m_ui->txtProject, true);
    setTextColour(*m_ui->lblProjectProblem, Palette::problem());
    buildFooter();
    connectControls();
    followFocus(*m_ui->scroll);
    resizeToText(*this, 110, 30);
}

frmSchedule::~frmSchedule() = default;

void frmSchedule::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    m_cmdDelete = footer.add("Delete", "De&lete Schedule", "edit-delete", "Delete this schedule and its log",
                             this, &frmSchedule::cmdDelete_Click);
    m_cmdRepeat = footer.add("Repeat", "Repeat…", "view-calendar-month",
                             "Save a schedule for each of many days", this, &frmSchedule::cmdRepeat_Click);
    m_cmdRepeat->setShortcut(Qt::CTRL | Qt::Key_R);
    footer.addStretch();
    footer.add("Save", "&Save", "document-save", "Save the schedule", this, &frmSchedule::cmdSave_Click);
    m_cmdSaveAs =
        footer.add("SaveAs", "Sa&ve As", "document-save-as", "Save as a new schedule under another title",
                   this, &frmSchedule::cmdSaveAs_Click);
    footer.add("Exit", "E&xit", "dialog-close", "Return to the previous screen", this, &frmSchedule::reject);
}

void frmSchedule::connectControls() {
    connect(m_ui->txtTitle, &QLineEdit::textChanged, this, &frmSchedule::txtTitle_Change);
    connect(m_ui->txtTitle, &QLineEdit::returnPressed, this, &frmSchedule::cmdSave_Click);
    connect(m_ui->cmdOpen, &QPushButton::clicked, this, &frmSchedule::cmdOpen_Click);
    connect(m_ui->lstHistory, &uctProjectHistory::projectChosen, this, &frmSchedule::chooseFromHistory);
    connect(m_ui->paneUpdate, &uctProjectUpdate::stepShown, this,
            [this] { m_ui->scroll->ensureWidgetVisible(m_ui->paneUpdate); });
    connect(m_ui->cmbTemplate, &QComboBox::currentIndexChanged, this, &frmSchedule::cmbTemplate_Click);
    connect(m_ui->cmdEditTemplate, &QPushButton::clicked, this, &frmSchedule::cmdEditTemplate_Click);
    connect(m_ui->cmdAddTemplate, &QPushButton::clicked, this, &frmSchedule::cmdAddTemplate_Click);
    connect(m_ui->cmdReports, &QPushButton::clicked, this, &frmSchedule::cmdReports_Click);
    connect(m_ui->cmdCCSub, &QPushButton::clicked, this, &frmSchedule::cmdCCSub_Click);
    connect(m_ui->dtRunOn, &QDateEdit::dateChanged, this, &frmSchedule::dtRunOn_Change);
    connect(m_ui->dtRunOnTime, &QTimeEdit::timeChanged, this, &frmSchedule::dtRunOn_Change);
}

int frmSchedule::Setup(int id, Purpose purpose) {
    int result = 0;
    const bool done = load([&] {
        result = prepare(id, purpose);
        if (result != clsSchedule::Loaded) {
            session().log.write("frmSchedule.Setup", 1,
                                QString("Schedule %1 could not be loaded (%2).").arg(id).arg(result));
            return;
        }
        const bool stored = m_schedule.ID() != clsSchedule::notStored;
        if (stored && !WallClock::fromStored(m_schedule.StoredRunDate()))
            messages().notice(parentWidget(),
                              QString("The stored run date '%1' is no date. Please check the date that "
                                      "is shown before you save.")
                                  .arg(m_schedule.StoredRunDate()));
        m_cmdSaveAs->setVisible(stored);
        m_ui->footer->setUsable(m_cmdRepeat, !stored,
                                "Run Again… makes a new schedule of this one, which can be repeated.");
        m_cmdDelete->setVisible(stored);
        m_ui->header->setNote(stored ? "Edit a schedule" : "Add a schedule");
        RefreshForm();
        m_schedule.setHasChanged(false);
    });
    return done ? result : -1;
}

clsSchedule::LoadResult frmSchedule::prepare(int id, Purpose purpose) {
    if (purpose == ForTemplate || id == clsSchedule::notStored) {
        m_schedule.Clear();
        if (purpose == ForTemplate) takeNewTemplate(id);
        return clsSchedule::Loaded;
    }
    const clsSchedule::LoadResult result = m_schedule.LoadSchedule(id);
    if (result != clsSchedule::Loaded) return result;
    openStoredProject();
    if (purpose == CopyOfSchedule)
        m_schedule.makeNew(freeScheduleTitle(session(), m_schedule.Title()), WallClock::now());
    return result;
}

void frmSchedule::takeNewTemplate(int templateId) {
    auto chosen = std::make_unique<clsTemplate>(session().db(), session().project);
    if (!chosen->LoadTemplate(templateId))
        throw Refusal("This template has been deleted by somebody else in the meantime.");
    m_schedule.setTitle(freeScheduleTitle(session(), cutText(chosen->Title(), clsSchedule::longestTitle)));
    if (session().project.isOfAccount(chosen->UnitabAccount()))
        m_schedule.setProjectFile(session().project.database);
    m_schedule.setTemplate(std::move(chosen));
}

/// The account of the project decides which templates are offered.
void frmSchedule::openStoredProject() {
    const QString& database = m_schedule.ProjectFile();
    m_projectProblem = projectProblem(session(), database);
    if (!m_projectProblem.isEmpty()) {
        messages().notice(parentWidget(),
                          m_projectProblem + " You can choose another project for this schedule.");
    } else if (!makeProjectCurrent()) {
        m_projectProblem = QString("The project '%1' cannot be used.").arg(database);
    }
}

void frmSchedule::RefreshForm() {
    m_ready = false;
    fillTemplates();
    m_ui->txtTitle->setText(m_schedule.Title());
    showTitleLength();
    showProject();
    m_ui->lstHistory->fill(session());
    showRunDate();
    m_ready = true;
}

/// Seconds of the present matter to nobody.
void frmSchedule::showRunDate() {
    const QTime time = m_schedule.RunDate().time();
    const bool isStored = m_schedule.ID() != clsSchedule::notStored;
    m_ui->dtRunOn->setDate(m_schedule.RunDate().date());
    showTime(*m_ui->dtRunOnTime, isStored ? time : QTime(time.hour(), time.minute()));
}

void frmSchedule::showTitleLength() {
    const qsizetype length = m_ui->txtTitle->text().size();
    m_ui->lblTitleLength->setText(QString("%1 of %2").arg(length).arg(clsSchedule::longestTitle));
    setTextColour(*m_ui->lblTitleLength,
                  length > clsSchedule::longestTitle ? Palette::problem() : Palette::subtleText());
}

void frmSchedule::showProject() {
    const QString& project = m_schedule.ProjectFile();
    m_ui->txtProject->setText(project.isEmpty() ? selectProject : project);
    m_ui->txtProject->setCursorPosition(0);
    m_ui->lblProjectProblem->setText(m_projectProblem);
    m_ui->lblProjectProblem->setVisible(!m_projectProblem.isEmpty());
}

void frmSchedule::fillTemplates() {
    const QScopedValueRollback filling(m_ready, false);
    // A project that is gone leaves the account of the schedule's template.
    const QString account =
        isProjectChosen() ? session().project.unitabAccount : m_schedule.Template().UnitabAccount();
    QComboBox& list = *m_ui->cmbTemplate;
    list.clear();
    if (!account.isEmpty())
        for (const TemplateHeader& header : templatesOfAccount(session(), account))
            list.addItem(header.title, header.id);
    list.setPlaceholderText(account.isEmpty()   ? "Select a project first"
                            : list.count() == 0 ? "There is no template for this project yet"
                                                : "Select a template");
    selectTemplate();
}

void frmSchedule::selectTemplate() {
    m_ui->cmbTemplate->setCurrentIndex(m_ui->cmbTemplate->findData(m_schedule.Template().ID()));
    m_ui->cmdEditTemplate->setEnabled(m_ui->cmbTemplate->currentIndex() >= 0);
}

/// Whoever makes a template from here wants it for the schedule.
void frmSchedule::takeTemplate(int id) {
    const int place = m_ui->cmbTemplate->findData(id);
    if (id != -1 && place >= 0) m_ui->cmbTemplate->setCurrentIndex(place);
}

bool frmSchedule::isProjectChosen() const {
    return !m_schedule.ProjectFile().isEmpty() && m_projectProblem.isEmpty();
}

bool frmSchedule::makeProjectCurrent() {
    return session().project.database == m_schedule.ProjectFile()
           || useProject(context(), this, m_schedule.ProjectFile());
}

void frmSchedule::cmdOpen_Click() {
    run([this] {
        if (chooseProject(context(), this, m_schedule.Template().UnitabAccount())) takeCurrentProject();
    });
}

void frmSchedule::chooseFromHistory(const QString& database) {
    run(
        [&] {
            if (isProjectChosen() && database == m_schedule.ProjectFile()) return; // the second click of two
            const QString problem = projectProblem(session(), database);
            if (!problem.isEmpty())
                messages().notice(this, problem);
            else if (useProject(context(), this, database))
                takeCurrentProject();
        },
        {}, "frmSchedule.lstHistory_Click");
}

void frmSchedule::takeCurrentProject() {
    const QString& database = session().project.database;
    if (database != m_schedule.ProjectFile()) m_schedule.setProjectFile(database);
    m_projectProblem.clear();
    projectHistory::remember(session(), database);
    showProject();
    m_ui->lstHistory->fill(session());
    fillTemplates();
}

void frmSchedule::cmbTemplate_Click() {
    if (!m_ready || m_ui->cmbTemplate->currentIndex() < 0) return;
    run([this] {
        auto chosen = std::make_unique<clsTemplate>(session().db(), session().project);
        if (chosen->LoadTemplate(m_ui->cmbTemplate->currentData().toInt())) {
            m_schedule.setTemplate(std::move(chosen));
        } else {
            messages().notice(this, "This template has been deleted by somebody else in the meantime.");
            fillTemplates();
        }
    });
    selectTemplate();
}

void frmSchedule::txtTitle_Change() {
    showTitleLength();
    if (m_ready) m_schedule.setTitle(m_ui->txtTitle->text());
}

void frmSchedule::dtRunOn_Change() {
    if (m_ready) m_schedule.setRunDate({m_ui->dtRunOn->date(), m_ui->dtRunOnTime->time()});
}

void frmSchedule::CalledBack() {
    run([this] {
        const int id = m_schedule.Template().ID();
        const bool changed = m_schedule.HasChanged();
        auto reloaded = std::make_unique<clsTemplate>(session().db(), session().project);
        if (id != -1) reloaded->LoadTemplate(id);
        m_schedule.setTemplate(std::move(reloaded));
        m_schedule.setHasChanged(changed);
        if (isProjectChosen() && !makeProjectCurrent())
            m_projectProblem = "The project cannot be used any more.";
        showProject();
        fillTemplates();
    });
}

bool frmSchedule::refused(const QString& text, QWidget* field) {
    messages().notice(this, text);
    field->setFocus();
    return false;
}

bool frmSchedule::checkTitle(const QString& title) {
    const QString problem = scheduleTitleProblem(title);
    return problem.isEmpty() || refused(problem, m_ui->txtTitle);
}

bool frmSchedule::checkProject() {
    if (isProjectChosen()) return true;
    const QString refusal =
        m_projectProblem.isEmpty() ? selectProject : m_projectProblem + " Please choose another project.";
    return refused(refusal, m_ui->cmdOpen);
}

bool frmSchedule::checkTemplate() {
    return m_ui->cmbTemplate->currentIndex() >= 0 || refused("Please select a template", m_ui->cmbTemplate);
}

bool frmSchedule::checkRunDate() {
    const QString problem = runDateProblem(m_schedule.RunDate());
    return problem.isEmpty() || refused(problem, m_ui->dtRunOn);
}

bool frmSchedule::saveAtOnce() {
    cmdSave_Click();
    return m_savedId.has_value();
}

void frmSchedule::cmdSave_Click() {
    run(
        [this] {
            if (checkTitle(m_schedule.Title()) && (m_schedule.KeepsProject() || checkProject())
                && checkTemplate() && checkRunDate())
                save({});
        },
        "Error saving schedule");
}

void frmSchedule::cmdSaveAs_Click() {
    run(
        [this] {
            if (!checkProject() || !checkTemplate()) return;
            const QString proposed = m_newTitle.isEmpty() ? m_schedule.Title() : m_newTitle;
            const QString title =
                messages().input(this, "Please enter a new schedule title", proposed).value_or(QString());
            if (title.isEmpty()) return;
            m_newTitle = title;
            if (checkTitle(title)) save(title);
        },
        "Error saving schedule");
}

void frmSchedule::cmdRepeat_Click() {
    run([this] {
        if (!checkTitle(m_schedule.Title()) || !checkProject() || !checkTemplate()) return;
        if (!prepareProject(false) || !isTemplateThere()) return;
        const ScheduleRow first{m_schedule.Title(),       m_schedule.Template().ID(),
                                m_schedule.ProjectFile(), {},
                                ScheduleStatus::Pending,  session().userName};
        const auto series =
            setUpScreen<frmSeries>(context(), this, "Error loading the series", first,
                                   WallClock(m_ui->dtRunOn->date(), m_ui->dtRunOnTime->time()));
        if (!series || series->exec() != QDialog::Accepted) return;
        m_savedSeries = series->savedCount();
        try {
            m_savedId = scheduleOfTitle(session(), series->firstTitle());
        } catch (const DbError& error) { // they are stored all the same
            session().log.write("frmSchedule.cmdRepeat_Click", error);
        }
        callBackAndClose();
    });
}

QString frmSchedule::savedText() const {
    return m_savedSeries > 0 ? QString("%1 schedules were saved.").arg(m_savedSeries)
                             : QString("The schedule '%1' was saved.").arg(m_schedule.Title());
}

void frmSchedule::save(const QString& newTitle) {
    if (m_saving) return;
    const QScopedValueRollback saving(m_saving, true);
    bool stored = false;
    {
        WaitCursor wait;
        const bool keepsProject = newTitle.isEmpty() && m_schedule.KeepsProject();
        stored = prepareProject(keepsProject) && isTemplateThere() && store(newTitle);
    }
    if (!stored) return;
    m_savedId = m_schedule.ID();
    callBackAndClose();
}

/// The project may have vanished since it was chosen, and an older one has to be brought up to date. A
/// stored schedule may keep its project whatever became of it.
bool frmSchedule::prepareProject(bool keepsProject) {
    if (keepsProject && !m_projectProblem.isEmpty()) return true;
    const QString problem = projectProblem(session(), m_schedule.ProjectFile());
    if (!problem.isEmpty())
        return keepsProject || refused(problem + " Please choose another project.", m_ui->cmdOpen);
    if (!makeProjectCurrent()) return keepsProject;
    m_ui->paneUpdate->bringUpToDate(context());
    return true;
}

bool frmSchedule::isTemplateThere() {
    if (readTemplateType(session().db(), m_schedule.Template().ID())) return true;
    fillTemplates();
    return refused(
        "This template has been deleted by somebody else in the meantime. Please select another one.",
        m_ui->cmbTemplate);
}

/// What stands against the save is told or asked; nothing that was entered is lost.
bool frmSchedule::store(const QString& newTitle) {
    const clsSchedule::SaveResult result = m_schedule.SaveSchedule(newTitle, false);
    switch (result) {
    case clsSchedule::Saved:
        return true;
    case clsSchedule::TitleMissing:
    case clsSchedule::TitleExists:
        return refused(saveProblem(result), m_ui->txtTitle);
    case clsSchedule::RunMeanwhile:
        tellRunMeanwhile();
        return false;
    case clsSchedule::Gone:
        return messages().ask(this, "This schedule was deleted by somebody else in the meantime.\n\n"
                                    "Do you want to save it as a new schedule?")
               && store(m_schedule.Title());
    case clsSchedule::ChangedMeanwhile: {
        const QString question = "This schedule was changed by '%1' while you were editing it: %2.\n\n"
                                 "Do you want to overwrite these changes with yours?";
        if (!messages().ask(this,
                            question.arg(m_schedule.ForeignUser(), m_schedule.ForeignChanges().join("; "))))
            return false;
        m_schedule.acceptForeignChanges();
        return store(newTitle);
    }
    }
    messages().notice(this, saveProblem(result));
    return false;
}

void frmSchedule::tellRunMeanwhile() {
    const QString what = m_schedule.GetStatus() == ScheduleStatus::Processing ? "started to run" : "run";
    messages().notice(
        this, QString("The engine has %1 this schedule while you were editing it, so your changes were "
                      "not saved.\n\nYou can keep them as a new schedule with Save As.")
                  .arg(what));
}

void frmSchedule::cmdDelete_Click() {
    run([this] {
        if (!messages().ask(this, "are you sure you want to delete this schedule?")) return;
        {
            WaitCursor wait;
            DeleteSchedule(session(), m_schedule.ID());
        }
        callBackAndClose();
    });
}

bool frmSchedule::mayClose() {
    if (m_saving) return false;
    return !m_schedule.HasChanged() || messages().ask(this, "Are you sure you want to cancel your changes?");
}

void frmSchedule::cmdEditTemplate_Click() {
    run([this] {
        if (checkProject()) editTemplate("Error Loading Template");
    });
}

/// In the editor of its type: the other one would drop what is entered there.
void frmSchedule::editTemplate(const QString& failure) {
    const int id = m_schedule.Template().ID();
    if (readTemplateType(session().db(), id).value_or(0) == 0)
        openScreen<frmTemplate>(context(), this, failure, id);
    else
        openScreen<frmTransfer>(context(), this, "Error Loading " + m_schedule.Template().Title(), id);
}

void frmSchedule::cmdAddTemplate_Click() {
    run([this] {
        if (!checkProject()) return;
        if (const auto editor = openScreen<frmTemplate>(context(), this, "Error Loading Template", -1))
            takeTemplate(editor->ID());
    });
}

void frmSchedule::cmdReports_Click() {
    run([this] {
        if (checkProject() && checkTemplate()) editTemplate("Error Loading " + m_schedule.Template().Title());
    });
}

/// Edits the selected template when it is one of sub-projects, else makes a new one.
void frmSchedule::cmdCCSub_Click() {
    run([this] {
        if (session().userLevel == UserLevel::Restricted) {
            messages().notice(this, "'Cost Centre Sub Project' schedules are not allowed for level 4 users.");
            return;
        }
        if (!checkProject()) return;
        const bool edit = m_ui->cmbTemplate->currentIndex() >= 0 && m_schedule.Template().TemplateType() != 0;
        const auto screen = openScreen<frmTransfer>(
            context(), this, "Error Loading " + (edit ? m_schedule.Template().Title() : QString("Template")),
            edit ? m_schedule.Template().ID() : -1);
        if (screen) takeTemplate(screen->ID());
    });
}

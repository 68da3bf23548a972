#include "schedules/frmChangeSchedules.h"

#include "base/Session.h"
#include "base/WallClock.h"
#include "db/Refusal.h"
#include "db/ServerText.h"
#include "db/StoredTitle.h"
#include "projects/frmSQLServerDatabases.h"
#include "schedules/ScheduleChoices.h"
#include "templates/TemplateSummary.h"
#include "ui/Cursors.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/TypedSeparators.h"
#include "ui/WindowSize.h"
#include "ui_frmChangeSchedules.h"

namespace {

constexpr int secondsOfHour = 3600;
constexpr int secondsOfDay = 24 * secondsOfHour;

} // namespace

frmChangeSchedules::frmChangeSchedules(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmChangeSchedules>()) {
    m_ui->setupUi(this);
    setReadOnly(*m_ui->txtProject, true);
    setTextColour(*m_ui->lblNote, Palette::subtleText());
    m_ui->dtTime->setLocale(QLocale::c());
    takeTypedSeparators(*m_ui->dtTime);
    m_ui->cmbMove->addItem("hours", secondsOfHour);
    m_ui->cmbMove->addItem("days", secondsOfDay);
    m_ui->cmbMove->addItem("weeks", 7 * secondsOfDay);
    m_ui->cmbMove->setCurrentIndex(1);
    m_ui->cmbState->addItem("Pending", true);
    m_ui->cmbState->addItem("Disabled", false);
    uctFooter& footer = *m_ui->footer;
    footer.addStretch();
    m_cmdSave = footer.add("Save", "&Save", "document-save", "Change the schedules", this,
                           &frmChangeSchedules::cmdSave_Click);
    footer.add("Cancel", "&Cancel", "dialog-cancel", "Return without a change", this, &QDialog::reject);

    connect(m_ui->cmdOpen, &QPushButton::clicked, this, &frmChangeSchedules::cmdOpen_Click);
    for (QCheckBox* box :
         {m_ui->chkTime, m_ui->chkMove, m_ui->chkProject, m_ui->chkTemplate, m_ui->chkState, m_ui->chkOwner})
        connect(box, &QCheckBox::toggled, this, &frmChangeSchedules::updateControls);
    connect(m_ui->cmbTemplate, &QComboBox::currentIndexChanged, this, &frmChangeSchedules::updateControls);
    connect(m_ui->spnMove, &QSpinBox::valueChanged, this, &frmChangeSchedules::updateControls);
    resizeToText(*this, 80, 20);
}

frmChangeSchedules::~frmChangeSchedules() = default;

int frmChangeSchedules::Setup(const QList<int>& ids) {
    const bool done = load([&] {
        m_schedules = readScheduleRows(session(), ids);
        m_ui->header->setNote(m_schedules.size() == 1 ? shownTitle(m_schedules.first().title)
                                                      : QString("%1 schedules").arg(m_schedules.size()));
        if (!m_schedules.isEmpty())
            if (const auto date = WallClock::fromStored(m_schedules.first().runDate))
                m_ui->dtTime->setTime(QTime(date->time().hour(), date->time().minute()));
        fillTemplates();
        fillOwners();
        updateControls();
    });
    return done && !m_schedules.isEmpty() ? 0 : -1;
}

/// Those of the new project's account, or else of the one account that all the schedules have.
void frmChangeSchedules::fillTemplates() {
    m_ui->cmbTemplate->clear();
    m_account = m_ui->txtProject->text().isEmpty() ? QString() : session().project.unitabAccount;
    if (m_account.isEmpty()) {
        const auto templates = loadTemplateSummaries(session().db());
        QMap<QString, QString> accounts;
        for (const ScheduleRow& schedule : m_schedules) {
            const QString account = templates.value(schedule.templateId).header.unitabAccount;
            accounts.insert(serverKey(account), account);
        }
        if (accounts.size() == 1) m_account = accounts.first();
    }
    if (!m_account.isEmpty())
        for (const TemplateHeader& header : templatesOfAccount(session(), m_account))
            m_ui->cmbTemplate->addItem(header.title, header.id);
    m_ui->cmbTemplate->setCurrentIndex(-1);
    m_ui->cmbTemplate->setPlaceholderText(m_account.isEmpty() ? "The schedules are of several accounts"
                                                              : "Select a template");
}

void frmChangeSchedules::fillOwners() {
    const bool mayGive = session().isAdministrator();
    m_ui->chkOwner->setVisible(mayGive);
    m_ui->cmbOwner->setVisible(mayGive);
    if (!mayGive) return;
    for (const ProductUser& user : readProductUsers(session())) m_ui->cmbOwner->addItem(user.name);
}

void frmChangeSchedules::updateControls() {
    const bool haveRun =
        std::ranges::any_of(m_schedules, [](const ScheduleRow& row) { return isFinished(row.status); });
    for (QCheckBox* box : {m_ui->chkTime, m_ui->chkMove, m_ui->chkProject, m_ui->chkTemplate, m_ui->chkState})
        box->setEnabled(!haveRun);
    m_ui->lblNote->setText(haveRun ? "Schedules that have run can only be given to another user." : "");
    m_ui->lblNote->setVisible(haveRun);
    m_ui->dtTime->setEnabled(m_ui->chkTime->isChecked());
    m_ui->spnMove->setEnabled(m_ui->chkMove->isChecked());
    m_ui->cmbMove->setEnabled(m_ui->chkMove->isChecked());
    m_ui->txtProject->setEnabled(m_ui->chkProject->isChecked());
    m_ui->cmdOpen->setEnabled(m_ui->chkProject->isChecked());
    m_ui->cmbTemplate->setEnabled(m_ui->chkTemplate->isChecked() && !m_account.isEmpty());
    m_ui->cmbState->setEnabled(m_ui->chkState->isChecked());
    m_ui->cmbOwner->setEnabled(m_ui->chkOwner->isChecked());
    m_ui->footer->setUsable(m_cmdSave, !change().isEmpty(), "Tick and choose what is to change.");
}

BulkChange frmChangeSchedules::change() const {
    BulkChange change;
    if (m_ui->chkTime->isChecked()) change.time = m_ui->dtTime->time();
    if (m_ui->chkMove->isChecked())
        change.moveBy = qint64(m_ui->spnMove->value()) * m_ui->cmbMove->currentData().toInt();
    if (m_ui->chkProject->isChecked() && !m_ui->txtProject->text().isEmpty())
        change.project = m_ui->txtProject->text();
    if (m_ui->chkTemplate->isChecked() && m_ui->cmbTemplate->currentIndex() >= 0)
        change.templateId = m_ui->cmbTemplate->currentData().toInt();
    if (m_ui->chkState->isChecked()) change.enabled = m_ui->cmbState->currentData().toBool();
    if (m_ui->chkOwner->isChecked()) change.owner = m_ui->cmbOwner->currentText();
    return change;
}

void frmChangeSchedules::cmdOpen_Click() {
    run([this] {
        if (!chooseProject(context(), this, m_account)) return;
        m_ui->txtProject->setText(session().project.database);
        fillTemplates();
        updateControls();
    });
}

/// A project of an older version is brought up to date before schedules name it.
bool frmChangeSchedules::prepareProject() {
    if (!useProject(context(), this, m_ui->txtProject->text())) return false;
    m_ui->paneUpdate->bringUpToDate(context());
    return true;
}

void frmChangeSchedules::cmdSave_Click() {
    run(
        [this] {
            const BulkChange wanted = change();
            if (m_ui->chkProject->isChecked() && !wanted.project) throw Refusal("Please select a project");
            if (m_ui->chkTemplate->isChecked() && !wanted.templateId)
                throw Refusal("Please select a template");
            if (!mayChange(context(), this, m_schedules, wanted)) return;
            if (wanted.project && !prepareProject()) return;
            m_savedText = changeAndTell(context(), this, m_schedules, wanted);
            callBackAndClose();
        },
        "Error saving schedule");
}

int overdueCount(const QMap<int, ScheduleRow>& schedules, const BulkChange& change) {
    if (!change.enabled.value_or(false)) return 0;
    return int(std::ranges::count_if(schedules, [](const ScheduleRow& row) {
        const auto date = WallClock::fromStored(row.runDate);
        return row.status == ScheduleStatus::Disabled && date && *date < WallClock::now();
    }));
}

bool mayChange(ScreenContext& context, QWidget* parent, const QMap<int, ScheduleRow>& schedules,
               const BulkChange& change) {
    QString question =
        schedules.size() == 1
            ? QString("Are you sure you want to change the schedule '%1' ?")
                  .arg(shownTitle(schedules.first().title))
            : QString("Are you sure you want to change the %1 selected schedules ?").arg(schedules.size());
    if (const int overdue = overdueCount(schedules, change); overdue > 0)
        question +=
            QString("\n\nThe time of %1 of them has passed: once enabled, the engine runs these at once.")
                .arg(overdue);
    return context.messages.ask(parent, question);
}

QString changeAndTell(ScreenContext& context, QWidget* parent, const QMap<int, ScheduleRow>& schedules,
                      const BulkChange& change) {
    BulkOutcome outcome;
    {
        WaitCursor wait;
        outcome = changeSchedules(context.session, schedules, change);
    }
    const qsizetype left = outcome.leftAlone.size();
    if (left > 0)
        context.messages.notice(
            parent, QString("%1 of the %2 schedules were left alone.").arg(left).arg(schedules.size()),
            Messages::Plain, {}, outcome.leftAlone.join('\n'));
    return outcome.changed == 1 ? QString("1 schedule was changed.")
                                : QString("%1 schedules were changed.").arg(outcome.changed);
}

#include "schedules/frmMainScreen.h"

#include "base/MailOptions.h"
#include "base/Session.h"
#include "base/SettingsStore.h"
#include "base/Version.h"
#include "base/modOptions.h"
#include "db/DbError.h"
#include "db/SchedulerDatabase.h"
#include "schedules/frmSchedule.h"
#include "schedules/frmScheduleView.h"
#include "schedules/modScheduler.h"
#include "templates/frmManageTemplates.h"
#include "ui/Cursors.h"
#include "ui/DateCell.h"
#include "ui/Labels.h"
#include "ui/ListHabits.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui/frmHelp.h"
#include "ui/openScreen.h"
#include "ui/uctColourKey.h"
#include "ui/uctFilterBox.h"
#include "ui_frmMainScreen.h"

#include <QCloseEvent>
#include <QScopeGuard>
#include <QScreen>
#include <QToolButton>
#include <chrono>

namespace {

enum PendingColumn { TitleColumn, StatusColumn, DateColumn, ContentsColumn, TemplateColumn };

const QString sortHint = "(Click on a header to apply sorting)";

QLabel* subtleLabel(const QString& name, const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    setTextColour(*label, Palette::subtleText());
    return label;
}

ListRow listRow(const ScheduleListRow& schedule) {
    ListRow row{schedule.id,
                {schedule.title, statusText(schedule.status), dateCell(schedule.shownDate, schedule.date)}};
    row.toolTip = schedule.problem.isEmpty() ? "Project: " + schedule.project : schedule.problem;
    row.keywords = schedule.project + '\n' + schedule.templateTitle;
    if (isFinished(schedule.status)) return row;
    row.cells << schedule.contents << schedule.templateTitle;
    row.background = schedule.subProjects ? Palette::multiSelectCostCentre() : QColor();
    return row;
}

} // namespace

frmMainScreen::frmMainScreen(ScreenContext& context, QWidget* parent)
    : QMainWindow(parent),
      m_context(context),
      m_ui(std::make_unique<Ui::frmMainScreen>()),
      m_reader(context.session) {
    m_ui->setupUi(this);
    upgradeAtMainScreen(m_context.session.db());
    addMailOptionColumns(m_context.session.db());
    ReadGlobalOptions(m_context.session);
    resizeToText(*this, 180, 40);
    m_ui->header->setNote(QString("%1 on %2").arg(m_context.session.userName, m_context.session.serverName));
    buildLists();
    buildFooter();
    m_ui->splitter->remember("MainScreen");

    m_tmrScheduler.setObjectName("tmrScheduler");
    m_tmrScheduler.setInterval(std::chrono::milliseconds(30'000));
    connect(&m_tmrScheduler, &QTimer::timeout, this, &frmMainScreen::tmrScheduler_Timer);
    connect(&m_reader, &ScheduleReader::changed, this, [this](const ScheduleChanges& changes) {
        showChanges(changes);
        m_tmrScheduler.start();
    });
    connect(&m_reader, &ScheduleReader::failed, this, [this](const DbError& error) {
        tellProblem(error);
        m_tmrScheduler.start();
    });
    FillScheduleList();
    m_context.session.turn(); // filling and sorting take a while each when there are tens of thousands
    ListViewColumnSort(*m_ui->lstSchedules, DateColumn, true);
    ListViewColumnSort(*m_ui->lstFinished, DateColumn, true);
    m_ui->lstSchedules->setFocus();
    if (m_ui->hdrSchedules->isOpen()) selectCurrentRow(*m_ui->lstSchedules);
}

frmMainScreen::~frmMainScreen() = default;

void frmMainScreen::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    footer.add("Add", "&Add Schedule", "list-add", "Add a schedule", this, &frmMainScreen::cmdAdd_Click);
    QToolButton* edit = footer.add("Edit", "&Edit Schedule", "document-edit", "Edit the selected schedule",
                                   this, &frmMainScreen::cmdEdit_Click);
    QToolButton* remove = footer.add("Delete", "&Delete Schedule", "edit-delete",
                                     "Delete the selected schedule", this, &frmMainScreen::cmdDelete_Click);
    footer.addStretch();
    footer.add("ManageTemplates", "Manage &Templates", "view-list-details", "Manage the report templates",
               this, &frmMainScreen::cmdManageTemplates_Click);
    footer.add("Options", "&Options", "configure", "View/edit Scheduler options", this,
               &frmMainScreen::optionsRequested);
    footer.addStretch();
    footer.add("Version", "&Version", "help-about", "View the version number for the Scheduler program", this,
               &frmMainScreen::cmdVersion_Click);
    footer.add("Help", "&Help", "help-contents", "View Scheduler help", this, &frmMainScreen::cmdHelp_Click);
    footer.add("Exit", "E&xit", "application-exit", "Exit the application", this, &QWidget::close);
    footer.needSelection({m_ui->lstSchedules, m_ui->lstFinished}, {edit, remove});
}

void frmMainScreen::buildLists() {
    m_ui->lstSchedules->setColumns({{"Schedule Title", ListColumn::Text, 44},
                                    {"Status", ListColumn::Text, 46},
                                    {"Due To Run", ListColumn::Text, 24},
                                    {"Reports/Sub Projects", ListColumn::Text, 26},
                                    {"Template", ListColumn::Text, 30}},
                                   "PendingSchedules");
    m_ui->lstSchedules->setEmptyText("No schedule is waiting. Add Schedule makes one.");
    m_ui->lstFinished->setColumns({{"Schedule Title", ListColumn::Text, 44},
                                   {"Status", ListColumn::Text, 46},
                                   {"Date/Time Ran", ListColumn::Text, 24}},
                                  "CompletedSchedules");
    m_ui->lstFinished->setEmptyText("No schedule has been run yet.");

    m_ui->hdrSchedules->addWidget(subtleLabel("lblSchedulesTitleSort", sortHint, this));
    m_ui->hdrFinished->addWidget(subtleLabel("lblFinishedTitleSort", sortHint, this));
    m_ui->hdrSchedules->addWidget(filterBox("txtFilterSchedules", *m_ui->lstSchedules));
    m_ui->hdrFinished->addWidget(filterBox("txtFilterFinished", *m_ui->lstFinished));
    auto* key = new uctColourKey("Colour Key", this);
    key->setToolTip("Colour key for the pending schedule types");
    key->add("lblKeyStandard", "Standard Schedule", Palette::standardSchedule());
    key->add("lblKeyMultiCC", "Multi Select CC", Palette::multiSelectCostCentre());
    m_ui->hdrSchedules->addWidget(key);
    m_ui->hdrSchedules->attach(m_ui->lstSchedules, "PendingSchedules", m_ui->panePending);
    m_ui->hdrFinished->attach(m_ui->lstFinished, "CompletedSchedules", m_ui->paneFinished);
    connectList(*m_ui->lstSchedules, false);
    connectList(*m_ui->lstFinished, true);
}

uctFilterBox* frmMainScreen::filterBox(const QString& name, uctListView& list) {
    auto* box = new uctFilterBox(this);
    box->setObjectName(name);
    box->setPlaceholderText("Filter");
    box->setAccessibleName("Filter " + list.accessibleName());
    box->setToolTip("Shows only schedules that hold these words in title, status, template or project");
    box->setMinimumWidth(fontMetrics().averageCharWidth() * 12);
    box->setMaximumWidth(fontMetrics().averageCharWidth() * 28);
    box->attach(list);
    connect(box, &QLineEdit::textChanged, &list, &uctListView::setFilterWords);
    return box;
}

void frmMainScreen::connectList(uctListView& list, bool finished) {
    connect(&list, &uctListView::selectedIdChanged, this, [this, finished] { selectRow(finished); });
    connect(&list, &uctListView::rowActivated, this, &frmMainScreen::cmdEdit_Click);
    connect(&list, &uctListView::deletePressed, this, &frmMainScreen::cmdDelete_Click);
}

void frmMainScreen::selectRow(bool finished) {
    uctListView& list = finished ? *m_ui->lstFinished : *m_ui->lstSchedules;
    const std::optional<int> id = list.selectedId();
    if (!id) {
        if (finished == m_finishedListActive) m_selectedScheduleId = -1;
        return;
    }
    m_selectedScheduleId = *id;
    m_finishedListActive = finished;
    ListViewUnselect(finished ? *m_ui->lstSchedules : *m_ui->lstFinished);
}

void frmMainScreen::FillScheduleList() {
    m_tmrScheduler.stop();
    const auto restart = qScopeGuard([this] { m_tmrScheduler.start(); });
    try {
        showChanges(m_reader.read());
    } catch (const DbError& error) {
        tellProblem(error);
    }
}

/// In the status line, and once for each outage in the error log.
void frmMainScreen::tellProblem(const DbError& error) {
    if (error.number() == DbError::Stopped) return; // who stopped it knows; the next turn of the timer reads
    const QString formerly = m_ui->lblServerState->text();
    if (formerly.isEmpty()) m_problemSince = WallClock::now();
    const QString state =
        error.connectionLost()
            ? QString("The server cannot be reached since %1. The lists show its last state; trying again…")
                  .arg(m_problemSince.time().toString("HH:mm"))
            : "The schedules could not be read: " + error.text().simplified();
    if (state != formerly) m_context.session.log.write("frmMainScreen.FillScheduleList", error);
    m_ui->lblServerState->setText(state);
    m_ui->lblServerState->setToolTip(error.text());
}

void frmMainScreen::showChanges(const ScheduleChanges& changes) {
    std::vector<ListRow> pending;
    std::vector<ListRow> finished;
    std::vector<int> gone = changes.gone;
    if (changes.complete) m_runDates.clear();
    const WallClock now = WallClock::now();
    for (const ScheduleListRow& schedule : changes.rows) {
        gone.push_back(schedule.id); // from the list that it may have left
        if (isFinished(schedule.status)) {
            finished.push_back(listRow(schedule));
            m_runDates.remove(schedule.id);
            continue;
        }
        pending.push_back(listRow(schedule));
        if (schedule.status == ScheduleStatus::Pending)
            pending.back().cells[StatusColumn] = dueText(schedule.date, now);
        m_runDates.insert(schedule.id, schedule.date);
    }
    const int selected = m_selectedScheduleId;
    const auto show = [&](uctListView& list, std::vector<ListRow> rows) {
        if (changes.complete) return list.setRows(std::move(rows));
        std::vector<int> left;
        for (const int id : gone)
            if (list.rows().rowOf(id) >= 0 && std::ranges::find(rows, id, &ListRow::id) == rows.end())
                left.push_back(id);
        list.updateRows(std::move(rows), left);
    };
    show(*m_ui->lstSchedules, std::move(pending));
    show(*m_ui->lstFinished, std::move(finished));
    // A schedule that finished meanwhile is found again in the other list.
    if (m_selectedScheduleId != selected && !m_ui->lstSchedules->selectId(selected))
        m_ui->lstFinished->selectId(selected);
    PopulateScreen(changes.complete); // rows that changed have their due text
    m_ui->lblServerState->clear();
}

void frmMainScreen::PopulateScreen(bool force) {
    const WallClock now = WallClock::now();
    const auto minute = [](const WallClock& time) { return time.order() / 60; };
    if (!force && minute(now) == minute(m_lastDueUpdate)) return;
    const QString pending = statusText(ScheduleStatus::Pending);
    m_ui->lstSchedules->rows().setTexts(StatusColumn, [&](const ListRow& row) -> std::optional<QString> {
        if (!row.cells[StatusColumn].text.startsWith(pending)) return {};
        return dueText(m_runDates.value(row.id), now);
    });
    m_lastDueUpdate = now;
}

void frmMainScreen::CalledBack() {
    run([this] { FillScheduleList(); });
}

void frmMainScreen::tmrScheduler_Timer() {
    m_tmrScheduler.stop(); // until the answer is there
    m_reader.request();
    PopulateScreen(false);
}

void frmMainScreen::run(const std::function<void()>& body, const SlotName& slot) {
    guarded(m_context, this, body, {}, slot);
}

void frmMainScreen::cmdAdd_Click() {
    run([this] {
        openScreen<frmSchedule>(m_context, this, "Error loading add schedule", clsSchedule::notStored);
    });
}

void frmMainScreen::cmdEdit_Click() {
    run([this] {
        if (m_selectedScheduleId == -1)
            m_context.messages.notice(this, "You must select a schedule to edit.");
        else
            editSchedule(m_selectedScheduleId);
    });
}

void frmMainScreen::editSchedule(int id) {
    const QString loadFailure = "Error loading schedule information";
    switch (ReadScheduleStatus(m_context.session, id)) {
    case ScheduleStatus::Processing:
        resetSchedule(id);
        break;
    case ScheduleStatus::CompletedWithErrors:
    case ScheduleStatus::Completed:
        openScreen<frmScheduleView>(m_context, this, loadFailure, id);
        break;
    default:
        openScreen<frmSchedule>(m_context, this, loadFailure, id);
    }
}

/// Empty for a schedule without a run date.
QString frmMainScreen::processedSince(int id) const {
    const auto due = m_runDates.value(id);
    return due ? QString(", since %1 at the earliest").arg(due->shown()) : QString();
}

void frmMainScreen::resetSchedule(int id) {
    const QString title =
        (m_finishedListActive ? m_ui->lstFinished : m_ui->lstSchedules)->textOf(id, TitleColumn);
    const QString question =
        "The schedule '%1' is being processed%2.\n\nDo you want to reset it? Do so only when "
        "the engine has stopped working on it.";
    if (!m_context.messages.ask(this, question.arg(title, processedSince(id)))) return;
    m_context.messages.notice(this, "Reseting this schedule status, due to an unknown error");
    if (!ResetSchedule(m_context.session, id))
        m_context.messages.notice(this, "The schedule is not being processed any more; nothing was reset.");
    FillScheduleList();
}

void frmMainScreen::cmdDelete_Click() {
    run([this] {
        uctListView& list = m_finishedListActive ? *m_ui->lstFinished : *m_ui->lstSchedules;
        const std::optional<int> id = list.selectedId();
        if (!id) {
            m_context.messages.notice(this, "You must select a schedule to delete.");
            return;
        }
        const QString question = "Are you sure you want to delete the schedule '%1' ?";
        if (!m_context.messages.ask(this, question.arg(list.textOf(*id, TitleColumn)))) return;
        WaitCursor wait;
        DeleteSchedule(m_context.session, *id);
        FillScheduleList();
    });
}

void frmMainScreen::cmdManageTemplates_Click() {
    run([this] { openScreen<frmManageTemplates>(m_context, this, "Error loading templates"); });
}

void frmMainScreen::cmdVersion_Click() {
    m_context.messages.notice(this, QString("Scheduler v") + programVersion);
}

void frmMainScreen::cmdHelp_Click() {
    run([this] { showHelp(m_context.session.paths.AppFolder(), this); });
}

void frmMainScreen::restorePlacement() {
    const auto setting = [](const char* key, int standard) {
        return getSetting("VWT", "Position", key, QString::number(standard)).toInt();
    };
    QRect place(setting("X", x()), setting("Y", y()), setting("W", width()), setting("H", height()));
    if (!QGuiApplication::screenAt(place.center())) // its monitor is gone
        place.moveCenter(QGuiApplication::primaryScreen()->availableGeometry().center());
    setGeometry(place);
    constexpr int maximized = 2;
    if (setting("Type", maximized) == maximized) setWindowState(windowState() | Qt::WindowMaximized);
}

void frmMainScreen::savePlacement() const {
    const auto keep = [](const char* key, int value) {
        saveSetting("VWT", "Position", key, QString::number(value));
    };
    const QRect place = normalGeometry();
    keep("Type", isMaximized() ? 2 : 0);
    keep("X", place.x());
    keep("Y", place.y());
    keep("W", place.width());
    keep("H", place.height());
}

void frmMainScreen::closeEvent(QCloseEvent* event) {
    savePlacement();
    event->accept();
}

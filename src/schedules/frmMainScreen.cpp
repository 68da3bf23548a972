#include "schedules/frmMainScreen.h"

#include "base/MailOptions.h"
#include "base/Session.h"
#include "base/Version.h"
#include "base/modOptions.h"
#include "db/DbError.h"
#include "db/SchedulerDatabase.h"
#include "schedules/frmAgenda.h"
#include "schedules/frmSchedule.h"
#include "schedules/frmScheduleView.h"
#include "schedules/modScheduler.h"
#include "schedules/uctBulkActions.h"
#include "templates/frmManageTemplates.h"
#include "ui/Callback.h"
#include "ui/Cursors.h"
#include "ui/DesktopNotices.h"
#include "ui/Labels.h"
#include "ui/ListHabits.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/ReadingOrder.h"
#include "ui/SlotGuard.h"
#include "ui/WindowPlacement.h"
#include "ui/WindowSize.h"
#include "ui/frmHelp.h"
#include "ui/openScreen.h"
#include "ui/uctColourKey.h"
#include "ui/uctFilterBox.h"
#include "ui_frmMainScreen.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHeaderView>
#include <QLabel>
#include <QScopeGuard>
#include <QStatusBar>
#include <chrono>

namespace {

const QString addFailure = "Error loading add schedule";
const QString loadFailure = "Error loading schedule information";
const QString sortHint = "(Click on a header to apply sorting)";
constexpr std::chrono::seconds messageStays(15);

} // namespace

frmMainScreen::frmMainScreen(ScreenContext& context, QWidget* parent)
    : QMainWindow(parent),
      m_context(context),
      m_ui(std::make_unique<Ui::frmMainScreen>()),
      m_reader(context.session),
      m_shown(context.session.userName) {
    m_ui->setupUi(this);
    upgradeAtMainScreen(m_context.session.db());
    addMailOptionColumns(m_context.session.db());
    ReadGlobalOptions(m_context.session);
    resizeToText(*this, 180, 40);
    m_ui->header->setNote(QString("%1 on %2").arg(m_context.session.userName, m_context.session.serverName));
    buildLists();
    buildFooter();
    buildStatusBar();
    m_ui->splitter->remember("MainScreen");
    putInReadingOrder(*this);

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
    m_ui->lstSchedules->sortAtFirst(ShownSchedules::Date);
    m_ui->lstFinished->sortAtFirst(ShownSchedules::Date);
    m_ui->lstSchedules->setFocus();
    if (m_ui->hdrSchedules->isOpen()) selectCurrentRow(*m_ui->lstSchedules);
}

frmMainScreen::~frmMainScreen() = default;

void frmMainScreen::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    QAction* add =
        footer.add("Add", "&Add Schedule", "list-add", "Add a schedule", this, &frmMainScreen::cmdAdd_Click);
    add->setShortcut(QKeySequence::New);
    m_cmdEdit = footer.add("Edit", "&Edit Schedule", "document-edit", "Edit the selected schedule", this,
                           &frmMainScreen::cmdEdit_Click);
    QAction* remove = footer.add("Delete", "&Delete Schedule", "edit-delete", "Delete the selected schedules",
                                 this, &frmMainScreen::cmdDelete_Click);
    m_cmdRunNow = footer.add("RunNow", "Run &Now", "media-playback-start",
                             "Run the selected schedule once more, as a new schedule that is due now", this,
                             &frmMainScreen::cmdRunNow_Click);
    m_cmdRunAgain = footer.add("RunAgain", "Run A&gain…", "view-refresh",
                               "Make a new schedule from the selected one and look at it first", this,
                               &frmMainScreen::cmdRunAgain_Click);
    footer.addStretch();
    footer
        .add("Agenda", "Agenda", "view-calendar", "View what runs when, as a month, a week or a day", this,
             &frmMainScreen::cmdAgenda_Click)
        ->setShortcut(Qt::CTRL | Qt::Key_G);
    footer.add("ManageTemplates", "Manage &Templates", "view-list-details", "Manage the report templates",
               this, &frmMainScreen::cmdManageTemplates_Click);
    footer.add("Options", "&Options", "configure", "View/edit Scheduler options", this,
               &frmMainScreen::optionsRequested);
    footer.addStretch();
    footer.add("Version", "&Version", "help-about", "View the version number for the Scheduler program", this,
               &frmMainScreen::cmdVersion_Click);
    footer.add("Help", "&Help", "help-contents", "View Scheduler help", this, &frmMainScreen::cmdHelp_Click)
        ->setShortcut(QKeySequence::HelpContents);
    footer.add("Exit", "E&xit", "application-exit", "Exit the application", this, &QWidget::close);
    footer.needSelection({m_ui->lstSchedules, m_ui->lstFinished}, {remove});

    auto* refresh = new QAction("Refresh", this);
    refresh->setShortcut(QKeySequence::Refresh);
    connect(refresh, &QAction::triggered, this, &frmMainScreen::CalledBack);
    addAction(refresh);
    m_showLog = new QAction("Show &Log", this);
    connect(m_showLog, &QAction::triggered, this, &frmMainScreen::cmdEdit_Click);
    const QList<QAction*> others{m_cmdRunNow, m_cmdRunAgain, remove, add, refresh};
    m_ofPending = bulkActions(*m_ui->lstSchedules);
    m_ofFinished = bulkActions(*m_ui->lstFinished);
    m_ui->lstSchedules->offer(QList{m_cmdEdit} + m_ofPending->ofPending() + others, m_cmdEdit, remove);
    m_ui->lstFinished->offer(QList{m_showLog} + m_ofFinished->ofFinished() + others, m_showLog, remove);
    updateActions();
}

uctBulkActions* frmMainScreen::bulkActions(uctListView& list) {
    auto* actions = new uctBulkActions(m_context, *this, list, m_shown);
    connect(actions, &uctBulkActions::changed, this, [this](const QString& told) {
        FillScheduleList();
        tell(told);
    });
    return actions;
}

void frmMainScreen::updateActions() {
    const qsizetype selected = activeList().selectedIds().size();
    const QString why = selected == 0 ? "Nothing is selected." : "Several schedules are selected.";
    for (QAction* action : {m_cmdEdit, m_cmdRunNow, m_cmdRunAgain})
        m_ui->footer->setUsable(action, selected == 1, why);
    m_showLog->setEnabled(selected == 1);
    m_ofPending->update();
    m_ofFinished->update();
}

void frmMainScreen::buildLists() {
    const bool everybodys = m_context.session.isAdministrator();
    m_ui->lstSchedules->setColumns(ShownSchedules::pendingColumns(everybodys), "PendingSchedules");
    m_ui->lstSchedules->setEmptyText("No schedule is waiting. Add Schedule makes one.");
    m_ui->lstFinished->setColumns(ShownSchedules::finishedColumns(everybodys), "CompletedSchedules");
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

void frmMainScreen::buildStatusBar() {
    statusBar()->setSizeGripEnabled(false);
    statusBar()->setContentsMargins(6, 0, 12, 0); // as the screen above
    statusBar()->addPermanentWidget(m_lblCounts = subtleLabel("lblCounts", {}, this));
    statusBar()->addPermanentWidget(m_lblRefreshed = subtleLabel("lblRefreshed", {}, this));
}

uctFilterBox* frmMainScreen::filterBox(const QString& name, uctListView& list) {
    auto* box = new uctFilterBox(this);
    box->setObjectName(name);
    box->setPlaceholderText("Filter");
    box->setAccessibleName("Filter " + list.accessibleName());
    box->setToolTip("Shows only schedules that hold these words in any of their columns");
    box->setMinimumWidth(fontMetrics().averageCharWidth() * 12);
    box->setMaximumWidth(fontMetrics().averageCharWidth() * 28);
    box->attach(list);
    connect(box, &QLineEdit::textChanged, this, [this, &list](const QString& words) {
        list.setFilterWords(words);
        showCounts();
    });
    return box;
}

void frmMainScreen::connectList(uctListView& list, bool finished) {
    list.setSelectionMode(QAbstractItemView::ExtendedSelection);
    list.setColumnsMovable();
    list.header()->setToolTip(sortHint);
    connect(&list, &uctListView::selectedIdChanged, this, [this, finished] { selectRow(finished); });
    connect(&list, &uctListView::rowActivated, this, &frmMainScreen::cmdEdit_Click);
    connect(&list, &uctListView::deletePressed, this, &frmMainScreen::cmdDelete_Click);
}

uctListView& frmMainScreen::activeList() const {
    return m_finishedListActive ? *m_ui->lstFinished : *m_ui->lstSchedules;
}

/// Rows are selected in one list at a time.
void frmMainScreen::selectRow(bool finished) {
    uctListView& list = finished ? *m_ui->lstFinished : *m_ui->lstSchedules;
    if (list.selectedId()) {
        m_finishedListActive = finished;
        ListViewUnselect(finished ? *m_ui->lstSchedules : *m_ui->lstFinished);
        for (const int id : list.selectedIds()) markAsSeen(id);
    }
    updateActions();
}

/// A result that was news until now.
void frmMainScreen::markAsSeen(int id) {
    const ListModel& rows = m_ui->lstFinished->rows();
    if (!m_shown.see(id) || rows.rowOf(id) < 0) return;
    ListRow row = rows.rows()[std::size_t(rows.rowOf(id))];
    row.emphasized = false;
    row.toolTip.clear();
    m_ui->lstFinished->updateRows({row}, {});
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
    const Moment now = Moment::now();
    ShownSchedules::Rows rows = m_shown.take(changes, now);
    std::vector<int> gone = changes.gone;
    for (const ScheduleListRow& schedule : changes.rows)
        gone.push_back(schedule.id); // from the list that it may have left
    const QList<int> selected = activeList().selectedIds();
    const auto show = [&](uctListView& list, std::vector<ListRow> those) {
        if (changes.complete) return list.setRows(std::move(those));
        std::vector<int> left;
        for (const int id : gone)
            if (list.rows().rowOf(id) >= 0 && std::ranges::find(those, id, &ListRow::id) == those.end())
                left.push_back(id);
        list.updateRows(std::move(those), left);
    };
    show(*m_ui->lstSchedules, std::move(rows.pending));
    show(*m_ui->lstFinished, std::move(rows.finished));
    if (rows.news) tellNews(*rows.news);
    // A schedule that finished meanwhile is found again in the other list.
    if (!selected.isEmpty() && activeList().selectedIds().isEmpty()
        && !m_ui->lstSchedules->selectId(selected.first()))
        m_ui->lstFinished->selectId(selected.first());
    PopulateScreen(changes.complete); // rows that changed have their due text
    m_ui->lblServerState->clear();
    m_lblRefreshed->setText("Refreshed at " + now.wall.time().toString("HH:mm:ss"));
    showCounts();
}

/// A run of the user's own has ended.
void frmMainScreen::tellNews(int id) {
    m_ui->lstFinished->showId(id);
    QApplication::alert(this);
    if (!DesktopNotices::areWanted() || isActiveWindow()) return;
    if (!m_notices) m_notices = std::make_unique<DesktopNotices>(*this);
    m_notices->tell(m_ui->lstFinished->textOf(id, ShownSchedules::Title),
                    m_ui->lstFinished->textOf(id, ShownSchedules::Status));
}

void frmMainScreen::PopulateScreen(bool force) {
    const Moment now = Moment::now();
    const auto minute = [](const WallClock& time) { return time.order() / 60; };
    if (!force && minute(now.wall) == minute(m_lastDueUpdate)) return;
    m_ui->lstSchedules->rows().setCells(ShownSchedules::Status,
                                        [&](const ListRow& row) { return m_shown.status(row.id, now); });
    m_lastDueUpdate = now.wall;
    showCounts();
}

void frmMainScreen::showCounts() {
    const int finished = m_ui->lstFinished->rows().rowCount();
    QString text = m_shown.counts(WallClock::now()) + QString(", %1 completed").arg(finished);
    const int all = m_ui->lstSchedules->rows().rowCount() + finished;
    const int shown = m_ui->lstSchedules->shownCount() + m_ui->lstFinished->shownCount();
    if (shown < all) text += QString("; %1 of %2 shown").arg(shown).arg(all);
    m_lblCounts->setText(text);
}

void frmMainScreen::CalledBack() {
    run([this] { FillScheduleList(); });
}

void frmMainScreen::tmrScheduler_Timer() {
    if (const std::optional<WallClock> since = m_reader.request()) {
        m_problemSince = *since;
        m_ui->lblServerState->setText(QString("The server has not answered since %1. The lists show its last "
                                              "state; trying again…")
                                          .arg(since->time().toString("HH:mm")));
    }
    PopulateScreen(false);
}

void frmMainScreen::run(const std::function<void()>& body, const SlotName& slot) {
    guarded(m_context, this, body, {}, slot);
}

void frmMainScreen::cmdAdd_Click() {
    run([this] { showSaved(openScreen<frmSchedule>(m_context, this, addFailure, clsSchedule::notStored)); });
}

void frmMainScreen::cmdEdit_Click() {
    run([this] {
        if (const std::optional<int> id = activeList().selectedId())
            editSchedule(*id, *this);
        else
            m_context.messages.notice(this, "You must select a schedule to edit.");
    });
}

/// The screen that is opened stands over the caller and calls it back.
void frmMainScreen::editSchedule(int id, QWidget& caller) {
    switch (ReadScheduleStatus(m_context.session, id)) {
    case ScheduleStatus::Processing:
        resetSchedule(id, caller);
        break;
    case ScheduleStatus::CompletedWithErrors:
    case ScheduleStatus::Completed:
        openScreen<frmScheduleView>(m_context, &caller, loadFailure, id);
        break;
    default:
        showSaved(openScreen<frmSchedule>(m_context, &caller, loadFailure, id));
    }
}

/// Where something stands against the run, the editor stays open with it.
void frmMainScreen::cmdRunNow_Click() {
    runAgain([](frmSchedule& editor) {
        if (!editor.saveAtOnce()) editor.exec();
    });
}

void frmMainScreen::cmdRunAgain_Click() {
    runAgain([](frmSchedule& editor) { editor.exec(); });
}

void frmMainScreen::runAgain(const std::function<void(frmSchedule& editor)>& save) {
    run([&] {
        const std::optional<int> id = activeList().selectedId();
        if (!id) return;
        const auto editor =
            setUpScreen<frmSchedule>(m_context, this, loadFailure, *id, frmSchedule::CopyOfSchedule);
        if (!editor) return;
        editor->SetCallback(this, "Calledback");
        save(*editor);
        showSaved(editor);
    });
}

/// Selected and in view, whatever the filter says.
void frmMainScreen::showSaved(const std::unique_ptr<frmSchedule>& editor) {
    if (!editor || !editor->savedId()) return;
    const int id = *editor->savedId();
    if (m_ui->lstSchedules->rows().rowOf(id) < 0) FillScheduleList(); // another screen was called back
    if (!m_ui->lstSchedules->selectId(id)) {
        findChild<QLineEdit*>("txtFilterSchedules")->clear();
        if (!m_ui->lstSchedules->selectId(id)) return; // the engine was quicker
    }
    m_ui->lstSchedules->setFocus();
    tell(editor->savedText());
}

void frmMainScreen::tell(const QString& text) {
    statusBar()->showMessage(text, int(std::chrono::milliseconds(messageStays).count()));
    statusBar()->setToolTip(text); // where it is too long for the line, and after it has gone
}

/// Empty for a schedule without a run date.
QString frmMainScreen::processedSince(int id) const {
    const std::optional<WallClock> due = m_shown.dueDate(id);
    return due ? QString(", since %1 at the earliest").arg(due->shown()) : QString();
}

void frmMainScreen::resetSchedule(int id, QWidget& caller) {
    if (m_ui->lstSchedules->rows().rowOf(id) < 0) FillScheduleList(); // the caller reads for itself
    const QString title = m_ui->lstSchedules->textOf(id, ShownSchedules::Title);
    const QString question =
        "The schedule '%1' is being processed%2.\n\nDo you want to reset it? Do so only when "
        "the engine has stopped working on it.";
    if (!m_context.messages.ask(&caller, question.arg(title, processedSince(id)))) return;
    m_context.messages.notice(&caller, "Reseting this schedule status, due to an unknown error");
    if (!ResetSchedule(m_context.session, id))
        m_context.messages.notice(&caller,
                                  "The schedule is not being processed any more; nothing was reset.");
    Callback(&caller, "Calledback").invoke();
}

void frmMainScreen::cmdDelete_Click() {
    run([this] { (m_finishedListActive ? m_ofFinished : m_ofPending)->remove(); });
}

void frmMainScreen::cmdManageTemplates_Click() {
    run([this] {
        const auto manager = setUpScreen<frmManageTemplates>(m_context, this, "Error loading templates");
        if (!manager) return;
        manager->SetCallback(this, "Calledback");
        connect(manager.get(), &frmManageTemplates::scheduleRequested, this,
                [this, caller = manager.get()](int templateId) { scheduleTemplate(*caller, templateId); });
        manager->exec();
    });
}

void frmMainScreen::cmdAgenda_Click() {
    run([this] {
        const auto agenda =
            setUpScreen<frmAgenda>(m_context, this, "Error loading the agenda", m_shown.runs());
        if (!agenda) return;
        agenda->SetCallback(this, "Calledback");
        connect(agenda.get(), &frmAgenda::openRequested, this, [this, caller = agenda.get()](int id) {
            guarded(m_context, caller, [=, this] { editSchedule(id, *caller); });
        });
        agenda->exec();
    });
}

void frmMainScreen::scheduleTemplate(frmManageTemplates& caller, int templateId) {
    run([&] {
        const auto editor =
            openScreen<frmSchedule>(m_context, &caller, addFailure, templateId, frmSchedule::ForTemplate);
        FillScheduleList();
        if (editor && editor->savedId()) tell(editor->savedText());
    });
}

void frmMainScreen::cmdVersion_Click() {
    m_context.messages.notice(this, QString("Scheduler v") + programVersion);
}

void frmMainScreen::cmdHelp_Click() {
    run([this] { showHelp(m_context.session.paths.AppFolder(), this); });
}

void frmMainScreen::restorePlacement() {
    restoreWindowPlacement(*this);
}

void frmMainScreen::closeEvent(QCloseEvent* event) {
    saveWindowPlacement(*this);
    event->accept();
}

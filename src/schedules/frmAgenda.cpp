#include "schedules/frmAgenda.h"

#include "base/FilterWords.h"
#include "base/Session.h"
#include "base/SettingsStore.h"
#include "base/WholeFile.h"
#include "db/DbError.h"
#include "db/Refusal.h"
#include "schedules/BulkChange.h"
#include "schedules/clsSchedule.h"
#include "schedules/frmAgendaMove.h"
#include "schedules/iCalendar.h"
#include "schedules/modScheduler.h"
#include "schedules/uctAgendaPicture.h"
#include "schedules/uctStatusIcon.h"
#include "ui/Cursors.h"
#include "ui/DateCell.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/SavePath.h"
#include "ui/TypedSeparators.h"
#include "ui/WindowSize.h"
#include "ui_frmAgenda.h"

#include <QAction>
#include <QDateTime>
#include <QFileInfo>
#include <QSignalBlocker>
#include <algorithm>
#include <chrono>

namespace {

#ifdef SCHEDULER_SVG
constexpr auto pictureFilters = "PNG pictures (*.png);;SVG drawings (*.svg)";
#else
constexpr auto pictureFilters = "PNG pictures (*.png)";
#endif

/// Of the kind that the file's ending tells.
QByteArray pictureFor([[maybe_unused]] const QString& path, const uctAgenda& agenda, const QString& title) {
#ifdef SCHEDULER_SVG
    if (QFileInfo(path).suffix().compare("svg", Qt::CaseInsensitive) == 0) return agendaAsSvg(agenda, title);
#endif
    return agendaAsPng(agenda, title);
}

const QStringList viewNames{"month", "week", "day"}; // in the order of AgendaView
constexpr std::chrono::seconds refreshes(30);

QString runsText(qsizetype runs) {
    return runs == 1 ? QString("1 run") : QString("%1 runs").arg(runs);
}

/// The year stands above the list.
QString withoutYear(const WallClock& when) {
    return QLocale::c().toString(when.date(), "dd MMM ") + when.time().toString("HH:mm");
}

QString loadFailure(clsSchedule::LoadResult result) {
    if (result == clsSchedule::TemplateFailed) return "The template of this schedule no longer exists.";
    if (result == clsSchedule::NoProject) return "This schedule names no project.";
    return "This schedule has been deleted by somebody else in the meantime.";
}

} // namespace

frmAgenda::frmAgenda(ScreenContext& screenContext, QWidget* parent)
    : ScreenDialog(screenContext, parent), m_ui(std::make_unique<Ui::frmAgenda>()), m_reader(session()) {
    m_ui->setupUi(this);
    setTextColour(*m_ui->lblNote, Palette::subtleText());
    setTextColour(*m_ui->lblProblem, Palette::problem());
    m_ui->lblProblem->hide();
    buildList();
    buildFooter();
    buildBar();
    connectAgenda();
    m_ui->splitter->setStretchFactor(0, 67);
    m_ui->splitter->setStretchFactor(1, 33);
    m_ui->splitter->setSizes({6700, 3300});
    m_ui->splitter->remember("Agenda");

    m_tmrAgenda.setInterval(refreshes);
    connect(&m_tmrAgenda, &QTimer::timeout, this, [this] { m_reader.request(); });
    connect(&m_reader, &ScheduleReader::changed, this, &frmAgenda::take);
    connect(&m_reader, &ScheduleReader::failed, this, &frmAgenda::showProblemOf);
    auto* read = new QAction("Refresh", this);
    read->setShortcut(QKeySequence::Refresh);
    connect(read, &QAction::triggered, this, &frmAgenda::CalledBack);
    addAction(read);
    resizeToText(*this, 190, 44);
}

frmAgenda::~frmAgenda() = default;

void frmAgenda::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    m_cmdOpen = footer.add("Open", "&Open", "document-open",
                           "Edit the selected schedule, or read the log of one that has run", this,
                           &frmAgenda::cmdOpen_Click);
    m_cmdMove = footer.add("Move", "Mo&ve…", "transform-move", "Put the selected run to another time", this,
                           &frmAgenda::cmdMove_Click);
    footer.addStretch();
    footer.add("SavePicture", "Save Pict&ure", "document-export", "Save what is shown as a picture", this,
               &frmAgenda::cmdSavePicture_Click);
    footer.add("SaveCalendar", "Save &Calendar", "view-calendar",
               "Save all runs that the filter leaves, of these and of other days, for a calendar program",
               this, &frmAgenda::cmdSaveCalendar_Click);
    footer.addStretch();
    footer.add("Exit", "&Back", "go-previous", "Return to the previous screen", this, &frmAgenda::reject);
    m_ui->lstRuns->offer({m_cmdOpen, m_cmdMove}, m_cmdOpen);
    m_ui->agenda->addActions({m_cmdOpen, m_cmdMove});
    m_ui->agenda->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void frmAgenda::buildBar() {
    QFont bold = m_ui->lblDays->font();
    bold.setBold(true);
    m_ui->lblDays->setFont(bold);
    m_ui->dtDay->setLocale(QLocale::c()); // English month names, whatever the desktop's language
    takeTypedSeparators(*m_ui->dtDay);
    const auto day = [this] { return m_ui->agenda->day(); };
    const auto view = [this] { return m_ui->agenda->view(); };
    connect(m_ui->cmdPrevious, &QToolButton::clicked, this,
            [=, this] { showDays(view(), turned(view(), day(), -1)); });
    connect(m_ui->cmdNext, &QToolButton::clicked, this,
            [=, this] { showDays(view(), turned(view(), day(), 1)); });
    connect(m_ui->cmdToday, &QToolButton::clicked, this,
            [=, this] { showDays(view(), QDate::currentDate()); });
    connect(m_ui->dtDay, &QDateEdit::dateChanged, this, [=, this](QDate date) { showDays(view(), date); });
    const std::array views{m_ui->optMonth, m_ui->optWeek, m_ui->optDay};
    for (std::size_t i = 0; i < views.size(); ++i)
        connect(views[i], &QRadioButton::clicked, this, [=, this] {
            const auto id = m_ui->agenda->selectedId(); // whose day is what the user looks at
            showDays(AgendaView(i), id ? m_ui->agenda->runOf(*id)->start.date() : day());
        });
    m_ui->txtFilter->attach(*m_ui->lstRuns);
    connect(m_ui->txtFilter, &QLineEdit::textChanged, this, &frmAgenda::showRuns);
}

void frmAgenda::buildList() {
    m_ui->lstRuns->setColumns({{"When", ListColumn::Text, 38},
                               {"Schedule Title", ListColumn::Text, 40},
                               {"Status", ListColumn::Text, 24},
                               {"Length", ListColumn::Text, 10}},
                              "Agenda");
    m_ui->lstRuns->setColumnsMovable();
    m_ui->lstRuns->sortAtFirst(0);
    m_ui->lstRuns->setEmptyText("No run on these days.");
    m_ui->agenda->setEmptyText("No run on these days.");
    connect(m_ui->lstRuns, &uctListView::rowActivated, this, &frmAgenda::cmdOpen_Click);
    connect(m_ui->lstRuns, &uctListView::selectedIdChanged, this, [this] {
        const auto id = m_ui->lstRuns->selectedId();
        if (id && id != m_ui->agenda->selectedId())
            m_ui->agenda->selectId(*id, true); // else it must not scroll
    });
}

void frmAgenda::connectAgenda() {
    uctAgenda& agenda = *m_ui->agenda;
    connect(&agenda, &uctAgenda::selectedIdChanged, this, [this] {
        const auto id = m_ui->agenda->selectedId();
        if (!id || !m_ui->lstRuns->selectId(*id)) ListViewUnselect(*m_ui->lstRuns);
        updateActions();
    });
    connect(&agenda, &uctAgenda::runActivated, this, &frmAgenda::cmdOpen_Click);
    connect(&agenda, &uctAgenda::daysChanged, this, &frmAgenda::daysShown);
    connect(&agenda, &uctAgenda::moveRequested, this, &frmAgenda::askToMove);
    connect(&agenda, &uctAgenda::moveLost, this, [this](const QString& title) {
        showProblem(m_ui->lblProblem,
                    QString("The schedule '%1' was changed, deleted or begun while you were "
                            "moving it. It is where it was.")
                        .arg(title));
    });
}

int frmAgenda::Setup(const RunWatch& watch) {
    m_watch = &watch;
    const qsizetype view = viewNames.indexOf(getSetting("VWT", "Agenda", "View", "week"));
    const bool done = load([&] {
        take(m_reader.read());
        showDays(view < 0 ? AgendaView::Week : AgendaView(view), QDate::currentDate());
        m_ui->agenda->setFocus();
        m_tmrAgenda.start();
    });
    return done ? 0 : -1;
}

void frmAgenda::CalledBack() {
    refresh();
}

void frmAgenda::refresh() {
    run([this] {
        try {
            take(m_reader.read());
        } catch (const DbError& error) {
            showProblemOf(error);
        }
    });
}

/// The agenda goes on showing the last state.
void frmAgenda::showProblemOf(const DbError& error) {
    if (error.number() == DbError::Stopped) return; // who stopped it knows
    showProblem(m_ui->lblProblem,
                QString("The schedules could not be read: %1 Shown is the state of %2.")
                    .arg(inWords(error).simplified(), m_read.wall.time().toString("HH:mm")));
}

void frmAgenda::take(const ScheduleChanges& changes) {
    m_read = Moment::now();
    if (changes.complete) m_schedules.clear();
    for (const ScheduleListRow& schedule : changes.rows) m_schedules.insert(schedule.id, schedule);
    for (const int id : changes.gone) m_schedules.remove(id);
    showProblem(m_ui->lblProblem, {});
    showRuns();
}

void frmAgenda::showRuns() {
    const QStringList words = filterWords(m_ui->txtFilter->text());
    std::vector<AgendaRun> runs;
    m_undated = 0;
    for (const ScheduleListRow& schedule : m_schedules) {
        std::optional<AgendaRun> run = agendaRun(schedule, *m_watch, m_read);
        if (!run)
            ++m_undated;
        else if (run->holds(words))
            runs.push_back(std::move(*run));
    }
    std::ranges::sort(runs, {}, [](const AgendaRun& run) { return std::pair(run.start.order(), run.id()); });
    m_ui->agenda->setRuns(std::move(runs));
    fillList();
    showNote();
}

void frmAgenda::showDays(AgendaView view, QDate day) {
    m_ui->agenda->showDays(view, day);
    daysShown();
    const auto id = m_ui->agenda->selectedId(); // to be seen in the other view as well
    if (id && m_ui->agenda->days().contains(m_ui->agenda->runOf(*id)->start.date()))
        m_ui->agenda->selectId(*id, true);
}

void frmAgenda::daysShown() {
    const AgendaView view = m_ui->agenda->view();
    const QSignalBlocker quiet(m_ui->dtDay);
    m_ui->dtDay->setDate(m_ui->agenda->day());
    m_ui->lblDays->setText(daysText(view, m_ui->agenda->day()));
    m_ui->lblDays->setToolTip(m_ui->lblDays->text());
    const std::array buttons{m_ui->optMonth, m_ui->optWeek, m_ui->optDay};
    buttons[std::size_t(view)]->setChecked(true);
    if (std::exchange(m_savedView, view) != view) saveSetting("VWT", "Agenda", "View", viewNames[int(view)]);
    fillList();
    if (!m_ui->agenda->selectedId()) m_ui->lstRuns->scrollToTop();
    showNote();
}

void frmAgenda::fillList() {
    const AgendaDays days = m_ui->agenda->days();
    std::vector<ListRow> rows;
    for (const AgendaRun& run : m_ui->agenda->runs()) {
        if (!days.contains(run.start.date())) continue;
        ListRow row{run.id(),
                    {dateCell(withoutYear(run.start), run.start), run.schedule.title, run.status,
                     ListCell(run.lengthText(),
                              run.seconds > 0 ? std::optional(double(run.seconds)) : std::nullopt)}};
        row.cells[2].icon = statusIcon(run.schedule.status, run.delayed);
        row.toolTip = run.schedule.problem;
        rows.push_back(std::move(row));
    }
    const std::optional<int> selected = m_ui->agenda->selectedId();
    if (!selected || std::ranges::find(rows, *selected, &ListRow::id) == rows.end())
        m_ui->lstRuns->selectionModel()->clear(); // or the view selects a neighbour of each row that goes
    m_ui->lstRuns->setRows(std::move(rows));
    if (selected && m_ui->lstRuns->selectedId() != selected) m_ui->lstRuns->selectId(*selected);
    updateActions();
}

void frmAgenda::showNote() {
    const qsizetype all = m_schedules.size() - m_undated;
    const auto shown = qsizetype(m_ui->agenda->runs().size());
    QString note = runsText(m_ui->lstRuns->rows().rowCount()) + " on these days";
    note += shown < all ? QString(", %1 of %2 pass the filter.").arg(shown).arg(all)
                        : QString(", %1 on all days.").arg(all);
    if (m_undated > 0)
        note += m_undated == 1 ? QString(" 1 schedule without a date is not shown.")
                               : QString(" %1 schedules without a date are not shown.").arg(m_undated);
    m_ui->lblNote->setText(note);
    m_ui->lblNote->setToolTip(note);
}

void frmAgenda::updateActions() {
    const auto id = m_ui->agenda->selectedId();
    const AgendaRun* run = id ? m_ui->agenda->runOf(*id) : nullptr;
    const QString none = "Nothing is selected.";
    m_ui->footer->setUsable(m_cmdOpen, run, none);
    m_ui->footer->setUsable(m_cmdMove, run && run->isMovable(),
                            run ? "This run has begun already, or is over." : none);
}

void frmAgenda::cmdOpen_Click() {
    if (const auto id = m_ui->agenda->selectedId()) emit openRequested(*id);
}

void frmAgenda::cmdMove_Click() {
    run([this] {
        const auto id = m_ui->agenda->selectedId();
        const AgendaRun* run = id ? m_ui->agenda->runOf(*id) : nullptr;
        if (!run || !run->isMovable()) return;
        frmAgendaMove screen(run->schedule.title, run->start, this);
        if (screen.exec() == QDialog::Accepted) askToMove(*id, screen.when());
    });
}

/// The row is read before the question: what others change while it is open is found by the change.
void frmAgenda::askToMove(int id, const WallClock& when) {
    run(
        [&] {
            const QMap<int, ScheduleRow> seen = readScheduleRows(session(), {id});
            if (!mayMove(id, when)) return;
            WaitCursor wait;
            BulkChange move;
            if (!seen.isEmpty())
                if (const auto former = WallClock::fromStored(seen.first().runDate))
                    move.moveBy = former->secsTo(when);
            const QStringList problems = changeSchedules(session(), seen, move).leftAlone;
            if (!problems.isEmpty()) messages().notice(this, "It was not moved. " + problems.first());
        },
        "Error saving schedule");
    refresh();
    m_ui->agenda->selectId(id, true);
}

bool frmAgenda::mayMove(int id, const WallClock& when) {
    clsSchedule schedule(session());
    QString problem = runDateProblem(when);
    if (problem.isEmpty()) {
        const clsSchedule::LoadResult result = schedule.LoadSchedule(id);
        if (result != clsSchedule::Loaded) problem = loadFailure(result);
    }
    if (!problem.isEmpty()) {
        messages().notice(this, problem);
        return false;
    }
    QString question = QString("Do you want to run the schedule '%1' on %2 instead of %3?")
                           .arg(schedule.Title(), when.shown(), shownStoredDate(schedule.StoredRunDate()));
    if (when < WallClock::now()) question += "\n\nThat time has passed: it runs as soon as possible.";
    return messages().ask(this, question);
}

void frmAgenda::write(const QString& path, const QByteArray& content) {
    if (const QString problem = writeWhole(path, content); !problem.isEmpty())
        messages().notice(this, QString("The file '%1' could not be written.").arg(path), Messages::Plain, {},
                          problem);
}

void frmAgenda::cmdSavePicture_Click() {
    run([this] {
        const QString days = m_ui->lblDays->text();
        const QString path =
            askSavePath(messages(), this, safeFileName("Agenda " + days), ".png", pictureFilters);
        if (path.isEmpty()) return;
        WaitCursor wait;
        const QString words = m_ui->txtFilter->text().simplified();
        const QString title = words.isEmpty() ? days : days + ", filter: " + words;
        const QByteArray content = pictureFor(path, *m_ui->agenda, title);
        if (content.isEmpty()) throw Refusal("The picture could not be made. Show fewer days and try again.");
        write(path, content);
    });
}

void frmAgenda::cmdSaveCalendar_Click() {
    run([this] {
        const QString path = askSavePath(messages(), this, "Schedules", ".ics", "iCalendar files (*.ics)");
        if (!path.isEmpty())
            write(path,
                  asCalendar(m_ui->agenda->runs(), session().serverName, QDateTime::currentDateTimeUtc()));
    });
}

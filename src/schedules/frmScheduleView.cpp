#include "schedules/frmScheduleView.h"

#include "base/Session.h"
#include "base/WholeFile.h"
#include "base/modCommonFunctions.h"
#include "db/DbError.h"
#include "schedules/modScheduler.h"
#include "ui/Cursors.h"
#include "ui/Icons.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/SavePath.h"
#include "ui/SlotGuard.h"
#include "ui/WindowSize.h"
#include "ui_frmScheduleView.h"

namespace {

/// One line of the list.
QString inOneLine(QString text) {
    return text.replace('\r', ' ').replace('\n', ' ').replace('\t', ' ');
}

void makeBold(QLabel& label) {
    QFont font = label.font();
    font.setBold(true);
    label.setFont(font);
}

} // namespace

frmScheduleView::frmScheduleView(ScreenContext& screenContext, QWidget* parent)
    : ScreenDialog(screenContext, parent),
      m_ui(std::make_unique<Ui::frmScheduleView>()),
      m_schedule(session()) {
    m_ui->setupUi(this);
    for (QLabel* label : {m_ui->lblScheduleTitleHeader, m_ui->lblProjectHeader, m_ui->lblTemplateHeader,
                          m_ui->lblDateHeader, m_ui->lblStatusHeader, m_ui->lblLogHeader})
        makeBold(*label);
    for (int line = 0; line < m_ui->layoutLabels->rowCount(); ++line) {
        auto* value = qobject_cast<QLabel*>(m_ui->layoutLabels->itemAtPosition(line, 1)->widget());
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        value->setWordWrap(true);
        for (const int column : {0, 1}) // a value may take several lines
            m_ui->layoutLabels->itemAtPosition(line, column)->setAlignment(Qt::AlignTop);
    }
    m_ui->lblDiagnostics->setVisible(session().diagnostics);
    buildFooter();
    buildList();
    resizeToText(*this, 130, 36);
}

frmScheduleView::~frmScheduleView() = default;

void frmScheduleView::buildFooter() {
    uctFooter& footer = *m_ui->footer;
    footer.add("Delete", "&Delete Schedule", "edit-delete", "Delete this schedule", this,
               &frmScheduleView::cmdDelete_Click);
    footer.add("SaveLog", "Save &Log", "document-export", "Save the log as a CSV file", this,
               &frmScheduleView::cmdSaveLog_Click);
    footer.addStretch();
    footer.add("SaveAs", "Save &As", "document-save-as", "Save this schedule as a new schedule", this,
               &frmScheduleView::cmdSaveAs_Click);
    footer.add("Exit", "&Back", "go-previous", "Return to the previous screen", this,
               &frmScheduleView::reject);
}

void frmScheduleView::buildList() {
    m_ui->txtDetails->setMinimumHeight(fontMetrics().height() * 3);
    m_ui->lstLog->setColumns({{"Schedule Report", ListColumn::Text, 50}, {"Details"}}, "ScheduleLog");
    m_ui->splitter->setStretchFactor(0, 4);
    m_ui->splitter->setStretchFactor(1, 1);
    m_ui->splitter->setSizes({4000, 1000});
    m_ui->splitter->remember("ScheduleLog");
    connect(m_ui->lstLog, &uctListView::selectedIdChanged, this, &frmScheduleView::lstLog_Click);
    connect(m_ui->chkErrorsOnly, &QCheckBox::toggled, this, &frmScheduleView::fillLog);
    m_ui->txtFind->attach(*m_ui->lstLog);
    connect(m_ui->txtFind, &QLineEdit::textChanged, m_ui->lstLog, &uctListView::setFilterWords);
}

int frmScheduleView::Setup(int scheduleId) {
    int result = 0;
    const bool done = load([&] {
        WaitCursor wait;
        m_scheduleId = scheduleId;
        result = m_schedule.LoadSchedule(scheduleId);
        if (result != clsSchedule::Loaded) {
            session().log.write("frmScheduleView.Setup", 1,
                                QString("Schedule %1 could not be loaded (%2).").arg(scheduleId).arg(result));
            return;
        }
        m_log = readScheduleLog(session(), scheduleId, m_schedule.Template());
        fillLabels();
        fillLog();
        selectFirstError();
        m_ui->lstLog->setFocus();
    });
    return done ? result : -1;
}

void frmScheduleView::fillLabels() {
    m_ui->lblScheduleTitle->setText(m_schedule.Title());
    m_ui->lblProject->setText(shortenedProject(m_schedule.ProjectFile()));
    m_ui->lblProject->setToolTip(m_schedule.ProjectFile());
    m_ui->lblTemplate->setText(m_schedule.Template().Title());
    m_ui->lblDate->setText(ranText(m_schedule.RunDate(), m_schedule.RanDate()));
    const ScheduleStatus status = m_schedule.GetStatus();
    m_ui->lblStatus->setText(logStatusText(status));
    m_ui->lblSummary->setText(logSummary(m_log));
    if (status != ScheduleStatus::CompletedWithErrors) return;
    for (QLabel* label : {m_ui->lblStatus, m_ui->lblSummary}) setTextColour(*label, Palette::problem());
}

void frmScheduleView::fillLog() {
    const bool errorsOnly = m_ui->chkErrorsOnly->isChecked();
    const QIcon errorIcon = icon("emblem-error");
    const QIcon successIcon = icon("emblem-success");
    QColor errorBackground = Palette::problem();
    errorBackground.setAlpha(32);
    std::vector<ListRow> rows;
    for (const LogEntry& entry : m_log) {
        if (errorsOnly && !entry.isError()) continue;
        ListRow row{entry.id, {inOneLine(entry.reportName), inOneLine(entry.details())}};
        row.cells.first().icon = entry.isError() ? errorIcon : successIcon;
        if (entry.isError()) row.background = errorBackground;
        rows.push_back(std::move(row));
    }
    m_ui->lstLog->setEmptyText(m_log.empty() ? "The run of this schedule left no log."
                                             : "The log holds no error.");
    m_ui->lstLog->setRows(std::move(rows));
}

void frmScheduleView::selectFirstError() {
    const auto error =
        std::find_if(m_log.begin(), m_log.end(), [](const LogEntry& entry) { return entry.isError(); });
    if (error != m_log.end()) m_ui->lstLog->selectId(error->id);
}

/// The log is ordered by its keys.
const LogEntry* frmScheduleView::entryOf(int logId) const {
    const auto found = std::lower_bound(m_log.begin(), m_log.end(), logId,
                                        [](const LogEntry& entry, int id) { return entry.id < id; });
    return found != m_log.end() && found->id == logId ? &*found : nullptr;
}

void frmScheduleView::lstLog_Click() {
    run([this] {
        const LogEntry* entry = entryOf(m_ui->lstLog->selectedId().value_or(0));
        m_ui->txtDetails->setPlainText(entry ? entry->reportName + '\n' + entry->details() : QString());
        if (session().diagnostics)
            m_ui->lblDiagnostics->setText(entry ? diagnosticLine(session(), entry->reportId) : QString());
    });
}

void frmScheduleView::cmdSaveLog_Click() {
    run([this] {
        const QString path = askSavePath(messages(), this, safeFileName(m_schedule.Title()) + " log", ".csv",
                                         "CSV files (*.csv)");
        if (path.isEmpty()) return;
        // The mark at the beginning tells spreadsheet programs that the text is UTF-8.
        const QByteArray content = "\xEF\xBB\xBF"
                                   + logAsCsv({{"Schedule", m_schedule.Title()},
                                               {"Project", m_schedule.ProjectFile()},
                                               {"Template", m_schedule.Template().Title()},
                                               {"Run", m_ui->lblDate->text()},
                                               {"Status", m_ui->lblStatus->text()}},
                                              m_log)
                                         .toUtf8();
        if (const QString problem = writeWhole(path, content); !problem.isEmpty())
            messages().notice(this, QString("The file '%1' could not be written.").arg(path), Messages::Plain,
                              {}, problem);
    });
}

void frmScheduleView::cmdSaveAs_Click() {
    run([this] {
        const QString typed =
            messages()
                .input(this,
                       "Please enter a new schedule title (note: this will create a new active schedule)",
                       m_newTitle)
                .value_or(QString());
        const QString title = m_newTitle = cutText(typed.trimmed(), clsSchedule::longestTitle);
        if (title.isEmpty() || !saveCopy(title)) return;
        warnOfImmediateRun();
        callBackAndClose();
    });
}

/// Copies the schedule as it is stored now, which may differ from what the screen read.
bool frmScheduleView::saveCopy(const QString& title) {
    WaitCursor wait;
    QString problem = scheduleTitleProblem(title);
    if (problem.isEmpty() && m_schedule.LoadSchedule(m_scheduleId) != clsSchedule::Loaded) {
        messages().notice(this, "Error saving schedule", Messages::Plain, {},
                          "The schedule or its template has been deleted by somebody else in the meantime.");
        return false;
    }
    if (problem.isEmpty()) {
        problem = saveProblem(m_schedule.SaveSchedule(title, false));
        if (problem.isEmpty()) return true;
    }
    messages().notice(this, problem);
    return false;
}

void frmScheduleView::warnOfImmediateRun() {
    constexpr int hour = 3600;
    if (m_schedule.RunDate() >= WallClock::now().addSecs(hour)) return;
    messages().notice(this, "The new schedule will run immediately when scheduler is started.\n"
                            "If this is not intended please amend the schedule's run date.");
}

void frmScheduleView::cmdDelete_Click() {
    run([this] {
        if (!messages().ask(this, "Are you sure you want to delete this schedule?")) return;
        {
            WaitCursor wait;
            DeleteSchedule(session(), m_scheduleId);
        }
        callBackAndClose();
    });
}

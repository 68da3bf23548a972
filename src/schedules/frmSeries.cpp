#include "schedules/frmSeries.h"

#include "base/Session.h"
#include "db/ServerText.h"
#include "db/StoredTitle.h"
#include "schedules/ScheduleSeries.h"
#include "ui/Cursors.h"
#include "ui/DateCell.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/TypedSeparators.h"
#include "ui/WindowSize.h"
#include "ui_frmSeries.h"

#include <QHeaderView>
#include <QLocale>
#include <QSet>

namespace {

constexpr std::chrono::milliseconds choosingStops(300);

QString weekdayName(int weekday) {
    return QLocale::c().standaloneDayName(weekday);
}

} // namespace

frmSeries::frmSeries(ScreenContext& context, QWidget* parent)
    : ScreenDialog(context, parent), m_ui(std::make_unique<Ui::frmSeries>()) {
    m_ui->setupUi(this);
    m_ui->lstRuns->setColumns(
        {{"Run", ListColumn::Text, 26}, {"Title", ListColumn::Text, 40}, {"Note", ListColumn::Text, 40}},
        "SeriesRuns");
    m_ui->lstRuns->header()->setSectionsClickable(false); // in the order of their days
    m_ui->lstRuns->setEmptyText("There is no run on such days.");
    setTextColour(*m_ui->lblProblem, Palette::problem());
    uctFooter& footer = *m_ui->footer;
    footer.addStretch();
    m_cmdSave = footer.add("Save", "&Save", "document-save", "Save all schedules of the series", this,
                           &frmSeries::cmdSave_Click);
    footer.add("Cancel", "&Cancel", "dialog-cancel", "Return without saving", this, &QDialog::reject);
    buildControls();
    m_asksForTitles.setSingleShot(true);
    m_asksForTitles.setInterval(choosingStops);
    connect(&m_asksForTitles, &QTimer::timeout, this, [this] { run([this] { findUsedTitles(); }); });
    resizeToText(*this, 110, 34);
}

frmSeries::~frmSeries() = default;

void frmSeries::buildControls() {
    m_ui->cmbUnit->addItems({"days", "weeks", "months"});
    m_ui->cmbUnit->setCurrentIndex(SeriesRule::Months);
    m_ui->cmbNth->addItems({"first", "second", "third", "fourth", "last"});
    for (int weekday = 1; weekday <= 7; ++weekday) {
        m_ui->cmbWeekday->addItem(weekdayName(weekday));
        QCheckBox* box = m_weekdays[std::size_t(weekday) - 1] =
            new QCheckBox(weekdayName(weekday).left(3), m_ui->paneWeek);
        box->setObjectName(QString("chkDay%1").arg(weekday));
        box->setAccessibleName(weekdayName(weekday));
        m_ui->layoutWeek->addWidget(box);
        connect(box, &QCheckBox::toggled, this, &frmSeries::showRuns);
    }
    m_ui->layoutWeek->addStretch();
    m_ui->dtUntil->setLocale(QLocale::c());
    takeTypedSeparators(*m_ui->dtUntil);
    for (QSpinBox* box : {m_ui->spnEvery, m_ui->spnDay, m_ui->spnTimes})
        connect(box, &QSpinBox::valueChanged, this, &frmSeries::showRuns);
    for (QComboBox* box : {m_ui->cmbNth, m_ui->cmbWeekday})
        connect(box, &QComboBox::currentIndexChanged, this, &frmSeries::showRuns);
    for (QRadioButton* option : {m_ui->optDay, m_ui->optLastDay, m_ui->optWeekday, m_ui->optTimes,
                                 m_ui->optUntil, m_ui->optDates, m_ui->optNumbers})
        connect(option, &QRadioButton::toggled, this, &frmSeries::showRuns);
    connect(m_ui->dtUntil, &QDateEdit::dateChanged, this, &frmSeries::showRuns);
    connect(m_ui->cmbUnit, &QComboBox::currentIndexChanged, this, &frmSeries::showUnit);
}

int frmSeries::Setup(const ScheduleRow& schedule, const WallClock& first) {
    m_schedule = schedule;
    m_first = first;
    const QDate day = first.date();
    m_ui->header->setNote(schedule.title);
    m_ui->spnDay->setValue(day.day());
    m_ui->cmbNth->setCurrentIndex(qMin((day.day() - 1) / 7, SeriesRule::lastInMonth - 1));
    m_ui->cmbWeekday->setCurrentIndex(day.dayOfWeek() - 1);
    m_weekdays[std::size_t(day.dayOfWeek()) - 1]->setChecked(true);
    m_ui->dtUntil->setDate(day.addYears(1).addDays(-1));
    showUnit();
    return load([this] { findUsedTitles(); }) ? 0 : -1;
}

SeriesRule frmSeries::rule() const {
    SeriesRule rule;
    rule.unit = SeriesRule::Unit(m_ui->cmbUnit->currentIndex());
    rule.every = m_ui->spnEvery->value();
    for (int weekday = 1; weekday <= 7; ++weekday)
        if (m_weekdays[std::size_t(weekday) - 1]->isChecked()) rule.weekdays << weekday;
    rule.inMonth = m_ui->optLastDay->isChecked()   ? SeriesRule::OnLastDay
                   : m_ui->optWeekday->isChecked() ? SeriesRule::OnWeekday
                                                   : SeriesRule::OnDay;
    rule.day = m_ui->spnDay->value();
    rule.nth = m_ui->cmbNth->currentIndex() + 1;
    rule.weekday = m_ui->cmbWeekday->currentIndex() + 1;
    rule.times = m_ui->optTimes->isChecked() ? m_ui->spnTimes->value() : 0;
    rule.until = m_ui->dtUntil->date();
    return rule;
}

void frmSeries::showUnit() {
    const auto unit = SeriesRule::Unit(m_ui->cmbUnit->currentIndex());
    m_ui->paneWeek->setVisible(unit == SeriesRule::Weeks);
    m_ui->paneMonth->setVisible(unit == SeriesRule::Months);
    m_ui->lblDays->setVisible(unit != SeriesRule::Days);
    showRuns();
}

/// A day that has passed is left out: no schedule can be saved for it.
void frmSeries::makeRuns() {
    const SeriesRule chosen = rule();
    const SeriesDates series = seriesDates(chosen, m_first, QDate::currentDate());
    const QList<WallClock>& dates = series.dates;
    m_leftOut = series.passed;
    const SeriesTitles titles = m_ui->optDates->isChecked() ? SeriesTitles::Dates : SeriesTitles::Numbers;
    const int count = int(dates.size());
    m_runs.clear();
    for (const WallClock& when : dates) {
        const QString title = seriesTitle(m_schedule.title, titles, when, int(m_runs.size()) + 1, count);
        QString note = seriesNote(chosen, when);
        if (when < WallClock::now()) note = "The time has passed: it runs at once.";
        if (isUsed(title)) note = "Title already exists";
        m_runs.push_back({when, title, note});
    }
}

bool frmSeries::isUsed(const QString& title) const {
    return m_usedTitles.contains(serverKey(title));
}

QString frmSeries::problem() const {
    if (m_runs.empty()) return "There is no run on such days.";
    if (m_runs.size() > std::size_t(longestSeries))
        return QString("A series has %1 runs at most. Please let it end earlier.").arg(longestSeries);
    const auto used = std::ranges::count_if(m_runs, [this](const Run& each) { return isUsed(each.title); });
    if (used > 0)
        return QString(
                   "%1 of the titles are used already. Please choose the other way of titles, or rename the "
                   "schedule.")
            .arg(used);
    return {};
}

void frmSeries::showRuns() {
    makeRuns();
    std::vector<ListRow> rows;
    for (const Run& each : m_runs)
        rows.push_back(
            {int(rows.size()) + 1,
             {dateCell(each.when.shown() + "  " + weekdayName(each.when.date().dayOfWeek()).left(3),
                       each.when),
              each.title, each.note}});
    m_ui->lstRuns->setRows(std::move(rows));
    QString preview = m_runs.size() == 1 ? QString("1 run") : QString("%1 runs").arg(m_runs.size());
    if (m_leftOut > 0) preview += QString("; %1 on days that have passed are left out").arg(m_leftOut);
    m_ui->lblPreview->setText(preview);
    const QString why = problem();
    m_ui->lblProblem->setText(why);
    m_ui->footer->setUsable(m_cmdSave, why.isEmpty(), why);
    if (isVisible()) m_asksForTitles.start();
}

void frmSeries::findUsedTitles() {
    const QList<ScheduleRow> rows = rowsToStore();
    if (rows.isEmpty() || rows.size() > longestSeries) return;
    QStringList used;
    for (const QString& title : usedTitles(session(), rows)) used << serverKey(shownTitle(title));
    if (std::exchange(m_usedTitles, used) == used) return;
    showRuns();
}

QList<ScheduleRow> frmSeries::rowsToStore() const {
    QList<ScheduleRow> rows;
    for (const Run& each : m_runs) {
        ScheduleRow row = m_schedule;
        row.title = storedTitle(each.title);
        row.runDate = each.when.stored();
        rows << row;
    }
    return rows;
}

void frmSeries::cmdSave_Click() {
    run(
        [this] {
            const QList<ScheduleRow> rows = rowsToStore();
            WaitCursor wait;
            const QStringList used = saveSeries(session(), rows);
            if (!used.isEmpty()) {
                findUsedTitles();
                messages().notice(this, "Title already exists, please rename the schedule");
                return;
            }
            m_savedCount = int(rows.size());
            accept();
        },
        "Error saving schedule");
}

QString frmSeries::firstTitle() const {
    return m_runs.front().title;
}

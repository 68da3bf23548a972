#include "parameters/uctDates.h"

#include "base/Session.h"
#include "reports/ParameterSummary.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/SlotGuard.h"
#include "ui/TypedSeparators.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace {

QString shown(QDate date) {
    return QLocale(QLocale::English).toString(date, "dd MMM yyyy");
}

QDateEdit* dateEdit(const QString& name, QWidget* parent) {
    auto* edit = new QDateEdit(parent);
    edit->setObjectName(name);
    edit->setTimeSpec(Qt::UTC); // a day without a midnight is a day all the same
    edit->setLocale(QLocale(QLocale::English, QLocale::UnitedKingdom));
    edit->setDisplayFormat("dd MMM yyyy");
    edit->setCalendarPopup(true);
    takeTypedSeparators(*edit);
    edit->setMinimumDate(QDate(1753, 1, 1)); // where the server's dates begin
    return edit;
}

} // namespace

uctDates::uctDates(const EditedReport& report, QWidget* parent)
    : uctParameterGroup(report, parent),
      m_start(dateEdit("dtStart", this)),
      m_end(dateEdit("dtEnd", this)),
      m_hint(hintLabel(this)) {
    m_hint->setObjectName("lblDates");
    auto* from = new QLabel("Calls &from", this);
    from->setBuddy(m_start);
    auto* to = new QLabel("&to", this);
    to->setBuddy(m_end);
    m_start->setAccessibleName("First call date");
    m_end->setAccessibleName("Last call date");
    auto* dates = new QHBoxLayout;
    for (QWidget* each : {static_cast<QWidget*>(from), static_cast<QWidget*>(m_start),
                          static_cast<QWidget*>(to), static_cast<QWidget*>(m_end)})
        dates->addWidget(each);
    dates->addWidget(presetButton());
    dates->addStretch();

    auto* days = new QHBoxLayout;
    for (std::size_t i = 0; i < m_days.size(); ++i) {
        const QString name = dayName(int(i) + 1);
        auto* day = m_days[i] = new QCheckBox(name.left(3), this);
        day->setObjectName(QString("ChkDay%1").arg(i + 1));
        day->setAccessibleName(name);
        day->setToolTip(QString("Include calls made on a %1").arg(name));
        connect(day, &QCheckBox::clicked, this, [this, day] { ChkDay_Click(day); });
        days->addWidget(day);
    }
    days->addStretch();

    auto* column = new QVBoxLayout(this);
    column->addLayout(dates);
    column->addWidget(m_hint);
    column->addLayout(days);
    for (QDateEdit* edit : {m_start, m_end})
        connect(edit, &QDateEdit::dateChanged, this, [this] {
            showHint();
            edited();
        });
}

QWidget* uctDates::presetButton() {
    m_presets = new QToolButton(this);
    m_presets->setObjectName("cmdPresets");
    m_presets->setText("Set to");
    m_presets->setAccessibleName("Set both dates to a period");
    m_presets->setToolTip("Set both dates to a period");
    m_presets->setPopupMode(QToolButton::InstantPopup);
    m_presets->setFocusPolicy(Qt::StrongFocus);
    auto* menu = new QMenu(m_presets);
    const auto offer = [&](const QString& caption, auto periodOf) {
        connect(menu->addAction(caption), &QAction::triggered, this,
                [this, periodOf] { set(periodOf(QDate::currentDate())); });
    };
    connect(menu->addAction("Last bill"), &QAction::triggered, this, &uctDates::setToLastBill);
    offer("Last month", [](QDate today) {
        const QDate first = QDate(today.year(), today.month(), 1).addMonths(-1);
        return Period{first, first.addMonths(1).addDays(-1)};
    });
    offer("Last quarter", [](QDate today) {
        const QDate first = QDate(today.year(), (today.month() - 1) / 3 * 3 + 1, 1).addMonths(-3);
        return Period{first, first.addMonths(3).addDays(-1)};
    });
    offer("This year", [](QDate today) {
        return Period{QDate(today.year(), 1, 1), QDate(today.year(), 12, 31)};
    });
    m_presets->setMenu(menu);
    return m_presets;
}

void uctDates::set(const Period& period) {
    m_start->setDate(period.first);
    m_end->setDate(period.second);
}

void uctDates::setToLastBill() {
    const ScreenContext& context = editedReport().context;
    guarded(context, window(), [&] {
        const QString& project = context.session.project.database;
        const RecordSet bills = context.session.db().query(
            sql("SELECT TOP 1 BillStart, BillEnd FROM {}.dbo.Tbl50 WITH (NOLOCK) WHERE BillStart IS NOT NULL "
                "AND BillEnd IS NOT NULL ORDER BY BillEnd DESC",
                Name(project)));
        if (bills.isEmpty())
            context.messages.notice(window(), "The project's bills do not say when they begin and end.");
        else
            set({bills.row(0).date("BillStart"), bills.row(0).date("BillEnd")});
    });
}

void uctDates::load(const clsReportParameters& parameters) {
    m_start->setDate(parameters.DateRangeStart());
    m_end->setDate(parameters.DateRangeEnd());
    const bool ownDates = !editedReport().context.session.project.edited.useDefaultDates;
    m_start->setEnabled(ownDates);
    m_end->setEnabled(ownDates);
    m_presets->setEnabled(ownDates);
    for (int day = 1; day <= 7; ++day) m_days[std::size_t(day) - 1]->setChecked(parameters.DaySelected(day));
    showHint();
}

void uctDates::store(clsReportParameters& parameters) const {
    parameters.setDateRangeStart(m_start->date());
    parameters.setDateRangeEnd(m_end->date());
    for (int day = 1; day <= 7; ++day)
        parameters.setDaySelected(day, m_days[std::size_t(day) - 1]->isChecked());
}

QWidget* uctDates::boxAtFault() const {
    return m_start->date() > m_end->date() ? m_start : nullptr;
}

void uctDates::ChkDay_Click(QCheckBox* day) {
    if (std::ranges::none_of(m_days, [](const QCheckBox* each) { return each->isChecked(); })) {
        day->setChecked(true);
        editedReport().context.messages.notice(window(), "You must have at least 1 day selected");
        return;
    }
    edited();
}

void uctDates::showHint() {
    const CurrentProject& project = editedReport().context.session.project;
    QString text;
    if (m_start->date() > m_end->date()) {
        text = "The first date lies after the last one.";
    } else if (project.defaultStart.isValid() && project.defaultEnd.isValid()) {
        const QString bills = QString("The project's bills run from %1 to %2")
                                  .arg(shown(project.defaultStart), shown(project.defaultEnd));
        const bool outside = m_start->date() > project.defaultEnd || m_end->date() < project.defaultStart;
        text = outside ? bills + ": no calls lie between these dates." : bills + ".";
    }
    if (project.edited.useDefaultDates) text = "This template uses the project's default dates. " + text;
    m_hint->setText(text);
    m_hint->setVisible(!text.isEmpty());
}

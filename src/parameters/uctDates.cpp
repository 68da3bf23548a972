#include "parameters/uctDates.h"

#include "base/Session.h"
#include "reports/ParameterSummary.h"
#include "ui/Labels.h"
#include "ui/Messages.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
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

void uctDates::load(const clsReportParameters& parameters) {
    m_start->setDate(parameters.DateRangeStart());
    m_end->setDate(parameters.DateRangeEnd());
    const bool ownDates = !editedReport().context.session.project.edited.useDefaultDates;
    m_start->setEnabled(ownDates);
    m_end->setEnabled(ownDates);
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

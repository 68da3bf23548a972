#include "parameters/uctTimes.h"

#include "ui/Labels.h"
#include "ui/TypedSeparators.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QTimeEdit>
#include <QVBoxLayout>

namespace {

const QString overnightHint =
    "If 'Overnight' is checked and the 'hours after' is set to a "
    "value greater than the 'hours before' value then clsReports_Collection will "
    "show calls for the continuous period extending into the next day "
    "For example if parameters are set to show just calls on "
    "Monday with the 'hours after' set to 1800 and the 'hours before' "
    "set to 0800 then the clsReports_Collection will show calls from Monday at 1800 "
    "until Tuesday at 0800."
    "If the overnight option is unchecked the clsReports_Collection will "
    "show calls on Monday before 0800 and after 1800."
    "The selected call hours apply to the start time for the calls.";

QTimeEdit* timeEdit(const QString& name, const QString& words, QWidget* parent) {
    auto* edit = new QTimeEdit(parent);
    edit->setObjectName(name);
    edit->setTimeSpec(Qt::UTC);
    edit->setAccessibleName(words);
    edit->setDisplayFormat("HH:mm:ss");
    takeTypedSeparators(*edit);
    return edit;
}

} // namespace

uctTimes::uctTimes(const EditedReport& report, QWidget* parent)
    : uctParameterGroup(report, parent),
      m_start(timeEdit("dtTimeStart", "Calls at or after", this)),
      m_end(timeEdit("dtTimeEnd", "Calls at or before", this)),
      m_overnight(new QCheckBox("O&vernight", this)) {
    auto* after = new QLabel("&Hours after", this);
    after->setBuddy(m_start);
    auto* before = new QLabel("hours &before", this);
    before->setBuddy(m_end);
    m_overnight->setObjectName("ChkOverNight");
    m_overnight->setAccessibleDescription(overnightHint);
    QLabel* hint = hintLabel(this, overnightHint);
    hint->setObjectName("lblOverNight");

    auto* hours = new QHBoxLayout;
    for (QWidget* each : {static_cast<QWidget*>(after), static_cast<QWidget*>(m_start),
                          static_cast<QWidget*>(before), static_cast<QWidget*>(m_end)})
        hours->addWidget(each);
    hours->addSpacing(fontMetrics().height());
    hours->addWidget(m_overnight);
    hours->addStretch();
    auto* column = new QVBoxLayout(this);
    column->addLayout(hours);
    column->addWidget(hint);

    for (QTimeEdit* edit : {m_start, m_end}) connect(edit, &QTimeEdit::timeChanged, this, &uctTimes::edited);
    connect(m_overnight, &QCheckBox::toggled, this, &uctTimes::edited);
}

void uctTimes::load(const clsReportParameters& parameters) {
    m_start->setTime(parameters.TimeRangeStart());
    m_end->setTime(parameters.TimeRangeEnd());
    m_overnight->setChecked(parameters.TimeRangeOvernight());
}

void uctTimes::store(clsReportParameters& parameters) const {
    parameters.setTimeRangeStart(m_start->time());
    parameters.setTimeRangeEnd(m_end->time());
    parameters.setTimeRangeOvernight(m_overnight->isChecked());
}

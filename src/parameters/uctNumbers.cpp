#include "parameters/uctNumbers.h"

#include "reports/FewNumbers.h"
#include "ui/Icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace {

QString buttonName(const clsReport& report) {
    switch (report.ReportSubType()) {
    case CallsToNumberReport:
        return "cmdCallsTo";
    case CallsFromNumberReport:
        return "cmdCallsFrom";
    default:
        return "cmdCallsNotTo";
    }
}

QString buttonText(const clsReport& report) {
    switch (report.ReportSubType()) {
    case CallsToNumberReport:
        return "&Calls to…";
    case CallsFromNumberReport:
        return "&Calls from…";
    default:
        return "&Calls not to…";
    }
}

} // namespace

bool uctNumbers::isFor(const clsReport& report) {
    return report.ReportSubType() == CallsToNumberReport || report.ReportSubType() == CallsFromNumberReport
           || report.ReportSubType() == CallsNotToNumberReport;
}

uctNumbers::uctNumbers(const EditedReport& report, QWidget* parent)
    : uctParameterGroup(report, parent), m_numbers(new QLabel(this)) {
    auto* button = new QPushButton(icon("view-list-details"), buttonText(report.report), this);
    button->setObjectName(buttonName(report.report));
    button->setToolTip("Edit the list of telephone numbers");
    button->setAutoDefault(false);
    m_numbers->setObjectName("lblNumbers");
    m_numbers->setWordWrap(true);
    auto* row = new QHBoxLayout(this);
    row->addWidget(button);
    row->addWidget(m_numbers, 1);
    connect(button, &QPushButton::clicked, this, &uctNumbers::editRequested);
}

void uctNumbers::load(const clsReportParameters& parameters) {
    const QStringList numbers = numbersOf(editedReport().report, parameters).split(", ", Qt::SkipEmptyParts);
    if (numbers.isEmpty()) {
        m_numbers->setText("No telephone numbers yet.");
        return;
    }
    const QString count = numbers.size() == 1 ? "1 number: " : QString("%1 numbers: ").arg(numbers.size());
    m_numbers->setText(count + fewNumbers(numbers.join(", ")));
}

const QString& numbersOf(const clsReport& report, const clsReportParameters& parameters) {
    switch (report.ReportSubType()) {
    case CallsToNumberReport:
        return parameters.CallsToNumber();
    case CallsFromNumberReport:
        return parameters.CallsFromNumber();
    default:
        return parameters.CallsNotToNumber();
    }
}

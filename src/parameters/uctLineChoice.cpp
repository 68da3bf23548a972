#include "parameters/uctLineChoice.h"

#include "base/Session.h"
#include "reports/CallFilter.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QRadioButton>

uctLineChoice::uctLineChoice(const EditedReport& report, QWidget* parent)
    : uctParameterGroup(report, parent), m_optMob(new QButtonGroup(this)) {
    auto* grid = new QGridLayout(this);
    for (const int filter : {AllLinesAndMobiles, AllLines, AllMobiles, AllLinesDataOnly, AllLinesVoiceOnly}) {
        auto* option = new QRadioButton(callFilterName(filter), this);
        option->setObjectName(QString("OptMob%1").arg(filter));
        option->setEnabled(report.entry.takesCallsFrom(filter));
        if (!option->isEnabled()) option->setToolTip("This report is not made for these lines");
        m_optMob->addButton(option, filter);
        grid->addWidget(option, filter / 3, filter % 3);
    }
    grid->setColumnStretch(3, 1);
    connect(m_optMob, &QButtonGroup::idClicked, this, [this](int filter) {
        edited();
        emit callFilterChanged(filter);
    });
}

int uctLineChoice::callFilter() const {
    return m_optMob->checkedId();
}

void uctLineChoice::load(const clsReportParameters& parameters) {
    int filter = parameters.CallFilter();
    const auto isOffered = [this](int each) {
        return m_optMob->button(each) && m_optMob->button(each)->isEnabled();
    };
    for (int other = AllLinesAndMobiles; !isOffered(filter) && other <= AllLinesVoiceOnly; ++other)
        if (isOffered(other)) filter = other;
    m_optMob->button(filter)->setChecked(true);
}

void uctLineChoice::store(clsReportParameters& parameters) const {
    if (callFilter() == parameters.CallFilter()) return;
    parameters.setCallFilter(callFilter());
    // That unselected every band; a report without a choice of bands takes all that the lines have.
    const auto [first, last] =
        distanceBands::suiting(callFilter(), editedReport().context.session.project.reportedBillType());
    for (int band = first; band <= last; ++band) parameters.setDistanceBandSelected(band, true);
}

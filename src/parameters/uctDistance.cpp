#include "parameters/uctDistance.h"

#include "base/Session.h"
#include "reports/BillType.h"
#include "ui/AllNone.h"
#include "ui/Labels.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <algorithm>

uctDistance::uctDistance(const EditedReport& report, QWidget* parent)
    : uctParameterGroup(report, parent), m_problem(problemLabel(this)) {
    auto* column = new QVBoxLayout(this);
    QGroupBox* lines = bandBox("Fixed lines", distanceBands::FixedLine);
    QGroupBox* mobiles = bandBox("Mobiles", distanceBands::Mobile);
    QGroupBox* idc = bandBox("IDC bills", distanceBands::Idc);
    for (QGroupBox* box : {lines, mobiles, idc}) column->addWidget(box);
    const bool isIdc = report.context.session.project.reportedBillType() == IdcBill;
    lines->setHidden(isIdc);
    mobiles->setHidden(isIdc);
    idc->setHidden(!isIdc);

    auto* bar = new QHBoxLayout;
    addAllNone(this, *bar, "distance band of the chosen lines", [this](bool ticks) { tickAll(ticks); });
    bar->addWidget(m_problem, 1);
    bar->addStretch();
    column->addLayout(bar);
}

QGroupBox* uctDistance::bandBox(const QString& title, distanceBands::Range bands) {
    constexpr int columns = 3;
    auto* box = new QGroupBox(title, this);
    auto* grid = new QGridLayout(box);
    for (int index = bands.first; index <= bands.last; ++index) {
        auto* check = new QCheckBox(distanceBands::name(index), box);
        check->setObjectName(QString("ChkDistance%1").arg(index));
        connect(check, &QCheckBox::clicked, this, [this] {
            showProblem();
            edited();
        });
        m_bands[std::size_t(index) - 1] = check;
        const int place = index - bands.first;
        grid->addWidget(check, place / columns, place % columns);
    }
    for (int i = 0; i < columns; ++i) grid->setColumnStretch(i, 1);
    return box;
}

void uctDistance::showCallFilter(int callFilter) {
    const auto [first, last] =
        distanceBands::suiting(callFilter, editedReport().context.session.project.reportedBillType());
    for (int index = 1; index <= distanceBands::Count; ++index)
        band(index)->setEnabled(index >= first && index <= last);
    showProblem();
}

void uctDistance::tickSuiting(int callFilter) {
    showCallFilter(callFilter);
    for (QCheckBox* check : m_bands) check->setChecked(check->isEnabled());
    showProblem();
}

void uctDistance::narrow(int callFilter) {
    showCallFilter(callFilter);
    for (QCheckBox* check : m_bands)
        if (!check->isEnabled()) check->setChecked(false);
}

void uctDistance::tickAll(bool ticked) {
    for (QCheckBox* check : m_bands)
        if (check->isEnabled()) check->setChecked(ticked);
    showProblem();
    edited();
}

void uctDistance::showProblem() {
    const bool any = std::ranges::any_of(
        m_bands, [](const QCheckBox* check) { return check->isEnabled() && check->isChecked(); });
    ::showProblem(m_problem, any ? "" : "No distance band is ticked: the report will hold no calls.");
}

void uctDistance::load(const clsReportParameters& parameters) {
    for (int index = 1; index <= distanceBands::Count; ++index)
        band(index)->setChecked(parameters.DistanceBandSelected(index));
    showCallFilter(parameters.CallFilter());
}

void uctDistance::store(clsReportParameters& parameters) const {
    for (int index = 1; index <= distanceBands::Count; ++index)
        parameters.setDistanceBandSelected(index, band(index)->isChecked());
}

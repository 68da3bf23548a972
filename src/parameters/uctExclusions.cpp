#include "parameters/uctExclusions.h"

#include "base/Session.h"
#include "numbers/ExcludedNumbers.h"
#include "numbers/frmExcludeNumbers.h"
#include "ui/Icons.h"
#include "ui/SlotGuard.h"
#include "ui/openScreen.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

uctExclusions::uctExclusions(const EditedReport& report, QWidget* parent)
    : uctParameterGroup(report, parent), m_count(new QLabel(this)) {
    auto* button = new QPushButton(icon("view-list-details"), "E&xcluded numbers…", this);
    button->setObjectName("cmdExclusions");
    button->setToolTip("Edit the telephone numbers that the template's reports leave out");
    button->setAutoDefault(false);
    m_count->setObjectName("lblExclusions");
    m_count->setWordWrap(true);
    auto* row = new QHBoxLayout(this);
    row->addWidget(button);
    row->addWidget(m_count, 1);
    connect(button, &QPushButton::clicked, this, &uctExclusions::cmdExclusions_Click);
}

void uctExclusions::load(const clsReportParameters&) {
    showCount();
}

void uctExclusions::cmdExclusions_Click() {
    guarded(
        editedReport().context, window(),
        [this] {
            const QString failure = "Error loading the excluded numbers";
            if (const auto screen = setUpScreen<frmExcludeNumbers>(editedReport().context, window(), failure,
                                                                   editedReport().templateId))
                screen->exec();
            showCount();
        },
        {}, "frmSelectParameters.cmdExclusions_Click");
}

void uctExclusions::showCount() {
    ExcludedNumbers numbers(editedReport().context.session.db(), editedReport().templateId);
    const int count = numbers.count();
    const QString listed = count == 0   ? "No numbers are excluded"
                           : count == 1 ? "1 number is excluded"
                                        : QString("%1 numbers are excluded").arg(count);
    m_count->setText(listed + ". The list holds for all reports of the template.");
}

#include "schedules/uctProjectUpdate.h"

#include "base/Session.h"
#include "projects/modProjectUpdate.h"
#include "ui/Messages.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QScopeGuard>

uctProjectUpdate::uctProjectUpdate(QWidget* parent)
    : QWidget(parent), m_text(new QLabel(this)), m_progress(new QProgressBar(this)) {
    m_text->setObjectName("lblUpdate");
    m_progress->setObjectName("prgUpdate");
    m_progress->setAccessibleName("Update of the project");
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_text);
    row->addWidget(m_progress);
    hide();
}

void uctProjectUpdate::bringUpToDate(ScreenContext& context) {
    addTimeBandColumns(context.session);
    const auto done = qScopeGuard([this] { hide(); });
    updateTimeBands(
        context.session, true,
        [&](const QString& question) { return context.messages.ask(window(), question); },
        [&](int step, int steps) {
            showStep(step, steps);
            context.session.turn();
        });
}

void uctProjectUpdate::showStep(int step, int steps) {
    m_text->setText(QString("Updating the project, step %1 of %2").arg(step).arg(steps));
    m_progress->setRange(0, steps);
    m_progress->setValue(step - 1);
    show();
    emit stepShown();
}

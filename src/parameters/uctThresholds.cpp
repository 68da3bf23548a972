#include "parameters/uctThresholds.h"

#include "parameters/ParameterChecks.h"
#include "ui/Labels.h"
#include "ui/Messages.h"

#include <QApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <stdexcept>

namespace {

bool isAmount(const QLineEdit* box) {
    return parameterChecks::amountFault(box->text()).isEmpty();
}

/// Keeps any text; one that is no amount is told of at saving.
void storeAmount(clsReportParameters& parameters, void (clsReportParameters::*set)(const QString&),
                 const QLineEdit* box) {
    try {
        (parameters.*set)(box->text());
    } catch (const std::invalid_argument&) {
    }
}

} // namespace

uctThresholds::uctThresholds(const EditedReport& report, QWidget* parent)
    : uctParameterGroup(report, parent),
      m_cost(makePair("txtCost", "cost")),
      m_duration(makePair("txtDuration", "duration")),
      m_problem(problemLabel(this)) {
    m_problem->setObjectName("lblThresholds");
    auto* grid = new QGridLayout(this);
    const auto addRow = [&](int row, const QString& caption, const Pair& pair) {
        auto* label = new QLabel(caption, this);
        label->setBuddy(pair.lower);
        grid->addWidget(label, row, 0);
        grid->addWidget(pair.lower, row, 1);
        grid->addWidget(new QLabel("and", this), row, 2);
        grid->addWidget(pair.higher, row, 3);
    };
    addRow(0, "Cost bet&ween (£)", m_cost);
    addRow(1, "Du&ration between (minutes)", m_duration);
    grid->addWidget(hintLabel(this, "An empty box sets no limit."), 2, 0, 1, 5);
    grid->addWidget(m_problem, 3, 0, 1, 5);
    grid->setColumnStretch(4, 1);
}

uctThresholds::Pair uctThresholds::makePair(const QString& name, const QString& word) {
    const auto makeBox = [&](int place, const QString& which) {
        auto* box = new QLineEdit(this);
        box->setObjectName(name + QString::number(place));
        box->setAccessibleName(QString("%1 %2").arg(which, word));
        box->setMaximumWidth(fontMetrics().averageCharWidth() * 16);
        box->installEventFilter(this);
        connect(box, &QLineEdit::textChanged, this, [this] {
            showProblem();
            edited();
        });
        return box;
    };
    return {makeBox(0, "Lower"), makeBox(1, "Higher"), word};
}

void uctThresholds::load(const clsReportParameters& parameters) {
    m_cost.lower->setText(parameters.CostRangeMinimum());
    m_cost.higher->setText(parameters.CostRangeMaximum());
    m_duration.lower->setText(parameters.DurationRangeMinimum());
    m_duration.higher->setText(parameters.DurationRangeMaximum());
    showProblem();
}

void uctThresholds::store(clsReportParameters& parameters) const {
    storeAmount(parameters, &clsReportParameters::setCostRangeMinimum, m_cost.lower);
    storeAmount(parameters, &clsReportParameters::setCostRangeMaximum, m_cost.higher);
    storeAmount(parameters, &clsReportParameters::setDurationRangeMinimum, m_duration.lower);
    storeAmount(parameters, &clsReportParameters::setDurationRangeMaximum, m_duration.higher);
}

void uctThresholds::showProblem() {
    QString problem;
    for (const QLineEdit* box : {m_duration.higher, m_duration.lower, m_cost.higher, m_cost.lower})
        if (!isAmount(box)) problem = parameterChecks::amountFault(box->text());
    ::showProblem(m_problem, problem);
}

QString uctThresholds::Pair::fault() const {
    return parameterChecks::thresholdsFault(word, lower->text(), higher->text());
}

QWidget* uctThresholds::boxAtFault() const {
    for (const Pair& pair : {m_cost, m_duration}) {
        if (!isAmount(pair.lower)) return pair.lower;
        if (!isAmount(pair.higher) || !pair.fault().isEmpty()) return pair.higher;
    }
    return nullptr;
}

bool uctThresholds::eventFilter(QObject* watched, QEvent* event) {
    const bool staysInWindow = event->type() == QEvent::FocusOut
                               && static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason
                               && static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason;
    if (staysInWindow) {
        // A box opened in the middle of the focus change would swallow the click that caused it.
        m_left = static_cast<QLineEdit*>(watched);
        QTimer::singleShot(1, this, [this, box = m_left] { leave(box); });
    }
    return uctParameterGroup::eventFilter(watched, event);
}

/// The box that was left is where the value is to be amended.
void uctThresholds::leave(QLineEdit* left) {
    if (left != m_left) return; // somebody types fast: the next one was left meanwhile
    if (QGuiApplication::mouseButtons() != Qt::NoButton) { // a box would swallow the rest of the click
        QTimer::singleShot(20, this, [this, left] { leave(left); });
        return;
    }
    const Pair& pair = left == m_cost.lower || left == m_cost.higher ? m_cost : m_duration;
    const QWidget* now = QApplication::focusWidget();
    // Cancel makes the amounts not matter, and Save has its own words for them.
    const bool leavesScreen = now && (now->objectName() == "cmdCancel" || now->objectName() == "cmdSave");
    if (!isVisible() || !isActiveWindow() || now == pair.lower || now == pair.higher || leavesScreen) return;
    const QString fault = pair.fault();
    if (fault.isEmpty()) return;
    editedReport().context.messages.notice(window(), fault);
    left->setFocus();
    left->selectAll();
}

#include "parameters/uctTextChoice.h"

#include "parameters/SearchableBox.h"
#include "reports/CallTagging.h"
#include "ui/Labels.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

uctTextChoice::uctTextChoice(const EditedReport& report, Field field, QWidget* parent)
    : uctParameterGroup(report, parent), m_field(std::move(field)), m_box(new QComboBox(this)) {
    m_box->setObjectName(m_field.control);
    const QString words = QString(m_field.caption).remove('&');
    if (m_field.typed) makeSearchable(m_box, words);
    m_box->setMaxVisibleItems(18);
    m_box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_box->setMinimumContentsLength(m_field.typed ? 30 : 8);
    m_box->addItems(m_field.choices);
    auto* caption = new QLabel(m_field.caption, this);
    caption->setBuddy(m_box);
    m_box->setAccessibleName(words);

    auto* grid = new QGridLayout(this);
    grid->addWidget(caption, 0, 0);
    grid->addWidget(m_box, 0, 1);
    grid->setColumnStretch(2, 1);
    const QString& hint = m_field.choices.isEmpty() ? m_field.emptyHint : m_field.hint;
    if (!hint.isEmpty()) grid->addWidget(hintLabel(this, hint), 1, 0, 1, 3);
    connect(m_box, &QComboBox::currentTextChanged, this, &uctTextChoice::edited);
}

void uctTextChoice::load(const clsReportParameters& parameters) {
    const QString text = m_field.get(parameters);
    if (m_box->findText(text, Qt::MatchFixedString) < 0 && !m_field.typed) m_box->addItem(text);
    m_box->setCurrentIndex(m_box->findText(text, Qt::MatchFixedString));
    if (m_field.typed) m_box->setEditText(text);
}

void uctTextChoice::store(clsReportParameters& parameters) const {
    m_field.set(parameters, m_box->currentText().trimmed());
}

uctTextChoice::Field percentageField() {
    return {
        "CmbPercent",
        "Percenta&ge for comparison",
        {},
        {},
        {"0", "1", "2", "5", "10", "15", "20", "25", "30", "40", "50"},
        false,
        [](const clsReportParameters& p) { return QString::number(p.CircuitsPercentage()); },
        [](clsReportParameters& p, const QString& text) { p.setCircuitsPercentage(quint8(text.toInt())); }};
}

uctTextChoice::Field circuitField(const ProjectLists& lists) {
    return {"cmbCircuit",
            "C&ircuit",
            {},
            "This project holds no list of circuits: please type the circuit's identifier.",
            lists.circuits(),
            true,
            [](const clsReportParameters& p) { return p.SelectedCircuitID(); },
            [](clsReportParameters& p, const QString& text) { p.setSelectedCircuitID(text); }};
}

uctTextChoice::Field sourceBillField(const ProjectLists& lists) {
    return {"cmbSourceBill",
            "Source b&ill reference",
            "Leave the box empty for all source bills.",
            "This project holds no source bill references: leave the box empty.",
            lists.sourceBills(),
            true,
            [](const clsReportParameters& p) { return p.SourceBillRef(); },
            [](clsReportParameters& p, const QString& text) { p.setSourceBillRef(text); }};
}

uctTextChoice::Field wisperaUserField(const ProjectLists& lists) {
    return {"cmbWisperaUser",
            "Wispera user &ID",
            "Leave the box empty for all users.",
            "This project holds no Wispera users. Leave the box empty for all users.",
            lists.wisperaUsers(),
            true,
            [](const clsReportParameters& p) { return p.WPUserId(); },
            [](clsReportParameters& p, const QString& text) { p.setWPUserId(text); }};
}

uctTextChoice::Field callTaggingField() {
    return {"cmbCallTagging",
            "Call ta&gging",
            {},
            {},
            callTaggingNames(),
            false,
            [](const clsReportParameters& p) { return callTaggingName(p.CallTaggingSetting()); },
            [](clsReportParameters& p, const QString& text) {
                // A setting without a name stays as it is.
                if (const int setting = int(callTaggingNames().indexOf(text)); setting >= 0)
                    p.setCallTaggingSetting(setting);
            }};
}

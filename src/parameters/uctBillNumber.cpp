#include "parameters/uctBillNumber.h"

#include "ui/Labels.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace {

const QStringList billTypes{"F - Final",
                            "G - Plan Ceased",
                            "I - Initial",
                            "L - Call Level",
                            "M - Monthly",
                            "Q - Quarterly",
                            "S - Supplementary Account",
                            "U - Monthly Calls",
                            "W - Weekly",
                            "Y - Long Term Deposits",
                            "Z - Supplementary Payment Plan"};

} // namespace

uctBillNumber::uctBillNumber(const EditedReport& report, QWidget* parent)
    : uctParameterGroup(report, parent), m_type(new QComboBox(this)), m_number(new QLineEdit(this)) {
    m_type->setObjectName("cmbBillType");
    m_type->addItem("(none)", QString());
    for (const QString& type : billTypes) m_type->addItem(type, type.left(1));
    m_number->setObjectName("txtBillNumber");
    m_number->setPlaceholderText("All bills");
    auto* typeLabel = new QLabel("Bill t&ype", this);
    typeLabel->setBuddy(m_type);
    auto* numberLabel = new QLabel("Bill n&umber", this);
    numberLabel->setBuddy(m_number);

    auto* grid = new QGridLayout(this);
    grid->addWidget(typeLabel, 0, 0);
    grid->addWidget(m_type, 0, 1);
    grid->addWidget(numberLabel, 1, 0);
    grid->addWidget(m_number, 1, 1);
    grid->addWidget(hintLabel(this, "The letter of the bill's type comes first in its number. "
                                    "Leave the number empty for all bills."),
                    2, 0, 1, 3);
    grid->setColumnStretch(2, 1);

    connect(m_type, &QComboBox::currentIndexChanged, this, &uctBillNumber::edited);
    connect(m_number, &QLineEdit::textChanged, this, [this](const QString& number) {
        m_type->setEnabled(!number.trimmed().isEmpty());
        edited();
    });
    m_type->setEnabled(false);
}

void uctBillNumber::load(const clsReportParameters& parameters) {
    const QString& number = parameters.LinkvaleBillNumber();
    // A letter alone is a number; one before it is the bill's type.
    const int type = number.size() < 2 ? -1 : m_type->findData(number.left(1));
    m_type->setCurrentIndex(qMax(0, type));
    m_number->setText(type > 0 ? number.mid(1) : number);
}

void uctBillNumber::store(clsReportParameters& parameters) const {
    const QString number = m_number->text().trimmed();
    parameters.setLinkvaleBillNumber(number.isEmpty() ? QString()
                                                      : m_type->currentData().toString() + number);
}

#include "schedules/frmAgendaMove.h"

#include "ui/ReadingOrder.h"
#include "ui/TypedSeparators.h"

#include <QDateTimeEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

frmAgendaMove::frmAgendaMove(const QString& title, const WallClock& when, QWidget* parent)
    : QDialog(parent), m_day(new QDateEdit(when.date(), this)), m_time(new QTimeEdit(this)) {
    setObjectName("frmAgendaMove");
    setWindowTitle("Move");
    m_day->setObjectName("dtDay");
    m_day->setCalendarPopup(true);
    m_day->setDisplayFormat("dd MMM yyyy");
    m_time->setObjectName("dtTime");
    for (QDateTimeEdit* box : {static_cast<QDateTimeEdit*>(m_day), static_cast<QDateTimeEdit*>(m_time)}) {
        box->setTimeSpec(Qt::UTC);    // no hour is skipped
        box->setLocale(QLocale::c()); // English month names, whatever the desktop's language
        takeTypedSeparators(*box);
    }
    showTime(*m_time, when.time());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText("&Move");
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* form = new QFormLayout(this);
    auto* label = new QLabel(QString("When is '%1' to run?").arg(title), this);
    label->setWordWrap(true);
    form->addRow(label);
    form->addRow("&Day", m_day);
    form->addRow("&Time", m_time);
    form->addRow(buttons);
    putInReadingOrder(*this);
    m_day->setFocus();
}

WallClock frmAgendaMove::when() const {
    return {m_day->date(), m_time->time()};
}

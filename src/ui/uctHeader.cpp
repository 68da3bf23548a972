#include "ui/uctHeader.h"

#include "ui/Labels.h"
#include "ui/Logo.h"
#include "ui/Palette.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVariantAnimation>

namespace {

QLabel* whiteLabel(QWidget* parent, double size, bool bold) {
    auto* label = new QLabel(parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(bold);
    label->setFont(font);
    setTextColour(*label, Palette::headerText());
    return label;
}

} // namespace

/// A screen over another one has a slim band: the logo says what program it is on the first one.
uctHeader::uctHeader(QWidget* parent)
    : QFrame(parent),
      m_slim(window()->parentWidget() != nullptr),
      m_title(whiteLabel(this, m_slim ? 1.15 : 1.5, true)),
      m_note(whiteLabel(this, 0.95, false)),
      m_wave(new QVariantAnimation(this)) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto* layout = new QHBoxLayout(this);
    const int line = fontMetrics().height();
    if (m_slim)
        layout->setContentsMargins(12, line / 4, 12, line / 4);
    else
        layout->setContentsMargins(line * 3, line / 2, line, line / 2);
    layout->addWidget(m_title);
    layout->addStretch();
    layout->addWidget(m_note);
    m_wave->setStartValue(0.0);
    m_wave->setEndValue(1.0);
    m_wave->setDuration(1400);
    connect(m_wave, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
}

QString uctHeader::title() const {
    return m_title->text();
}

void uctHeader::setTitle(const QString& title) {
    m_title->setText(title);
}

void uctHeader::setNote(const QString& note) {
    m_note->setText(note);
}

void uctHeader::showEvent(QShowEvent* event) {
    if (!m_slim) m_wave->start();
    QFrame::showEvent(event);
}

void uctHeader::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient band(0, 0, width(), 0);
    band.setColorAt(0, Palette::headerFrom());
    band.setColorAt(1, Palette::headerTo());
    painter.fillRect(rect(), band);
    if (m_slim) return;
    const double side = qMin(height() * 0.62, fontMetrics().height() * 2.2);
    const bool running = m_wave->state() == QAbstractAnimation::Running;
    paintLogo(painter, {(m_title->x() - side) / 2, (height() - side) / 2, side, side},
              running ? m_wave->currentValue().toDouble() : 1.0);
}

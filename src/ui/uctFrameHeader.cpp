#include "ui/uctFrameHeader.h"

#include "base/SettingsStore.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QToolButton>

uctFrameHeader::uctFrameHeader(QWidget* parent)
    : QWidget(parent),
      m_arrow(new QToolButton(this)),
      m_title(new QLabel(this)),
      m_layout(new QHBoxLayout(this)) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_arrow->setAutoRaise(true);
    m_arrow->setArrowType(Qt::DownArrow);
    QFont font = m_title->font();
    font.setBold(true);
    m_title->setFont(font);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addWidget(m_arrow);
    m_layout->addWidget(m_title);
    m_layout->addStretch(1);
    connect(m_arrow, &QToolButton::clicked, this, &uctFrameHeader::toggle);
}

QString uctFrameHeader::title() const {
    return m_title->text();
}

void uctFrameHeader::setTitle(const QString& title) {
    m_title->setText(title);
    tellState();
}

void uctFrameHeader::attach(QWidget* content, const QString& key, QWidget* pane) {
    m_content = content;
    m_pane = pane;
    m_key = key;
    setOpen(getSetting("VWT", "Frames", m_key, "open") != "closed");
}

void uctFrameHeader::addWidget(QWidget* widget) {
    m_layout->addWidget(widget);
}

void uctFrameHeader::setOpen(bool open) {
    m_open = open;
    m_arrow->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
    tellState();
    m_content->setVisible(open);
    if (m_pane) m_pane->setMaximumHeight(open ? QWIDGETSIZE_MAX : sizeHint().height());
}

/// For those who do not see the arrow.
void uctFrameHeader::tellState() {
    m_arrow->setToolTip(m_open ? "Hide this part" : "Show this part");
    m_arrow->setAccessibleName(m_title->text() + (m_open ? ", shown" : ", hidden"));
}

void uctFrameHeader::toggle() {
    setOpen(!m_open);
    saveSetting("VWT", "Frames", m_key, m_open ? "open" : "closed");
}

void uctFrameHeader::mouseReleaseEvent(QMouseEvent* event) {
    const bool onTitle = m_title->geometry().contains(event->position().toPoint());
    if (event->button() == Qt::LeftButton && onTitle && m_content) toggle();
}

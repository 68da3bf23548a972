#include "ui/frmWaiting.h"

#include "ui/Labels.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

frmWaiting::frmWaiting(const QString& server, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      m_server(server),
      m_text(new QLabel(this)),
      m_stop(new QPushButton("Stop", this)) {
    setObjectName("frmWaiting");
    setWindowTitle(QApplication::applicationDisplayName());
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_text->setWordWrap(true);
    m_text->setMinimumWidth(fontMetrics().averageCharWidth() * 52);
    m_stop->setObjectName("cmdStop");
    m_stop->setAutoDefault(false);
    m_stop->setFocusPolicy(Qt::NoFocus); // whoever types ahead does not press it
    m_stop->setToolTip("Stop waiting; what was begun is undone (Esc)");
    connect(m_stop, &QPushButton::clicked, this, &frmWaiting::stopPressed);

    auto* bar = new QHBoxLayout;
    bar->addWidget(hintLabel(this, "What you have entered stays."), 1);
    bar->addWidget(m_stop);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_text);
    column->addLayout(bar);
}

void frmWaiting::showProgress(int seconds, bool stopping) {
    const QString text = stopping ? QString("Stopping the request to the server %1…").arg(m_server)
                                  : QString("Waiting for the server %1 since %2 %3…")
                                        .arg(m_server)
                                        .arg(seconds)
                                        .arg(seconds == 1 ? "second" : "seconds");
    m_stop->setEnabled(!stopping);
    if (m_text->text() != text) m_text->setText(text);
    if (!isVisible()) show();
}

void frmWaiting::reject() {
    emit stopPressed();
}

#include "app/frmSplashScreen.h"

#include "base/Version.h"
#include "ui/uctHeader.h"

#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>
#include <chrono>

frmSplashScreen::frmSplashScreen(QWidget* parent) : QDialog(parent, Qt::SplashScreen) {
    setObjectName("frmSplashScreen");
    auto* header = new uctHeader(this);
    header->setTitle("Norva Quorra Zelvan Scheduler");
    auto* version = new QLabel(QString("Version ") + programVersion, this);
    version->setObjectName("lblVersion");
    version->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    header->setMinimumHeight(fontMetrics().height() * 6);
    layout->addWidget(header);
    version->setMinimumHeight(fontMetrics().height() * 3);
    layout->addWidget(version);
    setMinimumWidth(fontMetrics().averageCharWidth() * 64);
}

void frmSplashScreen::begin() {
    m_shown.start();
    open();
}

void frmSplashScreen::finish() {
    constexpr qint64 seen = 1500; // milliseconds
    const qint64 left = seen - m_shown.elapsed();
    if (left <= 0 || !isVisible()) return accept();
    QTimer::singleShot(std::chrono::milliseconds(left), this, &QDialog::accept);
    exec();
}

void frmSplashScreen::mousePressEvent(QMouseEvent*) {
    accept();
}

void frmSplashScreen::keyPressEvent(QKeyEvent*) {
    accept();
}

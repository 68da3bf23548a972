#include "ui/DesktopNotices.h"

#include "base/SettingsStore.h"

#include <QWidget>

DesktopNotices::DesktopNotices(QWidget& window) : m_icon(window.windowIcon()) {
    const auto bringBack = [&window] {
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
        window.raise();
        window.activateWindow();
    };
    connect(&m_icon, &QSystemTrayIcon::messageClicked, this, bringBack);
    connect(&m_icon, &QSystemTrayIcon::activated, this, bringBack);
}

bool DesktopNotices::areWanted() {
    return getSetting("VWT", "Notices", "Finished", "no") == "yes";
}

void DesktopNotices::setWanted(bool wanted) {
    saveSetting("VWT", "Notices", "Finished", wanted ? "yes" : "no");
}

void DesktopNotices::tell(const QString& title, const QString& text) {
    if (!QSystemTrayIcon::isSystemTrayAvailable()) return;
    m_icon.show();
    m_icon.showMessage(title, text);
}

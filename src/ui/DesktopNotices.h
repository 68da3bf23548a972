#pragma once

#include <QSystemTrayIcon>

class QWidget;

/// Notices of the desktop, for who works in another program: off until the user wants them. A desktop
/// without a tray shows none.
class DesktopNotices : public QObject {
    Q_OBJECT

public:
    /// A click on a notice, or on the icon, brings the window back.
    explicit DesktopNotices(QWidget& window);

    static bool areWanted();
    static void setWanted(bool wanted);

    void tell(const QString& title, const QString& text);

private:
    QSystemTrayIcon m_icon;
};

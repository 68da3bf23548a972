#include "ui/WindowPlacement.h"

#include "base/SettingsStore.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace {

constexpr int maximized = 2; ///< of the setting "Type"

} // namespace

void restoreWindowPlacement(QWidget& window) {
    const auto setting = [](const char* key, int standard) {
        return getSetting("VWT", "Position", key, QString::number(standard)).toInt();
    };
    QRect place(setting("X", window.x()), setting("Y", window.y()), setting("W", window.width()),
                setting("H", window.height()));
    if (!QGuiApplication::screenAt(place.center())) // its monitor is gone
        place.moveCenter(QGuiApplication::primaryScreen()->availableGeometry().center());
    window.setGeometry(place);
    if (setting("Type", maximized) == maximized)
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void saveWindowPlacement(const QWidget& window) {
    const auto keep = [](const char* key, int value) {
        saveSetting("VWT", "Position", key, QString::number(value));
    };
    const QRect place = window.normalGeometry();
    keep("Type", window.isMaximized() ? maximized : 0);
    keep("X", place.x());
    keep("Y", place.y());
    keep("W", place.width());
    keep("H", place.height());
}

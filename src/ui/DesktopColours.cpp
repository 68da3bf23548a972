#include "ui/DesktopColours.h"

#include <QGuiApplication>
#include <QPalette>

#ifndef Q_OS_WIN

Palette::Scheme desktopScheme() {
    const QColor window = QGuiApplication::palette().color(QPalette::Window);
    return window.lightness() < 128 ? Palette::Dark : Palette::Light;
}

#else

#include <QSettings>
#include <windows.h>

/// Windows tells programs of this kind by neither palette nor event whether it is dark.
Palette::Scheme desktopScheme() {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    if (SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0)
        && contrast.dwFlags & HCF_HIGHCONTRASTON)
        return Palette::HighContrast;
    const QSettings themes(
        R"(HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Themes\Personalize)",
        QSettings::NativeFormat);
    return themes.value("AppsUseLightTheme", 1).toInt() == 0 ? Palette::Dark : Palette::Light;
}

#endif

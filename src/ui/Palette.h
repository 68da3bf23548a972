#pragma once

#include <QColor>
#include <QString>

class QApplication;

/// The program's colours, light and dark, and its font: applied once at start-up.
namespace Palette {

enum Scheme { Light, Dark, HighContrast };

/// What this user set, "light", "dark" or "contrast"; empty for the desktop's own.
QString setting();
/// Takes effect when the program starts next.
void setSetting(const QString& setting);
/// What this user set, else what the desktop shows.
Scheme wantedScheme();
/// Style, colours and icon theme for the whole program.
void apply(QApplication& application, Scheme scheme);
/// The display font at the desktop's own size; Carlito stands in where Calibri is not installed.
void applyFont(QApplication& application, const QString& family);

QColor headerFrom();
QColor headerTo();
QColor headerText();
QColor subtleText(); ///< notes beside captions
QColor frameLine();  ///< lines between parts of a screen
QColor standardSchedule();
QColor multiSelectCostCentre(); ///< rows of cost-centre sub-project schedules
QColor changedValue();          ///< rows of values that a user set apart from their defaults
QColor problem();               ///< texts that tell of an error

} // namespace Palette

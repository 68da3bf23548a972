#pragma once

#include <QIcon>

class QPainter;
class QRectF;

/// The program's mark: three bars of a bill under the waves of a call, in the header's text colour. The waves
/// run outward while `phase` goes from 0 to 1.
void paintLogo(QPainter& painter, const QRectF& place, double phase = 1.0);
/// The same on the header's colour, in a square of `side` pixels at the painter's origin.
void paintProgramIcon(QPainter& painter, int side);
/// That in all sizes of title bars and task lists.
QIcon programIcon();

#pragma once

#include <QByteArray>
#include <QString>

class uctAgenda;

/// The days that an agenda shows with all their hours, under a title, as the content of a file. Selection and
/// what is being moved are left out. Empty when there is no memory for it.
QByteArray agendaAsPng(const uctAgenda& agenda, const QString& title);
#ifdef SCHEDULER_SVG
QByteArray agendaAsSvg(const uctAgenda& agenda, const QString& title);
#endif

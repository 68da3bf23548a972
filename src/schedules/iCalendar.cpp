#include "schedules/iCalendar.h"

#include "db/ServerText.h"

#include <QCryptographicHash>
#include <QDateTime>

namespace {

/// What a value may not hold as it is. A control character is in no calendar.
QString escaped(const QString& text) {
    const QString lines = QString(text).replace("\r\n", "\n").replace('\r', '\n');
    QString result;
    for (const QChar letter : lines) {
        if (letter == '\n')
            result += "\\n";
        else if (letter == '\\' || letter == ';' || letter == ',')
            (result += '\\') += letter;
        else if (letter == '\t' || (letter >= ' ' && letter != QChar(0x7f)))
            result += letter;
    }
    return result;
}

/// No line is longer than 75 octets; a longer one goes on in the next, behind a blank. A letter stays whole.
void add(QByteArray& file, const QString& line) {
    constexpr qsizetype longest = 75;
    QByteArray rest = line.toUtf8();
    qsizetype room = longest;
    while (rest.size() > room) {
        qsizetype end = room;
        while ((uchar(rest[end]) & 0xC0) == 0x80) --end; // within a letter
        file += rest.left(end) + "\r\n ";
        rest.remove(0, end);
        room = longest - 1;
    }
    file += rest + "\r\n";
}

QString form(const WallClock& when) {
    return when.date().toString("yyyyMMdd") + 'T' + when.time().toString("HHmmss");
}

/// Of a server whatever the case of its name.
QString mark(const QString& serverName) {
    return QString::fromLatin1(
        QCryptographicHash::hash(serverKey(serverName).toUtf8(), QCryptographicHash::Sha256)
            .toHex()
            .left(16));
}

} // namespace

QByteArray asCalendar(const std::vector<AgendaRun>& runs, const QString& serverName,
                      const QDateTime& stampUtc) {
    const QString stamp = stampUtc.toString("yyyyMMdd'T'HHmmss'Z'");
    const QString server = mark(serverName);
    QByteArray file;
    for (const char* line :
         {"BEGIN:VCALENDAR", "VERSION:2.0", "PRODID:-//Zelvan Scheduler//Agenda//EN", "CALSCALE:GREGORIAN"})
        add(file, line);
    for (const AgendaRun& run : runs) {
        add(file, "BEGIN:VEVENT");
        add(file, QString("UID:schedule-%1-%2@zelvan-scheduler").arg(run.id()).arg(server));
        add(file, "DTSTAMP:" + stamp);
        add(file, "DTSTART:" + form(run.start));
        if (run.seconds > 0) add(file, QString("DURATION:PT%1S").arg(run.seconds));
        add(file, "SUMMARY:" + escaped(run.schedule.title));
        add(file, "DESCRIPTION:" + escaped(run.description()));
        add(file, "CATEGORIES:" + escaped(statusText(run.schedule.status)));
        add(file, "TRANSP:TRANSPARENT"); // nobody's time is taken
        add(file, "END:VEVENT");
    }
    add(file, "END:VCALENDAR");
    return file;
}

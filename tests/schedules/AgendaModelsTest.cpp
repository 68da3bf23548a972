#include "schedules/AgendaLayout.h"
#include "schedules/iCalendar.h"
#include "support/Rows.h"
#include "support/TestClass.h"

#include <QDateTime>

namespace {

WallClock at(const QString& stored) {
    return WallClock::fromStored(stored).value_or(WallClock());
}

AgendaRun runAt(const QString& start, qint64 seconds = 0, int id = 1) {
    AgendaRun run;
    run.schedule.id = id;
    run.schedule.title = "Run";
    run.schedule.date = run.start = at(start);
    run.seconds = seconds;
    run.length = seconds > 0 ? AgendaRun::Watched : AgendaRun::Unknown;
    return run;
}

ScheduleListRow schedule(int id, ScheduleStatus status, const QString& date,
                         std::optional<qint64> delay = {}) {
    ScheduleListRow row;
    row.id = id;
    row.templateId = 5;
    row.status = status;
    row.date = WallClock::fromStored(date);
    row.delay = delay;
    return row;
}

ScheduleChanges changed(const ScheduleListRow& row) {
    ScheduleChanges changes;
    changes.rows = {row};
    return changes;
}

constexpr AgendaSizes sizes{740, 480, 10, 40}; // days of 100, hours of 20

} // namespace

/// What the agenda knows of runs, where it puts them, and the file for calendars.
using enum ScheduleStatus;

class AgendaModelsTest : public QObject {
    Q_OBJECT

private slots:
    void daysOfViews_data() {
        const Rows<AgendaView, QString, QString, QString, int> row;
        row("a month of whole weeks", AgendaView::Month, "2027-02-14", "2027-02-01", "2027-02-28", 0);
        row("a leap month", AgendaView::Month, "2028-02-29", "2028-01-31", "2028-03-05", 0);
        row("six weeks", AgendaView::Month, "2026-11-22", "2026-10-26", "2026-12-06", 0);
        row("a month after its 31st", AgendaView::Month, "2028-01-31", "2028-01-31", "2028-03-05", 1);
        row("a week over the year's end", AgendaView::Week, "2027-01-03", "2026-12-28", "2027-01-03", 0);
        row("over a clock change", AgendaView::Week, "2026-03-29", "2026-03-30", "2026-04-05", 1);
        row("a day before", AgendaView::Day, "2028-03-01", "2028-02-29", "2028-02-29", -1);
    }

    void daysOfViews() {
        const auto [view, day, first, last, turns] = thisRow<AgendaView, QString, QString, QString, int>();
        const AgendaDays days = shownDays(view, turned(view, QDate::fromString(day, Qt::ISODate), turns));
        QCOMPARE(days.first.toString(Qt::ISODate), first);
        QCOMPARE(days.last().toString(Qt::ISODate), last);
    }

    /// "x+width,y+height" of each piece in the week from 23 March 2026, whose last day has 23 hours for some
    /// clocks; "<" for one that began before, ">" for one that goes on.
    void places_data() {
        const Rows<QStringList, QString> row; // runs as "date time seconds"
        row("alone", {"2026-03-29 02:30:00 3600"}, "642+95,50+20");
        row("none stands lower than a line", {"2026-03-23 00:00:00 1"}, "42+95,0+11");
        row("the last second stays in the day", {"2026-03-23 23:59:59 0"}, "42+95,469+11");
        row("side by side", {"2026-03-23 08:00:00 7200", "2026-03-23 09:00:00 3600"},
            "42+47,160+40 90+47,180+20");
        row("marks meet though times do not", {"2026-03-23 08:00:00 0", "2026-03-23 08:20:00 0"},
            "42+47,160+11 90+47,166+11");
        row("one after the other", {"2026-03-23 08:00:00 3600", "2026-03-23 09:00:00 3600"},
            "42+95,160+20 42+95,180+20");
        row("a lane is used again",
            {"2026-03-23 08:00:00 10800", "2026-03-23 08:00:00 3600", "2026-03-23 09:30:00 3600"},
            "42+47,160+60 90+47,160+20 90+47,190+20");
        row("over midnight", {"2026-03-23 23:00:00 7200"}, "42+95,460+20> 142+95,0+20<");
        row("to midnight", {"2026-03-23 23:00:00 3600"}, "42+95,460+20");
        row("from the week before", {"2026-03-22 12:00:00 46800"}, "42+95,0+20<");
        row("into the next week", {"2026-03-29 23:00:00 90000"}, "642+95,460+20>");
        row("other weeks", {"2026-03-22 23:00:00 3600", "2026-03-30 00:00:00 60"}, "");
        row("too many", QStringList(7, "2026-03-23 08:00:00 0"),
            "42+18,160+11 61+18,160+11 80+18,160+11 99+18,160+11 more 3");
    }

    void places() {
        const auto [texts, expected] = thisRow<QStringList, QString>();
        std::vector<AgendaRun> runs;
        for (const QString& text : texts)
            runs.push_back(runAt(text.section(' ', 0, 1), text.section(' ', 2).toInt()));
        const AgendaLayout layout(AgendaView::Week, QDate(2026, 3, 25), runs, sizes);
        QStringList places;
        for (const AgendaLayout::Item& item : layout.items())
            places << QString("%1+%2,%3+%4%5%6")
                          .arg(int(item.place.left()))
                          .arg(int(item.place.width()))
                          .arg(int(item.place.top()))
                          .arg(qRound(item.place.height()))
                          .arg(item.fromBefore ? "<" : "", item.intoNext ? ">" : "");
        for (const AgendaLayout::More& more : layout.more()) places << QString("more %1").arg(more.runs);
        QCOMPARE(places.join(' '), expected);
    }

    void aMonthCountsWhatFindsNoRoom() {
        std::vector<AgendaRun> runs{runAt("2028-01-30 08:00:00"), runAt("2028-02-28 23:00:00", 7200)};
        for (int i = 0; i < 1000; ++i) runs.push_back(runAt("2028-02-29 08:00:00"));
        const AgendaLayout layout(AgendaView::Month, QDate(2028, 2, 1), runs, {700, 500, 10, 40});
        const auto day = std::ranges::find(layout.days(), QDate(2028, 2, 29), &AgendaLayout::Day::date);
        QCOMPARE(day->runs, 1000);
        QCOMPARE(layout.busiest(), 1000);
        QVERIFY(layout.items().size() > 2 && layout.more().size() == 1);
        QCOMPARE(int(layout.items().size()) - 1 + layout.more()[0].runs,
                 1000); // a run counts where it begins
        for (const AgendaLayout::Item& item : layout.items()) QVERIFY(item.place.bottom() <= 500);
        // Dragging in a month keeps the hour.
        QCOMPARE(layout.timeAt(day->place.center(), at("2028-02-01 07:07:07")), at("2028-02-29 07:07:07"));
        QVERIFY(!layout.timeAt({-1, 5}, at("2028-02-01 07:07:07")));
    }

    /// A schedule's status at each reading; the length that its template is known by afterwards, or -1.
    /// Clocks on the wall may show another time.
    void lengths_data() {
        const Rows<QString, qint64, qint64> row; // "time status wall", ..., the delay, the length
        row("watched", "10:00:00 0,10:00:30 2,10:01:30 2,10:02:30 4", 30, 120);
        row("the clocks are put back",
            "10:00:00 0,10:00:30 2 01:59:30,10:01:30 2 01:00:30,10:02:30 4 01:01:30", 30, 120);
        row("the clocks are put forward meanwhile", "10:00:00 0 00:59:59,10:00:30 2 02:00:29,10:01:30 4", 30,
            60);
        row("with errors", "10:00:00 0,10:00:30 2,10:01:30 3", 30, 60);
        row("it ran when it was seen first", "10:00:00 2,10:01:30 4", 30, -1);
        row("between two readings", "10:00:00 0,10:00:30 4", 30, -1);
        row("reset, with the time of an earlier run", "10:00:00 0,10:00:30 2,10:01:30 3", -9000, -1);
        row("the server was away at its begin", "10:00:00 0,10:40:00 2,10:41:00 4", 30, -1);
        row("the server was away at its end", "10:00:00 0,10:01:00 2,10:40:00 4", 30, -1);
        row("it goes back to pending", "10:00:00 0,10:00:30 2,10:01:00 0,10:01:30 4", 30, -1);
    }

    void lengths() {
        const auto [readings, delay, length] = thisRow<QString, qint64, qint64>();
        RunWatch watch;
        for (const QString& reading : readings.split(',')) {
            const auto status = ScheduleStatus(reading.section(' ', 1, 1).toInt());
            const QString time = reading.section(' ', 0, 0);
            const QString wall = reading.section(' ', 2);
            watch.take(changed(schedule(1, status, "2026-11-22 10:00:00",
                                        isFinished(status) ? std::optional(delay) : std::nullopt)),
                       {at("2026-11-22 " + (wall.isEmpty() ? time : wall)),
                        QTime(0, 0).secsTo(QTime::fromString(time))});
        }
        QCOMPARE(watch.usualLength(5).value_or(-1), length);
        const auto next =
            agendaRun(schedule(2, Pending, "2026-11-23 10:00:00"), watch, {at("2026-11-22 12:00:00"), 0});
        QCOMPARE(next->length, length < 0 ? AgendaRun::Unknown : AgendaRun::Estimated);
        QVERIFY(!agendaRun(schedule(3, CompletedWithErrors, "1899-12-30"), watch, Moment::now()));
    }

    void aCalendarFile() {
        AgendaRun run = runAt("2026-03-29 02:30:00", 0, 17);
        run.schedule.title = QString::fromUtf8("O'Brien; \\ \"all\",\r\nEND:VEVENT\rκλήσεις 📞") + QChar(7)
                             + QString(60, QChar(0x3a9));
        const QDateTime stamp(QDate(2026, 1, 2), QTime(3, 4, 5), Qt::UTC);
        const QByteArray file = asCalendar({run, runAt("2028-02-29 23:59:59", 90, 18)}, "Host\\One ", stamp);
        QStringList lines; // unfolded
        for (const QByteArray& line : file.split('\n')) {
            if (line.isEmpty()) continue;
            QVERIFY(line.endsWith('\r') && line.size() <= 76);
            QVERIFY(QString::fromUtf8(line).toUtf8() == line); // no letter is cut
            const QString text = QString::fromUtf8(line).chopped(1);
            text.startsWith(' ') ? lines.last() += text.mid(1) : (lines << text, QString());
        }
        QCOMPARE(lines.count("END:VEVENT"), 2);
        QCOMPARE(lines.filter("DTSTART"),
                 QStringList({"DTSTART:20260329T023000", "DTSTART:20280229T235959"}));
        QCOMPARE(lines.filter("DTSTAMP").first(), QString("DTSTAMP:20260102T030405Z"));
        QCOMPARE(lines.filter("DURATION"), QStringList("DURATION:PT90S")); // an unknown length is none
        QCOMPARE(lines.filter("SUMMARY").first(),
                 QString::fromUtf8("SUMMARY:O'Brien\\; \\\\ \"all\"\\,\\nEND:VEVENT\\nκλήσεις 📞")
                     + QString(60, QChar(0x3a9)));
        const QStringList ids = lines.filter("UID");
        QVERIFY(ids[0] != ids[1]);
        const auto idOn = [&](const QString& server) {
            return QString::fromUtf8(asCalendar({run}, server, stamp)).section("UID:", 1).section('\r', 0, 0);
        };
        QCOMPARE("UID:" + idOn("host\\one"), ids[0]);
        QVERIFY("UID:" + idOn("host\\two") != ids[0]);
    }
};

static const AnnounceTest<AgendaModelsTest> announced;
#include "AgendaModelsTest.moc"

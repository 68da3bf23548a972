#include "embedded/Conversion.h"
#include "embedded/Errors.h"
#include "embedded/FunctionTable.h"

#include <QLocale>

namespace embedded {

namespace {

const Type integerType = Type::of(Type::Int);
const Type dateTimeType = Type::of(Type::DateTime);

QDateTime dateAt(const Arguments& a, int index) {
    return dateText::fromStored(a.text(index));
}

/// Day of the week, 1 on the session's first weekday.
int weekday(const QDate& date, int firstWeekday) {
    return (date.dayOfWeek() - firstWeekday + 7) % 7 + 1;
}

int weekOfYear(const QDate& date, int firstWeekday) {
    const QDate first(date.year(), 1, 1);
    return (date.dayOfYear() - 1 + weekday(first, firstWeekday) - 1) / 7 + 1;
}

qint64 datePart(const QString& part, const QDateTime& date, int firstWeekday) {
    const QDate day = date.date();
    const QTime time = date.time();
    if (part == "year") return day.year();
    if (part == "quarter") return (day.month() - 1) / 3 + 1;
    if (part == "month") return day.month();
    if (part == "dayofyear") return day.dayOfYear();
    if (part == "day") return day.day();
    if (part == "week") return weekOfYear(day, firstWeekday);
    if (part == "weekday") return weekday(day, firstWeekday);
    if (part == "hour") return time.hour();
    if (part == "minute") return time.minute();
    if (part == "second") return time.second();
    return time.msec();
}

QDateTime dateAdd(const QString& part, qint64 number, const QDateTime& date) {
    if (part == "year") return date.addYears(int(number));
    if (part == "quarter") return date.addMonths(int(number) * 3);
    if (part == "month") return date.addMonths(int(number));
    if (part == "week") return date.addDays(number * 7);
    if (part == "hour") return date.addMSecs(number * 3600000);
    if (part == "minute") return date.addMSecs(number * 60000);
    if (part == "second") return date.addMSecs(number * 1000);
    if (part == "millisecond") return date.addMSecs(number);
    return date.addDays(number); // day, dayofyear, weekday
}

/// Boundaries of the part that lie between the two dates.
qint64 dateDiff(const QString& part, const QDateTime& from, const QDateTime& to) {
    const auto months = [](const QDateTime& date) {
        return date.date().year() * 12 + date.date().month() - 1;
    };
    const auto units = [](const QDateTime& date, qint64 milliseconds) {
        const qint64 days = QDate(1753, 1, 1).daysTo(date.date());
        return (days * 86400000 + date.time().msecsSinceStartOfDay()) / milliseconds;
    };
    if (part == "year") return to.date().year() - from.date().year();
    if (part == "quarter") return months(to) / 3 - months(from) / 3;
    if (part == "month") return months(to) - months(from);
    if (part == "week") {
        // Weeks begin on Sunday here, whatever the session's first weekday.
        const auto week = [](const QDateTime& date) { return (date.date().toJulianDay() + 1) / 7; };
        return week(to) - week(from);
    }
    if (part == "hour") return units(to, 3600000) - units(from, 3600000);
    if (part == "minute") return units(to, 60000) - units(from, 60000);
    if (part == "second") return units(to, 1000) - units(from, 1000);
    if (part == "millisecond") return units(to, 1) - units(from, 1);
    return from.date().daysTo(to.date());
}

Value dateName(const QString& part, const QDateTime& date, int firstWeekday) {
    if (part == "month") return QLocale::c().toString(date.date(), "MMMM");
    if (part == "weekday") return QLocale::c().toString(date.date(), "dddd");
    return QString::number(datePart(part, date, firstWeekday));
}

Type addedDate(const QList<Typed>& arguments) {
    return arguments[2].type.isDate() ? arguments[2].type : dateTimeType;
}

} // namespace

void addDateFunctions(FunctionTable& table, Session& session) {
    Session* state = &session;
    const NativeFunction now = [state](const Arguments&) {
        return dateText::toStored(state->statementTime, dateTimeType);
    };
    table.add("getdate", {"", always(dateTimeType), now});
    table.add("current_timestamp", {"", always(dateTimeType), now});
    table.add("getutcdate", {"", always(dateTimeType), [state](const Arguments&) {
                                 QDateTime local = state->statementTime;
                                 local.setTimeSpec(Qt::LocalTime);
                                 return dateText::toStored(local.toUTC(), dateTimeType);
                             }});
    table.add("datepart", {"kd", always(integerType), [state](const Arguments& a) {
                               return datePart(a.text(0), dateAt(a, 1), state->firstWeekday);
                           }});
    table.add("datename", {"kd", always(Type::text(30, true)), [state](const Arguments& a) {
                               return dateName(a.text(0), dateAt(a, 1), state->firstWeekday);
                           }});
    for (const char* part : {"year", "month", "day"}) {
        const QString name = part;
        table.add(name, {"d", always(integerType),
                         [name](const Arguments& a) { return datePart(name, dateAt(a, 0), 7); }});
    }
    table.add("dateadd", {"kid", addedDate, [](const Arguments& a) {
                              const QDateTime date = dateAdd(a.text(0), a.integer(1), dateAt(a, 2));
                              if (!date.isValid() || date.date().year() > 9999 || date.date().year() < 1753)
                                  throw DbError(517,
                                                "Adding a value to a 'datetime' column caused an overflow.");
                              return dateText::toStored(date, dateTimeType);
                          }});
    table.add("datediff", {"kdd", always(integerType), [](const Arguments& a) {
                               const qint64 difference = dateDiff(a.text(0), dateAt(a, 1), dateAt(a, 2));
                               if (difference != int(difference))
                                   throw DbError(535, "The datediff function resulted in an overflow.");
                               return difference;
                           }});
    table.add("isdate", {"y", always(integerType),
                         [state](const Arguments& a) -> Value {
                             if (a.isNull(0)) return qint64(0);
                             const Type type = Type::unpacked(a.integer(1));
                             if (type.isDate()) return qint64(1);
                             if (!type.isText()) return qint64(0);
                             return qint64(!a.text(0).trimmed().isEmpty()
                                           && dateText::tryParse(a.text(0), state->dateOrder).isValid());
                         },
                         true});
}

} // namespace embedded

#include "db/DbError.h"
#include "embedded/FunctionTable.h"

namespace embedded {

namespace {

const Type integerType = Type::of(Type::Int);
const Type dateTimeType = Type::of(Type::DateTime);

QDateTime dateAt(const Arguments& a, int index) {
    return dateText::fromStored(a.text(index));
}

/// Day of the week, 1 on Sunday.
int weekday(const QDate& date) {
    return date.dayOfWeek() % 7 + 1;
}

int weekOfYear(const QDate& date) {
    const QDate first(date.year(), 1, 1);
    return (date.dayOfYear() - 1 + weekday(first) - 1) / 7 + 1;
}

qint64 datePart(const QString& part, const QDateTime& date) {
    const QDate day = date.date();
    const QTime time = date.time();
    if (part == "year") return day.year();
    if (part == "month") return day.month();
    if (part == "day") return day.day();
    if (part == "week") return weekOfYear(day);
    if (part == "weekday") return weekday(day);
    if (part == "hour") return time.hour();
    if (part == "minute") return time.minute();
    return time.second();
}

QDateTime dateAdd(const QString& part, qint64 number, const QDateTime& date) {
    if (part == "year") return date.addYears(int(number));
    if (part == "month") return date.addMonths(int(number));
    if (part == "week") return date.addDays(number * 7);
    if (part == "hour") return date.addMSecs(number * 3600000);
    if (part == "minute") return date.addMSecs(number * 60000);
    if (part == "second") return date.addMSecs(number * 1000);
    return date.addDays(number); // day or weekday
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
    if (part == "month") return months(to) - months(from);
    if (part == "week") {
        const auto week = [](const QDateTime& date) { return (date.date().toJulianDay() + 1) / 7; };
        return week(to) - week(from);
    }
    if (part == "hour") return units(to, 3600000) - units(from, 3600000);
    if (part == "minute") return units(to, 60000) - units(from, 60000);
    if (part == "second") return units(to, 1000) - units(from, 1000);
    return from.date().daysTo(to.date());
}

Type addedDate(const QList<Typed>& arguments) {
    return arguments[2].type.isDate() ? arguments[2].type : dateTimeType;
}

} // namespace

void addDateFunctions(FunctionTable& table, Session& session) {
    table.add("getdate", {"", always(dateTimeType), [&session](const Arguments&) {
                              return dateText::toStored(session.statementTime, dateTimeType);
                          }});
    table.add("datepart", {"kd", always(integerType),
                           [](const Arguments& a) { return datePart(a.text(0), dateAt(a, 1)); }});
    for (const char* part : {"year", "month", "day"}) {
        const QString name = part;
        table.add(name, {"d", always(integerType),
                         [name](const Arguments& a) { return datePart(name, dateAt(a, 0)); }});
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
}

} // namespace embedded

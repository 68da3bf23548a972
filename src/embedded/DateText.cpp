#include "embedded/DateText.h"

#include "embedded/Errors.h"

#include <QLocale>
#include <QRegularExpression>
#include <cmath>

namespace embedded::dateText {

namespace {

const QDate base(1900, 1, 1);

/// 1 to 12 for an English month name, whole or its first three letters; 0 otherwise.
int monthOf(const QString& word) {
    static const QStringList names{"january", "february", "march",     "april",   "may",      "june",
                                   "july",    "august",   "september", "october", "november", "december"};
    const QString lower = word.toLower();
    for (int i = 0; i < names.size(); ++i)
        if (lower == names[i] || lower == names[i].left(3)) return i + 1;
    return 0;
}

int fullYear(const QString& digits) {
    const int year = digits.toInt();
    if (digits.size() > 2) return year;
    return year + (year < 50 ? 2000 : 1900);
}

/// "9", "9:05", "9:05:30", "9:05:30.123" with AM or PM. A lone hour needs AM or PM.
bool parseTime(const QString& text, QTime& time) {
    static const QRegularExpression form(
        "^(\\d{1,2})(?::(\\d{1,2})(?::(\\d{1,2})(?:[.:](\\d{1,7}))?)?)?\\s*([AaPp][Mm])?$");
    const QRegularExpressionMatch match = form.match(text.trimmed());
    if (!match.hasMatch() || (match.captured(2).isEmpty() && match.captured(5).isEmpty())) return false;
    int hour = match.captured(1).toInt();
    const QString half = match.captured(5).toLower();
    if (!half.isEmpty()) {
        if (hour > 12) return false;
        hour = hour % 12 + (half == "pm" ? 12 : 0);
    }
    const QString fraction = match.captured(4);
    time = QTime(hour, match.captured(2).toInt(), match.captured(3).toInt(),
                 fraction.isEmpty() ? 0 : int(fraction.leftJustified(3, u'0').left(3).toInt()));
    return time.isValid();
}

bool parseDay(const QString& text, Order order, QDate& date) {
    if (text.isEmpty()) return date = base, true;
    static const QRegularExpression compact("^\\d{8}$|^\\d{6}$|^\\d{4}$");
    if (compact.match(text).hasMatch()) {
        if (text.size() == 4)
            date = QDate(text.toInt(), 1, 1);
        else
            date = QDate(fullYear(text.chopped(4)), text.right(4).left(2).toInt(), text.right(2).toInt());
        return true;
    }
    static const QRegularExpression separators("[\\s,/.-]+");
    static const QRegularExpression boundary("(?<=\\d)(?=[A-Za-z])|(?<=[A-Za-z])(?=\\d)");
    const QStringList parts = QString(text).replace(boundary, " ").split(separators, Qt::SkipEmptyParts);
    QStringList numbers;
    int month = 0;
    for (const QString& part : parts) {
        if (const int named = monthOf(part)) {
            if (month != 0) return false;
            month = named;
        } else if (bool isNumber = false; part.toUInt(&isNumber), isNumber) {
            numbers.append(part);
        } else {
            return false;
        }
    }
    if (month != 0) {
        if (numbers.isEmpty() || numbers.size() > 2) return false;
        if (numbers.size() == 1) { // a month and a year, or a month and a day of this year
            if (numbers[0].size() != 4) return false;
            return date = QDate(fullYear(numbers[0]), month, 1), true;
        }
        const bool yearFirst = numbers[0].size() == 4;
        date = QDate(fullYear(numbers[yearFirst ? 0 : 1]), month, numbers[yearFirst ? 1 : 0].toInt());
        return true;
    }
    if (numbers.size() != 3) return false;
    if (numbers[0].size() == 4) {
        const bool dayBeforeMonth = order == Order::DayMonthYear;
        date = QDate(numbers[0].toInt(), numbers[dayBeforeMonth ? 2 : 1].toInt(),
                     numbers[dayBeforeMonth ? 1 : 2].toInt());
    } else if (order == Order::YearMonthDay && numbers[2].size() != 4) {
        date = QDate(fullYear(numbers[0]), numbers[1].toInt(), numbers[2].toInt());
    } else {
        const bool dayFirst = order == Order::DayMonthYear;
        date =
            QDate(fullYear(numbers[2]), numbers[dayFirst ? 1 : 0].toInt(), numbers[dayFirst ? 0 : 1].toInt());
    }
    return true;
}

/// False when the text has no date's form; an impossible day yields an invalid date and true.
bool parseParts(const QString& text, Order order, QDateTime& result) {
    QString rest = text.simplified();
    static const QRegularExpression iso("^(\\d{4}-\\d{2}-\\d{2})[Tt](\\d.*?)[Zz]?$");
    if (const auto match = iso.match(rest); match.hasMatch()) {
        rest = match.captured(1) + ' ' + match.captured(2);
        order = Order::MonthDayYear;
    }
    QTime time(0, 0);
    static const QRegularExpression clock("(?:^|\\s)(\\d{1,2}(?::[\\d:.]+)?\\s*(?:[AaPp][Mm])?)$");
    if (const auto match = clock.match(rest); match.hasMatch() && parseTime(match.captured(1), time))
        rest.truncate(match.capturedStart(0));
    else if (rest.contains(u':'))
        return false;
    QDate date;
    if (!parseDay(rest.trimmed(), order, date)) return false;
    result = date.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
    return true;
}

QString pad(int number, int width) {
    return QString::number(number).rightJustified(width, u'0');
}

} // namespace

QDateTime parse(const QString& text, Order order) {
    QDateTime result;
    if (!parseParts(text, order, result))
        throw DbError(241, "Conversion failed when converting date and/or time from character string.");
    if (!result.isValid() || result.date().year() > 9999)
        throw DbError(242, "The conversion of a varchar data type to a datetime data type resulted in an "
                           "out-of-range value.");
    return result;
}

QDateTime fromStored(const QString& stored) {
    // In no zone at all: a local one would lose the hour that daylight saving skips.
    const QStringView text(stored);
    const auto number = [text](qsizetype at, qsizetype length) { return text.mid(at, length).toInt(); };
    return QDateTime(QDate(number(0, 4), number(5, 2), number(8, 2)),
                     QTime(number(11, 2), number(14, 2), number(17, 2), number(20, 3)), Qt::UTC);
}

QString toStored(const QDateTime& date, const Type& type) {
    QDateTime rounded = date;
    int firstYear = 1753;
    int lastYear = 9999;
    if (type.kind == Type::Date) {
        rounded.setTime(QTime(0, 0));
        firstYear = 1;
    } else if (type.kind == Type::SmallDateTime) {
        rounded = date.addMSecs(30000 - (date.time().second() * 1000 + date.time().msec() + 30000) % 60000);
        firstYear = 1900;
        lastYear = 2079;
    } else {
        // Ticks of 1/300 s: .000, .003, .007
        const int milliseconds = date.time().msec();
        const int ticks = int(std::lround(milliseconds * 0.3));
        rounded = date.addMSecs(int(std::lround(ticks / 0.3)) - milliseconds);
    }
    const QDate day = rounded.date();
    if (!rounded.isValid() || day.year() < firstYear || day.year() > lastYear)
        throw DbError(242, "The conversion resulted in an out-of-range datetime value.");
    const QTime time = rounded.time();
    return pad(day.year(), 4) + '-' + pad(day.month(), 2) + '-' + pad(day.day(), 2) + ' '
           + pad(time.hour(), 2) + ':' + pad(time.minute(), 2) + ':' + pad(time.second(), 2) + '.'
           + pad(time.msec(), 3);
}

QDateTime fromDays(double days) {
    const double whole = std::floor(days);
    return QDateTime(base.addDays(qint64(whole)), QTime(0, 0), Qt::UTC)
        .addMSecs(qint64(std::llround((days - whole) * 86400000.0)));
}

double toDays(const QDateTime& date) {
    return double(base.daysTo(date.date())) + date.time().msecsSinceStartOfDay() / 86400000.0;
}

Order orderOfStyle(int style, Order standard) {
    switch (style % 100) {
    case 1:
        return Order::MonthDayYear;
    case 3:
        return Order::DayMonthYear;
    case 12:
    case 20:
    case 21:
    case 26:
        return Order::YearMonthDay;
    default:
        return standard;
    }
}

QString format(const QDateTime& date, const Type& type, int style) {
    const auto written = [&date](const char* form) { return QLocale::c().toString(date, form); };
    const bool onlyDay = type.kind == Type::Date;
    const bool wholeYear = style >= 100;
    switch (style % 100) {
    case 0:
        if (onlyDay) return written("yyyy-MM-dd");
        return written("MMM ") + written("d").rightJustified(2) + written(" yyyy ")
               + written("h:mmAP").rightJustified(7);
    case 1:
        return written(wholeYear ? "MM/dd/yyyy" : "MM/dd/yy");
    case 3:
        return written(wholeYear ? "dd/MM/yyyy" : "dd/MM/yy");
    case 8:
        return written("HH:mm:ss");
    case 12:
        return written(wholeYear ? "yyyyMMdd" : "yyMMdd");
    case 20:
        return written(onlyDay ? "yyyy-MM-dd" : "yyyy-MM-dd HH:mm:ss");
    case 21:
        return written(onlyDay ? "yyyy-MM-dd" : "yyyy-MM-dd HH:mm:ss.zzz");
    case 26:
        return written(onlyDay                   ? "yyyy-MM-dd"
                       : date.time().msec() == 0 ? "yyyy-MM-ddTHH:mm:ss"
                                                 : "yyyy-MM-ddTHH:mm:ss.zzz");
    default:
        throw notSupported(QString("date style %1").arg(style));
    }
}

} // namespace embedded::dateText

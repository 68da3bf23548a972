#include "embedded/DateText.h"

#include "embedded/Errors.h"

#include <QHash>
#include <QLocale>
#include <QRegularExpression>
#include <cmath>

namespace embedded::dateText {

namespace {

const QDate base(1900, 1, 1);

DbError outOfRange() {
    return DbError(242, "The date is out of range.");
}

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

bool parseDay(const QString& text, Order order, QDate& date) {
    if (text.isEmpty()) {
        date = base;
        return true;
    }
    static const QRegularExpression compact("^\\d{8}$|^\\d{6}$");
    if (compact.match(text).hasMatch()) {
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
        if (numbers.size() != 2) return false;
        const bool yearFirst = numbers[0].size() == 4;
        date = QDate(fullYear(numbers[yearFirst ? 0 : 1]), month, numbers[yearFirst ? 1 : 0].toInt());
        return true;
    }
    if (numbers.size() != 3) return false;
    // The places of year, month and day. A year of four digits tells itself wherever it stands.
    const bool dayFirst = order == Order::DayMonthYear;
    const bool yearFirst = numbers[0].size() == 4 || (order == Order::YearMonthDay && numbers[2].size() != 4);
    const int first = yearFirst ? 1 : 0;
    date = QDate(fullYear(numbers[yearFirst ? 0 : 2]), numbers[dayFirst ? first + 1 : first].toInt(),
                 numbers[dayFirst ? first : first + 1].toInt());
    return true;
}

/// False when the text has no date's form; an impossible day yields an invalid date and true.
bool parseParts(const QString& text, Order order, QDateTime& result) {
    static const QRegularExpression form(
        "^(.*?)(?:(?:^|\\s|(\\dT))(\\d{1,2}):(\\d{1,2})(?::(\\d{1,2})(?:[.:](\\d{1,7}))?)?\\s*(am|pm)?Z?)?$",
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(text.simplified());
    const QString joint = match.captured(2); // of the last digit of the day and a T
    if (!joint.isEmpty()) order = Order::MonthDayYear;
    int hour = match.captured(3).toInt();
    const QString half = match.captured(7).toLower();
    if (!half.isEmpty() && hour > 12) return false;
    if (!half.isEmpty()) hour = hour % 12 + (half == "pm" ? 12 : 0);
    const QTime time(hour, match.captured(4).toInt(), match.captured(5).toInt(),
                     match.captured(6).leftJustified(3, u'0').left(3).toInt());
    const QString day = match.captured(1) + joint.left(1);
    if (!match.hasMatch() || !time.isValid() || day.contains(u':')) return false;
    QDate date;
    if (!parseDay(day.trimmed(), order, date)) return false;
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
        throw DbError(241, "Conversion failed when converting a text to a date.");
    if (!result.isValid() || result.date().year() > 9999) throw outOfRange();
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
    if (!rounded.isValid() || day.year() < firstYear || day.year() > lastYear) throw outOfRange();
    const QTime time = rounded.time();
    return pad(day.year(), 4) + '-' + pad(day.month(), 2) + '-' + pad(day.day(), 2) + ' '
           + pad(time.hour(), 2) + ':' + pad(time.minute(), 2) + ':' + pad(time.second(), 2) + '.'
           + pad(time.msec(), 3);
}

QDateTime fromDays(double days) {
    return plusDays(QDateTime(base, QTime(0, 0), Qt::UTC), days);
}

QDateTime plusDays(const QDateTime& date, double days) {
    constexpr double beyondAllDates = 1e7;
    if (!(std::fabs(days) < beyondAllDates)) throw outOfRange();
    return date.addMSecs(std::llround(days * 86400000.0));
}

double toDays(const QDateTime& date) {
    return double(base.daysTo(date.date())) + date.time().msecsSinceStartOfDay() / 86400000.0;
}

Order orderOfStyle(int style, Order standard) {
    static const QHash<int, Order> orders{{1, Order::MonthDayYear},  {3, Order::DayMonthYear},
                                          {12, Order::YearMonthDay}, {20, Order::YearMonthDay},
                                          {21, Order::YearMonthDay}, {26, Order::YearMonthDay}};
    return orders.value(style % 100, standard);
}

QString format(const QDateTime& date, const Type& type, int style) {
    const auto written = [&date](const char* form) { return QLocale::c().toString(date, form); };
    if (style % 100 == 0 && type.kind != Type::Date)
        return written("MMM ") + written("d").rightJustified(2) + written(" yyyy ")
               + written("h:mmAP").rightJustified(7);
    struct Form {
        const char *day, *shortDay, *moment; ///< with a century, without one, of a type that has a time
    };
    static const QHash<int, Form> forms{
        {0, {"yyyy-MM-dd", "yyyy-MM-dd", nullptr}},
        {1, {"MM/dd/yyyy", "MM/dd/yy", nullptr}},
        {3, {"dd/MM/yyyy", "dd/MM/yy", nullptr}},
        {8, {"HH:mm:ss", "HH:mm:ss", nullptr}},
        {12, {"yyyyMMdd", "yyMMdd", nullptr}},
        {20, {"yyyy-MM-dd", "yyyy-MM-dd", "yyyy-MM-dd HH:mm:ss"}},
        {21, {"yyyy-MM-dd", "yyyy-MM-dd", "yyyy-MM-dd HH:mm:ss.zzz"}},
        {26, {"yyyy-MM-dd", "yyyy-MM-dd", "yyyy-MM-ddTHH:mm:ss.zzz"}},
    };
    const auto form = forms.constFind(style % 100);
    if (form == forms.constEnd()) throw notSupported(QString("date style %1").arg(style));
    if (form->moment && type.kind != Type::Date) {
        const QString text = written(form->moment);
        return style % 100 == 26 && text.endsWith(".000") ? text.chopped(4) : text;
    }
    return written(style >= 100 ? form->day : form->shortDay);
}

} // namespace embedded::dateText

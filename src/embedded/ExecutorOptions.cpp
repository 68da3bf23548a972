// The SET options of Executor.
#include "embedded/Errors.h"
#include "embedded/Executor.h"

namespace embedded {

namespace {

/// Options that steer what this server does not have are accepted where that changes no result; the others
/// are refused.
void setOption(Session& session, const QString& option, const QString& word) {
    const bool on = word == "ON";
    const auto refuseOff = [&] {
        if (!on) throw notSupported("SET " + option + ' ' + word);
    };
    static const QSet<QString> withoutEffect{
        "TRANSACTION",       "ARITHIGNORE", "NUMERIC_ROUNDABORT",     "TEXTSIZE",
        "DEADLOCK_PRIORITY", "STATISTICS",  "CURSOR_CLOSE_ON_COMMIT", "ANSI_NULL_DFLT_ON"};
    if (option == "NOCOUNT")
        session.noCount = on;
    else if (option == "XACT_ABORT")
        session.abortOnError = on;
    else if (option == "ANSI_NULLS")
        session.ansiNulls = on;
    else if (option == "QUOTED_IDENTIFIER")
        session.quotedIdentifiers = on;
    else if (option == "ANSI_PADDING" || option == "ANSI_WARNINGS" || option == "ARITHABORT"
             || option == "CONCAT_NULL_YIELDS_NULL")
        refuseOff();
    else if (option == "LOCK_TIMEOUT")
        session.file.setLockTimeout(word.toInt() < 0 ? 10000 : word.toInt());
    else if (option == "DATEFORMAT" && (word == "MDY" || word == "DMY" || word == "YMD"))
        session.dateOrder = word == "MDY"   ? dateText::Order::MonthDayYear
                            : word == "DMY" ? dateText::Order::DayMonthYear
                                            : dateText::Order::YearMonthDay;
    else if (option == "ROWCOUNT" && word == "0")
        return;
    else if (!withoutEffect.contains(option))
        throw notSupported("SET " + option + ' ' + word);
}

} // namespace

void Executor::run(const SetOptionStatement& statement) {
    for (const QString& option : statement.options)
        setOption(m_session, option, statement.words.value(0).toUpper());
}

} // namespace embedded

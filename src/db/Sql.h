#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <concepts>
#include <optional>
#include <string_view>

/// The name of a database, table, column or procedure. Appears bracketed in a statement, with every
/// `]` doubled, so any name that a user or another program made is safe to use.
class Name {
public:
    explicit Name(QString name) : m_name(std::move(name)) {}
    /// "[name]"; throws a Refusal for an empty name and for what Sql::value() refuses.
    QString quoted() const;

private:
    QString m_name;
};

/// A text value that may be sent but never shown: its place in logs and errors reads N'***'.
struct Secret {
    QString text;
};

/// One batch of statements. Its wording comes from source text only (see sql() below); values become
/// literals, names are bracketed. There is no way to put a QString into the wording by accident.
class Sql {
public:
    Sql() = default;
    /// A whole batch read from a script file that the administrator put beside the program.
    static Sql script(const QString& text) { return Sql(text, text); }
    static Sql join(const QList<Sql>& parts, const Sql& separator);

    static Sql value(const QString& text); ///< N'…', also for a null QString; throws a Refusal for NUL and
                                           ///< for half of a UTF-16 pair
    static Sql value(const char*) = delete;
    static Sql null() { return script("NULL"); }
    static Sql value(const Secret& secret);
    static Sql value(const QDate& date); ///< '20080401'; an invalid date is NULL
    static Sql value(double number);
    static Sql value(const Name& name) { return script(name.quoted()); }
    static Sql value(const Sql& sql) { return sql; }
    static Sql value(bool flag) { return integer(flag ? 1 : 0); }
    template <class T>
    requires std::is_enum_v<T>
    static Sql value(T code) { return integer(qint64(code)); }
    template <std::integral T>
    static Sql value(T number) {
        return integer(number);
    }
    template <class T>
    static Sql value(const std::optional<T>& optional) {
        return optional ? value(*optional) : null();
    }

    const QString& text() const { return m_text; }   ///< what the server executes
    const QString& shown() const { return m_shown; } ///< the same with secrets masked
    bool isEmpty() const { return m_text.isEmpty(); }
    Sql& operator+=(const Sql& other);

    /// Replaces each "{}" of the wording by the argument at its place.
    static Sql compose(std::string_view wording, const QList<Sql>& arguments);

private:
    Sql(QString text, QString shown) : m_text(std::move(text)), m_shown(std::move(shown)) {}
    static Sql integer(qint64 number);

    QString m_text;
    QString m_shown;
};

/// A wording with one "{}" for each argument; a wrong count, or a wording that is not a constant of
/// the source, does not compile. Wordings are UTF-8.
template <class... Args>
class SqlWording {
public:
    consteval SqlWording(const char* wording) : m_text(wording) {
        std::size_t places = 0;
        for (std::size_t at = m_text.find("{}"); at != m_text.npos; at = m_text.find("{}", at + 2)) ++places;
        if (places != sizeof...(Args)) throw "one {} is needed for each argument";
    }
    constexpr std::string_view text() const { return m_text; }

private:
    std::string_view m_text;
};

/// Builds a statement: sql("SELECT [Status] FROM {}.dbo.[tblSchedule] WHERE [ScheduleID] = {}", Name(db),
/// id).
template <class... Args>
Sql sql(SqlWording<std::type_identity_t<Args>...> wording, const Args&... args) {
    return Sql::compose(wording.text(), {Sql::value(args)...});
}

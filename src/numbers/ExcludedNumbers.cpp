#include "numbers/ExcludedNumbers.h"

#include <algorithm>

namespace {

constexpr int TelNoLength = 25;
constexpr qsizetype NumbersPerStatement = 500;

} // namespace

ExcludedNumbers::ExcludedNumbers(Connection& connection, int templateId)
    : NumberTable(TelNoLength), m_connection(connection), m_templateId(templateId) {}

int ExcludedNumbers::countEverywhere(const QString& number) {
    return m_connection
        .scalar(
            sql("SELECT COUNT(*) as MyCount FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TelNo = {}",
                number))
        .toInt();
}

void ExcludedNumbers::add(const QStringList& numbers) {
    NumberTable::add(numbers);
    for (const QString& number : numbers) m_changes[numberKey(number)].now << Entry{number};
}

void ExcludedNumbers::clear() {
    const Entries before = entries();
    NumberTable::clear();
    note(before, {});
}

void ExcludedNumbers::removeAll(const QStringList& numbers) {
    const Entries all = entries();
    Entries before;
    for (const QString& number : numbers) before[numberKey(number)] = all.value(numberKey(number));
    NumberTable::removeAll(numbers);
    note(before, {});
}

void ExcludedNumbers::replace(const QStringList& numbers, const Progress& progress) {
    const Entries before = entries();
    NumberTable::replace(numbers, progress);
    Entries now;
    for (const QString& number : numbers) now[numberKey(number)] << Entry{number};
    note(before, now);
}

QStringList ExcludedNumbers::added() const {
    QStringList numbers;
    for (const Change& each : m_changes)
        if (each.before != each.now)
            for (const Entry& entry : each.now) numbers << entry.number;
    return numbers;
}

bool ExcludedNumbers::isChanged() const {
    return std::ranges::any_of(m_changes, [](const Change& each) { return each.before != each.now; });
}

void ExcludedNumbers::undo() {
    Transaction transaction(m_connection);
    NumberTable::removeAll(added());
    const Entries left = entries();
    QList<Entry> removed;
    for (auto each = m_changes.cbegin(); each != m_changes.cend(); ++each)
        if (each->before != each->now && !left.contains(each.key())) removed += each->before;
    insertEntries(removed);
    transaction.commit();
    m_changes.clear();
}

ExcludedNumbers::Entries ExcludedNumbers::entries() {
    Entries entries;
    for (const Row row : m_connection.query(
             sql("SELECT TelNo, Include FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TemplateID = {}",
                 m_templateId)))
        if (!row.isNull(0)) entries[numberKey(row.text(0))] << Entry{row.text(0), row.flag(1)};
    return entries;
}

void ExcludedNumbers::note(const Entries& before, const Entries& now) {
    for (auto each = before.cbegin(); each != before.cend(); ++each) {
        if (!m_changes.contains(each.key())) m_changes[each.key()].before = each.value();
        m_changes[each.key()].now.clear();
    }
    for (auto each = now.cbegin(); each != now.cend(); ++each) m_changes[each.key()].now = each.value();
}

void ExcludedNumbers::insertEntries(const QList<Entry>& entries) {
    for (qsizetype first = 0; first < entries.size(); first += NumbersPerStatement) {
        QList<Sql> rows;
        for (const Entry& each : entries.mid(first, NumbersPerStatement))
            rows << sql("({}, {}, {})", m_templateId, each.number, int(each.include));
        m_connection.execute(sql("INSERT INTO [NorvaScheduler].dbo.TblExcludedNumbers "
                                 "(TemplateID, TelNo, Include) VALUES {}",
                                 Sql::join(rows, sql(", "))));
    }
}

int ExcludedNumbers::count() {
    return m_connection
        .scalar(sql("SELECT COUNT(*) FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TemplateID = {}",
                    m_templateId))
        .toInt();
}

Sql ExcludedNumbers::selectNumbers() const {
    return sql("SELECT TelNo FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TemplateID = {}",
               m_templateId);
}

Sql ExcludedNumbers::deleteAll() const {
    return sql("DELETE  FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TemplateID = {}", m_templateId);
}

Sql ExcludedNumbers::selectThese(const Sql& condition) const {
    return sql("SELECT TelNo FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TelNo {} AND TemplateID = {}",
               condition, m_templateId);
}

Sql ExcludedNumbers::deleteThese(const Sql& condition) const {
    return sql("DELETE FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TelNo {} AND TemplateID = {}",
               condition, m_templateId);
}

Sql ExcludedNumbers::insertInto() const {
    return sql("INSERT INTO [NorvaScheduler].dbo.TblExcludedNumbers (TemplateID, TelNo) VALUES ");
}

Sql ExcludedNumbers::values(const QString& number) const {
    return sql("({}, {})", m_templateId, number);
}

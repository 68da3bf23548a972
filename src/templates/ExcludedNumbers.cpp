#include "templates/ExcludedNumbers.h"

namespace {

constexpr int TelNoLength = 25;

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

Sql ExcludedNumbers::selectNumbers() const {
    return sql("SELECT TelNo FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TemplateID = {}",
               m_templateId);
}

Sql ExcludedNumbers::deleteAll() const {
    return sql("DELETE  FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TemplateID = {}", m_templateId);
}

Sql ExcludedNumbers::deleteOne(const QString& number) const {
    return sql("DELETE FROM [NorvaScheduler].dbo.TblExcludedNumbers WHERE TelNo = {} AND TemplateID = {}",
               number, m_templateId);
}

Sql ExcludedNumbers::insertInto() const {
    return sql("INSERT INTO [NorvaScheduler].dbo.TblExcludedNumbers (TemplateID, TelNo) VALUES ");
}

Sql ExcludedNumbers::values(const QString& number) const {
    return sql("({}, {})", m_templateId, number);
}

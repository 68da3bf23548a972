#include "demo/BulkInsert.h"

namespace {

constexpr qsizetype RowsPerStatement = 500; // the server takes a thousand at most

} // namespace

void BulkInsert::addRow(const Sql& values) {
    m_rows << sql("({})", values);
    if (m_rows.size() == RowsPerStatement) finish();
}

void BulkInsert::finish() {
    if (m_rows.isEmpty()) return;
    m_connection.execute(sql("{} {}", m_into, Sql::join(m_rows, sql(", "))));
    m_rows.clear();
}

#pragma once

#include "db/Connection.h"

/// Inserts many rows with few statements. Nothing is sure to be written before finish().
class BulkInsert {
public:
    /// `into` is "INSERT INTO … (…) VALUES".
    BulkInsert(Connection& connection, Sql into) : m_connection(connection), m_into(std::move(into)) {}

    template <class... T>
    void add(const T&... values) {
        addRow(Sql::join({Sql::value(values)...}, sql(", ")));
    }
    void finish();

private:
    void addRow(const Sql& values);

    Connection& m_connection;
    Sql m_into;
    QList<Sql> m_rows;
};

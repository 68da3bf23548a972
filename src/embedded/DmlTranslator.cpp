#include "embedded/Translator.h"

#include "embedded/Collation.h"
#include "embedded/Errors.h"
#include "embedded/Parser.h"

namespace embedded {

QString Translator::stored(const Typed& value, const Column& column, const Object& table) const {
    const QString converted = convert(value, column.type, 0, true);
    if (column.nullable) return converted;
    return "ts_notnull(" + converted + ',' + sqliteText(column.name) + ',' + sqliteText(table.name) + ')';
}

QString Translator::defaultOf(const Column& column, const Object& table) {
    if (column.defaultText.isEmpty()) return stored({"NULL", {}}, column, table);
    return stored(value(parseDefault(column.defaultText)), column, table);
}

/// A null value is DEFAULT.
QString Translator::assigned(const ExprPtr& expr, const Column& column, const Object& table) {
    return expr ? stored(value(expr), column, table) : defaultOf(column, table);
}

Translator::Target Translator::targetOf(const InsertStatement& statement, const Object& table) {
    const bool explicitIdentity = m_session.identityInsert == table.sqlName();
    Target target;
    const bool allDefaults = statement.rows.size() == 1 && statement.rows[0].empty();
    if (statement.columns.isEmpty() && !allDefaults)
        for (const Column& column : table.columns)
            if (!column.identity) target.given.append(&column);
    for (const QString& name : statement.columns) {
        const Column* column = table.column(name);
        if (!column) throw invalidColumn(name);
        if (target.given.contains(column))
            throw serverError(264, "The column name '%1' is specified more than once.", name);
        if (column->identity && !explicitIdentity)
            throw serverError(544, "Cannot insert explicit value for identity column in table '%1'.",
                              table.name);
        target.given.append(column);
    }
    for (const Column& column : table.columns)
        if (!column.identity && !target.given.contains(&column)) target.missing.append(&column);
    return target;
}

QString Translator::Target::columnList() const {
    QStringList names;
    for (const Column* column : given + missing) names.append(sqliteName(column->name));
    return '(' + names.join(u',') + ')';
}

Translation Translator::insert(const InsertStatement& statement, const Object*& table) {
    table = &target(statement.table);
    const Target target = targetOf(statement, *table);
    QString sql = "INSERT INTO " + table->sqlName();
    if (target.given.isEmpty() && target.missing.isEmpty()) {
        sql += " DEFAULT VALUES"; // of a table that is an identity and nothing else
    } else if (statement.query) {
        QList<Type> types;
        m_scopes.pop_back();
        const QString query = subquery(*statement.query, types);
        sql += target.columnList() + selected(query, types, target, *table);
    } else {
        sql += target.columnList() + rows(statement, target, *table);
    }
    return {sql, m_variables};
}

QString Translator::rows(const InsertStatement& statement, const Target& target, const Object& table) {
    QStringList defaults;
    for (const Column* column : target.missing) defaults.append(defaultOf(*column, table));
    QStringList rows;
    for (const std::vector<ExprPtr>& row : statement.rows) {
        if (qsizetype(row.size()) != target.given.size()) {
            if (statement.columns.isEmpty())
                throw DbError(213,
                              "Column name or number of supplied values does not match table definition.");
            const bool more = qsizetype(row.size()) < target.given.size();
            throw DbError(more ? 109 : 110,
                          "There are not as many values as columns in the INSERT statement.");
        }
        QStringList values;
        for (std::size_t i = 0; i < row.size(); ++i)
            values.append(assigned(row[i], *target.given[qsizetype(i)], table));
        rows.append('(' + (values + defaults).join(u',') + ')');
    }
    return "VALUES " + rows.join(u',');
}

QString Translator::selected(const QString& sql, const QList<Type>& types, const Target& target,
                             const Object& table) {
    if (types.size() != target.given.size())
        throw DbError(types.size() < target.given.size() ? 120 : 121,
                      "The select list for the INSERT statement does not match its columns.");
    QStringList names;
    QStringList values;
    for (qsizetype i = 0; i < types.size(); ++i) {
        names.append('c' + QString::number(i));
        values.append(stored({names.last(), types[i]}, *target.given[i], table));
    }
    for (const Column* column : target.missing) values.append(defaultOf(*column, table));
    return "SELECT " + values.join(u',') + " FROM (WITH w(" + names.join(u',') + ") AS (" + sql
           + ") SELECT * FROM w)";
}

Translation Translator::update(const UpdateStatement& statement) {
    const Object& table = target(statement.target);
    const QString alias = m_scopes.back().sources.front().alias;
    QStringList sets;
    for (const Assignment& assignment : statement.assignments) {
        const Column* column = table.column(assignment.column);
        if (!column) throw invalidColumn(assignment.column);
        if (column->identity) throw serverError(8102, "Cannot update identity column '%1'.", column->name);
        sets.append(sqliteName(column->name) + '=' + assigned(assignment.value, *column, table));
    }
    QString sql = "UPDATE " + table.sqlName() + " AS " + alias + " SET " + sets.join(u',');
    if (statement.where) sql += " WHERE " + condition(statement.where);
    return {sql, m_variables};
}

Translation Translator::remove(const DeleteStatement& statement) {
    const Object& table = target(statement.target);
    QString sql = "DELETE FROM " + table.sqlName() + " AS " + m_scopes.back().sources.front().alias;
    if (statement.where) sql += " WHERE " + condition(statement.where);
    return {sql, m_variables};
}

QString Translator::fill(const Object& table, const Column& column, const QString& current,
                         const Type& currentType) {
    m_scopes.emplace_back();
    const QString text =
        current.isEmpty() ? defaultOf(column, table) : stored({current, currentType}, column, table);
    m_scopes.pop_back();
    return "UPDATE " + table.sqlName() + " SET " + sqliteName(column.name) + '=' + text;
}

} // namespace embedded

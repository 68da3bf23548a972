#include "embedded/Translator.h"

#include "embedded/Collation.h"
#include "embedded/Errors.h"
#include "embedded/SystemViews.h"

namespace embedded {

namespace {

DbError noTable(const ObjectName& name) {
    if (name.name.startsWith(u'@'))
        return serverError(1087, "Must declare the table variable \"%1\".", name.name);
    return invalidObject(name.toString());
}

void checkGrouping(const QStringList& ungrouped) {
    if (ungrouped.isEmpty()) return;
    throw serverError(8120, "Column '%1' is neither in an aggregate function nor in the GROUP BY clause.",
                      ungrouped.first());
}

QString nameOf(const SelectItem& item) {
    if (!item.alias.isEmpty()) return item.alias;
    return item.expr->kind == Expr::Column ? item.expr->parts.last() : QString();
}

} // namespace

Translation Translator::select(const Query& query) {
    Translation translation;
    for (const SelectItem& item : query.cores.front().items) {
        if (item.variable.isEmpty()) continue;
        translation.targets.append(item.variable);
        m_assigned.insert(collation::fold(item.variable));
        m_session.variable(item.variable);
    }
    if (!translation.targets.isEmpty()
        && translation.targets.size() != qsizetype(query.cores.front().items.size()))
        throw DbError(141, "A SELECT that assigns a value to a variable must not retrieve data.");
    translation.sql = assemble(query, translation.types, translation.names);
    if (m_readsAssigned && !query.orderBy.empty())
        throw notSupported("SELECT … ORDER BY that reads a variable while it assigns it");
    translation.variables = m_variables;
    translation.isOrdered = !query.orderBy.empty();
    return translation;
}

Translation Translator::single(const ExprPtr& expr, const Type& type) {
    m_scopes.emplace_back();
    const Typed typed = value(expr);
    m_scopes.pop_back();
    const Type target = type.kind == Type::Null ? typed.type : type;
    return {"SELECT " + convert(typed, target), m_variables, {target}, {QString()}};
}

Translation Translator::test(const ExprPtr& condition) {
    m_scopes.emplace_back();
    const QString sql = "SELECT CASE WHEN " + this->condition(condition) + " THEN 1 ELSE 0 END";
    m_scopes.pop_back();
    return {sql, m_variables, {Type::of(Type::Int)}, {QString()}};
}

QString Translator::subquery(const Query& query, QList<Type>& types) {
    for (const SelectCore& select : query.cores)
        for (const SelectItem& item : select.items)
            if (!item.variable.isEmpty()) throw DbError(102, "Incorrect syntax near '='.");
    QStringList names;
    return assemble(query, types, names);
}

QString Translator::assemble(const Query& query, QList<Type>& types, QStringList& names) {
    const bool compound = query.cores.size() > 1;
    std::vector<Core> cores;
    QString order;
    for (const SelectCore& select : query.cores) {
        m_scopes.emplace_back();
        cores.push_back(core(select));
        if (cores.size() == query.cores.size()) order = orderBy(query, cores.front(), compound);
        m_scopes.pop_back();
    }
    names = cores.front().names;
    types.clear();
    for (const Typed& item : cores.front().items) types.append(item.type);
    for (const Core& other : cores) {
        if (other.items.size() != types.size())
            throw DbError(205, "All queries of a UNION must have an equal number of expressions.");
        for (qsizetype i = 0; i < types.size(); ++i) types[i] = Type::common(types[i], other.items[i].type);
    }
    QString sql;
    for (std::size_t c = 0; c < cores.size(); ++c) {
        const Core& part = cores[c];
        QStringList items;
        for (qsizetype i = 0; i < types.size(); ++i) {
            Typed item = part.items[i];
            if (const QString converted = convert(item, types[i]); converted != item.sql)
                item = {converted, types[i]};
            const QString name = names[i].isEmpty() ? QString() : " AS " + sqliteName(names[i]);
            items.append(collated(item) + name);
        }
        QString text = part.head + items.join(u',') + part.tail;
        if (const ExprPtr& top = query.cores[c].top) {
            if (!compound) text += order;
            text += " LIMIT " + convert(value(top), Type::of(Type::BigInt));
            if (compound) text = "SELECT * FROM (" + text + ')';
        }
        if (c > 0) sql += query.cores[c].unionAll ? " UNION ALL " : " UNION ";
        sql += text;
    }
    return !compound && query.cores.front().top ? sql : sql + order;
}

Translator::Core Translator::core(const SelectCore& select) {
    Core core;
    core.head = select.distinct ? "SELECT DISTINCT " : "SELECT ";
    const QString tables = from(select.from);
    if (!tables.isEmpty()) core.tail += " FROM " + tables;
    if (select.where) {
        core.tail += " WHERE " + condition(select.where);
        if (m_scopes.back().aggregated)
            throw DbError(147, "An aggregate may not appear in the WHERE clause.");
    }
    if (!select.groupBy.empty()) {
        QStringList keys;
        QStringList collatedKeys;
        for (const ExprPtr& expr : select.groupBy) {
            const Typed key = value(expr);
            keys.append(key.sql);
            // A bare number would mean a place in the select list to SQLite.
            collatedKeys.append(expr->kind == Expr::Number ? '(' + key.sql + "+0)" : collated(key));
        }
        core.tail += " GROUP BY " + collatedKeys.join(u',');
        m_scopes.back().groupKeys = QSet<QString>(keys.begin(), keys.end());
    }
    m_scopes.back().ungrouped.clear();
    for (const SelectItem& item : select.items) {
        if (item.expr->kind == Expr::Star) {
            addStar(*item.expr, core);
            continue;
        }
        Typed typed = value(item.expr);
        if (!item.variable.isEmpty()) {
            const Type target = m_session.typeOf(item.variable);
            typed = {convert(typed, target), target};
        }
        core.items.append(typed);
        core.names.append(nameOf(item));
    }
    if (select.having) core.tail += " HAVING " + condition(select.having);
    const bool grouped = !select.groupBy.empty() || m_scopes.back().aggregated || select.having;
    if (grouped) checkGrouping(m_scopes.back().ungrouped);
    if (grouped && select.groupBy.empty()) m_scopes.back().aggregated = true;
    return core;
}

void Translator::addStar(const Expr& star, Core& core) {
    bool found = false;
    for (const Source& source : m_scopes.back().sources) {
        if (!star.parts.isEmpty() && !collation::equal(star.parts.last(), source.label)) continue;
        found = true;
        for (const Column& column : source.columns) {
            core.items.append({source.alias + '.' + sqliteName(column.name), column.type, true});
            core.names.append(column.name);
            m_scopes.back().ungrouped.append(column.name);
        }
    }
    if (found) return;
    if (star.parts.isEmpty()) throw DbError(263, "Must specify table to select from.");
    throw serverError(107, "The column prefix '%1' does not match with a table of the query.",
                      star.parts.join(u'.'));
}

QString Translator::orderBy(const Query& query, const Core& core, bool compound) {
    QStringList keys;
    for (const OrderItem& item : query.orderBy) {
        qsizetype place = -1;
        const Expr& expr = *item.expr;
        if (expr.kind == Expr::Number) {
            place = expr.text.toInt() - 1;
            if (place < 0 || place >= core.items.size())
                throw serverError(108, "The ORDER BY position number %1 is out of range.", expr.text);
        } else if (expr.kind == Expr::Column && expr.parts.size() == 1) {
            for (qsizetype i = 0; i < core.names.size() && place < 0; ++i)
                if (collation::equal(core.names[i], expr.parts[0])) place = i;
        }
        QString key;
        if (place < 0) {
            if (compound) throw DbError(104, "ORDER BY items must appear in the select list of a UNION.");
            const qsizetype before = m_scopes.back().ungrouped.size();
            const Typed typed = value(item.expr);
            if (m_scopes.back().aggregated || !m_scopes.back().groupKeys.isEmpty())
                checkGrouping(m_scopes.back().ungrouped.mid(before));
            for (qsizetype i = 0; i < core.items.size(); ++i)
                if (core.items[i].sql == typed.sql) place = i;
            if (query.cores.front().distinct && place < 0)
                throw DbError(145, "ORDER BY items must appear in the select list of SELECT DISTINCT.");
            key = collated(typed);
        }
        if (place >= 0) key = QString::number(place + 1);
        keys.append(key + (item.descending ? " DESC" : ""));
    }
    return keys.isEmpty() ? QString() : " ORDER BY " + keys.join(u',');
}

Source& Translator::addSource(const QString& label, bool aliased, const QList<Column>& columns) {
    for (const Source& other : m_scopes.back().sources)
        if (aliased && other.isAliased && collation::equal(other.label, label))
            throw serverError(1011, "The correlation name '%1' is specified multiple times in a FROM clause.",
                              label);
    m_scopes.back().sources.push_back({'t' + QString::number(++m_aliases), label, aliased, {}, columns});
    return m_scopes.back().sources.back();
}

QString Translator::from(const std::vector<TableRefPtr>& tables) {
    QStringList texts;
    for (const TableRefPtr& ref : tables) {
        // A comma binds looser than JOIN there, but not in SQLite.
        const bool needsBrackets = tables.size() > 1 && ref->kind == TableRef::Join;
        texts.append(needsBrackets ? '(' + table(*ref) + ')' : table(*ref));
    }
    return texts.join(u',');
}

QString Translator::table(const TableRef& ref) {
    if (ref.kind == TableRef::Join) {
        const QString left = table(*ref.left);
        QString right = table(*ref.right);
        if (ref.right->kind == TableRef::Join) right = '(' + right + ')';
        QString text = left + ' ' + ref.join + " JOIN " + right;
        if (ref.on) text += " ON " + condition(ref.on);
        return text;
    }
    if (ref.kind == TableRef::Named) return named(ref);

    // A derived table sees nothing of the tables beside it.
    Scope own = std::move(m_scopes.back());
    m_scopes.pop_back();
    QList<Type> types;
    QStringList names;
    const QString sql = assemble(*ref.query, types, names);
    m_scopes.push_back(std::move(own));
    QList<Column> columns;
    QSet<QString> seen;
    for (qsizetype i = 0; i < names.size(); ++i) {
        const QString& name = names[i];
        if (name.isEmpty()) throw serverError(8155, "Column %1 of '%2' has no name.", i + 1, ref.alias);
        if (seen.contains(collation::fold(name)))
            throw serverError(8156, "The column '%1' occurs more than once in '%2'.", name, ref.alias);
        seen.insert(collation::fold(name));
        columns.append({name, types[i], true, false, {}});
    }
    return '(' + sql + ") AS " + addSource(ref.alias, true, columns).alias;
}

QString Translator::named(const TableRef& ref) {
    const QString label = ref.alias.isEmpty() ? ref.name.name : ref.alias;
    const bool aliased = !ref.alias.isEmpty();
    const Object* object = m_session.find(ref.name);
    if (object && object->kind == ObjectKind::View) throw notSupported("views");
    const Database* database = m_session.reach(ref.name.database);
    QString text;
    QList<Column> columns;
    if (object && object->kind == ObjectKind::Table) {
        text = object->sqlName();
        columns = object->columns;
    } else if (const auto system = systemView(ref.name, database)) {
        text = '(' + system->sql + ')';
        columns = system->columns;
    } else {
        throw noTable(ref.name);
    }
    Source& source = addSource(label, aliased, columns);
    source.database = collation::fold(database->name);
    return text + " AS " + source.alias;
}

const Object& Translator::target(const ObjectName& name) {
    const Object* object = m_session.find(name);
    const Database* database = m_session.reach(name.database);
    if (!object || object->kind != ObjectKind::Table) {
        if (systemView(name, database))
            throw DbError(259, "Ad hoc updates to system catalogs are not allowed.");
        throw noTable(name);
    }
    m_scopes.emplace_back();
    addSource(name.name, false, object->columns).database = collation::fold(database->name);
    return *object;
}

} // namespace embedded

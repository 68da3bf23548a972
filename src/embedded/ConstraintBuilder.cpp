#include "embedded/ConstraintBuilder.h"

#include "embedded/ConstraintErrors.h"
#include "embedded/Errors.h"
#include "embedded/StatementParser.h"

namespace embedded {

namespace {

QStringList quoted(const QStringList& names, const QString& prefix = {}) {
    QStringList result;
    for (const QString& name : names) result.append(prefix + sqliteName(name));
    return result;
}

QString joinConditions(const QStringList& left, const QString& op, const QStringList& right) {
    QStringList conditions;
    for (qsizetype i = 0; i < left.size(); ++i) conditions.append(left[i] + op + right[i]);
    return conditions.join(" AND ");
}

} // namespace

QStringList ConstraintBuilder::knownColumns(const Object& table, const QStringList& names) const {
    QStringList known;
    for (const QString& name : names) {
        const Column* column = table.column(name);
        if (!column)
            throw DbError(1911, QString("Column name '%1' does not exist in the target table.").arg(name));
        known.append(column->name);
    }
    return known;
}

QString ConstraintBuilder::freeName(const ConstraintDef& constraint) const {
    if (!constraint.name.isEmpty()) {
        if (m_session.catalog.object(m_table.database, constraint.name)) throw alreadyExists(constraint.name);
        return constraint.name;
    }
    static const QStringList prefixes{"PK", "UQ", "FK", "CK", "DF"};
    const QString stem = prefixes[constraint.kind] + "__" + m_table.name;
    for (int number = 1;; ++number) {
        const QString name = stem + "__" + QString::number(number).rightJustified(4, u'0');
        if (!m_session.catalog.object(m_table.database, name)) return name;
    }
}

void ConstraintBuilder::add(const ConstraintDef& constraint) {
    const QString name = freeName(constraint);
    const QStringList columns = knownColumns(m_table, constraint.columns);
    static const Object::Kind kinds[] = {Object::PrimaryKey, Object::Unique, Object::ForeignKey,
                                         Object::Check, Object::Default};
    const Object::Kind kind = kinds[constraint.kind];
    if (kind == Object::PrimaryKey)
        for (const Object* part : m_session.catalog.partsOf(m_table.id))
            if (part->kind == Object::PrimaryKey)
                throw DbError(
                    1779, QString("Table '%1' already has a primary key defined on it.").arg(m_table.name));
    const qint64 id =
        m_session.catalog.addObject(m_table.database, kind, name, m_table.id, columns.join(u'\n'));
    if (kind == Object::ForeignKey)
        addForeignKey(id, constraint);
    else if (kind == Object::Check)
        addCheck(id, constraint);
    else if (kind == Object::Default)
        setDefault(columns.first(), constraint.text);
    else
        addUnique(id, columns, kind);
}

void ConstraintBuilder::addIndex(const QString& name, const QStringList& columns, bool unique) {
    const QStringList known = knownColumns(m_table, columns);
    for (const Object* part : m_session.catalog.partsOf(m_table.id))
        if (part->kind == Object::Index && part->name.compare(name, Qt::CaseInsensitive) == 0)
            throw DbError(
                1913,
                QString("The operation failed because an index with name '%1' already exists.").arg(name));
    const qint64 id =
        m_session.catalog.addObject(m_table.database, Object::Index, name, m_table.id, known.join(u'\n'));
    if (unique)
        addUnique(id, known, Object::Index);
    else
        m_session.file.run(QString("CREATE INDEX \"ix%1_0\" ON ").arg(id) + m_table.storage + '('
                           + quoted(known).join(u',') + ')');
}

void ConstraintBuilder::setDefault(const QString& name, const QString& value) {
    Column column = *m_session.catalog.object(m_table.id)->column(name);
    column.defaultText = value;
    m_session.catalog.changeColumn(m_table.id, column);
}

void ConstraintBuilder::addTemporaryKey(const ConstraintDef& constraint, int number) {
    if (constraint.kind == ConstraintDef::Default) return; // the column has its value already
    if (constraint.kind != ConstraintDef::PrimaryKey && constraint.kind != ConstraintDef::Unique)
        throw notSupported("CHECK and FOREIGN KEY of a temporary table");
    const QStringList columns = knownColumns(m_table, constraint.columns);
    const QString bare = m_table.storage.mid(5);
    m_session.file.run("CREATE UNIQUE INDEX temp." + sqliteName(m_table.text + '#' + QString::number(number))
                       + " ON " + bare + '(' + quoted(columns).join(u',') + ')');
}

void ConstraintBuilder::addUnique(qint64 id, const QStringList& columns, Object::Kind kind) {
    QStringList nullable;
    for (const QString& name : columns) {
        const Column* column = m_table.column(name);
        // The identity column is SQLite's own key already.
        if (column->identity && columns.size() == 1) return;
        if (kind == Object::PrimaryKey && column->nullable)
            throw DbError(8111,
                          QString("Cannot define PRIMARY KEY constraint on nullable column in table '%1'.")
                              .arg(m_table.name));
        if (column->nullable) nullable.append(name);
    }
    // To SQLite all NULLs differ, to the server they are alike.
    if (nullable.size() > 1) throw notSupported("UNIQUE over several columns that may be NULL");
    const QString start = QString("CREATE UNIQUE INDEX \"ix%1_").arg(id);
    try {
        m_session.file.run(start + "0\" ON " + m_table.storage + '(' + quoted(columns).join(u',') + ')');
        if (nullable.isEmpty()) return;
        QStringList others = columns;
        others.removeAll(nullable[0]);
        const QString column = sqliteName(nullable[0]);
        m_session.file.run(start + "1\" ON " + m_table.storage + '('
                           + (QStringList{'(' + column + " IS NULL)"} + quoted(others)).join(u',')
                           + ") WHERE " + column + " IS NULL");
    } catch (const ConstraintError&) {
        throw DbError(
            1505, QString("The CREATE UNIQUE INDEX statement terminated because a duplicate key was found "
                          "for the object name 'dbo.%1'.")
                      .arg(m_table.name));
    }
}

void ConstraintBuilder::createTrigger(qint64 id, int number, const QString& event, const QString& table,
                                      const QString& when, const QString& body) {
    m_session.file.run(QString("CREATE TRIGGER \"tr%1_%2\" AFTER ").arg(id).arg(number) + event + " ON "
                       + table + " WHEN " + when + " BEGIN " + body + "; END");
}

void ConstraintBuilder::addForeignKey(qint64 id, const ConstraintDef& constraint) {
    const Database& database = m_session.databaseNamed(constraint.parent.database);
    const Object* parent = m_session.catalog.object(database.id, constraint.parent.name);
    if (!parent || parent->kind != Object::Table || database.id != m_table.database)
        throw DbError(
            1767, QString("Foreign key references invalid table '%1'.").arg(constraint.parent.toString()));
    QStringList parentNames = constraint.parentColumns;
    if (parentNames.isEmpty())
        for (const Object* part : m_session.catalog.partsOf(parent->id))
            if (part->kind == Object::PrimaryKey) parentNames = part->text.split(u'\n');
    if (parentNames.size() != constraint.columns.size())
        throw DbError(
            1776,
            "There are no primary or candidate keys in the referenced table that match the foreign key.");
    const QStringList child = knownColumns(m_table, constraint.columns);
    const QStringList key = knownColumns(*parent, parentNames);
    const QString refuse = "SELECT RAISE(ABORT, " + sqliteText(raisedBy(id)) + ')';

    QStringList given;
    for (const QString& column : quoted(child, "NEW.")) given.append(column + " IS NOT NULL");
    const QString orphan = given.join(" AND ") + " AND NOT EXISTS (SELECT 1 FROM " + parent->storage
                           + " AS p WHERE " + joinConditions(quoted(key, "p."), "=", quoted(child, "NEW."))
                           + ')';
    const QString orphans = QString(orphan).replace("NEW.", "c.");
    if (!isNull(m_session.file.scalar("SELECT 1 FROM " + m_table.storage + " AS c WHERE " + orphans)))
        throw DbError(547,
                      QString("The ALTER TABLE statement conflicted with the FOREIGN KEY constraint \"%1\".")
                          .arg(m_session.catalog.object(id)->name));
    createTrigger(id, 0, "INSERT", m_table.storage, orphan, refuse);
    createTrigger(id, 1, "UPDATE OF " + quoted(child).join(u','), m_table.storage, orphan, refuse);

    const QString children =
        m_table.storage + " AS c WHERE " + joinConditions(quoted(child, "c."), "=", quoted(key, "OLD."));
    const QString used = "EXISTS (SELECT 1 FROM " + children + ')';
    const QString own = " WHERE " + joinConditions(quoted(child), "=", quoted(key, "OLD."));
    QStringList nulls;
    QStringList follow;
    for (qsizetype i = 0; i < child.size(); ++i) {
        nulls.append(sqliteName(child[i]) + "=NULL");
        follow.append(sqliteName(child[i]) + "=NEW." + sqliteName(key[i]));
    }
    const QString clear = "UPDATE " + m_table.storage + " SET " + nulls.join(u',') + own;
    const QString onDelete = constraint.onDelete == "CASCADE"    ? "DELETE FROM " + m_table.storage + own
                             : constraint.onDelete == "SET NULL" ? clear
                                                                 : refuse;
    const QString onUpdate = constraint.onUpdate == "CASCADE"
                                 ? "UPDATE " + m_table.storage + " SET " + follow.join(u',') + own
                             : constraint.onUpdate == "SET NULL" ? clear
                                                                 : refuse;
    createTrigger(id, 2, "DELETE", parent->storage, used, onDelete);
    const QString moved =
        "NOT (" + joinConditions(quoted(key, "OLD."), " IS ", quoted(key, "NEW.")) + ") AND " + used;
    createTrigger(id, 3, "UPDATE OF " + quoted(key).join(u','), parent->storage, moved, onUpdate);
}

void ConstraintBuilder::addCheck(qint64 id, const ConstraintDef& constraint) {
    const ExprPtr condition = StatementParser(constraint.text, true).parseConditionText();
    DmlTranslator translator(m_session, m_functions);
    const QString broken = "NOT " + translator.rowCondition(m_table, condition, "NEW");
    if (!translator.variables().isEmpty())
        throw DbError(102, "Incorrect syntax: a CHECK may not use variables.");
    const QString existing =
        "NOT " + DmlTranslator(m_session, m_functions).rowCondition(m_table, condition, "c");
    if (!isNull(m_session.file.scalar("SELECT 1 FROM " + m_table.storage + " AS c WHERE " + existing)))
        throw DbError(547, QString("The ALTER TABLE statement conflicted with the CHECK constraint \"%1\".")
                               .arg(m_session.catalog.object(id)->name));
    const QString refuse = "SELECT RAISE(ABORT, " + sqliteText(raisedBy(id)) + ')';
    createTrigger(id, 0, "INSERT", m_table.storage, broken, refuse);
    createTrigger(id, 1, "UPDATE", m_table.storage, broken, refuse);
}

void ConstraintBuilder::remove(Session& session, const Object& part) {
    for (int number = 0; number < 2; ++number)
        session.file.run(QString("DROP INDEX IF EXISTS \"ix%1_%2\"").arg(part.id).arg(number));
    for (int number = 0; number < 4; ++number)
        session.file.run(QString("DROP TRIGGER IF EXISTS \"tr%1_%2\"").arg(part.id).arg(number));
}

} // namespace embedded

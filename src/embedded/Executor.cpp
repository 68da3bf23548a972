#include "embedded/Executor.h"

#include "embedded/Collation.h"
#include "embedded/ConstraintBuilder.h"
#include "embedded/Conversion.h"
#include "embedded/DdlExecutor.h"
#include "embedded/Errors.h"
#include "embedded/Parser.h"

namespace embedded {

namespace {

/// Options that steer what this server does not have are accepted where that changes no result; the others
/// are refused.
void setOption(Session& session, const QString& option, const QString& word) {
    static const QHash<QString, bool Session::*> flags{{"NOCOUNT", &Session::noCount},
                                                       {"XACT_ABORT", &Session::abortOnError},
                                                       {"ANSI_NULLS", &Session::ansiNulls},
                                                       {"QUOTED_IDENTIFIER", &Session::quotedIdentifiers}};
    static const QHash<QString, dateText::Order> orders{{"MDY", dateText::Order::MonthDayYear},
                                                        {"DMY", dateText::Order::DayMonthYear},
                                                        {"YMD", dateText::Order::YearMonthDay}};
    static const QSet<QString> alwaysOn{"ANSI_PADDING", "ANSI_WARNINGS", "ARITHABORT",
                                        "CONCAT_NULL_YIELDS_NULL"};
    static const QSet<QString> withoutEffect{
        "TRANSACTION",       "ARITHIGNORE", "NUMERIC_ROUNDABORT",     "TEXTSIZE",
        "DEADLOCK_PRIORITY", "STATISTICS",  "CURSOR_CLOSE_ON_COMMIT", "ANSI_NULL_DFLT_ON"};
    const bool isKept = withoutEffect.contains(option) || (alwaysOn.contains(option) && word == "ON")
                        || (option == "ROWCOUNT" && word == "0");
    if (flags.contains(option))
        session.*flags[option] = word == "ON";
    else if (option == "LOCK_TIMEOUT")
        session.file.setLockTimeout(word.toInt() < 0 ? 10000 : word.toInt());
    else if (option == "DATEFORMAT" && orders.contains(word))
        session.dateOrder = orders[word];
    else if (!isKept)
        throw notSupported("SET " + option + ' ' + word);
}

/// The rows in an order of their own, the same each time: nobody shall lean on one that was not asked for.
RecordSet withoutOrder(const RecordSet& set) {
    const int columns = int(set.columns().size());
    std::vector<std::pair<std::size_t, qsizetype>> places; // of the rows, by a number made of their texts
    for (qsizetype row = 0; row < set.rowCount(); ++row) {
        std::size_t mixed = 0;
        for (int column = 0; column < columns; ++column)
            for (const QChar c : set.cell(row, column)) mixed = (mixed ^ c.unicode()) * 0x100000001b3;
        places.emplace_back(mixed * 0x9e3779b97f4a7c15, row);
    }
    std::ranges::sort(places);
    std::vector<qsizetype> order(places.size());
    std::ranges::transform(places, order.begin(), &std::pair<std::size_t, qsizetype>::second);
    return set.arranged(order);
}

} // namespace

Executor::Executor(Session& session) : m_session(session), m_functions(session) {
    m_session.frames.emplace_back(); // the session's own: its #tables live from batch to batch
}

Results Executor::run(const QString& batch) {
    m_results = {};
    const Batch parsed = parseBatch(batch, m_session.quotedIdentifiers);
    Frame& frame = m_session.frames.front();
    frame.variables.clear();
    try {
        prepareStatement();
        declareVariables(parsed.variables);
        execute(parsed.statements);
    } catch (const DbError& error) {
        m_session.lastError = error.number();
        if (m_session.abortOnError && m_session.file.inTransaction()) rollbackTransaction();
        if (!m_session.file.inTransaction()) m_session.transactionDepth = 0;
        leaveFrame();
        throw;
    }
    leaveFrame();
    return std::move(m_results);
}

Executor::Flow Executor::execute(const StatementList& statements) {
    for (const StatementPtr& statement : statements)
        if (const Flow flow = execute(*statement); flow != Flow::Next) return flow;
    return Flow::Next;
}

Executor::Flow Executor::execute(const Statement& statement) {
    prepareStatement();
    try {
        return std::visit(
            [this](const auto& what) {
                if constexpr (std::is_void_v<decltype(run(what))>) {
                    run(what);
                    return Flow::Next;
                } else {
                    return run(what);
                }
            },
            statement.what);
    } catch (const ConstraintError& error) {
        throw constraintError(m_session, error.text());
    } catch (const DbError&) {
        m_session.catalog.invalidate(); // the statement may have undone changes of it
        throw;
    }
}

void Executor::prepareStatement() {
    m_session.file.requireNotCancelled();
    m_session.catalog.refresh();
    if (!m_session.catalog.databases().contains(m_session.database)) m_session.enter(1);
    m_session.statementTime = QDateTime::currentDateTime();
    m_session.statementTime.setTimeSpec(Qt::UTC); // the server's clock as it reads, without a zone
}

template <class T>
void Executor::run(const T& statement) {
    Savepoint together(m_session.file);
    DdlExecutor(m_session, m_functions).run(statement);
    together.release();
}

void Executor::run(const DeclareStatement& statement) {
    for (const VariableDef& variable : statement.variables)
        if (variable.initial)
            m_session.variable(variable.name).value = evaluate(variable.initial, variable.type);
}

void Executor::run(const AssignStatement& statement) {
    Variable& variable = m_session.variable(statement.variable);
    const ExprPtr& value = statement.value;
    const bool copies = value->kind == Expr::Variable && !value->text.startsWith("@@");
    if (const QString cursor = copies ? m_session.variable(value->text).cursor : QString(); !cursor.isNull())
        variable.cursor = cursor;
    else
        variable.value = evaluate(value, variable.type);
}

Executor::Flow Executor::run(const IfStatement& statement) {
    if (test(statement.condition)) return execute(*statement.then);
    return statement.otherwise ? execute(*statement.otherwise) : Flow::Next;
}

Executor::Flow Executor::run(const WhileStatement& statement) {
    while (test(statement.condition)) {
        const Flow flow = execute(*statement.body);
        if (flow == Flow::Break) break;
        if (flow == Flow::Return) return flow;
    }
    return Flow::Next;
}

Executor::Flow Executor::run(const TryStatement& statement) {
    try {
        return execute(statement.body);
    } catch (const DbError& error) {
        if (error.connectionLost()) throw;
        m_session.lastError = error.number();
        const std::optional<DbError> outer = std::exchange(m_session.frames.back().error, error);
        const Flow flow = execute(statement.handler);
        m_session.frames.back().error = outer;
        return flow;
    }
}

Executor::Flow Executor::run(const ReturnStatement& statement) {
    if (statement.value) m_session.frames.back().returnValue = evaluate(statement.value, Type::of(Type::Int));
    return Flow::Return;
}

void Executor::run(const SetOptionStatement& statement) {
    for (const QString& option : statement.options) setOption(m_session, option, statement.word.toUpper());
}

void Executor::run(const PrintStatement& statement) {
    evaluate(statement.text, Type::text(Type::Max, true)); // for its errors; messages are not shown
}

void Executor::run(const QueryStatement& statement) {
    const Translation translation = translator().select(*statement.query);
    if (!translation.targets.isEmpty()) return assign(translation);
    m_results.sets.push_back(read(translation));
}

void Executor::run(const InsertStatement& statement) {
    const Object* table = nullptr;
    write(translator().insert(statement, table));
    if (!table->identityColumn())
        m_session.identity = Value();
    else if (m_session.rowCount > 0)
        m_session.identity = m_session.file.lastRowId();
}

void Executor::write(const Translation& translation) {
    SqliteStatement statement = prepared(translation);
    while (statement.step()) continue;
    m_session.rowCount = m_session.file.changes();
    if (!m_session.noCount) m_results.counts.push_back(m_session.rowCount);
}

SqliteStatement Executor::prepared(const Translation& translation) {
    std::vector<Value> values;
    for (const QString& name : translation.variables) values.push_back(m_session.valueOf(name));
    return m_session.file.prepare(translation.sql, values);
}

Value Executor::evaluate(const ExprPtr& expr, const Type& type) {
    SqliteStatement statement = prepared(translator().single(expr, type));
    return statement.step() ? statement.value(0) : Value();
}

bool Executor::test(const ExprPtr& condition) {
    prepareStatement();
    SqliteStatement statement = prepared(translator().test(condition));
    return statement.step() && statement.integer(0) != 0;
}

/// Every row in turn; the last one's values stay. Without rows the variables keep what they had.
void Executor::assign(const Translation& translation) {
    SqliteStatement statement = prepared(translation);
    m_session.rowCount = 0;
    while (statement.step()) {
        for (qsizetype i = 0; i < translation.targets.size(); ++i)
            m_session.variable(translation.targets[i]).value = statement.value(int(i));
        ++m_session.rowCount;
    }
}

RecordSet Executor::read(const Translation& translation) {
    SqliteStatement statement = prepared(translation);
    const int columns = int(translation.types.size());
    std::vector<bool> isPlain; // SQLite's own text is what the server would show
    for (const Type& type : translation.types)
        isPlain.push_back(type.isInteger() || type.isText() || type.kind == Type::DateTime
                          || type.kind == Type::Null);
    RecordSet set(translation.names);
    qint64 rows = 0;
    for (; statement.step(); ++rows)
        for (int column = 0; column < columns; ++column) {
            if (statement.isNull(column))
                set.append(QString());
            else if (isPlain[std::size_t(column)])
                set.append(statement.text(column));
            else
                set.append(shown(statement.value(column), translation.types[column]));
        }
    m_session.rowCount = rows;
    return translation.isOrdered ? set : withoutOrder(set);
}

void Executor::run(const TransactionStatement& statement) {
    if (statement.action == TransactionStatement::Begin)
        beginTransaction();
    else if (statement.action == TransactionStatement::Commit)
        commitTransaction();
    else
        rollbackTransaction();
}

void Executor::beginTransaction() {
    if (m_session.transactionDepth == 0) m_session.file.run("BEGIN IMMEDIATE");
    ++m_session.transactionDepth;
}

void Executor::commitTransaction() {
    if (m_session.transactionDepth == 0)
        throw DbError(3902, "The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION.");
    if (m_session.transactionDepth > 1) {
        --m_session.transactionDepth;
        return;
    }
    try {
        m_session.file.run("COMMIT");
    } catch (const DbError&) {
        rollbackTransaction();
        throw;
    }
    m_session.transactionDepth = 0;
}

void Executor::rollbackTransaction() {
    if (m_session.transactionDepth == 0)
        throw DbError(3903, "The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION.");
    m_session.transactionDepth = 0;
    if (m_session.file.inTransaction()) m_session.file.run("ROLLBACK");
    m_session.catalog.invalidate();
    // Temporary tables made in the transaction are gone with it.
    for (Frame& frame : m_session.frames)
        for (auto table = frame.tables.begin(); table != frame.tables.end();) {
            const Value exists = m_session.file.scalar(
                "SELECT count(*) FROM sqlite_temp_master WHERE name = ?1", {table->second.storage});
            table = std::get<qint64>(exists) ? std::next(table) : frame.tables.erase(table);
        }
}

void Executor::run(const UseStatement& statement) {
    m_session.enter(m_session.databaseNamed(statement.database).id);
}

} // namespace embedded

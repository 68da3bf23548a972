#pragma once

#include "db/RecordSet.h"
#include "embedded/Translator.h"

namespace embedded {

/// An argument of a procedure call, evaluated.
struct CallArgument {
    QString name; ///< with its @; empty when given by place
    Value value;
    Type type;
    bool isDefault = false;
    QString outputVariable; ///< the caller's variable that receives the value afterwards
};

/// The place of the parameter that each argument goes to. Throws DbError 8144 for too many arguments, 8145
/// for a name that no parameter has.
std::vector<std::size_t> placesOf(const std::vector<CallArgument>& arguments, const QStringList& parameters,
                                  const QString& procedure);
DbError missingArgument(const QString& procedure, const QString& parameter);

/// Runs batches: control flow, variables, queries and calls. Each statement is translated just before
/// it runs, so that it sees what the statements before it made.
class Executor {
public:
    explicit Executor(Session& session);

    Results run(const QString& batch);
    void beginTransaction();
    void commitTransaction();
    void rollbackTransaction();

private:
    enum class Flow { Next, Break, Continue, Return };

    Flow execute(const StatementList& statements);
    Flow execute(const Statement& statement);
    void prepareStatement();

    Flow run(const IfStatement& statement);
    Flow run(const WhileStatement& statement);
    Flow run(const BlockStatement& statement) { return execute(statement.statements); }
    Flow run(const TryStatement& statement);
    Flow run(const BreakStatement&) { return Flow::Break; }
    Flow run(const ContinueStatement&) { return Flow::Continue; }
    Flow run(const ReturnStatement& statement);
    void run(const DeclareStatement& statement);
    void run(const AssignStatement& statement);
    void run(const SetOptionStatement& statement);
    void run(const PrintStatement& statement);
    void run(const QueryStatement& statement);
    void run(const InsertStatement& statement);
    void run(const UpdateStatement& statement) { write(translator().update(statement)); }
    void run(const DeleteStatement& statement) { write(translator().remove(statement)); }
    void run(const CursorStatement& statement);
    void run(const TransactionStatement& statement);
    void run(const UseStatement& statement);
    void run(const ExecuteStatement& statement);
    /// What changes the catalogue, all of it or nothing.
    template <class T>
    void run(const T& statement);

    Translator translator() { return {m_session, m_functions}; }
    SqliteStatement prepared(const Translation& translation);
    Value evaluate(const ExprPtr& expr, const Type& type);
    bool test(const ExprPtr& condition);
    void assign(const Translation& translation);
    RecordSet read(const Translation& translation);
    void write(const Translation& translation);
    void declareCursor(const CursorStatement& statement);
    QString cursorKey(const QString& name) const;
    void open(Cursor& cursor);
    void fetch(Cursor& cursor, const QStringList& into);

    std::vector<CallArgument> evaluateArguments(const std::vector<Argument>& arguments);
    const Object* procedureNamed(const ObjectName& name);
    void runProcedure(const Object& procedure, std::vector<CallArgument>& arguments);
    void runText(const QString& text, const std::vector<Parameter>& parameters,
                 std::vector<CallArgument>& arguments);
    void executeSql(std::vector<CallArgument>& arguments);
    void runNested(const Batch& batch, const std::vector<Parameter>& parameters,
                   std::vector<CallArgument>& arguments, qint64 database, const QString& name);
    void declareVariables(const std::vector<VariableDef>& variables);
    void leaveFrame();

    Session& m_session;
    FunctionTable m_functions;
    Results m_results;
    QHash<qint64, QPair<QString, std::shared_ptr<const Batch>>> m_procedures; ///< text and tree, by id
};

} // namespace embedded

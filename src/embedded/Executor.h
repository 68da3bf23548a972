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
    Flow dispatch(const Statement& statement);

    Flow run(const DeclareStatement& statement);
    Flow run(const AssignStatement& statement);
    Flow run(const SetOptionStatement& statement);
    Flow run(const IdentityInsertStatement& statement);
    Flow run(const IfStatement& statement);
    Flow run(const WhileStatement& statement);
    Flow run(const BlockStatement& statement);
    Flow run(const TryStatement& statement);
    Flow run(const BreakStatement&) { return Flow::Break; }
    Flow run(const ContinueStatement&) { return Flow::Continue; }
    Flow run(const ReturnStatement& statement);
    Flow run(const PrintStatement& statement);
    Flow run(const QueryStatement& statement);
    Flow run(const InsertStatement& statement);
    Flow run(const UpdateStatement& statement);
    Flow run(const DeleteStatement& statement);
    Flow run(const CursorStatement& statement);
    Flow run(const TransactionStatement& statement);
    Flow run(const UseStatement& statement);
    Flow run(const ExecuteStatement& statement);
    Flow run(const SecurityStatement& statement);
    /// What changes the catalogue.
    template <class T>
    Flow run(const T& statement);

    Translator translator() { return {m_session, m_functions}; }
    SqliteStatement prepared(const Translation& translation);
    Value evaluate(const ExprPtr& expr, const Type& type);
    bool test(const ExprPtr& condition);
    void select(const Query& query);
    void assign(const Translation& translation);
    RecordSet read(const Translation& translation);
    void write(const Translation& translation, const Object* insertedInto);
    void declareCursor(const CursorStatement& statement);
    QString cursorKey(const QString& name) const;
    void open(Cursor& cursor);
    void fetch(Cursor& cursor, const QStringList& into);

    void call(const ExecuteStatement& statement, const QString& name);
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
    std::shared_ptr<const Batch> parsedProcedure(const Object& procedure);

    Session& m_session;
    FunctionTable m_functions;
    Results m_results;
    QHash<qint64, QPair<QString, std::shared_ptr<const Batch>>> m_procedures; ///< text and tree, by id
};

} // namespace embedded

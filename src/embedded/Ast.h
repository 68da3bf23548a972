#pragma once

#include "embedded/Schema.h"

#include <QStringList>
#include <memory>
#include <variant>
#include <vector>

/// What the parser makes of a batch. Nodes are shared and never changed once parsed, so that a
/// procedure's body can be kept and run again.
namespace embedded {

struct Expr;
struct Query;
using ExprPtr = std::shared_ptr<const Expr>;
using QueryPtr = std::shared_ptr<const Query>;

struct Expr {
    enum Kind {
        Number, ///< text as written, type known
        Text,   ///< text, type known
        Null,
        Column,   ///< parts: [database, schema, table,] column
        Star,     ///< parts: the qualifier, possibly none
        Variable, ///< @x or @@x
        Unary,    ///< text is - or +
        Binary,   ///< text is + - * / % & |
        Call,     ///< text is the name in lower case; flag: DISTINCT
        Cast,     ///< type; a second argument is the style
        Case,     ///< args: [operand,] when, then, …, [else]; see hasOperand, hasElse
        Subquery,
        // predicates from here on
        Compare, ///< text is = <> < > <= >=
        And,
        Or,
        Not,
        IsNull,  ///< flag: IS NOT NULL
        Like,    ///< args: text, pattern [, escape]; flag: NOT
        In,      ///< args: operand, values … or query; flag: NOT
        Between, ///< flag: NOT
        Exists,
    };
    Kind kind = Null;
    QString text;
    Type type;
    QStringList parts;
    std::vector<ExprPtr> args;
    QueryPtr query;
    bool flag = false;
    bool hasOperand = false;
    bool hasElse = false;

    bool isPredicate() const { return kind >= Compare; }
};

struct TableRef;
using TableRefPtr = std::shared_ptr<const TableRef>;

struct TableRef {
    enum Kind { Named, Derived, Join };
    Kind kind = Named;
    ObjectName name; ///< a table variable has its name alone, with the @
    QString alias;
    QueryPtr query;
    QString join; ///< INNER, LEFT, RIGHT, FULL or CROSS
    TableRefPtr left, right;
    ExprPtr on;
};

struct SelectItem {
    ExprPtr expr;
    QString alias;
    QString variable; ///< assigned to, when not empty
};

struct OrderItem {
    ExprPtr expr;
    bool descending = false;
};

struct SelectCore {
    bool distinct = false;
    bool unionAll = false; ///< how it is joined to the one before
    ExprPtr top;
    std::vector<SelectItem> items;
    std::vector<TableRefPtr> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
};

struct Query {
    std::vector<SelectCore> cores; ///< joined by UNION
    std::vector<OrderItem> orderBy;
};

struct Statement;
using StatementPtr = std::shared_ptr<const Statement>;
using StatementList = std::vector<StatementPtr>;

struct ConstraintDef {
    ObjectKind kind = ObjectKind::PrimaryKey; ///< or Unique or Default
    QString name;                             ///< empty when the server has to find one
    QStringList columns;
    QString text; ///< of a DEFAULT's value
};

struct TableDef {
    std::vector<Column> columns;
    std::vector<ConstraintDef> constraints;
};

struct VariableDef {
    QString name;
    Type type;
    bool isCursor = false;
    std::shared_ptr<const TableDef> table; ///< a table variable
    ExprPtr initial;
};

struct Argument {
    QString name;  ///< with its @; empty when given by place
    ExprPtr value; ///< null for DEFAULT
    bool output = false;
};

struct ExecuteStatement {
    ObjectName procedure;
    ExprPtr text; ///< EXEC ('…'): the text to run, the name is empty then
    QString resultVariable;
    std::vector<Argument> arguments;
};

struct DeclareStatement {
    std::vector<VariableDef> variables;
};
struct AssignStatement {
    QString variable;
    ExprPtr value;
};
struct SetOptionStatement {
    QStringList options;
    QString word;
};
struct IdentityInsertStatement {
    ObjectName table;
    bool on = false;
};
struct IfStatement {
    ExprPtr condition;
    StatementPtr then, otherwise;
};
struct WhileStatement {
    ExprPtr condition;
    StatementPtr body;
};
struct BlockStatement {
    StatementList statements;
};
struct TryStatement {
    StatementList body, handler;
};
struct BreakStatement {};
struct ContinueStatement {};
struct ReturnStatement {
    ExprPtr value;
};
struct PrintStatement {
    ExprPtr text;
};
struct QueryStatement {
    QueryPtr query;
};
struct InsertStatement {
    ObjectName table;
    QStringList columns;
    std::vector<std::vector<ExprPtr>> rows; ///< a null value is DEFAULT
    QueryPtr query;
};
struct Assignment {
    QString column;
    ExprPtr value; ///< null for DEFAULT
};
struct UpdateStatement {
    ObjectName target;
    std::vector<Assignment> assignments;
    ExprPtr where;
};
struct DeleteStatement {
    ObjectName target;
    ExprPtr where;
};
struct TruncateStatement {
    ObjectName table;
};
struct CreateTableStatement {
    ObjectName table;
    TableDef definition;
};
struct AlterTableStatement {
    enum Action { Add, AlterColumn, DropColumns, DropConstraints };
    ObjectName table;
    Action action = Add;
    TableDef added;
    QStringList names;
};
struct DropStatement {
    ObjectKind kind = ObjectKind::Table; ///< or Procedure or Index; an index follows its table: table.index
    std::vector<ObjectName> names;
    bool ifExists = false;
};
struct CreateIndexStatement {
    QString name;
    ObjectName table;
    QStringList columns;
    bool unique = false;
};
struct CreateProcedureStatement {
    ObjectName name;
    QString text;
    bool alter = false;
};
struct CreateDatabaseStatement {
    QString name;
};
struct DropDatabaseStatement {
    QStringList names;
    bool ifExists = false;
};
struct AlterDatabaseStatement {
    QString name;
};
struct UseStatement {
    QString database;
};
struct CursorStatement {
    enum Action { Declare, Open, Fetch, Close, Deallocate };
    Action action = Declare;
    QString cursor; ///< a name, or a variable with its @
    QueryPtr query;
    QStringList into;
};
struct TransactionStatement {
    enum Action { Begin, Commit, Rollback };
    Action action = Begin;
};
/// CREATE and DROP LOGIN, CREATE USER, DENY CONNECT and the members of server roles.
struct SecurityStatement {
    enum Action { CreateLogin, DropLogin, CreateUser, AddMember, DropMember, Deny };
    Action action = CreateLogin;
    QString name;
    QString password;
    QString role;
    QString defaultDatabase;
};

struct Statement {
    std::variant<DeclareStatement, AssignStatement, SetOptionStatement, IdentityInsertStatement, IfStatement,
                 WhileStatement, BlockStatement, TryStatement, BreakStatement, ContinueStatement,
                 ReturnStatement, PrintStatement, QueryStatement, InsertStatement, UpdateStatement,
                 DeleteStatement, TruncateStatement, CreateTableStatement, AlterTableStatement, DropStatement,
                 CreateIndexStatement, CreateProcedureStatement, CreateDatabaseStatement,
                 DropDatabaseStatement, AlterDatabaseStatement, UseStatement, CursorStatement,
                 TransactionStatement, SecurityStatement, ExecuteStatement>
        what;
};

struct Parameter {
    VariableDef variable;
    bool output = false;
};

/// A batch, or a procedure's body with its parameters.
struct Batch {
    std::vector<Parameter> parameters;
    StatementList statements;
    /// Every variable declared anywhere in it: a variable lives from the start of its batch.
    std::vector<VariableDef> variables;
};

} // namespace embedded

#include "embedded/StatementParser.h"

#include "embedded/Errors.h"

namespace embedded {

namespace {

template <class T>
StatementPtr statement(T what) {
    return std::make_shared<Statement>(Statement{std::move(what)});
}

} // namespace

Batch StatementParser::parseBatch() {
    Batch batch;
    while (!atEnd()) {
        if (accept(";")) continue;
        batch.statements.push_back(parseStatement());
        m_first = false;
    }
    batch.variables = std::move(m_variables);
    return batch;
}

Batch StatementParser::parseProcedureText() {
    if (!accept("create")) expect("alter");
    take();
    takeObjectName();
    return parseProcedureRest();
}

Batch StatementParser::parseProcedureRest() {
    Batch procedure;
    const bool bracket = accept("(");
    if (peek().kind == Token::Variable) procedure.parameters = parseParameterList();
    if (bracket) expect(")");
    if (is("with")) throw notSupported("CREATE PROCEDURE … WITH " + peek(1).text.toUpper());
    expect("as");
    if (atEnd()) syntaxError();
    m_first = false;
    Batch body = parseBatch();
    procedure.statements = std::move(body.statements);
    procedure.variables = std::move(body.variables);
    return procedure;
}

std::vector<Parameter> StatementParser::parseParameterList() {
    std::vector<Parameter> parameters;
    if (atEnd()) return parameters;
    do {
        Parameter parameter;
        parameter.variable.name = takeVariable();
        accept("as");
        if (is("cursor")) throw notSupported("cursor parameters");
        parameter.variable.type = takeType();
        if (accept("=")) parameter.variable.initial = parseArgumentValue();
        parameter.output = accept("output") || accept("out");
        if (is("readonly")) throw notSupported("table parameters");
        parameters.push_back(parameter);
    } while (accept(","));
    return parameters;
}

ExprPtr StatementParser::parseValueText() {
    return parseValue();
}

StatementPtr StatementParser::parseStatement() {
    const bool first = m_first;
    m_first = false;
    if (is("select") || is("(")) return statement(QueryStatement{parseQuery()});
    if (is("insert")) return parseInsert();
    if (is("update")) return is("statistics", 1) ? throw notSupported("UPDATE STATISTICS") : parseUpdate();
    if (is("delete")) return parseDelete();
    if (accept("truncate")) {
        expect("table");
        return statement(TruncateStatement{takeObjectName()});
    }
    if (is("create")) return parseCreate();
    if (is("alter")) return parseAlter();
    if (is("drop")) return parseDrop();
    if (is("deny")) return parseDeny();
    if (is("declare")) return parseDeclare();
    if (is("set")) return parseSet();
    if (is("if")) return parseIf();
    if (accept("while")) {
        WhileStatement loop;
        loop.condition = parseCondition();
        loop.body = parseBody();
        return statement(loop);
    }
    if (is("begin")) return parseBegin();
    if (accept("break")) return statement(BreakStatement{});
    if (accept("continue")) return statement(ContinueStatement{});
    if (is("return")) return parseReturn();
    if (accept("print")) return statement(PrintStatement{parseValue()});
    if (accept("use")) return statement(UseStatement{takeName()});
    if (is("exec") || is("execute")) return statement(parseExecute());
    if (is("commit") || is("rollback") || is("save")) return parseTransaction();
    if (is("open") || is("close") || is("deallocate")) return parseCursor();
    if (is("fetch")) return parseFetch();
    if (is("with")) throw notSupported("common table expressions");
    static const QStringList known{"raiserror",  "throw",    "grant",       "revoke",  "backup", "restore",
                                   "dbcc",       "goto",     "waitfor",     "merge",   "bulk",   "kill",
                                   "checkpoint", "shutdown", "reconfigure", "readtext"};
    if (known.contains(peek().text.toLower())) throw notSupported(peek().text.toUpper());
    if (first && isName()) return parseCall();
    syntaxError();
}

/// The first statement of a batch may call a procedure without EXEC.
StatementPtr StatementParser::parseCall() {
    ExecuteStatement call;
    call.procedure = takeObjectName();
    call.arguments = parseArguments();
    return statement(call);
}

StatementPtr StatementParser::parseBody() {
    while (accept(";")) continue;
    return parseStatement();
}

StatementPtr StatementParser::parseIf() {
    expect("if");
    IfStatement branch;
    branch.condition = parseCondition();
    branch.then = parseBody();
    if (is(";") && is("else", 1)) take();
    if (accept("else")) branch.otherwise = parseBody();
    return statement(branch);
}

StatementPtr StatementParser::parseBegin() {
    if (is("tran", 1) || is("transaction", 1) || is("distributed", 1)) return parseTransaction();
    expect("begin");
    if (is("try")) return parseTry();
    BlockStatement block{parseUntilEnd()};
    if (block.statements.empty()) syntaxError();
    return statement(block);
}

StatementList StatementParser::parseUntilEnd() {
    StatementList statements;
    while (!accept("end")) {
        if (atEnd()) syntaxError();
        if (!accept(";")) statements.push_back(parseStatement());
    }
    return statements;
}

StatementPtr StatementParser::parseTry() {
    TryStatement attempt;
    expect("try");
    attempt.body = parseUntilEnd();
    expect("try");
    accept(";");
    expect("begin");
    expect("catch");
    attempt.handler = parseUntilEnd();
    expect("catch");
    return statement(attempt);
}

StatementPtr StatementParser::parseDeclare() {
    if (peek(1).kind != Token::Variable) return parseDeclareCursor();
    expect("declare");
    DeclareStatement declare;
    do declare.variables.push_back(parseVariable());
    while (accept(","));
    for (const VariableDef& variable : declare.variables) m_variables.push_back(variable);
    return statement(declare);
}

VariableDef StatementParser::parseVariable() {
    VariableDef variable;
    variable.name = takeVariable();
    accept("as");
    if (accept("table")) {
        variable.table = std::make_shared<TableDef>(parseTableDef());
        return variable;
    }
    if (accept("cursor")) {
        variable.isCursor = true;
        return variable;
    }
    variable.type = takeType();
    if (accept("=")) variable.initial = parseValue();
    return variable;
}

StatementPtr StatementParser::parseDeclareCursor() {
    expect("declare");
    CursorStatement cursor;
    cursor.cursor = takeName();
    while (is("insensitive") || is("scroll")) take();
    expect("cursor");
    skipCursorOptions();
    expect("for");
    cursor.query = parseQuery();
    if (accept("for") && !accept("read", "only")) throw notSupported("FOR UPDATE");
    return statement(cursor);
}

/// Every cursor reads a snapshot taken when it is opened, which serves all of these.
void StatementParser::skipCursorOptions() {
    static const QStringList options{"local",   "global",       "forward_only", "scroll", "static",
                                     "dynamic", "fast_forward", "read_only",    "keyset", "type_warning"};
    while (options.contains(peek().text.toLower())) take();
    if (is("optimistic") || is("scroll_locks")) throw notSupported("cursor option " + peek().text.toUpper());
}

StatementPtr StatementParser::parseSet() {
    expect("set");
    if (peek().kind == Token::Variable) {
        const QString variable = take().text;
        const QString op = takeAssignmentOperator();
        if (!accept("cursor")) return statement(AssignStatement{variable, op, parseValue()});
        CursorStatement cursor;
        cursor.cursor = variable;
        skipCursorOptions();
        expect("for");
        cursor.query = parseQuery();
        return statement(cursor);
    }
    if (accept("identity_insert")) {
        IdentityInsertStatement identity;
        identity.table = takeObjectName();
        identity.on = accept("on");
        if (!identity.on) expect("off");
        return statement(identity);
    }
    SetOptionStatement set;
    do set.options.append(take().text.toUpper());
    while (accept(","));
    if (set.options.first() == "TRANSACTION") {
        expect("isolation");
        expect("level");
        take();
        if (is("read") || is("committed") || is("uncommitted")) take();
        return statement(set);
    }
    if (accept("-"))
        set.words.append("-" + take().text);
    else
        set.words.append(take().text);
    return statement(set);
}

StatementPtr StatementParser::parseReturn() {
    expect("return");
    ReturnStatement result;
    const bool value = !atEnd() && !is(";") && !startsStatement();
    if (value) result.value = parseValue();
    return statement(result);
}

/// Whether the next token can only begin another statement, or end the block.
bool StatementParser::startsStatement() const {
    if (peek().kind != Token::Word) return false;
    static const QStringList values{"null", "case", "cast", "convert", "coalesce", "nullif", "left", "right"};
    return isReserved(peek().text) && !values.contains(peek().text.toLower());
}

StatementPtr StatementParser::parseTransaction() {
    TransactionStatement transaction;
    if (is("save")) throw notSupported("SAVE TRANSACTION");
    if (is("distributed", 1)) throw notSupported("DISTRIBUTED TRANSACTION");
    if (accept("commit"))
        transaction.action = TransactionStatement::Commit;
    else if (accept("rollback"))
        transaction.action = TransactionStatement::Rollback;
    else
        expect("begin");
    if (!accept("transaction") && !accept("tran")) accept("work");
    if (isName() || peek().kind == Token::Variable) take(); // its name has no effect
    return statement(transaction);
}

QString StatementParser::takeCursorName() {
    accept("global");
    return peek().kind == Token::Variable ? take().text : takeName();
}

StatementPtr StatementParser::parseCursor() {
    CursorStatement cursor;
    if (accept("open"))
        cursor.action = CursorStatement::Open;
    else if (accept("close"))
        cursor.action = CursorStatement::Close;
    else
        cursor.action = (expect("deallocate"), CursorStatement::Deallocate);
    cursor.cursor = takeCursorName();
    return statement(cursor);
}

StatementPtr StatementParser::parseFetch() {
    expect("fetch");
    CursorStatement cursor;
    cursor.action = CursorStatement::Fetch;
    for (const char* word : {"prior", "first", "last", "absolute", "relative"})
        if (is(word)) throw notSupported("FETCH " + peek().text.toUpper());
    accept("next");
    accept("from");
    cursor.cursor = takeCursorName();
    if (accept("into")) {
        do cursor.into.append(takeVariable());
        while (accept(","));
    }
    return statement(cursor);
}

ExecuteStatement StatementParser::parseExecute() {
    if (!accept("exec")) expect("execute");
    ExecuteStatement call;
    if (accept("(")) {
        call.text = parseValue();
        expect(")");
        if (is("at")) throw notSupported("EXEC … AT");
        return call;
    }
    if (peek().kind == Token::Variable && is("=", 1)) {
        call.resultVariable = take().text;
        take();
    }
    if (peek().kind == Token::Variable)
        call.procedureVariable = take().text;
    else
        call.procedure = takeObjectName();
    call.arguments = parseArguments();
    if (is("with") && is("recompile", 1)) take(), take();
    return call;
}

std::vector<Argument> StatementParser::parseArguments() {
    std::vector<Argument> arguments;
    if (atEnd() || is(";") || startsStatement()) {
        if (!is("default")) return arguments;
    }
    do {
        Argument argument;
        if (peek().kind == Token::Variable && is("=", 1)) {
            argument.name = take().text;
            take();
        }
        if (!accept("default")) argument.value = parseArgumentValue();
        argument.output = accept("output") || accept("out");
        arguments.push_back(argument);
    } while (accept(","));
    return arguments;
}

/// A literal, a variable, or a bare word, which stands for its text.
ExprPtr StatementParser::parseArgumentValue() {
    if (peek().kind == Token::Word && !is("null")) {
        auto word = std::make_shared<Expr>();
        word->kind = Expr::Text;
        word->text = takeName();
        word->type = Type::text(int(word->text.size()), true);
        return word;
    }
    return parseValue();
}

} // namespace embedded

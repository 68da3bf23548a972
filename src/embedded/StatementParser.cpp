#include "embedded/Parser.h"

#include "embedded/Errors.h"
#include "embedded/Grammar.h"

namespace embedded {

namespace {

const QStringList refused{"raiserror",  "throw",    "grant",       "revoke",  "backup", "restore",
                          "dbcc",       "goto",     "waitfor",     "merge",   "bulk",   "kill",
                          "checkpoint", "shutdown", "reconfigure", "readtext"};

/// Whether the next token can only begin another statement, or end the block.
bool startsStatement(TokenReader& in) {
    if (in.peek().kind != Token::Word) return false;
    static const QStringList values{"null", "case", "cast", "convert", "coalesce", "nullif", "left", "right"};
    return in.isReserved(in.peek().text) && !values.contains(in.peek().text.toLower());
}

/// A literal, a variable, or a bare word, which stands for its text.
ExprPtr parseArgumentValue(TokenReader& in) {
    if (in.peek().kind == Token::Word && !in.is("null")) return makeText(in.takeName(), true);
    return parseValue(in);
}

std::vector<Argument> parseArguments(TokenReader& in) {
    std::vector<Argument> arguments;
    if (in.atEnd() || in.is(";") || startsStatement(in)) {
        if (!in.is("default")) return arguments;
    }
    do {
        Argument argument;
        if (in.peek().kind == Token::Variable && in.is("=", 1)) {
            argument.name = in.take().text;
            in.take();
        }
        if (!in.accept("default")) argument.value = parseArgumentValue(in);
        argument.output = in.accept("output") || in.accept("out");
        arguments.push_back(argument);
    } while (in.accept(","));
    return arguments;
}

/// The first statement of a batch may call a procedure without EXEC.
StatementPtr parseCall(TokenReader& in) {
    ExecuteStatement call;
    call.procedure = in.takeObjectName();
    call.arguments = parseArguments(in);
    return statement(call);
}

ExecuteStatement parseExecute(TokenReader& in) {
    if (!in.accept("exec")) in.expect("execute");
    ExecuteStatement call;
    if (in.accept("(")) {
        call.text = parseValue(in);
        in.expect(")");
        if (in.is("at")) throw notSupported("EXEC … AT");
        return call;
    }
    if (in.peek().kind == Token::Variable && in.is("=", 1)) {
        call.resultVariable = in.take().text;
        in.take();
    }
    if (in.peek().kind == Token::Variable) throw notSupported("EXEC of a procedure named by a variable");
    call.procedure = in.takeObjectName();
    call.arguments = parseArguments(in);
    if (in.is("with") && in.is("recompile", 1)) in.take(), in.take();
    return call;
}

std::vector<Parameter> parseParameters(TokenReader& in) {
    std::vector<Parameter> parameters;
    do {
        Parameter parameter;
        parameter.variable.name = in.takeVariable();
        in.accept("as");
        if (in.is("cursor")) throw notSupported("cursor parameters");
        parameter.variable.type = in.takeType();
        if (in.accept("=")) parameter.variable.initial = parseArgumentValue(in);
        parameter.output = in.accept("output") || in.accept("out");
        if (in.is("readonly")) throw notSupported("table parameters");
        parameters.push_back(parameter);
    } while (in.accept(","));
    return parameters;
}

/// Every cursor reads a snapshot taken when it is opened, which serves all of these.
void skipCursorOptions(TokenReader& in) {
    static const QStringList options{"local",   "global",       "forward_only", "scroll", "static",
                                     "dynamic", "fast_forward", "read_only",    "keyset", "type_warning"};
    while (options.contains(in.peek().text.toLower())) in.take();
    if (in.is("optimistic") || in.is("scroll_locks"))
        throw notSupported("cursor option " + in.peek().text.toUpper());
}

QString takeCursorName(TokenReader& in) {
    in.accept("global");
    return in.peek().kind == Token::Variable ? in.take().text : in.takeName();
}

VariableDef parseVariable(TokenReader& in) {
    VariableDef variable;
    variable.name = in.takeVariable();
    in.accept("as");
    if (in.accept("table")) {
        variable.table = std::make_shared<TableDef>(parseTableDef(in));
        return variable;
    }
    if (in.accept("cursor")) {
        variable.isCursor = true;
        return variable;
    }
    variable.type = in.takeType();
    if (in.accept("=")) variable.initial = parseValue(in);
    return variable;
}

StatementPtr parseDeclareCursor(TokenReader& in) {
    in.expect("declare");
    CursorStatement cursor;
    cursor.cursor = in.takeName();
    while (in.is("insensitive") || in.is("scroll")) in.take();
    in.expect("cursor");
    skipCursorOptions(in);
    in.expect("for");
    cursor.query = parseQuery(in);
    if (in.accept("for") && !in.accept("read", "only")) throw notSupported("FOR UPDATE");
    return statement(cursor);
}

StatementPtr parseDeclare(TokenReader& in) {
    if (in.peek(1).kind != Token::Variable) return parseDeclareCursor(in);
    in.expect("declare");
    DeclareStatement declare;
    do declare.variables.push_back(parseVariable(in));
    while (in.accept(","));
    for (const VariableDef& variable : declare.variables) in.declared.push_back(variable);
    return statement(declare);
}

StatementPtr parseSet(TokenReader& in) {
    in.expect("set");
    if (in.peek().kind == Token::Variable) {
        const QString variable = in.take().text;
        if (!in.is("=") || !in.is("cursor", 1))
            return statement(
                AssignStatement{variable, parseAssigned(in, makeExpr(Expr::Variable, variable))});
        in.take();
        in.take();
        CursorStatement cursor;
        cursor.cursor = variable;
        skipCursorOptions(in);
        in.expect("for");
        cursor.query = parseQuery(in);
        return statement(cursor);
    }
    if (in.accept("identity_insert")) {
        IdentityInsertStatement identity;
        identity.table = in.takeObjectName();
        identity.on = in.accept("on");
        if (!identity.on) in.expect("off");
        return statement(identity);
    }
    SetOptionStatement set;
    do set.options.append(in.take().text.toUpper());
    while (in.accept(","));
    if (set.options.first() == "TRANSACTION") {
        in.expect("isolation");
        in.expect("level");
        in.take();
        if (in.is("read") || in.is("committed") || in.is("uncommitted")) in.take();
        return statement(set);
    }
    if (in.accept("-"))
        set.words.append("-" + in.take().text);
    else
        set.words.append(in.take().text);
    return statement(set);
}

StatementPtr parseReturn(TokenReader& in) {
    in.expect("return");
    ReturnStatement result;
    const bool value = !in.atEnd() && !in.is(";") && !startsStatement(in);
    if (value) result.value = parseValue(in);
    return statement(result);
}

StatementPtr parseBody(TokenReader& in) {
    while (in.accept(";")) continue;
    return parseStatement(in);
}

StatementPtr parseIf(TokenReader& in) {
    in.expect("if");
    IfStatement branch;
    branch.condition = parseCondition(in);
    branch.then = parseBody(in);
    if (in.is(";") && in.is("else", 1)) in.take();
    if (in.accept("else")) branch.otherwise = parseBody(in);
    return statement(branch);
}

StatementList parseUntilEnd(TokenReader& in) {
    StatementList statements;
    while (!in.accept("end")) {
        if (in.atEnd()) in.syntaxError();
        if (!in.accept(";")) statements.push_back(parseStatement(in));
    }
    return statements;
}

StatementPtr parseTry(TokenReader& in) {
    TryStatement attempt;
    in.expect("try");
    attempt.body = parseUntilEnd(in);
    in.expect("try");
    in.accept(";");
    in.expect("begin");
    in.expect("catch");
    attempt.handler = parseUntilEnd(in);
    in.expect("catch");
    return statement(attempt);
}

StatementPtr parseTransaction(TokenReader& in) {
    TransactionStatement transaction;
    if (in.is("save")) throw notSupported("SAVE TRANSACTION");
    if (in.is("distributed", 1)) throw notSupported("DISTRIBUTED TRANSACTION");
    if (in.accept("commit"))
        transaction.action = TransactionStatement::Commit;
    else if (in.accept("rollback"))
        transaction.action = TransactionStatement::Rollback;
    else
        in.expect("begin");
    if (!in.accept("transaction") && !in.accept("tran")) in.accept("work");
    if (in.isName() || in.peek().kind == Token::Variable) in.take(); // its name has no effect
    return statement(transaction);
}

StatementPtr parseBegin(TokenReader& in) {
    if (in.is("tran", 1) || in.is("transaction", 1) || in.is("distributed", 1)) return parseTransaction(in);
    in.expect("begin");
    if (in.is("try")) return parseTry(in);
    BlockStatement block{parseUntilEnd(in)};
    if (block.statements.empty()) in.syntaxError();
    return statement(block);
}

StatementPtr parseCursor(TokenReader& in) {
    CursorStatement cursor;
    if (in.accept("open"))
        cursor.action = CursorStatement::Open;
    else if (in.accept("close"))
        cursor.action = CursorStatement::Close;
    else
        cursor.action = (in.expect("deallocate"), CursorStatement::Deallocate);
    cursor.cursor = takeCursorName(in);
    return statement(cursor);
}

StatementPtr parseFetch(TokenReader& in) {
    in.expect("fetch");
    CursorStatement cursor;
    cursor.action = CursorStatement::Fetch;
    for (const char* word : {"prior", "first", "last", "absolute", "relative"})
        if (in.is(word)) throw notSupported("FETCH " + in.peek().text.toUpper());
    in.accept("next");
    in.accept("from");
    cursor.cursor = takeCursorName(in);
    if (!in.accept("into")) throw notSupported("FETCH without INTO");
    do cursor.into.append(in.takeVariable());
    while (in.accept(","));
    return statement(cursor);
}

/// The statements up to the end of the text. The first one of a batch may call a procedure without EXEC.
Batch parseStatements(TokenReader& in, bool mayBeginWithCall) {
    Batch batch;
    while (!in.atEnd()) {
        if (in.accept(";")) continue;
        const bool isCall = mayBeginWithCall && batch.statements.empty() && in.isName()
                            && !refused.contains(in.peek().text.toLower());
        batch.statements.push_back(isCall ? parseCall(in) : parseStatement(in));
    }
    batch.variables = std::move(in.declared);
    return batch;
}

} // namespace

StatementPtr parseStatement(TokenReader& in) {
    if (in.is("select") || in.is("(")) return statement(QueryStatement{parseQuery(in)});
    if (in.is("insert")) return parseInsert(in);
    if (in.is("update"))
        return in.is("statistics", 1) ? throw notSupported("UPDATE STATISTICS") : parseUpdate(in);
    if (in.is("delete")) return parseDelete(in);
    if (in.accept("truncate")) {
        in.expect("table");
        return statement(TruncateStatement{in.takeObjectName()});
    }
    if (in.is("create")) return parseCreate(in);
    if (in.is("alter")) return parseAlter(in);
    if (in.is("drop")) return parseDrop(in);
    if (in.is("deny")) return parseDeny(in);
    if (in.is("declare")) return parseDeclare(in);
    if (in.is("set")) return parseSet(in);
    if (in.is("if")) return parseIf(in);
    if (in.accept("while")) {
        WhileStatement loop;
        loop.condition = parseCondition(in);
        loop.body = parseBody(in);
        return statement(loop);
    }
    if (in.is("begin")) return parseBegin(in);
    if (in.accept("break")) return statement(BreakStatement{});
    if (in.accept("continue")) return statement(ContinueStatement{});
    if (in.is("return")) return parseReturn(in);
    if (in.accept("print")) return statement(PrintStatement{parseValue(in)});
    if (in.accept("use")) return statement(UseStatement{in.takeName()});
    if (in.is("exec") || in.is("execute")) return statement(parseExecute(in));
    if (in.is("commit") || in.is("rollback") || in.is("save")) return parseTransaction(in);
    if (in.is("open") || in.is("close") || in.is("deallocate")) return parseCursor(in);
    if (in.is("fetch")) return parseFetch(in);
    if (in.is("with")) throw notSupported("common table expressions");
    if (refused.contains(in.peek().text.toLower())) throw notSupported(in.peek().text.toUpper());
    in.syntaxError();
}

Batch parseProcedureRest(TokenReader& in) {
    const bool bracket = in.accept("(");
    std::vector<Parameter> parameters;
    if (in.peek().kind == Token::Variable) parameters = parseParameters(in);
    if (bracket) in.expect(")");
    if (in.is("with")) throw notSupported("CREATE PROCEDURE … WITH " + in.peek(1).text.toUpper());
    in.expect("as");
    if (in.atEnd()) in.syntaxError();
    Batch procedure = parseStatements(in, false);
    procedure.parameters = std::move(parameters);
    return procedure;
}

Batch parseBatch(const QString& text, bool quotedIdentifiers) {
    TokenReader in(text, quotedIdentifiers);
    return parseStatements(in, true);
}

Batch parseProcedure(const QString& text) {
    TokenReader in(text, true);
    if (!in.accept("create")) in.expect("alter");
    in.take();
    in.takeObjectName();
    return parseProcedureRest(in);
}

std::vector<Parameter> parseParameterList(const QString& text) {
    TokenReader in(text, true);
    return in.atEnd() ? std::vector<Parameter>() : parseParameters(in);
}

ExprPtr parseDefault(const QString& text) {
    TokenReader in(text, true);
    return parseValue(in);
}

ObjectName parseObjectName(const QString& text) {
    TokenReader in(text, true);
    const ObjectName name = in.takeObjectName();
    if (!in.atEnd()) in.syntaxError();
    return name;
}

} // namespace embedded

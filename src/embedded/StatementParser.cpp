#include "embedded/Parser.h"

#include "embedded/Errors.h"
#include "embedded/Grammar.h"

namespace embedded {

namespace {

const QStringList refused{"raiserror",  "throw",    "grant",       "revoke",   "backup", "restore",
                          "dbcc",       "goto",     "waitfor",     "merge",    "bulk",   "kill",
                          "checkpoint", "shutdown", "reconfigure", "readtext", "save",   "with"};

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

StatementPtr parseExecute(TokenReader& in) {
    ExecuteStatement call;
    if (in.accept("(")) {
        call.text = parseValue(in);
        in.expect(")");
        in.refuse({"at"}, "EXEC … ");
        return statement(call);
    }
    if (in.peek().kind == Token::Variable && in.is("=", 1)) {
        call.resultVariable = in.take().text;
        in.take();
    }
    if (in.peek().kind == Token::Variable) throw notSupported("EXEC of a procedure named by a variable");
    call.procedure = in.takeObjectName();
    call.arguments = parseArguments(in);
    in.accept("with", "recompile");
    return statement(call);
}

std::vector<Parameter> parseParameters(TokenReader& in) {
    std::vector<Parameter> parameters;
    do {
        Parameter parameter;
        parameter.variable.name = in.takeVariable();
        in.accept("as");
        in.refuse({"cursor"}, "parameters that are ");
        parameter.variable.type = in.takeType();
        if (in.accept("=")) parameter.variable.initial = parseArgumentValue(in);
        parameter.output = in.accept("output") || in.accept("out");
        in.refuse({"readonly"}, "parameters that are ");
        parameters.push_back(parameter);
    } while (in.accept(","));
    return parameters;
}

/// Every cursor reads a snapshot taken when it is opened, which serves all of these.
void skipCursorOptions(TokenReader& in) {
    static const QStringList options{"local",   "global",       "forward_only", "scroll", "static",
                                     "dynamic", "fast_forward", "read_only",    "keyset", "type_warning"};
    while (options.contains(in.peek().text.toLower())) in.take();
    in.refuse({"optimistic", "scroll_locks"}, "cursor option ");
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
    if (in.peek().kind != Token::Variable) return parseDeclareCursor(in);
    DeclareStatement declare;
    do declare.variables.push_back(parseVariable(in));
    while (in.accept(","));
    for (const VariableDef& variable : declare.variables) in.declared.push_back(variable);
    return statement(declare);
}

StatementPtr parseSet(TokenReader& in) {
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
    const QString sign = in.accept("-") ? "-" : "";
    set.word = sign + in.take().text;
    return statement(set);
}

StatementPtr parseReturn(TokenReader& in) {
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

StatementPtr parseTransaction(TokenReader& in, TransactionStatement::Action action) {
    if (!in.accept("transaction") && !in.accept("tran")) in.accept("work");
    if (in.isName() || in.peek().kind == Token::Variable) in.take(); // its name has no effect
    return statement(TransactionStatement{action});
}

StatementPtr parseBegin(TokenReader& in) {
    in.refuse({"distributed"}, "BEGIN ");
    if (in.is("tran") || in.is("transaction")) return parseTransaction(in, TransactionStatement::Begin);
    if (in.is("try")) return parseTry(in);
    BlockStatement block{parseUntilEnd(in)};
    if (block.statements.empty()) in.syntaxError();
    return statement(block);
}

StatementPtr parseCursor(TokenReader& in, CursorStatement::Action action) {
    CursorStatement cursor;
    cursor.action = action;
    cursor.cursor = takeCursorName(in);
    return statement(cursor);
}

StatementPtr parseFetch(TokenReader& in) {
    CursorStatement cursor;
    cursor.action = CursorStatement::Fetch;
    in.refuse({"prior", "first", "last", "absolute", "relative"}, "FETCH ");
    in.accept("next");
    in.accept("from");
    cursor.cursor = takeCursorName(in);
    if (!in.accept("into")) throw notSupported("FETCH without INTO");
    do cursor.into.append(in.takeVariable());
    while (in.accept(","));
    return statement(cursor);
}

StatementPtr parseWhile(TokenReader& in) {
    WhileStatement loop;
    loop.condition = parseCondition(in);
    loop.body = parseBody(in);
    return statement(loop);
}

StatementPtr parseTruncate(TokenReader& in) {
    in.expect("table");
    return statement(TruncateStatement{in.takeObjectName()});
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

using Transaction = TransactionStatement;
using Cursor = CursorStatement;

/// By the word that a statement begins with.
constexpr std::pair<const char*, StatementPtr (*)(TokenReader&)> rules[] = {
    {"insert", parseInsert},
    {"update", parseUpdate},
    {"delete", parseDelete},
    {"truncate", parseTruncate},
    {"create", parseCreate},
    {"alter", parseAlter},
    {"drop", parseDrop},
    {"deny", parseDeny},
    {"declare", parseDeclare},
    {"set", parseSet},
    {"if", parseIf},
    {"while", parseWhile},
    {"begin", parseBegin},
    {"break", [](TokenReader&) { return statement(BreakStatement{}); }},
    {"continue", [](TokenReader&) { return statement(ContinueStatement{}); }},
    {"return", parseReturn},
    {"print", [](TokenReader& in) { return statement(PrintStatement{parseValue(in)}); }},
    {"use", [](TokenReader& in) { return statement(UseStatement{in.takeName()}); }},
    {"exec", parseExecute},
    {"execute", parseExecute},
    {"commit", [](TokenReader& in) { return parseTransaction(in, Transaction::Commit); }},
    {"rollback", [](TokenReader& in) { return parseTransaction(in, Transaction::Rollback); }},
    {"open", [](TokenReader& in) { return parseCursor(in, Cursor::Open); }},
    {"close", [](TokenReader& in) { return parseCursor(in, Cursor::Close); }},
    {"deallocate", [](TokenReader& in) { return parseCursor(in, Cursor::Deallocate); }},
    {"fetch", parseFetch},
};

} // namespace

StatementPtr parseStatement(TokenReader& in) {
    const Level level(in.statementLevels);
    if (in.is("select") || in.is("(")) return statement(QueryStatement{parseQuery(in)});
    for (const auto& [word, rule] : rules)
        if (in.accept(word)) return rule(in);
    if (refused.contains(in.peek().text.toLower())) in.refuse();
    in.syntaxError();
}

Batch parseProcedureRest(TokenReader& in) {
    const bool bracket = in.accept("(");
    std::vector<Parameter> parameters;
    if (in.peek().kind == Token::Variable) parameters = parseParameters(in);
    if (bracket) in.expect(")");
    in.refuse({"with"}, "CREATE PROCEDURE … ");
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

#include "embedded/DdlParser.h"

#include "embedded/Errors.h"

namespace embedded {

namespace {

template <class T>
StatementPtr statement(T what) {
    return std::make_shared<Statement>(Statement{std::move(what)});
}

} // namespace

StatementPtr DdlParser::parseCreate() {
    expect("create");
    if (accept("table")) {
        CreateTableStatement create;
        create.table = takeObjectName();
        create.definition = parseTableDef();
        skipFileGroup();
        return statement(create);
    }
    if (accept("database")) return parseCreateDatabase();
    if (accept("procedure") || accept("proc")) return parseProcedure(false);
    if (accept("login")) return parseLogin(SecurityStatement::CreateLogin);
    if (accept("user")) return parseCreateUser();
    const bool unique = accept("unique");
    if (is("clustered") || is("nonclustered")) take();
    if (accept("index")) return parseCreateIndex(unique);
    throw notSupported("CREATE " + peek().text.toUpper());
}

StatementPtr DdlParser::parseCreateDatabase() {
    CreateDatabaseStatement create{takeName()};
    // Where the files lie and how they grow has no meaning in a single file; the form is still checked.
    const auto parseFile = [this] {
        expect("(");
        do {
            takeName();
            expect("=");
            take();
            if (!is(",") && !is(")")) take(); // a unit
        } while (accept(","));
        expect(")");
    };
    const auto parseFiles = [&] {
        do parseFile();
        while (accept(","));
    };
    if (accept("on")) {
        accept("primary");
        parseFiles();
    }
    if (accept("log", "on")) parseFiles();
    if (accept("collate")) {
        const QString collation = takeName();
        if (collation.compare("Latin1_General_CI_AS", Qt::CaseInsensitive) != 0)
            throw notSupported("collation " + collation);
    }
    if (is("for") || is("with")) throw notSupported("CREATE DATABASE … " + peek().text.toUpper());
    return statement(create);
}

StatementPtr DdlParser::parseCreateIndex(bool unique) {
    CreateIndexStatement create;
    create.unique = unique;
    create.name = takeName();
    expect("on");
    create.table = takeObjectName();
    create.columns = takeNameList();
    if (is("include") || is("where")) throw notSupported("CREATE INDEX … " + peek().text.toUpper());
    parseKeyOptions();
    skipFileGroup();
    return statement(create);
}

StatementPtr DdlParser::parseProcedure(bool alter) {
    CreateProcedureStatement create;
    create.alter = alter;
    create.name = takeObjectName();
    parseProcedureRest(); // for its syntax errors; names are looked up when it runs
    create.text = m_batch;
    return statement(create);
}

TableDef DdlParser::parseTableDef() {
    TableDef table;
    expect("(");
    do {
        if (is(")")) break; // a comma may precede the closing bracket
        parseTableElement(table);
    } while (accept(","));
    expect(")");
    return table;
}

void DdlParser::parseTableElement(TableDef& table) {
    QString name;
    if (accept("constraint")) name = takeName();
    refuseChecks();
    if (is("primary") || is("unique") || is("default")) return parseTableConstraint(table, name);
    if (!name.isEmpty()) syntaxError();
    parseColumn(table);
}

void DdlParser::parseColumn(TableDef& table) {
    ColumnDef column;
    column.name = takeName();
    if (is("as")) throw notSupported("computed columns");
    column.type = takeType();
    const std::size_t place = table.columns.size();
    table.columns.push_back(column);
    for (;;) {
        QString name;
        if (accept("constraint")) name = takeName();
        if (!parseColumnOption(column, table, name)) {
            if (!name.isEmpty()) syntaxError();
            break;
        }
    }
    table.columns[place] = column;
}

bool DdlParser::parseColumnOption(ColumnDef& column, TableDef& table, const QString& constraintName) {
    ConstraintDef constraint;
    constraint.name = constraintName;
    constraint.columns = {column.name};
    refuseChecks();
    if (accept("not", "null")) return column.nullable = false, true;
    if (accept("null")) return true;
    if (accept("identity")) return parseIdentity(column), true;
    if (accept("rowguidcol") || is("sparse")) throw notSupported("ROWGUIDCOL and SPARSE columns");
    if (accept("collate")) {
        const QString collation = takeName();
        static const QStringList alike{"Latin1_General_CI_AS", "SQL_Latin1_General_CP1_CI_AS",
                                       "database_default"};
        if (!alike.contains(collation, Qt::CaseInsensitive)) throw notSupported("collation " + collation);
        return true;
    }
    if (accept("default")) {
        const qsizetype start = peek().position;
        column.defaultValue = parseValue();
        column.defaultText = textSince(start);
        if (constraintName.isEmpty()) return true;
        constraint.kind = ConstraintDef::Default;
        constraint.text = column.defaultText;
        return table.constraints.push_back(constraint), true;
    }
    if (accept("primary", "key")) {
        constraint.kind = ConstraintDef::PrimaryKey;
        column.nullable = false;
        parseKeyOptions();
    } else if (accept("unique")) {
        constraint.kind = ConstraintDef::Unique;
        parseKeyOptions();
    } else {
        return false;
    }
    table.constraints.push_back(constraint);
    return true;
}

void DdlParser::parseIdentity(ColumnDef& column) {
    column.identity = true;
    column.nullable = false;
    if (accept("(")) {
        column.seed = takeInteger();
        expect(",");
        if (const qint64 step = takeInteger(); step != 1)
            throw notSupported(QString("IDENTITY with a step of %1").arg(step));
        expect(")");
    }
    if (accept("not", "for")) expect("replication");
}

void DdlParser::parseTableConstraint(TableDef& table, const QString& name) {
    ConstraintDef constraint;
    constraint.name = name;
    if (accept("primary", "key") || accept("unique")) {
        constraint.kind = is("key", -1) ? ConstraintDef::PrimaryKey : ConstraintDef::Unique;
        if (is("clustered") || is("nonclustered")) take();
        constraint.columns = takeNameList();
        parseKeyOptions();
        skipFileGroup();
    } else {
        expect("default");
        constraint.kind = ConstraintDef::Default;
        const qsizetype start = peek().position;
        parseValue();
        constraint.text = textSince(start);
        expect("for");
        constraint.columns = {takeName()};
    }
    table.constraints.push_back(constraint);
}

void DdlParser::refuseChecks() const {
    if (is("check")) throw notSupported("CHECK constraints");
    if (is("foreign") || is("references")) throw notSupported("FOREIGN KEY constraints");
}

/// CLUSTERED, WITH FILLFACTOR = n, WITH (…) and ON [group]: they steer storage only.
void DdlParser::parseKeyOptions() {
    while (is("clustered") || is("nonclustered")) take();
    if (accept("with")) {
        if (accept("(")) {
            while (!accept(")")) {
                if (atEnd()) syntaxError();
                take();
            }
        } else {
            do {
                const bool value = is("fillfactor");
                take();
                if (value) expect("="), takeInteger();
            } while (accept(","));
        }
    }
    skipFileGroup();
}

void DdlParser::skipFileGroup() {
    while ((is("on") && !is("delete", 1) && !is("update", 1)) || is("textimage_on")) {
        take();
        if (!accept("primary")) takeName();
    }
}

StatementPtr DdlParser::parseAlter() {
    expect("alter");
    if (accept("table")) return parseAlterTable();
    if (accept("database")) return parseAlterDatabase();
    if (accept("procedure") || accept("proc")) return parseProcedure(true);
    if (is("server") && is("role", 1)) return parseServerRole();
    throw notSupported("ALTER " + peek().text.toUpper());
}

StatementPtr DdlParser::parseAlterTable() {
    AlterTableStatement alter;
    alter.table = takeObjectName();
    if (accept("add")) {
        do parseTableElement(alter.added);
        while (accept(","));
    } else if (accept("alter", "column")) {
        alter.action = AlterTableStatement::AlterColumn;
        parseColumn(alter.added);
    } else if (accept("drop")) {
        const bool columns = accept("column");
        if (!columns) accept("constraint");
        alter.action = columns ? AlterTableStatement::DropColumns : AlterTableStatement::DropConstraints;
        do alter.names.append(takeName());
        while (accept(","));
    } else {
        throw notSupported("ALTER TABLE … " + peek().text.toUpper());
    }
    return statement(alter);
}

/// The options of a database (recovery, growth, statistics, …) concern the server's own storage.
StatementPtr DdlParser::parseAlterDatabase() {
    AlterDatabaseStatement alter;
    if (!accept("current")) alter.name = takeName();
    if (!is("set")) throw notSupported("ALTER DATABASE … " + peek().text.toUpper());
    take();
    skipToEndOfStatement();
    return statement(alter);
}

void DdlParser::skipToEndOfStatement() {
    static const QStringList starts{"alter",   "exec", "execute", "use",    "if",     "create",
                                    "drop",    "set",  "select",  "insert", "update", "delete",
                                    "declare", "end",  "begin",   "print",  "else"};
    while (!atEnd() && !accept(";")) {
        if (peek().kind == Token::Word && starts.contains(peek().text.toLower())) return;
        take();
    }
}

StatementPtr DdlParser::parseDrop() {
    expect("drop");
    DropStatement drop;
    drop.kind = take().text.toUpper();
    if (drop.kind == "PROC") drop.kind = "PROCEDURE";
    if (drop.kind == "LOGIN") return parseLogin(SecurityStatement::DropLogin);
    static const QStringList known{"TABLE", "PROCEDURE", "INDEX", "DATABASE"};
    if (!known.contains(drop.kind)) throw notSupported("DROP " + drop.kind);
    drop.ifExists = accept("if", "exists");
    do drop.names.push_back(takeObjectName());
    while (accept(","));
    if (drop.kind == "INDEX" && accept("on")) { // the newer form: name ON table
        const ObjectName table = takeObjectName();
        drop.names.back() = {table.database, table.name, drop.names.back().name};
    }
    return statement(drop);
}

StatementPtr DdlParser::parseLogin(SecurityStatement::Action action) {
    SecurityStatement login;
    login.action = action;
    login.name = takeName();
    if (action == SecurityStatement::DropLogin) return statement(login);
    if (is("from")) throw notSupported("logins of the operating system");
    expect("with");
    do {
        const QString option = takeName().toUpper();
        expect("=");
        if (option == "PASSWORD") {
            if (peek().kind != Token::Text && peek().kind != Token::UnicodeText)
                throw notSupported("a password that is not a text");
            login.password = take().text;
            if (is("must_change") || is("hashed")) throw notSupported("PASSWORD … " + peek().text.toUpper());
        } else if (option == "DEFAULT_DATABASE") {
            login.defaultDatabase = takeName();
        } else if (option == "CHECK_POLICY" || option == "CHECK_EXPIRATION") {
            if (!accept("off")) throw notSupported(option + " = ON");
        } else if (option == "DEFAULT_LANGUAGE") {
            takeName();
        } else {
            throw notSupported("login option " + option);
        }
    } while (accept(","));
    return statement(login);
}

StatementPtr DdlParser::parseServerRole() {
    expect("server");
    expect("role");
    SecurityStatement member;
    member.role = takeName();
    member.action = is("add") ? SecurityStatement::AddMember : SecurityStatement::DropMember;
    if (!accept("add")) expect("drop");
    expect("member");
    member.name = takeName();
    return statement(member);
}

StatementPtr DdlParser::parseCreateUser() {
    SecurityStatement user;
    user.action = SecurityStatement::CreateUser;
    user.name = takeName();
    user.role = user.name; // the login behind the user
    if (accept("for") || accept("from")) {
        expect("login");
        user.role = takeName();
    }
    return statement(user);
}

StatementPtr DdlParser::parseDeny() {
    expect("deny");
    SecurityStatement deny;
    deny.action = SecurityStatement::Deny;
    if (!accept("connect")) throw notSupported("DENY " + peek().text.toUpper());
    expect("to");
    deny.name = takeName();
    return statement(deny);
}

} // namespace embedded

#include "embedded/Errors.h"
#include "embedded/Grammar.h"

#include <QHash>

namespace embedded {

namespace {

void skipFileGroup(TokenReader& in) {
    while ((in.is("on") && !in.is("delete", 1) && !in.is("update", 1)) || in.is("textimage_on")) {
        in.take();
        if (!in.accept("primary")) in.takeName();
    }
}

/// The value's text, as written.
QString takeDefault(TokenReader& in) {
    const qsizetype start = in.peek().position;
    parseValue(in);
    return in.textSince(start);
}

void skipCollation(TokenReader& in) {
    static const QStringList alike{"Latin1_General_CI_AS", "SQL_Latin1_General_CP1_CI_AS",
                                   "database_default"};
    if (!in.accept("collate")) return;
    const QString collation = in.takeName();
    if (!alike.contains(collation, Qt::CaseInsensitive)) throw notSupported("collation " + collation);
}

void skipBrackets(TokenReader& in) {
    in.expect("(");
    for (int open = 1; open > 0; in.take()) {
        if (in.atEnd()) in.syntaxError();
        open += int(in.is("(")) - int(in.is(")"));
    }
}

/// CLUSTERED, WITH FILLFACTOR = n, WITH (…) and ON [group]: they steer storage only.
void parseKeyOptions(TokenReader& in) {
    while (in.is("clustered") || in.is("nonclustered")) in.take();
    if (in.accept("with")) {
        if (in.is("("))
            skipBrackets(in);
        else
            do
                if (const bool hasValue = in.is("fillfactor"); in.take(), hasValue)
                    in.expect("="), in.takeInteger();
            while (in.accept(","));
    }
    skipFileGroup(in);
}

void skipToEndOfStatement(TokenReader& in) {
    static const QStringList starts{"alter",   "exec", "execute", "use",    "if",     "create",
                                    "drop",    "set",  "select",  "insert", "update", "delete",
                                    "declare", "end",  "begin",   "print",  "else"};
    while (!in.atEnd() && !in.accept(";")) {
        if (in.peek().kind == Token::Word && starts.contains(in.peek().text.toLower())) return;
        in.take();
    }
}

void refuseChecks(TokenReader& in) {
    if (in.is("check")) throw notSupported("CHECK constraints");
    if (in.is("foreign") || in.is("references")) throw notSupported("FOREIGN KEY constraints");
}

void parseIdentity(TokenReader& in, Column& column) {
    column.identity = true;
    column.nullable = false;
    if (in.accept("(")) {
        column.seed = in.takeInteger();
        in.expect(",");
        if (const qint64 step = in.takeInteger(); step != 1)
            throw notSupported(QString("IDENTITY with a step of %1").arg(step));
        in.expect(")");
    }
    if (in.accept("not", "for")) in.expect("replication");
}

bool parseColumnOption(TokenReader& in, Column& column, TableDef& table, const QString& constraintName) {
    ConstraintDef constraint;
    constraint.name = constraintName;
    constraint.columns = {column.name};
    refuseChecks(in);
    if (in.accept("not", "null")) {
        column.nullable = false;
        return true;
    }
    if (in.accept("null")) return true;
    if (in.accept("identity")) {
        parseIdentity(in, column);
        return true;
    }
    in.refuse({"rowguidcol", "sparse"}, "columns that are ");
    if (in.is("collate")) {
        skipCollation(in);
        return true;
    }
    if (in.accept("default")) {
        column.defaultText = takeDefault(in);
        if (constraintName.isEmpty()) return true;
        constraint.kind = ObjectKind::Default;
        constraint.text = column.defaultText;
        table.constraints.push_back(constraint);
        return true;
    }
    if (in.accept("primary", "key")) {
        constraint.kind = ObjectKind::PrimaryKey;
        column.nullable = false;
        parseKeyOptions(in);
    } else if (in.accept("unique")) {
        constraint.kind = ObjectKind::Unique;
        parseKeyOptions(in);
    } else {
        return false;
    }
    table.constraints.push_back(constraint);
    return true;
}

void parseColumn(TokenReader& in, TableDef& table) {
    Column column;
    column.name = in.takeName();
    if (in.is("as")) throw notSupported("computed columns");
    column.type = in.takeType();
    const std::size_t place = table.columns.size();
    table.columns.push_back(column);
    for (;;) {
        QString name;
        if (in.accept("constraint")) name = in.takeName();
        if (!parseColumnOption(in, column, table, name)) {
            if (!name.isEmpty()) in.syntaxError();
            break;
        }
    }
    table.columns[place] = column;
}

void parseTableConstraint(TokenReader& in, TableDef& table, const QString& name) {
    ConstraintDef constraint;
    constraint.name = name;
    if (in.accept("primary", "key") || in.accept("unique")) {
        constraint.kind = in.is("key", -1) ? ObjectKind::PrimaryKey : ObjectKind::Unique;
        if (in.is("clustered") || in.is("nonclustered")) in.take();
        constraint.columns = in.takeNameList();
        parseKeyOptions(in);
        skipFileGroup(in);
    } else {
        in.expect("default");
        constraint.kind = ObjectKind::Default;
        constraint.text = takeDefault(in);
        in.expect("for");
        constraint.columns = {in.takeName()};
    }
    table.constraints.push_back(constraint);
}

void parseTableElement(TokenReader& in, TableDef& table) {
    QString name;
    if (in.accept("constraint")) name = in.takeName();
    refuseChecks(in);
    if (in.is("primary") || in.is("unique") || in.is("default")) return parseTableConstraint(in, table, name);
    if (!name.isEmpty()) in.syntaxError();
    parseColumn(in, table);
}

/// Where the files lie and how they grow has no meaning in a single file.
StatementPtr parseCreateDatabase(TokenReader& in) {
    CreateDatabaseStatement create{in.takeName()};
    while (in.accept("on") || in.accept("log", "on")) {
        in.accept("primary");
        do skipBrackets(in);
        while (in.accept(","));
    }
    skipCollation(in);
    in.refuse({"for", "with"}, "CREATE DATABASE … ");
    return statement(create);
}

StatementPtr parseCreateIndex(TokenReader& in, bool unique) {
    CreateIndexStatement create;
    create.unique = unique;
    create.name = in.takeName();
    in.expect("on");
    create.table = in.takeObjectName();
    create.columns = in.takeNameList();
    in.refuse({"include", "where"}, "CREATE INDEX … ");
    parseKeyOptions(in);
    skipFileGroup(in);
    return statement(create);
}

StatementPtr parseProcedure(TokenReader& in, bool alter) {
    CreateProcedureStatement create;
    create.alter = alter;
    create.name = in.takeObjectName();
    parseProcedureRest(in); // for its syntax errors; names are looked up when it runs
    create.text = in.text();
    return statement(create);
}

StatementPtr parseAlterTable(TokenReader& in) {
    AlterTableStatement alter;
    alter.table = in.takeObjectName();
    if (in.accept("add")) {
        do parseTableElement(in, alter.added);
        while (in.accept(","));
    } else if (in.accept("alter", "column")) {
        alter.action = AlterTableStatement::AlterColumn;
        parseColumn(in, alter.added);
    } else if (in.accept("drop")) {
        const bool columns = in.accept("column");
        if (!columns) in.accept("constraint");
        alter.action = columns ? AlterTableStatement::DropColumns : AlterTableStatement::DropConstraints;
        do alter.names.append(in.takeName());
        while (in.accept(","));
    } else {
        in.refuse("ALTER TABLE … ");
    }
    return statement(alter);
}

/// The options of a database (recovery, growth, statistics, …) concern the server's own storage.
StatementPtr parseAlterDatabase(TokenReader& in) {
    AlterDatabaseStatement alter;
    if (!in.accept("current")) alter.name = in.takeName();
    if (!in.is("set")) in.refuse("ALTER DATABASE … ");
    in.take();
    skipToEndOfStatement(in);
    return statement(alter);
}

StatementPtr parseLogin(TokenReader& in, SecurityStatement::Action action) {
    SecurityStatement login;
    login.action = action;
    login.name = in.takeName();
    if (action == SecurityStatement::DropLogin) return statement(login);
    if (in.is("from")) throw notSupported("logins of the operating system");
    in.expect("with");
    do {
        const QString option = in.takeName().toUpper();
        in.expect("=");
        if (option == "PASSWORD") {
            if (in.peek().kind != Token::Text && in.peek().kind != Token::UnicodeText)
                throw notSupported("a password that is not a text");
            login.password = in.take().text;
            in.refuse({"must_change", "hashed"}, "PASSWORD … ");
        } else if (option == "DEFAULT_DATABASE") {
            login.defaultDatabase = in.takeName();
        } else if (option == "CHECK_POLICY" || option == "CHECK_EXPIRATION") {
            if (!in.accept("off")) throw notSupported(option + " = ON");
        } else if (option == "DEFAULT_LANGUAGE") {
            in.takeName();
        } else {
            throw notSupported("login option " + option);
        }
    } while (in.accept(","));
    return statement(login);
}

StatementPtr parseServerRole(TokenReader& in) {
    in.expect("server");
    in.expect("role");
    SecurityStatement member;
    member.role = in.takeName();
    member.action = in.is("add") ? SecurityStatement::AddMember : SecurityStatement::DropMember;
    if (!in.accept("add")) in.expect("drop");
    in.expect("member");
    member.name = in.takeName();
    return statement(member);
}

StatementPtr parseCreateUser(TokenReader& in) {
    SecurityStatement user;
    user.action = SecurityStatement::CreateUser;
    user.name = in.takeName();
    user.role = user.name; // the login behind the user
    if (in.accept("for") || in.accept("from")) {
        in.expect("login");
        user.role = in.takeName();
    }
    return statement(user);
}

} // namespace

StatementPtr parseCreate(TokenReader& in) {
    if (in.accept("table")) {
        CreateTableStatement create;
        create.table = in.takeObjectName();
        create.definition = parseTableDef(in);
        skipFileGroup(in);
        return statement(create);
    }
    if (in.accept("database")) return parseCreateDatabase(in);
    if (in.accept("procedure") || in.accept("proc")) return parseProcedure(in, false);
    if (in.accept("login")) return parseLogin(in, SecurityStatement::CreateLogin);
    if (in.accept("user")) return parseCreateUser(in);
    const bool unique = in.accept("unique");
    if (in.is("clustered") || in.is("nonclustered")) in.take();
    if (in.accept("index")) return parseCreateIndex(in, unique);
    in.refuse("CREATE ");
}

TableDef parseTableDef(TokenReader& in) {
    TableDef table;
    in.expect("(");
    do {
        if (in.is(")")) break; // a comma may precede the closing bracket
        parseTableElement(in, table);
    } while (in.accept(","));
    in.expect(")");
    return table;
}

StatementPtr parseAlter(TokenReader& in) {
    if (in.accept("table")) return parseAlterTable(in);
    if (in.accept("database")) return parseAlterDatabase(in);
    if (in.accept("procedure") || in.accept("proc")) return parseProcedure(in, true);
    if (in.is("server") && in.is("role", 1)) return parseServerRole(in);
    in.refuse("ALTER ");
}

StatementPtr parseDrop(TokenReader& in) {
    static const QHash<QString, ObjectKind> kinds{{"TABLE", ObjectKind::Table},
                                                  {"PROCEDURE", ObjectKind::Procedure},
                                                  {"PROC", ObjectKind::Procedure},
                                                  {"INDEX", ObjectKind::Index}};
    const QString kind = in.take().text.toUpper();
    if (kind == "LOGIN") return parseLogin(in, SecurityStatement::DropLogin);
    if (kind == "DATABASE") {
        DropDatabaseStatement drop;
        drop.ifExists = in.accept("if", "exists");
        do drop.names.append(in.takeName());
        while (in.accept(","));
        return statement(drop);
    }
    if (!kinds.contains(kind)) throw notSupported("DROP " + kind);
    DropStatement drop;
    drop.kind = kinds[kind];
    drop.ifExists = in.accept("if", "exists");
    do drop.names.push_back(in.takeObjectName());
    while (in.accept(","));
    if (drop.kind == ObjectKind::Index && in.accept("on")) { // the newer form: name ON table
        const ObjectName table = in.takeObjectName();
        drop.names.back() = {table.database, table.name, drop.names.back().name};
    }
    return statement(drop);
}

StatementPtr parseDeny(TokenReader& in) {
    SecurityStatement deny;
    deny.action = SecurityStatement::Deny;
    if (!in.accept("connect")) in.refuse("DENY ");
    in.expect("to");
    deny.name = in.takeName();
    return statement(deny);
}

} // namespace embedded

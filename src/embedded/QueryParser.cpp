#include "embedded/QueryParser.h"

#include "embedded/Errors.h"

namespace embedded {

QueryPtr QueryParser::parseQuery() {
    auto query = std::make_shared<Query>();
    query->cores.push_back(parseCore());
    while (accept("union")) {
        const bool all = accept("all");
        query->cores.push_back(parseCore());
        query->cores.back().unionAll = all;
    }
    for (const char* word : {"except", "intersect"})
        if (is(word)) throw notSupported(peek().text.toUpper());
    query->orderBy = parseOrderBy();
    if (is("offset")) throw notSupported("OFFSET");
    if (is("for") && (is("xml", 1) || is("browse", 1))) throw notSupported("FOR " + peek(1).text.toUpper());
    if (is("compute")) throw notSupported("COMPUTE");
    if (is("option")) throw notSupported("OPTION");
    return query;
}

SelectCore QueryParser::parseCore() {
    if (accept("(")) {
        SelectCore core = parseCore();
        expect(")");
        return core;
    }
    SelectCore core;
    expect("select");
    core.distinct = accept("distinct");
    if (!core.distinct) accept("all");
    if (is("top")) core.top = parseTop();
    do core.items.push_back(parseItem());
    while (accept(","));
    if (is("into")) throw notSupported("SELECT … INTO");
    if (accept("from")) core.from = parseFrom();
    if (accept("where")) core.where = parseCondition();
    if (accept("group", "by")) {
        core.groupBy = parseValueList();
        if (is("with")) throw notSupported("GROUP BY … WITH " + peek(1).text.toUpper());
    }
    if (accept("having")) core.having = parseCondition();
    return core;
}

ExprPtr QueryParser::parseTop() {
    expect("top");
    ExprPtr top;
    if (accept("(")) {
        top = parseValue();
        expect(")");
    } else {
        auto number = std::make_shared<Expr>();
        number->kind = Expr::Number;
        number->type = Type::of(Type::Int);
        number->text = QString::number(takeInteger());
        top = number;
    }
    if (is("percent")) throw notSupported("TOP … PERCENT");
    if (is("with") && is("ties", 1)) throw notSupported("TOP … WITH TIES");
    return top;
}

SelectItem QueryParser::parseItem() {
    SelectItem item;
    if (peek().kind == Token::Variable && is("=", 1)) {
        item.variable = take().text;
        take();
        item.expr = parseValue();
        return item;
    }
    if (isName() && is("=", 1)) {
        item.alias = takeName();
        take();
        item.expr = parseValue();
        return item;
    }
    item.expr = parseValue();
    item.alias = takeAlias();
    return item;
}

QString QueryParser::takeAlias() {
    const bool as = accept("as");
    if (isName() || peek().kind == Token::Quoted) return take().text;
    if (peek().kind == Token::Text) return take().text;
    if (as) syntaxError();
    return {};
}

std::vector<TableRefPtr> QueryParser::parseFrom() {
    std::vector<TableRefPtr> tables;
    do tables.push_back(parseJoined());
    while (accept(","));
    return tables;
}

TableRefPtr QueryParser::parseJoined() {
    TableRefPtr left = parseTable();
    for (;;) {
        QString join;
        if (accept("join") || accept("inner", "join"))
            join = "INNER";
        else if (is("cross") && is("apply", 1))
            throw notSupported("CROSS APPLY");
        else if (accept("cross", "join"))
            join = "CROSS";
        else if (is("left") || is("right") || is("full")) {
            join = take().text.toUpper();
            accept("outer");
            expect("join");
        } else {
            return left;
        }
        auto joined = std::make_shared<TableRef>();
        joined->kind = TableRef::Join;
        joined->join = join;
        joined->left = left;
        joined->right = parseTable();
        if (join != "CROSS") {
            // A JOIN B JOIN C ON … ON …: the inner pair closes first.
            if (!is("on")) throw notSupported("nested joins without brackets");
            expect("on");
            joined->on = parseCondition();
        }
        left = joined;
    }
}

TableRefPtr QueryParser::parseTable() {
    if (is("(") && !is("select", 1)) {
        expect("(");
        TableRefPtr joined = parseJoined();
        expect(")");
        return joined;
    }
    auto table = std::make_shared<TableRef>();
    if (accept("(")) {
        table->kind = TableRef::Derived;
        table->query = parseQuery();
        expect(")");
        table->alias = takeAlias();
        if (table->alias.isEmpty()) syntaxError();
        return table;
    }
    table->name = takeTableName();
    if (is("(") && !is("nolock", 1)) {
        static const QStringList hints{"readuncommitted", "updlock",  "holdlock",
                                       "rowlock",         "readpast", "tablock"};
        if (!hints.contains(peek(1).text.toLower())) throw notSupported("table function " + table->name.name);
    }
    if (is("(")) parseHints();
    table->alias = takeAlias();
    if (is("with") || is("(")) parseHints();
    return table;
}

ObjectName QueryParser::takeTableName() {
    if (peek().kind == Token::Variable) return {{}, {}, take().text};
    return takeObjectName();
}

/// Hints steer locking and plans, which do not change what a statement yields here.
void QueryParser::parseHints() {
    accept("with");
    static const QStringList known{
        "nolock",  "readuncommitted", "readcommitted",     "repeatableread", "serializable",
        "updlock", "holdlock",        "rowlock",           "paglock",        "tablock",
        "xlock",   "tablockx",        "readcommittedlock", "nowait"};
    expect("(");
    do {
        if (is("index")) throw notSupported("table hint INDEX");
        const QString hint = take().text.toLower();
        if (!known.contains(hint)) throw notSupported("table hint " + hint.toUpper());
        accept(",");
    } while (!accept(")"));
}

std::vector<OrderItem> QueryParser::parseOrderBy() {
    std::vector<OrderItem> items;
    if (!accept("order", "by")) return items;
    do {
        OrderItem item{parseValue(), false};
        item.descending = accept("desc");
        if (!item.descending) accept("asc");
        items.push_back(item);
    } while (accept(","));
    return items;
}

StatementPtr QueryParser::parseInsert() {
    expect("insert");
    accept("into");
    InsertStatement insert;
    insert.table = takeTableName();
    if (accept("with")) throw notSupported("hints of INSERT");
    if (is("(") && !is("select", 1)) insert.columns = takeNameList();
    if (is("output")) throw notSupported("OUTPUT");
    if (accept("values")) {
        do {
            expect("(");
            std::vector<ExprPtr> row;
            do row.push_back(accept("default") ? nullptr : parseValue());
            while (accept(","));
            expect(")");
            insert.rows.push_back(row);
        } while (accept(","));
    } else if (accept("default", "values")) {
        insert.rows.emplace_back();
    } else {
        if (is("exec") || is("execute")) throw notSupported("INSERT … EXEC");
        if (is("with")) throw notSupported("common table expressions");
        insert.query = parseQuery();
    }
    return std::make_shared<Statement>(Statement{insert});
}

QString QueryParser::takeAssignmentOperator() {
    for (const char* op : {"+=", "-=", "*=", "/="})
        if (accept(op)) return QString(op).left(1);
    expect("=");
    return {};
}

StatementPtr QueryParser::parseUpdate() {
    expect("update");
    if (is("top")) throw notSupported("UPDATE TOP");
    UpdateStatement update;
    update.target = takeTableName();
    if (is("with")) parseHints();
    expect("set");
    do {
        if (peek().kind == Token::Variable) throw notSupported("a variable assigned in UPDATE");
        Assignment assignment;
        assignment.column = takeName();
        while (accept(".")) assignment.column = takeName();
        assignment.op = takeAssignmentOperator();
        assignment.value = accept("default") ? nullptr : parseValue();
        update.assignments.push_back(assignment);
    } while (accept(","));
    if (is("output")) throw notSupported("OUTPUT");
    if (is("from")) throw notSupported("UPDATE … FROM");
    if (accept("where")) {
        if (is("current")) throw notSupported("WHERE CURRENT OF");
        update.where = parseCondition();
    }
    return std::make_shared<Statement>(Statement{update});
}

StatementPtr QueryParser::parseDelete() {
    expect("delete");
    DeleteStatement statement;
    if (is("top")) throw notSupported("DELETE TOP");
    accept("from");
    statement.target = takeTableName();
    if (is("with")) parseHints();
    if (is("output")) throw notSupported("OUTPUT");
    if (is("from")) throw notSupported("DELETE … FROM");
    if (accept("where")) {
        if (is("current")) throw notSupported("WHERE CURRENT OF");
        statement.where = parseCondition();
    }
    return std::make_shared<Statement>(Statement{statement});
}

} // namespace embedded

#include "embedded/Errors.h"
#include "embedded/Grammar.h"

namespace embedded {

namespace {

ObjectName takeTableName(TokenReader& in) {
    if (in.peek().kind == Token::Variable) return {{}, {}, in.take().text};
    return in.takeObjectName();
}

TableRefPtr parseJoined(TokenReader& in);

ExprPtr parseTop(TokenReader& in) {
    in.expect("top");
    ExprPtr top;
    if (in.accept("(")) {
        top = parseValue(in);
        in.expect(")");
    } else {
        auto number = makeExpr(Expr::Number, QString::number(in.takeInteger()));
        number->type = Type::of(Type::Int);
        top = number;
    }
    in.refuse({"percent", "with"}, "TOP … ");
    return top;
}

QString takeAlias(TokenReader& in) {
    const bool as = in.accept("as");
    if (in.isName() || in.peek().kind == Token::Quoted) return in.take().text;
    if (in.peek().kind == Token::Text) return in.take().text;
    if (as) in.syntaxError();
    return {};
}

SelectItem parseItem(TokenReader& in) {
    SelectItem item;
    if (in.peek().kind == Token::Variable && in.is("=", 1)) {
        item.variable = in.take().text;
        in.take();
        item.expr = parseValue(in);
        return item;
    }
    if (in.isName() && in.is("=", 1)) {
        item.alias = in.takeName();
        in.take();
        item.expr = parseValue(in);
        return item;
    }
    item.expr = parseValue(in);
    item.alias = takeAlias(in);
    return item;
}

/// Hints steer locking and plans, which do not change what a statement yields here.
void parseHints(TokenReader& in) {
    in.accept("with");
    static const QStringList known{
        "nolock",  "readuncommitted", "readcommitted",     "repeatableread", "serializable",
        "updlock", "holdlock",        "rowlock",           "paglock",        "tablock",
        "xlock",   "tablockx",        "readcommittedlock", "nowait"};
    in.expect("(");
    do {
        if (!known.contains(in.peek().text.toLower())) in.refuse("table hint ");
        in.take();
        in.accept(",");
    } while (!in.accept(")"));
}

TableRefPtr parseTable(TokenReader& in) {
    const Level level(in.statementLevels);
    if (in.is("(") && !in.is("select", 1)) {
        in.expect("(");
        TableRefPtr joined = parseJoined(in);
        in.expect(")");
        return joined;
    }
    auto table = std::make_shared<TableRef>();
    if (in.accept("(")) {
        table->kind = TableRef::Derived;
        table->query = parseQuery(in);
        in.expect(")");
        table->alias = takeAlias(in);
        if (table->alias.isEmpty()) in.syntaxError();
        return table;
    }
    table->name = takeTableName(in);
    if (in.is("(")) parseHints(in);
    table->alias = takeAlias(in);
    if (in.is("with") || in.is("(")) parseHints(in);
    return table;
}

TableRefPtr parseJoined(TokenReader& in) {
    TableRefPtr left = parseTable(in);
    for (int tables = 1;; ++tables) {
        if (tables > 256)
            throw DbError(106, "Too many table names in the query. The maximum allowable is 256.");
        QString join;
        if (in.accept("join") || in.accept("inner", "join"))
            join = "INNER";
        else if (in.is("cross") && in.is("apply", 1))
            throw notSupported("CROSS APPLY");
        else if (in.accept("cross", "join"))
            join = "CROSS";
        else if (in.is("left") || in.is("right") || in.is("full")) {
            join = in.take().text.toUpper();
            in.accept("outer");
            in.expect("join");
        } else {
            return left;
        }
        auto joined = std::make_shared<TableRef>();
        joined->kind = TableRef::Join;
        joined->join = join;
        joined->left = left;
        joined->right = parseTable(in);
        if (join != "CROSS") {
            // A JOIN B JOIN C ON … ON …: the inner pair closes first.
            if (!in.is("on")) throw notSupported("nested joins without brackets");
            in.expect("on");
            joined->on = parseCondition(in);
        }
        left = joined;
    }
}

std::vector<TableRefPtr> parseFrom(TokenReader& in) {
    std::vector<TableRefPtr> tables;
    do tables.push_back(parseJoined(in));
    while (in.accept(","));
    return tables;
}

std::vector<OrderItem> parseOrderBy(TokenReader& in) {
    std::vector<OrderItem> items;
    if (!in.accept("order", "by")) return items;
    do {
        OrderItem item{parseValue(in), false};
        item.descending = in.accept("desc");
        if (!item.descending) in.accept("asc");
        items.push_back(item);
    } while (in.accept(","));
    return items;
}

ExprPtr parseWhere(TokenReader& in) {
    if (!in.accept("where")) return nullptr;
    in.refuse({"current"}, "WHERE ");
    return parseCondition(in);
}

SelectCore parseCore(TokenReader& in) {
    const Level level(in.statementLevels);
    if (in.accept("(")) {
        SelectCore core = parseCore(in);
        in.expect(")");
        return core;
    }
    SelectCore core;
    in.expect("select");
    core.distinct = in.accept("distinct");
    if (!core.distinct) in.accept("all");
    if (in.is("top")) core.top = parseTop(in);
    do core.items.push_back(parseItem(in));
    while (in.accept(","));
    in.refuse({"into"}, "SELECT … ");
    if (in.accept("from")) core.from = parseFrom(in);
    core.where = parseWhere(in);
    if (in.accept("group", "by")) core.groupBy = parseValueList(in);
    in.refuse({"with"}, "SELECT … ");
    if (in.accept("having")) core.having = parseCondition(in);
    return core;
}

} // namespace

QueryPtr parseQuery(TokenReader& in) {
    auto query = std::make_shared<Query>();
    query->cores.push_back(parseCore(in));
    while (in.accept("union")) {
        const bool all = in.accept("all");
        query->cores.push_back(parseCore(in));
        query->cores.back().unionAll = all;
    }
    in.refuse({"except", "intersect"});
    query->orderBy = parseOrderBy(in);
    in.refuse({"offset", "compute", "option"});
    if (in.is("for") && (in.is("xml", 1) || in.is("browse", 1))) in.take(), in.refuse("FOR ");
    return query;
}

StatementPtr parseInsert(TokenReader& in) {
    in.accept("into");
    InsertStatement insert;
    insert.table = takeTableName(in);
    if (in.is("(") && !in.is("select", 1)) insert.columns = in.takeNameList();
    in.refuse({"with", "output", "exec", "execute"}, "INSERT … ");
    if (in.accept("values")) {
        do {
            in.expect("(");
            std::vector<ExprPtr> row;
            do row.push_back(in.accept("default") ? nullptr : parseValue(in));
            while (in.accept(","));
            in.expect(")");
            insert.rows.push_back(row);
        } while (in.accept(","));
    } else if (in.accept("default", "values")) {
        insert.rows.emplace_back();
    } else {
        insert.query = parseQuery(in);
    }
    return statement(insert);
}

StatementPtr parseUpdate(TokenReader& in) {
    in.refuse({"top", "statistics"}, "UPDATE ");
    UpdateStatement update;
    update.target = takeTableName(in);
    if (in.is("with")) parseHints(in);
    in.expect("set");
    do {
        if (in.peek().kind == Token::Variable) throw notSupported("a variable assigned in UPDATE");
        Assignment assignment;
        assignment.column = in.takeName();
        while (in.accept(".")) assignment.column = in.takeName();
        auto column = makeExpr(Expr::Column);
        column->parts = {assignment.column};
        if (!in.accept("=", "default")) assignment.value = parseAssigned(in, column);
        update.assignments.push_back(assignment);
    } while (in.accept(","));
    in.refuse({"output", "from"}, "UPDATE … ");
    update.where = parseWhere(in);
    return statement(update);
}

StatementPtr parseDelete(TokenReader& in) {
    in.refuse({"top"}, "DELETE ");
    DeleteStatement removal;
    in.accept("from");
    removal.target = takeTableName(in);
    if (in.is("with")) parseHints(in);
    in.refuse({"output", "from"}, "DELETE … ");
    removal.where = parseWhere(in);
    return statement(removal);
}

} // namespace embedded

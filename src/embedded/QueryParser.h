#pragma once

#include "embedded/ExpressionParser.h"

namespace embedded {

/// SELECT, INSERT, UPDATE and DELETE.
class QueryParser : public ExpressionParser {
public:
    using ExpressionParser::ExpressionParser;

protected:
    QueryPtr parseQuery() override;
    StatementPtr parseInsert();
    StatementPtr parseUpdate();
    StatementPtr parseDelete();
    ObjectName takeTableName();
    /// "=", or "+=" and its like; the operator before the equals sign.
    QString takeAssignmentOperator();

private:
    SelectCore parseCore();
    SelectItem parseItem();
    ExprPtr parseTop();
    std::vector<TableRefPtr> parseFrom();
    TableRefPtr parseJoined();
    TableRefPtr parseTable();
    void parseHints();
    std::vector<OrderItem> parseOrderBy();
    QString takeAlias();
};

} // namespace embedded

#pragma once

#include <QTest>
#include <tuple>

/// The rows of a data-driven test, `const Rows<QString, int> row; row("name", "text", 1);`
template <class... Values>
struct Rows {
    Rows() { QTest::addColumn<std::tuple<Values...>>("row"); }
    void operator()(const QString& name, const Values&... values) const {
        QTest::newRow(qPrintable(name)) << std::tuple<Values...>(values...);
    }
};

/// The row at hand, `const auto [text, number] = thisRow<QString, int>();`
template <class... Values>
std::tuple<Values...> thisRow() {
    using Cells = std::tuple<Values...>;
    QFETCH(const Cells, row);
    return row;
}

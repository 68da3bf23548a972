#pragma once

#include "embedded/Session.h"

namespace embedded {

/// A translated expression: SQLite's text for it, and the server's type.
struct Typed {
    QString sql;
    Type type;
    bool isColumn = false; ///< a bare column, which brings its collation with it
};

/// One built-in function. `arguments` has a letter for each: t text, i integer, f float, d datetime,
/// n a number, k a date part; "[" begins the optional ones.
struct FunctionRule {
    QString arguments;
    std::function<Type(const QList<Typed>&)> result;
    NativeFunction native; ///< never sees a NULL; see unlessNull

    int minimum() const;
    int maximum() const;
    QChar letter(int argument) const;
};

class FunctionTable {
public:
    /// Registers all of them in the session's file.
    explicit FunctionTable(Session& session);
    const FunctionRule* find(const QString& name) const;

    void add(const QString& name, const FunctionRule& rule) { m_rules.insert(name, rule); }
    /// The name under which SQLite knows a function of ours.
    static QString nativeName(const QString& name) { return "ts_" + name; }

private:
    QHash<QString, FunctionRule> m_rules;
};

/// The function as most are: NULL in gives NULL out.
NativeFunction unlessNull(NativeFunction native);
/// For rules whose result does not depend on the arguments.
std::function<Type(const QList<Typed>&)> always(Type type);
/// For rules whose result is a text as long as the first argument.
Type likeFirstText(const QList<Typed>& arguments);

void addTextFunctions(FunctionTable& table);
void addNumberFunctions(FunctionTable& table); ///< in Operators.cpp
void addDateFunctions(FunctionTable& table, Session& session);
void addServerFunctions(FunctionTable& table, Session& session);
/// Conversions and arithmetic that translated statements call under names of their own.
void addOperators(Session& session);

} // namespace embedded

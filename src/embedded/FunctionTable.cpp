#include "embedded/FunctionTable.h"

namespace embedded {

int FunctionRule::minimum() const {
    const qsizetype optional = arguments.indexOf(u'[');
    return int(optional < 0 ? arguments.size() : optional);
}

int FunctionRule::maximum() const {
    return int(QString(arguments).remove(u'[').size());
}

QChar FunctionRule::letter(int argument) const {
    return QString(arguments).remove(u'[')[argument];
}

FunctionTable::FunctionTable(Session& session) {
    addTextFunctions(*this);
    addNumberFunctions(*this);
    addDateFunctions(*this, session);
    addServerFunctions(*this, session);
    addOperators(session);
    for (auto rule = m_rules.cbegin(); rule != m_rules.cend(); ++rule) {
        session.file.addFunction(nativeName(rule.key()), -1, true, unlessNull(rule->native));
    }
}

const FunctionRule* FunctionTable::find(const QString& name) const {
    const auto found = m_rules.constFind(name);
    return found == m_rules.constEnd() ? nullptr : &*found;
}

NativeFunction unlessNull(NativeFunction native) {
    return [native](const Arguments& arguments) -> Value {
        for (int i = 0; i < arguments.count(); ++i)
            if (arguments.isNull(i)) return {};
        return native(arguments);
    };
}

std::function<Type(const QList<Typed>&)> always(Type type) {
    return [type](const QList<Typed>&) { return type; };
}

Type likeFirstText(const QList<Typed>& arguments) {
    const Type& first = arguments[0].type;
    if (!first.isText()) return Type::text(8000, false);
    return Type::text(first.length, first.isUnicode());
}

} // namespace embedded

#include "ui/Callback.h"

#include <QMetaMethod>

void Callback::set(QObject* caller, const QString& routine) {
    m_caller = caller;
    m_routine = routine;
}

void Callback::invoke() const {
    if (!m_caller) return;
    const QMetaObject* type = m_caller->metaObject();
    for (int i = 0; i < type->methodCount(); ++i) {
        const QMetaMethod method = type->method(i);
        if (method.parameterCount() == 0
            && QString::fromLatin1(method.name()).compare(m_routine, Qt::CaseInsensitive) == 0) {
            method.invoke(m_caller);
            return;
        }
    }
    qWarning("%s has no slot %s to call back", type->className(), qPrintable(m_routine));
}

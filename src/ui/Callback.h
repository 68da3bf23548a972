#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

/// Whom a child screen tells that it closes: the caller and the name of its slot. The name matches
/// without regard to case, so "Calledback" reaches CalledBack().
class Callback {
public:
    Callback() = default;
    Callback(QObject* caller, const QString& routine) { set(caller, routine); }
    void set(QObject* caller, const QString& routine);
    bool isSet() const { return !m_caller.isNull(); }
    /// Calls the slot, which takes no arguments. A caller that is gone is not called; a name that the
    /// caller has no slot for is a mistake of the program and is reported as a warning.
    void invoke() const;

private:
    QPointer<QObject> m_caller;
    QString m_routine;
};

#include "support/ScriptedMessages.h"

#include <QTest>

namespace {

template <class T>
T next(QQueue<T>& script, const QString& box, const T& none) {
    if (!script.isEmpty()) return script.dequeue();
    QTest::qFail(qPrintable("no answer was scripted for: " + box), __FILE__, __LINE__);
    return none;
}

} // namespace

void ScriptedMessages::notice(QWidget*, const QString& text, Icon, const QString&, const QString& details) {
    m_shown << text;
    m_lastDetails = details;
}

bool ScriptedMessages::ask(QWidget*, const QString& text, Icon, const QString&) {
    m_shown << text;
    const Answer answer = next(m_answers, text, {});
    if (answer.meanwhile) answer.meanwhile();
    return answer.yes;
}

std::optional<QString> ScriptedMessages::input(QWidget*, const QString& prompt, const QString&) {
    m_shown << prompt;
    return next(m_inputs, prompt, std::optional<QString>());
}

QString ScriptedMessages::openFile(QWidget*, const QString&, const QString& filter) {
    return next(m_files, filter, QString());
}

QString ScriptedMessages::saveFile(QWidget*, const QString&, const QString& filter, QString& chosen) {
    chosen = filter.split(";;").value(m_filter);
    return next(m_files, filter, QString());
}

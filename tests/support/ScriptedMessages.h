#pragma once

#include "ui/Messages.h"

#include <QQueue>
#include <QStringList>
#include <functional>

/// Answers from a script and records the exact texts. A box that the script has no answer for fails
/// the test; the answers left over are the test's to check with `finished()`.
class ScriptedMessages : public Messages {
public:
    /// `meanwhile` happens while the question is open.
    void answer(bool yes, const std::function<void()>& meanwhile = {}) {
        m_answers.enqueue({yes, meanwhile});
    }
    void type(const std::optional<QString>& text) { m_inputs.enqueue(text); }
    /// To write, under the filter of this place.
    void pick(const QString& file, int filter = 0) {
        m_files.enqueue(file);
        m_filter = filter;
    }

    /// Texts of all boxes since the last call, in order.
    QStringList takeShown() { return std::exchange(m_shown, {}); }
    /// The details of the last notice.
    const QString& lastDetails() const { return m_lastDetails; }
    bool finished() const { return m_answers.isEmpty() && m_inputs.isEmpty() && m_files.isEmpty(); }

    void notice(QWidget* parent, const QString& text, Icon icon, const QString& title,
                const QString& details) override;
    bool ask(QWidget* parent, const QString& text, Icon icon, const QString& title) override;
    std::optional<QString> input(QWidget* parent, const QString& prompt, const QString& text) override;
    QString openFile(QWidget* parent, const QString& folder, const QString& filter) override;
    QString saveFile(QWidget* parent, const QString& folder, const QString& filter, QString& chosen) override;

private:
    struct Answer {
        bool yes = false;
        std::function<void()> meanwhile;
    };
    QStringList m_shown;
    QString m_lastDetails;
    QQueue<Answer> m_answers;
    QQueue<std::optional<QString>> m_inputs;
    QQueue<QString> m_files;
    int m_filter = 0;
};

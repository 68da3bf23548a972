#pragma once

#include <QString>
#include <stdexcept>

/// What the program itself refuses, in words for the user: nothing went wrong, something has to be entered or
/// done otherwise. `field` names the field that is meant, as its label does; empty when it is none.
class Refusal : public std::runtime_error {
public:
    explicit Refusal(const QString& text, const QString& field = {})
        : std::runtime_error(text.toStdString()), m_text(text), m_field(field) {}

    const QString& text() const { return m_text; }
    const QString& field() const { return m_field; }

private:
    QString m_text;
    QString m_field;
};

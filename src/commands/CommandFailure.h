#pragma once

#include "commands/ExitCode.h"

#include <QString>
#include <stdexcept>

/// Ends a command with a sentence for its user.
class CommandFailure : public std::runtime_error {
public:
    CommandFailure(ExitCode code, const QString& text)
        : std::runtime_error(text.toStdString()), m_code(code), m_text(text) {}

    ExitCode code() const { return m_code; }
    const QString& text() const { return m_text; }

private:
    ExitCode m_code;
    QString m_text;
};

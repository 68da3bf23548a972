#include "db/DbError.h"

DbError::DbError(int number, const QString& text, const QString& statement, bool connectionLost)
    : std::runtime_error(text.toStdString()),
      m_number(number),
      m_text(text),
      m_statement(statement),
      m_connectionLost(connectionLost) {}

DbError DbError::stopped(const QString& statement, bool connectionLost) {
    return {Stopped, "The request was stopped.", statement, connectionLost};
}

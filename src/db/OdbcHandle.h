#pragma once

#include <QList>
#include <QString>

/// What an ODBC call has to say about its failure.
struct OdbcDiagnostic {
    QString state; ///< five characters, such as "08S01"
    int number;    ///< the server's, or the driver's, own
    QString text;  ///< without the "[driver][server]" in front of it
};

/// Owns one ODBC handle. ODBC's own header stays out of this one: it defines many short macros.
class OdbcHandle {
public:
    enum Kind : short { Environment = 1, Connection = 2, Statement = 3 };

    /// The parent of an environment is null. Throws DbError when no handle can be had.
    OdbcHandle(Kind kind, const OdbcHandle* parent);
    OdbcHandle(const OdbcHandle&) = delete;
    OdbcHandle& operator=(const OdbcHandle&) = delete;
    ~OdbcHandle();

    Kind kind() const { return m_kind; }
    void* get() const { return m_handle; }
    /// All records of the last call that failed on this handle, at least one, the gravest first.
    QList<OdbcDiagnostic> diagnostics() const;
    /// The record that tells why the last call on this handle failed.
    OdbcDiagnostic diagnostic() const;

private:
    Kind m_kind;
    void* m_handle = nullptr;
};

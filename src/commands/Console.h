#pragma once

#include <QString>

class QIODevice;

/// Where a command reads and writes: data to one stream, all that is said to its user to another, UTF-8 both.
class Console {
public:
    /// The streams must be open and outlive the object.
    Console(QIODevice& input, QIODevice& output, QIODevice& errors, bool inputIsTerminal);

    /// Data, as it stands. What cannot be written is kept for problem(); a reader that went away is none.
    void write(const QString& text);
    /// Whole lines of texts, whatever they hold.
    void tell(const QString& text);
    /// A line of the input, without its end.
    QString readLine();
    /// Whether a line is waited for; a signal handler may ask.
    static bool isReading();
    bool inputIsTerminal() const { return m_inputIsTerminal; }
    /// At a terminal. Anything but "y" or "yes" is a No.
    bool ask(const QString& question);

    /// Why data could not be written; empty when all was.
    const QString& problem() const { return m_problem; }

private:
    QIODevice& m_input;
    QIODevice& m_output;
    QIODevice& m_errors;
    bool m_inputIsTerminal;
    QString m_problem;
};

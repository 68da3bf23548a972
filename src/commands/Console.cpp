#include "commands/Console.h"

#include "commands/TerminalText.h"
#include "db/ForeignText.h"

#include <QIODevice>
#include <atomic>
#include <cerrno>

namespace {

std::atomic<int> readings = 0;

struct Reading {
    Reading() { ++readings; }
    ~Reading() { --readings; }
};

} // namespace

Console::Console(QIODevice& input, QIODevice& output, QIODevice& errors, bool inputIsTerminal)
    : m_input(input), m_output(output), m_errors(errors), m_inputIsTerminal(inputIsTerminal) {}

void Console::write(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    errno = 0;
    if (m_output.write(bytes) == bytes.size()) return;
    if (errno != EPIPE) m_problem = m_output.errorString();
}

void Console::tell(const QString& text) {
    QString lines;
    for (const QString& line : text.split('\n', Qt::SkipEmptyParts)) lines += escaped(line) + '\n';
    m_errors.write(lines.toUtf8());
}

QString Console::readLine() {
    const Reading reading;
    return foreignLines(m_input.readLine()).value(0);
}

bool Console::isReading() {
    return readings > 0;
}

bool Console::ask(const QString& question) {
    const Reading reading; // whoever sees the question may give up at once
    m_errors.write((escaped(question) + " [y/N] ").toUtf8());
    const QString answer = readLine().trimmed().toLower();
    return answer == "y" || answer == "yes";
}

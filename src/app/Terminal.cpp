#include "app/Terminal.h"

#include <QFile>
#include <atomic>
#include <cstdio>
#include <cstdlib>

#ifdef Q_OS_UNIX
#include <termios.h>
#include <unistd.h>
#else
#include <windows.h>
#endif

namespace {

std::atomic<bool> echoes = true;

std::unique_ptr<QIODevice> openedInput() {
    auto input = std::make_unique<QFile>();
    input->open(stdin, QIODevice::ReadOnly);
    return input;
}

} // namespace

bool isEchoOff() {
    return !echoes;
}

#ifdef Q_OS_UNIX

std::unique_ptr<QIODevice> standardInput() {
    return openedInput();
}

void writeUtf8() {}

void waitForReader() {}

bool inputIsTerminal() {
    return isatty(STDIN_FILENO);
}

void setEcho(bool on) {
    termios mode;
    if (echoes.exchange(on) == on || tcgetattr(STDIN_FILENO, &mode) != 0) return;
    mode.c_lflag = on ? mode.c_lflag | ECHO : mode.c_lflag & ~tcflag_t(ECHO);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &mode);
}

#else

namespace {

/// Lines typed at the console.
class ConsoleInput : public QIODevice {
public:
    ConsoleInput() { open(QIODevice::ReadOnly); }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 most) override {
        if (m_rest.isEmpty()) m_rest = readTyped();
        const qint64 count = std::min(most, qint64(m_rest.size()));
        std::copy_n(m_rest.cbegin(), count, data);
        m_rest.remove(0, count);
        return count;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    static QByteArray readTyped() {
        wchar_t letters[4096];
        DWORD count = 0;
        SetLastError(ERROR_SUCCESS);
        if (!ReadConsoleW(GetStdHandle(STD_INPUT_HANDLE), letters, DWORD(std::size(letters)), &count,
                          nullptr))
            return {};
        if (count == 0 && GetLastError() == ERROR_OPERATION_ABORTED) Sleep(1000); // Ctrl+C ends the program
        const QString typed = QString::fromWCharArray(letters, int(count));
        return typed.startsWith(QChar(26)) ? QByteArray() : typed.toUtf8(); // Ctrl+Z ends the input
    }

    QByteArray m_rest;
};

} // namespace

std::unique_ptr<QIODevice> standardInput() {
    if (inputIsTerminal()) return std::make_unique<ConsoleInput>();
    return openedInput();
}

void writeUtf8() {
    static const UINT before = GetConsoleOutputCP();
    if (before == 0 || !SetConsoleOutputCP(CP_UTF8)) return;
    std::atexit([] { SetConsoleOutputCP(before); });
    SetConsoleCtrlHandler(
        [](DWORD) -> BOOL {
            SetConsoleOutputCP(before);
            return FALSE; // what follows is for others
        },
        TRUE);
}

void waitForReader() {
    DWORD programs[2];
    if (!inputIsTerminal() || GetConsoleProcessList(programs, DWORD(std::size(programs))) != 1) return;
    std::fputs("Press Enter to close this window.", stderr);
    standardInput()->readLine();
}

bool inputIsTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode);
}

void setEcho(bool on) {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    DWORD mode = 0;
    if (echoes.exchange(on) == on || !GetConsoleMode(input, &mode)) return;
    SetConsoleMode(input, on ? mode | ENABLE_ECHO_INPUT : mode & ~DWORD(ENABLE_ECHO_INPUT));
}

#endif

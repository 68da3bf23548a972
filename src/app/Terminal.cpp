#include "app/Terminal.h"

#include <QtGlobal>
#include <atomic>

#ifdef Q_OS_UNIX
#include <termios.h>
#include <unistd.h>
#else
#include <windows.h>
#endif

namespace {

std::atomic<bool> echoes = true;

} // namespace

bool isEchoOff() {
    return !echoes;
}

#ifdef Q_OS_UNIX

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

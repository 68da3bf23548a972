#include "app/Terminal.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <termios.h>
#include <unistd.h>
#else
#include <windows.h>
#endif

bool setEcho(bool on) {
#ifdef Q_OS_UNIX
    termios mode;
    if (tcgetattr(STDIN_FILENO, &mode) != 0) return false;
    mode.c_lflag = on ? mode.c_lflag | ECHO : mode.c_lflag & ~tcflag_t(ECHO);
    return tcsetattr(STDIN_FILENO, TCSAFLUSH, &mode) == 0;
#else
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    DWORD mode = 0;
    if (!GetConsoleMode(input, &mode)) return false;
    return SetConsoleMode(input, on ? mode | ENABLE_ECHO_INPUT : mode & ~DWORD(ENABLE_ECHO_INPUT));
#endif
}

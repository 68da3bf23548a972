#pragma once

#include <QIODevice>
#include <memory>

/// The standard input, opened. What is typed at Windows' console is UTF-8 here; by itself that hands out
/// bytes of an older code page, without the letters that this lacks.
std::unique_ptr<QIODevice> standardInput();
/// Lets Windows' console take what the program writes for UTF-8, as other terminals do, until the program
/// ends.
void writeUtf8();
/// Lets what was said be read where the program has a console of its own, which closes with it.
void waitForReader();
/// Whether the standard input is typed by somebody.
bool inputIsTerminal();
/// Turns the echo of what is typed there off, or back on; a signal handler may do so too. Nothing happens
/// where it is so already: a program in the background would be stopped for asking.
void setEcho(bool on);
/// Whether it is off: somebody is typing a password.
bool isEchoOff();

#pragma once

/// Whether the standard input is typed by somebody.
bool inputIsTerminal();
/// Turns the echo of what is typed there off, or back on; a signal handler may do so too. Nothing happens
/// where it is so already: a program in the background would be stopped for asking.
void setEcho(bool on);
/// Whether it is off: somebody is typing a password.
bool isEchoOff();

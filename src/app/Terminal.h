#pragma once

/// Turns the echo of characters typed into the standard input off or back on. False, with nothing done, when
/// that is no terminal.
bool setEcho(bool on);

#pragma once

#include <QStringList>

class Console;
class QCommandLineParser;

struct Session;

/// Refuses, before anything else is read, an argument that gives a password away: every user of the machine
/// sees it in the list of processes, and the shell keeps it.
void refusePasswordArguments(const QStringList& arguments);
/// The login of the Scheduler's window, with its checks and upgrades, under the options `--server` and
/// `--user`. Throws CommandFailure.
void logIn(Session& session, Console& console, const QCommandLineParser& parser);

#include "commands/Command.h"
#include "commands/ScheduleCommands.h"
#include "commands/checkCommand.h"

namespace {

const QString oneSchedule = "<schedule>";
const QString scheduleHelp = "The schedule's ID or its exact title.";
constexpr int anyNumber = 100'000;

QCommandLineOption waitOption() {
    return {"wait", "Waits until the schedule has ended; the exit status tells how."};
}

} // namespace

const QList<QCommandLineOption>& commonOptions() {
    static const QList<QCommandLineOption> options{
        {{"h", "help"}, "Shows this help."},
        {{"s", "server"},
         "The server as at the login: host, host\\instance, host,port or file:path.",
         "server"},
        {{"u", "user"}, "The user of the bill-analysis product.", "user"},
        {"password-stdin", "Reads the password from the first line of the standard input."},
        {"password-file", "Reads the password from the first line of a file.", "file"},
        {"json", "Answers in JSON instead of text."}};
    return options;
}

const QList<Command>& commands() {
    static const QList<Command> all{
        {"list",
         "Lists your schedules; the administrator's are everybody's.",
         "[word...]",
         "Only schedules that hold all these words in their columns.",
         0,
         anyNumber,
         {},
         listSchedules},
        {"show", "Shows one schedule.", oneSchedule, scheduleHelp, 1, 1, {waitOption()}, showSchedule},
        {"check",
         "Tells whether the server can be worked with, and what the user may do there.",
         {},
         {},
         0,
         0,
         {},
         checkServer}};
    return all;
}

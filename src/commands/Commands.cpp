#include "commands/Command.h"
#include "commands/CommandFailure.h"
#include "commands/NewSchedules.h"
#include "commands/ScheduleCommands.h"
#include "commands/TemplateCommands.h"
#include "commands/checkCommand.h"

namespace {

const QString oneSchedule = "<schedule>";
const QString scheduleHelp = "The schedule's ID or its exact title.";
constexpr int anyNumber = 100'000;

QCommandLineOption waitOption() {
    return {"wait", "Waits until the schedule has ended; the exit status tells how."};
}

QCommandLineOption yesOption() {
    return {"yes", "Says Yes to the question beforehand; needed where the standard input is no terminal."};
}

QCommandLineOption jsonOption() {
    return {"json", "Answers in JSON instead of text."};
}

} // namespace

QString neededOption(const QCommandLineParser& parser, const char* option) {
    const QString value = parser.value(option);
    if (value.trimmed().isEmpty())
        throw CommandFailure(ExitCode::WrongUse, QString("The option --%1 is needed.").arg(option));
    return value;
}

const QList<QCommandLineOption>& commonOptions() {
    static const QList<QCommandLineOption> options{
        {{"h", "help"}, "Shows this help."},
        {{"s", "server"},
         "The server as at the login: host, host\\instance, host,port or file:path.",
         "server"},
        {{"u", "user"}, "The user of the bill-analysis product.", "user"},
        {"password-stdin", "Reads the password from the first line of the standard input."},
        {"password-file", "Reads the password from the first line of a file.", "file"}};
    return options;
}

const QList<Command>& commands() {
    static const QList<Command> all{
        {.name = "list",
         .summary = "Lists your schedules; the administrator's are everybody's.",
         .argument = "[word...]",
         .argumentHelp = "Only schedules that hold all these words in their columns.",
         .most = anyNumber,
         .options = {jsonOption()},
         .run = listSchedules},
        {.name = "show",
         .summary = "Shows one schedule.",
         .argument = oneSchedule,
         .argumentHelp = scheduleHelp,
         .fewest = 1,
         .most = 1,
         .options = {waitOption(), jsonOption()},
         .run = showSchedule},
        {.name = "log",
         .summary = "Lists what the last run of a schedule reported.",
         .argument = oneSchedule,
         .argumentHelp = scheduleHelp,
         .fewest = 1,
         .most = 1,
         .options = {jsonOption()},
         .run = showLog},
        {.name = "add",
         .summary = "Makes a new schedule.",
         .options = {{"template", "The template's ID, or its exact name.", "template"},
                     {"project", "The project; the template must be of its account.", "project"},
                     {"at", "When it is to run, such as 2026-12-01T08:00.", "time"},
                     {"title", "Its title; the template's name when none is given.", "title"},
                     waitOption(),
                     jsonOption()},
         .run = addSchedule},
        {.name = "run",
         .summary = "Makes a new schedule of an old one, which is due now.",
         .argument = oneSchedule,
         .argumentHelp = scheduleHelp,
         .fewest = 1,
         .most = 1,
         .options = {waitOption(), jsonOption()},
         .run = runSchedule},
        {.name = "reset",
         .summary = "Frees a schedule on which the engine has stopped working.",
         .argument = oneSchedule,
         .argumentHelp = scheduleHelp,
         .fewest = 1,
         .most = 1,
         .options = {yesOption(), jsonOption()},
         .run = resetSchedule},
        {.name = "delete",
         .summary = "Deletes a schedule together with its log.",
         .argument = oneSchedule,
         .argumentHelp = scheduleHelp,
         .fewest = 1,
         .most = 1,
         .options = {yesOption()},
         .run = deleteSchedule},
        {.name = "templates",
         .summary = "Lists the templates of all users.",
         .argument = "[word...]",
         .argumentHelp = "Only templates that hold all these words in their columns.",
         .most = anyNumber,
         .options = {jsonOption()},
         .run = listTemplates},
        {.name = "export",
         .summary = "Writes templates to the standard output, for an import elsewhere.",
         .argument = "[template...]",
         .argumentHelp = "IDs or exact names; all templates when none is given.",
         .most = anyNumber,
         .run = exportTemplates},
        {.name = "import",
         .summary = "Adds the templates of an exported file to the account of a project.",
         .argument = "<file>",
         .argumentHelp = "What export has written.",
         .fewest = 1,
         .most = 1,
         .options = {{"project", "The project into whose account the templates go.", "project"},
                     {"leave-out", "Leaves a template of this name out; can be given again.", "name"},
                     {"preview", "Tells what would become of each template and writes nothing."},
                     jsonOption()},
         .run = importTemplates},
        {.name = "check",
         .summary = "Tells whether the server can be worked with, and what the user may do there.",
         .options = {jsonOption()},
         .run = checkServer}};
    return all;
}

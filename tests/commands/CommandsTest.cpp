#include "Line.h"

#include "commands/Command.h"
#include "commands/TerminalText.h"
#include "demo/DemoEngine.h"
#include "support/Files.h"
#include "support/Rows.h"
#include "support/TestClass.h"

#include <QProcess>
#include <QRegularExpression>
#include <csignal>
#include <cstdlib>
#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

/// The command line's own road, on a server.
class CommandsTest : public QObject {
    Q_OBJECT

    using Codes = ExitCode;

    static void schedulesOfTwo(Line& line) {
        line.add("Mine", ScheduleStatus::Pending, "2030-Jan-01 08:00:00");
        line.add("Done", ScheduleStatus::CompletedWithErrors, "2026-Jan-01 08:00:00", "2026-Jan-01 08:05:00");
        line.add("Theirs", ScheduleStatus::Pending, "2030-Jan-02 08:00:00", {}, "Tom.Becker");
    }

    std::unique_ptr<Line> m_shared;

    /// For the rows of tests that change nothing.
    Line& shared() {
        if (m_shared) return *m_shared;
        m_shared = std::make_unique<Line>();
        Line& line = *m_shared;
        line.user = "Amelia.Hart";
        schedulesOfTwo(line);
        for (int i = 0; i < 2; ++i) line.add("Twin", ScheduleStatus::Pending, "2030-Jan-01 08:00:00");
        line.add("Orphan", ScheduleStatus::Pending, "2030-Jan-01 08:00:00", {}, "Amelia.Hart", 999'999);
        return line;
    }

#ifdef Q_OS_UNIX
    /// One Ctrl+C is enough where somebody is asked.
    static void interruptTheQuestion(Line& line, const QString& program) {
        const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
        QVERIFY(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
        line.writeSecret(TestProgram::passwordOf(Session::serverLoginName));
        QProcess asks;
        asks.setStandardInputFile(ptsname(terminal));
        asks.setReadChannel(QProcess::StandardError);
        asks.start(program, {"delete", "Mine", "--server", line.program.server(), "--user",
                             Session::serverLoginName, "--password-file", line.secretFile()});
        QVERIFY(asks.waitForReadyRead());
        QVERIFY(asks.readAll().contains("[y/N]"));
        kill(pid_t(asks.processId()), SIGINT);
        QVERIFY(asks.waitForFinished());
        QCOMPARE(asks.exitCode(), int(Codes::Interrupted));
        close(terminal);
    }
#endif

private slots:
    void cleanupTestCase() {
        m_shared.reset();
    }

    void mistakesChangeNothing_data() {
        const Rows<QStringList, Codes, QString> row;
        const QStringList add{"add", "--template", "Weekly call review", "--project", "Brightwater", "--at"};
        const auto adding = [&](const QString& option, const QString& value) {
            QStringList arguments = add + QStringList{"2030-01-01T08:00"};
            if (const qsizetype at = arguments.indexOf(option); at >= 0)
                arguments[at + 1] = value;
            else
                arguments << option << value;
            return arguments;
        };
        using enum ExitCode;
        row("unknown command", {"lists"}, WrongUse, "no command 'lists'");
        row("no schedule named", {"show"}, WrongUse, "needs <schedule>");
        row("two schedules named", {"delete", "Mine", "Done", "--yes"}, WrongUse, "too many, 'Done'");
        row("unknown option", {"list", "--all"}, WrongUse, "'all'|all");
        row("somebody else's", {"delete", "Theirs", "--yes"}, NotFound, "no schedule 'Theirs'");
        row("nobody's", {"show", "31415926"}, NotFound, "no schedule '31415926'");
        row("two of a title", {"delete", "Twin", "--yes"}, NotFound,
            "'Twin' may be any of .* IDs \\d+, \\d+");
        row("unasked", {"delete", "Mine"}, WrongUse, "--yes");
        row("reset of what waits", {"reset", "Mine", "--yes"}, Refused, "not being processed");
        row("no template", adding("--template", "None"), NotFound,
            "no template 'None' for the account 'BW10023'");
        row("another account's", adding("--template", "Linkvale invoice check"), NotFound, "no template");
        row("no project", adding("--project", "Nowhere"), Refused, "no longer exists");
        row("no bills", adding("--project", "CostCentres"), Refused, "is no project");
        row("an archive", adding("--project", "brightwater_archive_2006"), Refused,
            "'Brightwater_Archive_2006' is not offered");
        row("no centres", adding("--project", "Vantry Estates"), Refused, "No master Cost Centre entries");
        row("yesterday", adding("--at", "2020-01-01T08:00"), Refused, "must be after todays date");
        row("no time", adding("--at", "soon"), WrongUse, "'soon' is no date");
        row("a zone", adding("--at", "2030-01-01T08:00+01:00"), WrongUse, "without a time zone");
        row("no letters", adding("--title", "--"), Refused, "at least one alpha-numeric");
        row("title taken", adding("--title", "mine"), Refused, "Title already exists");
        row("long title", adding("--title", QString(51, 'x')), Refused, "51 characters were entered, 50 fit");
        row("no time given", {"add", "--template", "1", "--project", "Brightwater"}, WrongUse,
            "--at is needed");
        row("run without a template", {"run", "Orphan"}, Refused,
            "template of this schedule no longer exists");
        row("no file", {"import", "/no/such", "--project", "Brightwater"}, Refused, "cannot be read");
        row("no templates", {"export", "None"}, NotFound, "no template 'None'");
    }

    void mistakesChangeNothing() {
        const auto [arguments, code, message] = thisRow<QStringList, Codes, QString>();
        Line& line = shared();
        const QStringList before = line.rows();
        QCOMPARE(line.run(arguments), code);
        QVERIFY2(line.err.contains(QRegularExpression(message)), qPrintable(line.err));
        QCOMPARE(line.out, QString());
        QCOMPARE(line.rows(), before);
    }

    void logins_data() {
        const Rows<QStringList, QString, Codes, QString> row;
        const QStringList me{"list", "--server", "%SERVER", "--user", "Amelia.Hart"};
        using enum ExitCode;
        row("wrong password", me + QStringList{"--password-stdin"}, "secret-1\n", NotLoggedIn,
            "Invalid Login");
        row("no password", me, "", NotLoggedIn, "There is no password");
        row("no file", me + QStringList{"--password-file", "/no/such"}, "", NotLoggedIn, "cannot be read");
        row("two sources", me + QStringList{"--password-stdin", "--password-file", "x"}, "", WrongUse,
            "one of");
        row("level 5", {"list", "--server", "%SERVER", "--user", "Walter.Finch", "--password-stdin"},
            "demo-password\n", NotLoggedIn, "Level 5 users");
        row("no server", {"list", "--user", "Amelia.Hart", "--password-stdin"}, "secret-1\n", WrongUse,
            "--server is needed");
        row("server away", {"list", "--server", "file:/no/such.db", "-u", "Amelia.Hart", "--password-stdin"},
            "secret-1\n", NotLoggedIn, "cannot be reached|no such");
        row("host away",
            {"list", "--server", "127.0.0.1,1", "-u", Session::serverLoginName, "--password-stdin"},
            TestProgram::passwordOf(Session::serverLoginName) + '\n', NotLoggedIn, "127.0.0.1");
        row("login line", {"Amelia.Hart,secret-1,server"}, "", WrongUse, "not taken from the arguments");
        for (const QString given :
             {"--password=secret-1", "-psecret-1", "--pwd", "--password-stdin=secret-1"})
            row(given, me + QStringList{given, "secret-1"}, "", WrongUse, "not taken from the arguments");
    }

    void logins() {
        auto [arguments, input, code, message] = thisRow<QStringList, QString, Codes, QString>();
        Line& line = shared();
        arguments.replaceInStrings("%SERVER", line.program.server());
        QCOMPARE(line.runPlain(arguments, input), code);
        QVERIFY2(line.err.contains(QRegularExpression(message)), qPrintable(line.err));
        QVERIFY(!line.err.contains("secret-1") && line.out.isEmpty());
        QVERIFY(!readFile(line.program.session.log.path()).contains("secret-1"));
    }

    void passwordsComeFromThreePlaces() {
        Line line;
        const QStringList me{"check", "-s", line.program.server(), "-u", "Amelia.Hart"};
        line.writeSecret(TestProgram::passwordOf("Amelia.Hart"));
        QCOMPARE(line.runPlain(me + QStringList{"--password-file", line.secretFile()}), Codes::Done);
        qputenv("ZELVAN_SCHEDULER_PASSWORD", TestProgram::passwordOf("Amelia.Hart").toUtf8());
        QCOMPARE(line.runPlain(me + QStringList{"--json"}), Codes::Done);
        qunsetenv("ZELVAN_SCHEDULER_PASSWORD");
        QCOMPARE(line.json()["user"].toString(), "Amelia.Hart, level 1");
        QCOMPARE(line.json()["rights"].toString(), "own schedules, options");
    }

    void aUserSeesHisOwn() {
        Line line;
        schedulesOfTwo(line);
        QCOMPARE(line.run({"list", "--json"}), Codes::Done);
        QCOMPARE(line.column("title"), (QStringList{"Mine", "Theirs", "Done"}));
        line.user = "Amelia.Hart";
        line.run({"list", "--json"});
        QCOMPARE(line.column("title"), (QStringList{"Mine", "Done"}));
        QCOMPARE(line.column("status"), (QStringList{"pending", "completed-with-errors"}));
        QCOMPARE(line.column("due"), (QStringList{"2030-01-01T08:00:00", "2026-01-01T08:00:00"}));
        QCOMPARE(line.column("ran"), (QStringList{"", "2026-01-01T08:05:00"}));
        line.run({"list", "ERRORS", "bright", "--json"});
        QCOMPARE(line.column("title"), QStringList{"Done"});
        line.run({"list", "errors", "--", "--pending"});
        QCOMPARE(line.out.count('\n'), 1); // the captions
    }

    /// What terminals would obey reaches none, and stays what it is for scripts.
    void titlesAreShownNotObeyed() {
        Line line;
        const QString title =
            QString::fromUtf8("a\n\x1b[31m\"b\" \xc2\x9b \xe2\x80\xae 'c'\t\x7f \xf0\x9f\x8e\x89");
        const int id =
            line.add(QString(title).replace('"', "''"), ScheduleStatus::Pending, "2030-Jan-01 08:00:00");
        line.add(QString::fromUtf8("\u8868\u8868"), ScheduleStatus::Pending, "2030-Jan-02 08:00:00");
        for (const QStringList& arguments :
             {QStringList{"list"}, {"list", "--json"}, {"show", title}, {"delete", title, "--yes"}}) {
            QCOMPARE(line.run(arguments), Codes::Done);
            QVERIFY(
                !QString(line.out + line.err).remove('\n').contains(QRegularExpression("[\\p{Cc}\u202e]")));
            if (arguments.contains("--json")) QCOMPARE(line.column("title").first(), title);
            if (arguments != QStringList{"list"}) continue;
            QSet<int> places;
            for (const QString& row : line.out.split('\n', Qt::SkipEmptyParts))
                places << cellsOf(row.left(qMax(row.indexOf("Pending"), row.indexOf("Status"))));
            QCOMPARE(places.size(), 1); // wide letters push no column
        }
        QVERIFY(!line.rows().join('\n').contains(QString::number(id) + '|') && line.rows().size() == 1);
    }

    void aScheduleIsAddedAndWaitedFor_data() {
        const Rows<bool, bool> row;
        row("runs well", true, false);
        row("runs with errors, the server away meanwhile", false, true);
    }

    void aScheduleIsAddedAndWaitedFor() {
        const auto [well, away] = thisRow<bool, bool>();
        Line line;
        const QString text = well ? "Invoice only" : "Nothing found";
        if (!well) {
            line.db().execute(
                sql("INSERT INTO tblTemplate (Title, UnitabAccount) VALUES ({}, 'BW10023')", text));
            line.db().execute(
                sql("INSERT INTO tblTemplate_Report (TemplateID, ReportType, ReportSubType) SELECT "
                    "TemplateID, 2, 987 FROM tblTemplate WHERE Title = {}",
                    text));
        }
        line.meanwhile = [&](int look) {
            if (look == 1 && away) line.program.fault.arm(1);
            if (look == 3) DemoEngine(line.db()).runDueSchedules(WallClock::now());
            return look < 9;
        };
        const QString today = QDate::currentDate().toString(Qt::ISODate);
        const ExitCode code = line.run({"add", "--template", text, "--project", "BRIGHTWATER", "--at",
                                        today + "T00:00", "--wait", "--json"});
        QCOMPARE(code, well ? Codes::Done : Codes::EndedWithErrors);
        QCOMPARE(line.json()["title"].toString(), text);
        QCOMPARE(line.json()["due"].toString(), today + "T00:00:00");
        QCOMPARE(line.json()["log"].toString().startsWith("None of"), well);
        QCOMPARE(line.err.contains("trying again: Made to fail."), away);
        QCOMPARE(line.err.contains("The server is back."), away);
        // In the server's own spelling of the project.
        QCOMPARE(line.rows(),
                 QStringList{QString("%1|Brightwater|%2|QuorraAdmin").arg(text).arg(well ? 4 : 3)});
        QCOMPARE(line.run({"log", text, "--json"}), Codes::Done);
        QCOMPARE(line.column("errorCode").contains("0"), well);

        QCOMPARE(line.run({"run", text, "--json"}), Codes::Done);
        QCOMPARE(line.json()["title"].toString(), text + " (2)");
        QCOMPARE(line.json()["status"].toString(), "pending");
    }

    void waitingEnds() {
        Line line;
        const int id = line.add("Long", ScheduleStatus::Processing, "2026-Jan-01 08:00:00");
        QCOMPARE(line.run({"show", "Long", "--wait"}), Codes::Interrupted);
        QVERIFY(line.out.isEmpty() && line.err.contains("has not ended yet"));
        line.meanwhile = [&](int) {
            line.db().execute(sql("DELETE FROM tblSchedule WHERE ScheduleID = {}", id));
            return true;
        };
        QCOMPARE(line.run({"show", "Long", "--wait"}), Codes::NotFound);
    }

    void questionsAreAskedAtATerminal() {
        Line line;
        line.atTerminal = true;
        line.add("Stuck", ScheduleStatus::Processing, "2026-Jan-01 08:00:00");
        for (const QString answer : {"\n", "no\n", ""}) {
            line.typed = answer;
            QCOMPARE(line.run({"reset", "Stuck"}), Codes::Refused);
        }
        QCOMPARE(line.logs(), 0);
        line.typed = "y\n";
        QCOMPARE(line.run({"reset", "Stuck"}), Codes::Done);
        QVERIFY(line.err.contains("since 2026-01-01T08:00:00 at the earliest"));
        QVERIFY(line.out.contains("Completed with Errors"));
        QCOMPARE(line.logs(), 1);
        QCOMPARE(line.run({"reset", "Stuck"}), Codes::Refused);
        QCOMPARE(line.run({"delete", "Stuck"}), Codes::Done);
        QVERIFY(line.rows().isEmpty() && line.logs() == 0);
    }

    void templatesTravel() {
        Line line;
        QCOMPARE(line.run({"export", "Weekly call review", "2"}), Codes::Done);
        const QString path = line.program.appFile("two.json");
        writeFile(path, line.out.toUtf8());
        const QStringList into{"import", path, "--project", "O'Dowd Freight", "--json"};
        QCOMPARE(line.run(into + QStringList{"--preview"}), Codes::Done);
        const QString preview = line.out;
        QCOMPARE(line.column("fromAccount"), (QStringList{"BW10023", "BW10023"}));
        // The answer to the commit gets lost: the line finds what it has written.
        Fault& fault = line.program.fault;
        fault.meanwhile("INSERT INTO NorvaScheduler.dbo.tblTemplate_Report", [&] {
            fault.after = fault.lost = true;
            fault.arm(2);
        });
        QCOMPARE(line.run(into), Codes::Done);
        QVERIFY(line.err.contains("answer got lost"));
        QCOMPARE(line.out, preview);
        QCOMPARE(line.run(into + QStringList{"--leave-out", "Invoice only"}), Codes::Done);
        QCOMPARE(line.column("importedAs"), (QStringList{"Weekly call review (2)", ""}));
        QCOMPARE(line.run(into + QStringList{"--leave-out", "None"}), Codes::NotFound);
        QCOMPARE(line.run({"templates", "OD40256", "review", "--json"}), Codes::Done);
        QCOMPARE(line.column("name"), (QStringList{"Weekly call review", "Weekly call review (2)"}));
        QCOMPARE(line.run({"export", "Weekly call review"}), Codes::NotFound); // one in each account
        QVERIFY(line.err.contains("may be any of the templates"));
        line.user = "Siobhan.Kelly";
        QCOMPARE(line.run(into), Codes::Refused);
    }

    /// The program itself: its streams, its signals and what installs it.
    void theProgramItself() {
        Line line;
        line.add("Mine", ScheduleStatus::Pending, "2030-Jan-01 08:00:00");
        for (int i = 0; i < 500; ++i) line.add(QString("Many %1").arg(i), ScheduleStatus::Disabled, "");
        const QString program = line.program.appFile("zelvan-schedules");
        QVERIFY(QFile::copy(COMMAND_LINE, program));
        const auto start = [&](QProcess& process, const QStringList& arguments) {
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert("XDG_CONFIG_HOME", line.program.appFile("../settings"));
            process.setProcessEnvironment(environment);
            process.start(program, arguments
                                       + QStringList{"--server", line.program.server(), "--user",
                                                     Session::serverLoginName, "--password-stdin"});
            process.write(TestProgram::passwordOf(Session::serverLoginName).toUtf8() + '\n');
            process.closeWriteChannel();
        };
        QProcess list;
        start(list, {"list", "--json"});
        QVERIFY(list.waitForFinished());
        QCOMPARE(list.exitCode(), 0);
        QCOMPARE(QJsonDocument::fromJson(list.readAllStandardOutput()).array().size(), 501);
        QCOMPARE(list.readAllStandardError(), QByteArray());

        QProcess nobodyReads;
        start(nobodyReads, {"list"});
        nobodyReads.closeReadChannel(QProcess::StandardOutput);
        QVERIFY(nobodyReads.waitForFinished());
        QCOMPARE(nobodyReads.exitStatus(), QProcess::NormalExit);
        QCOMPARE(nobodyReads.exitCode(), 0);
        QCOMPARE(nobodyReads.readAllStandardError(), QByteArray());

#ifdef Q_OS_UNIX // elsewhere a program without a console cannot be interrupted
        QProcess waits;
        waits.setReadChannel(QProcess::StandardError);
        start(waits, {"show", "Mine", "--wait"});
        QVERIFY(waits.waitForReadyRead());
        QVERIFY(waits.readAll().contains("waiting for its end"));
        waits.terminate();
        QVERIFY(waits.waitForFinished());
        QCOMPARE(waits.exitCode(), int(Codes::Interrupted));
        interruptTheQuestion(line, program);
#endif
    }

    /// Nobody can find out by trying what is missing there.
    void helpersKnowEveryWord() {
        const QString manual = readFile(PACKAGING_FOLDER "/zelvan-schedules.1.in").replace("\\-", "-");
        const QString completion = readFile(PACKAGING_FOLDER "/zelvan-schedules.bash");
        QList<QCommandLineOption> options = commonOptions();
        for (const Command& command : commands()) {
            options += command.options;
            QVERIFY2(manual.contains(".B " + command.name) && completion.contains(command.name),
                     qPrintable(command.name));
        }
        for (const QCommandLineOption& option : options) {
            const QString name = "--" + option.names().last();
            QVERIFY2(manual.contains(name) && completion.contains(name), qPrintable(name));
        }
    }
};

static const AnnounceTest<CommandsTest> announced;
#include "CommandsTest.moc"

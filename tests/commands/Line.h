#pragma once

#include "commands/Console.h"
#include "commands/Program.h"
#include "schedules/Screens.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

/// Command lines on a server whose schedules are those that a test adds.
struct Line : Schedules {
    QString user = Session::serverLoginName;
    QString typed;           ///< behind the password
    bool atTerminal = false; ///< the password comes from a file then
    QString out, err;
    /// Between two looks at the server, with the number of the look; false ends the waiting.
    std::function<bool(int look)> meanwhile = [](int) { return false; };

    /// The program's answer to a command and its arguments.
    ExitCode run(const QStringList& arguments) {
        const QString password = TestProgram::passwordOf(user);
        QStringList all{arguments.first(), "--server", program.server(), "--user", user};
        if (atTerminal) {
            writeSecret(password);
            all << "--password-file" << secretFile();
        } else {
            all << "--password-stdin";
        }
        return runPlain(all + arguments.mid(1), atTerminal ? typed : password + '\n' + typed);
    }
    /// The same without any option added.
    ExitCode runPlain(const QStringList& arguments, const QString& input = {}) {
        QBuffer in, answers, messages;
        in.setData(input.toUtf8());
        in.open(QIODevice::ReadOnly);
        answers.open(QIODevice::WriteOnly);
        messages.open(QIODevice::WriteOnly);
        Console console(in, answers, messages, atTerminal);
        int looks = 0;
        const ExitCode code = runProgram(arguments, program.session, console,
                                         [&](std::chrono::milliseconds) { return meanwhile(++looks); });
        out = QString::fromUtf8(answers.data());
        err = QString::fromUtf8(messages.data());
        return code;
    }
    QJsonDocument json() const { return QJsonDocument::fromJson(out.toUtf8()); }
    /// Field of each object of a JSON list.
    QStringList column(const QString& key) const {
        QStringList values;
        for (const QJsonValue each : json().array()) values << each[key].toVariant().toString();
        return values;
    }

    QString secretFile() { return program.appFile("secret"); }
    void writeSecret(const QString& password) {
        QFile file(secretFile());
        if (!file.open(QIODevice::WriteOnly)) qFatal("the password cannot be written");
        file.write(password.toUtf8() + "\r\n");
    }
};

#include "base/CommandLine.h"

#include "db/ForeignText.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QRegularExpression>
#include <cstring>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace {

/// A shell takes the double quotes of user,password,"host,1433" for its own.
QString withServerQuoted(const QString& line) {
    static const QRegularExpression unquoted(R"(^([^",]*,[^",]*,)([^",]+,\s*[0-9]+)$)");
    return QString(line).replace(unquoted, R"(\1"\2")");
}

} // namespace

QStringList givenArguments(const QCoreApplication& application) {
    const QStringList arguments = application.arguments().mid(1);
#ifdef Q_OS_WIN
    const QString line = QString::fromWCharArray(GetCommandLineW());
    static const QRegularExpression behindProgram("^\\s*(?:\"[^\"]*\"|\\S*)\\s*(.*?)\\s*$",
                                                  QRegularExpression::DotMatchesEverythingOption);
    const QString typed = behindProgram.match(line).captured(1);
    // Another program that starts this one has put quotes around its quotes, which then are escaped.
    const bool isQuotedTwice = arguments.size() == 1 && typed.contains("\\\"");
    if (!typed.isEmpty() && !isQuotedTwice) return {typed};
#endif
    return arguments;
}

QString typedCommandLine(const QStringList& arguments, QIODevice& input) {
    if (arguments != QStringList{"-"}) return withServerQuoted(arguments.join(' '));
    return foreignLines(input.readLine()).value(0);
}

void hideArguments(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) std::memset(argv[i], '\0', std::strlen(argv[i]));
}

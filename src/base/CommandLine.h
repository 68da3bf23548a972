#pragma once

#include <QStringList>

class QCoreApplication;
class QIODevice;

/// The arguments behind the program's name. Windows hands on the line as it was typed, quotes and all: there
/// they are one.
QStringList givenArguments(const QCoreApplication& application);
/// What stands behind the program's name, as its user typed it. A lone "-" stands for the first line of
/// `input`, where nobody else can read it.
QString typedCommandLine(const QStringList& arguments, QIODevice& input);
/// Overwrites the arguments in the list of processes, which every user of the machine can read; Windows keeps
/// a copy of its own.
void hideArguments(int argc, char** argv);

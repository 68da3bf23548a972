#pragma once

#include "db/Connection.h"

#include <QString>
#include <functional>

class QApplication;
class Waiter;

/// How a walk is made.
struct Walk {
    QString server;        ///< as a user types it
    QString appFolder;     ///< see demo/DemoApplication.h
    QString pictureFolder; ///< empty for no pictures
    QString engine;        ///< the demo engine's program
    Connection::Opener opener;
    Waiter* waiter = nullptr;
    std::function<QString()> note = {}; ///< is printed behind each step
};

/// Runs the program along its typical road with the demo engine beside it, and prints a line for each step.
/// False when a step failed.
bool walkProgram(QApplication& application, const Walk& walk);

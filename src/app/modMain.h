#pragma once

#include "ui/ScreenContext.h"

#include <QString>
#include <memory>

class QApplication;
class frmMainScreen;

/// Brings the program from its start to the main screen, and ends it.
class modMain {
public:
    explicit modMain(ScreenContext& context);
    ~modMain();

    /// The whole start-up in its fixed order; false when the program is to end instead. `commandLine`
    /// is everything behind the program's name.
    bool start(QApplication& application, const QString& commandLine);
    /// Closes the connection and every screen.
    void endProgram();
    frmMainScreen* mainScreen() const { return m_mainScreen.get(); }

private:
    void chooseFolders();
    void chooseLook(QApplication& application);
    bool logIn(const QString& commandLine);
    void runServerJobs();
    bool loadMainScreen();
    void showMainScreen();
    void showOptions();

    ScreenContext& m_context;
    std::unique_ptr<frmMainScreen> m_mainScreen;
    QString m_outputPath;
};

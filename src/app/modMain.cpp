#include "app/modMain.h"

#include "app/ScriptRunner.h"
#include "app/frmLogin.h"
#include "app/frmOptions.h"
#include "app/frmSplashScreen.h"
#include "base/CommandLine.h"
#include "base/Csv.h"
#include "base/Session.h"
#include "base/SettingsStore.h"
#include "schedules/frmMainScreen.h"
#include "ui/Cursors.h"
#include "ui/Logo.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/PlainLabels.h"
#include "ui/SlotGuard.h"
#include "ui/openScreen.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>

modMain::modMain(ScreenContext& context) : m_context(context) {}

modMain::~modMain() = default;

bool modMain::start(QApplication& application, const QString& commandLine) {
    Session& session = m_context.session;
    application.setApplicationDisplayName("Norva Quorra Zelvan Scheduler");
    if (!QFile::exists(session.paths.appFile("Quorra Zelvan.exe"))) {
        m_context.messages.notice(nullptr,
                                  "Norva Quorra Zelvan cannot be found in this application directory.  "
                                  "The program will now end.");
        return false;
    }
    chooseFolders();
    chooseLook(application);
    keepLabelsPlain(application);
    session.dropDatabase = commandLine == "-d";
    session.diagnostics = getSetting("VWT", "Diagnostics", "Log", "") == "on";
    if (!logIn(commandLine)) return false;
    frmSplashScreen splash;
    splash.begin();
    runServerJobs();
    const bool loaded = loadMainScreen();
    splash.finish();
    if (loaded) showMainScreen();
    return loaded;
}

void modMain::chooseFolders() {
    cPathControl& paths = m_context.session.paths;
    const QString system = commonSystemFolder();
    paths.setSystemFolder(QDir(system).exists() ? system : paths.AppFolder());
}

void modMain::chooseLook(QApplication& application) {
    Session& session = m_context.session;
    const int font = QFontDatabase::addApplicationFont(session.paths.SystemFolder() + "/NorvaArcwen_Rg.ttf");
    if (font != -1) session.displayFont = "Norva Arcwen";
    Palette::apply(application, Palette::wantedScheme());
    Palette::applyFont(application, session.displayFont);
    application.setWindowIcon(programIcon());
}

bool modMain::logIn(const QString& commandLine) {
    frmLogin screen(m_context);
    const QStringList fields = csvFields(commandLine);
    if (fields.size() == 3 && screen.logInUnseen(fields[0], fields[1], fields[2]))
        return !screen.endProgram();
    if (screen.endProgram()) return false;
    return screen.exec() == QDialog::Accepted && !screen.endProgram();
}

void modMain::runServerJobs() {
    WaitCursor wait;
    const QString failure = runJobs(m_context.session.db(), m_context.session.paths.AppFolder());
    if (!failure.isEmpty()) m_context.session.log.write("modMain.RunJobs", 1, failure);
}

bool modMain::loadMainScreen() {
    return guarded(
        m_context, nullptr,
        [this] {
            WaitCursor wait;
            m_outputPath =
                m_context.session.db().scalar(sql("SELECT OutputPath FROM NorvaScheduler.dbo.tblOptions"));
            m_mainScreen = std::make_unique<frmMainScreen>(m_context);
            m_mainScreen->restorePlacement();
            QObject::connect(m_mainScreen.get(), &frmMainScreen::optionsRequested, [this] { showOptions(); });
        },
        {}, "modMain.OpenMainScreen");
}

void modMain::showMainScreen() {
    if (m_outputPath.isEmpty())
        m_context.messages.notice(nullptr, "There is no default output path set on the server.  "
                                           "Please inform your Administrator.");
    m_mainScreen->show();
    if (const ErrorLog& log = m_context.session.log; log.isElsewhere())
        m_mainScreen->tell("Your error log is kept in "
                           + QDir::toNativeSeparators(QFileInfo(log.path()).path())
                           + ", since you may not write into the application folder.");
}

void modMain::showOptions() {
    guarded(
        m_context, m_mainScreen.get(),
        [this] { openScreen<frmOptions>(m_context, m_mainScreen.get(), "Error loading options"); }, {},
        "frmMainScreen.cmdOptions_Click");
}

void modMain::endProgram() {
    QApplication::closeAllWindows(); // a server that does not answer is not to be seen as a dead window
    m_mainScreen.reset();
    if (m_context.session.connection) m_context.session.connection->close();
}

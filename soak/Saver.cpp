#include "app/cLogin.h"
#include "app/openServer.h"
#include "base/Session.h"
#include "db/DbError.h"
#include "db/Refusal.h"
#include "demo/DemoServer.h"
#include "projects/modProjects.h"
#include "schedules/clsSchedule.h"
#include "soak/Journal.h"
#include "soak/Soak.h"
#include "soak/programs.h"
#include "templates/modTemplates.h"
#include "ui/EventLoopWaiter.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QTimer>
#include <cstdio>

namespace soak {

namespace {

int random(int below) {
    return QRandomGenerator::global()->bounded(below);
}

class Saver {
public:
    Saver(Session& session, const QString& name, const QString& journal)
        : m_session(session), m_name(name), m_journal(journal) {
        readStored();
    }

    void step() {
        const int number = random(worksPerSaver);
        const Work next = nextOf(m_works[number]);
        m_journal.note(Journal::Try, number, next);
        try {
            const bool done = store(number, m_works[number], next);
            m_journal.note(done ? Journal::Did : Journal::Not, number, next);
        } catch (const Refusal&) {
            m_journal.note(Journal::Not, number, next);
        } catch (const DbError& error) {
            std::fprintf(stderr, "saver %s: %s\n", qPrintable(m_name), qPrintable(error.text()));
            readStored(); // whether it was stored, nobody was told
        }
    }

private:
    void readStored() {
        m_works = readWorks(m_session.db(), m_name, [](Fault, const QString&) {});
        for (const StoredWork& work : m_works)
            m_version = std::max({m_version, work.templateVersion, work.scheduleVersion});
    }

    Work nextOf(const Work& work) {
        const int version = ++m_version;
        if (work.templateVersion == 0) return {version, 0};
        if (work.scheduleVersion == 0) return {work.templateVersion, version};
        switch (random(5)) {
        case 0:
            return {};
        case 1:
            return {work.templateVersion, version};
        case 2:
            return {version, version};
        default:
            return {version, work.scheduleVersion};
        }
    }

    /// False when it was refused.
    bool store(int number, StoredWork& work, const Work& next) {
        bool done = false;
        if (next.templateVersion == 0)
            done = deleteTemplate(m_session.db(), work.templateId,
                                  countSchedules(m_session.db(), work.templateId));
        else if (next.scheduleVersion == work.scheduleVersion)
            done = storeTemplate(number, work, next);
        else
            done = storeSchedule(number, work, next);
        if (done) static_cast<Work&>(work) = next;
        return done;
    }

    bool storeTemplate(int number, StoredWork& work, const Work& next) {
        clsTemplate edited(m_session.db(), m_session.project);
        if (work.templateVersion == 0)
            edited.StartNew();
        else if (!edited.LoadTemplate(work.templateId))
            return false;
        fill(edited, number, next.templateVersion);
        if (edited.SaveTemplate() != clsTemplate::Saved) return false;
        work.templateId = edited.ID();
        return true;
    }

    bool storeSchedule(int number, StoredWork& work, const Work& next) {
        clsSchedule edited(m_session);
        if (work.scheduleVersion == 0) {
            auto itsTemplate = std::make_unique<clsTemplate>(m_session.db(), m_session.project);
            if (!itsTemplate->LoadTemplate(work.templateId)) return false;
            edited.setTemplate(std::move(itsTemplate));
            edited.setProjectFile(m_session.project.database);
        } else if (edited.LoadSchedule(work.scheduleId) != clsSchedule::Loaded) {
            return false;
        }
        edited.setTitle(titleOf(m_name, number, next.scheduleVersion));
        edited.setRunDate(runDate(number, next.scheduleVersion));
        const bool withTemplate = next.templateVersion != work.templateVersion;
        if (withTemplate) fill(edited.Template(), number, next.templateVersion);
        if (edited.SaveSchedule({}, withTemplate) != clsSchedule::Saved) return false;
        work.scheduleId = edited.ID();
        return true;
    }

    void fill(clsTemplate& edited, int number, int version) const {
        constexpr int allCalls = 161;
        edited.setTitle(titleOf(m_name, number, version));
        edited.Reports().Clear();
        for (int i = 0; i < reportCount(version); ++i) {
            auto parameters = std::make_shared<clsReportParameters>(m_session.project);
            parameters->setReportCaption(QString::number(version));
            QString key;
            edited.Reports().Add(0, parameters, CallReport, allCalls, true, true, false, key);
        }
    }

    Session& m_session;
    QString m_name;
    Journal m_journal;
    QMap<int, StoredWork> m_works;
    int m_version = 0;
};

} // namespace

int runSaver(QApplication& application, const QString& folder, const QString& name) {
    EventLoopWaiter waiter;
    Session session(Soak::appFolder(folder), openServer);
    session.waiter = &waiter;
    const LoginOutcome outcome =
        cLogin(session, [] {
            return false;
        }).logIn(Soak::server(folder), Session::serverLoginName, DemoServer::loginPassword);
    if (outcome.result != LoginOutcome::Done)
        qFatal("saver %s: %s", qPrintable(name), qPrintable(outcome.message));
    openProject(session, "Brightwater");
    Saver saver(session, name, Soak::journal(folder, name));
    QTimer timer;
    timer.callOnTimeout([&] { saver.step(); });
    timer.start(5); // the other programs want a turn as well
    return application.exec();
}

} // namespace soak

#include "schedules/BulkChange.h"

#include "base/Session.h"
#include "base/WallClock.h"
#include "db/Refusal.h"
#include "db/ServerText.h"
#include "db/StoredTitle.h"
#include "projects/ProjectList.h"
#include "schedules/ScheduleChoices.h"
#include "schedules/modScheduler.h"
#include "templates/TemplateSummary.h"
#include "templates/modTemplates.h"

#include <QHash>
#include <QSet>

namespace {

QMap<int, ScheduleRow> readRows(Session& session, const QList<int>& ids, const Sql& hint) {
    constexpr qsizetype idsAtOnce = 1000;
    QMap<int, ScheduleRow> rows;
    for (qsizetype first = 0; first < ids.size(); first += idsAtOnce) {
        QList<Sql> values;
        for (const int id : ids.mid(first, idsAtOnce)) values << Sql::value(id);
        Sql reading = sql("SELECT * FROM NorvaScheduler.dbo.[tblSchedule] WITH (");
        reading += hint;
        reading += sql(") WHERE ([ScheduleID] IN ({}))", Sql::join(values, sql(", ")));
        for (const Row row : session.db().query(reading))
            rows.insert(row.integer("ScheduleID"), ScheduleRow::read(row));
    }
    return rows;
}

/// What the rules for a single schedule ask about templates, projects and users.
class Rules {
public:
    /// What takes a while is asked before anything is locked.
    Rules(Session& session, const QMap<int, ScheduleRow>& seen, const BulkChange& change)
        : m_session(session), m_change(change) {
        if (change.owner && !session.isAdministrator())
            throw Refusal("Only the administrator gives schedules to other users.");
        if (change.owner) m_owner = findOwner(*change.owner);
        if (change.project)
            if (const QString problem = projectProblem(session, *change.project); !problem.isEmpty())
                throw Refusal(problem);
        if (change.project || change.templateId) readAccounts(seen);
    }

    /// Under the lock: none of them is deleted any more.
    void readTemplates() {
        m_templates = loadTemplateSummaries(m_session.db());
        if (m_change.templateId && !m_templates.contains(*m_change.templateId))
            throw Refusal("This template has been deleted by somebody else in the meantime.");
    }

    /// Why a row cannot become another one; empty when it can.
    QString problem(const ScheduleRow& seen, const ScheduleRow& wanted) const {
        if (!isOwn(m_session, seen)) return QString("it belongs to %1.").arg(seen.userName);
        if (m_change.concernsTheRun() && isFinished(seen.status)) return "it has run already.";
        if (m_change.time || m_change.moveBy != 0) {
            const auto date = WallClock::fromStored(wanted.runDate);
            if (!date) return "its run date is no date.";
            if (const QString late = runDateProblem(*date); !late.isEmpty()) return late;
        }
        const auto found = m_templates.constFind(wanted.templateId);
        if (m_change.project || m_change.templateId) {
            if (found == m_templates.constEnd()) return "its template no longer exists.";
            const QString account = m_accounts.value(wanted.project);
            if (account.isEmpty()) return QString("the project '%1' cannot be read.").arg(wanted.project);
            if (!sameOnServer(found->header.unitabAccount, account))
                return QString("the template is not of the account of the project '%1'.").arg(wanted.project);
        }
        const bool isSubProject = found != m_templates.constEnd() && !found->header.isOrdinary();
        if (m_owner && isSubProject && !m_owner->mayRunSubProjects)
            return "'Cost Centre Sub Project' schedules are not allowed for level 4 users.";
        return {};
    }

private:
    ProductUser findOwner(const QString& name) {
        for (const ProductUser& user : readProductUsers(m_session))
            if (user.name == name) return user;
        throw Refusal(QString("The product has no user '%1'.").arg(name));
    }

    void readAccounts(const QMap<int, ScheduleRow>& seen) {
        QSet<QString> projects;
        for (const ScheduleRow& row : seen) projects.insert(m_change.project.value_or(row.project));
        projects.remove({});
        const QStringList names = projects.values();
        const QList<ProjectDetails> details = readProjectDetails(m_session, names);
        for (qsizetype i = 0; i < names.size(); ++i) m_accounts.insert(names[i], details[i].account);
    }

    Session& m_session;
    const BulkChange& m_change;
    QHash<int, TemplateSummary> m_templates;
    std::optional<ProductUser> m_owner;
    QHash<QString, QString> m_accounts; ///< of the projects
};

ScheduleRow changed(ScheduleRow row, const BulkChange& change) {
    auto date = WallClock::fromStored(row.runDate);
    if (date && (change.time || change.moveBy != 0)) {
        if (change.time) date = WallClock(date->date(), *change.time);
        row.runDate = date->addSecs(change.moveBy).stored();
    }
    row.project = change.project.value_or(row.project);
    row.templateId = change.templateId.value_or(row.templateId);
    row.userName = change.owner.value_or(row.userName);
    const bool waits = row.status == ScheduleStatus::Pending || row.status == ScheduleStatus::Disabled;
    if (change.enabled && waits)
        row.status = *change.enabled ? ScheduleStatus::Pending : ScheduleStatus::Disabled;
    return row;
}

bool isSame(const ScheduleRow& one, const ScheduleRow& other) {
    return one.decidesAs(other) && one.status == other.status && one.userName == other.userName;
}

/// Why a row is not overwritten; empty when it is as it was seen, or already as it is to be.
QString foreignChange(const ScheduleRow* now, const ScheduleRow& seen, const ScheduleRow& wanted) {
    if (!now) return "somebody else has deleted it.";
    if (now->status == ScheduleStatus::Processing) return "the engine is running it.";
    if (isSame(*now, seen) || isSame(*now, wanted)) return {};
    return isFinished(now->status) && !isFinished(seen.status)
               ? QString("the engine has run it meanwhile.")
               : QString("%1 has changed it meanwhile.").arg(now->userName);
}

QList<Sql> updatesOf(int id, const ScheduleRow& now, const ScheduleRow& wanted) {
    QList<Sql> updates;
    if (!now.decidesAs(wanted) || now.userName != wanted.userName)
        updates << sql("UPDATE NorvaScheduler.dbo.[tblSchedule] SET [TemplateID] = {}, [ProjectRef] = {}, "
                       "[RunDate] = {}, [Username] = {} WHERE ([ScheduleID] = {})",
                       wanted.templateId, wanted.project, wanted.runDate, wanted.userName, id);
    if (now.status != wanted.status)
        updates << sql("UPDATE NorvaScheduler.dbo.[tblSchedule] SET [Status] = {} WHERE ([ScheduleID] = {})",
                       wanted.status, id);
    return updates;
}

} // namespace

QMap<int, ScheduleRow> readScheduleRows(Session& session, const QList<int>& ids) {
    return readRows(session, ids, sql("NOLOCK"));
}

BulkOutcome changeSchedules(Session& session, const QMap<int, ScheduleRow>& seen, const BulkChange& change) {
    Rules rules(session, seen, change);
    BulkOutcome outcome;
    QList<Sql> updates;
    Transaction transaction(session.db());
    lockTemplates(session.db()); // before the schedules, as everybody does
    lockSchedules(session.db());
    rules.readTemplates();
    const QMap<int, ScheduleRow> stored = readRows(session, seen.keys(), sql("UPDLOCK"));
    for (auto it = seen.begin(); it != seen.end(); ++it) {
        const ScheduleRow wanted = changed(*it, change);
        const auto now = stored.constFind(it.key());
        QString problem = foreignChange(now == stored.constEnd() ? nullptr : &*now, *it, wanted);
        if (problem.isEmpty()) problem = rules.problem(*it, wanted);
        if (!problem.isEmpty()) {
            outcome.leftAlone << shownTitle(it->title) + ": " + problem;
            continue;
        }
        const QList<Sql> own = updatesOf(it.key(), *now, wanted);
        updates += own;
        outcome.changed += own.isEmpty() ? 0 : 1;
    }
    session.db().executeAll(updates);
    transaction.commit();
    return outcome;
}

QList<ProductUser> readProductUsers(Session& session) {
    QList<ProductUser> users{{Session::serverLoginName, true}};
    for (const Row row : session.db().query(
             sql("SELECT [Username], [UserLevel] FROM NorvaTallymere.dbo.[TblUsers] WITH (NOLOCK)"))) {
        const QString name = row.text(0);
        const UserLevel level = UserLevel(row.integer(1));
        if (name.isEmpty() || name.contains(' ') || level == UserLevel::Refused
            || name == Session::serverLoginName)
            continue;
        users << ProductUser{name, level != UserLevel::Restricted};
    }
    std::ranges::sort(users, {}, [](const ProductUser& user) { return user.name.toLower(); });
    return users;
}

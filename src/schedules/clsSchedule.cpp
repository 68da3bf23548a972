#include "schedules/clsSchedule.h"

#include "base/Session.h"
#include "db/ColumnText.h"
#include "db/Refusal.h"
#include "db/ServerText.h"
#include "db/StoredTitle.h"
#include "templates/modTemplates.h"

clsSchedule::clsSchedule(Session& session) : m_session(session) {
    Clear();
}

void clsSchedule::Clear() {
    m_id = notStored;
    m_title.clear();
    m_projectFile.clear();
    m_template.reset();
    m_runDate = WallClock::now();
    m_ranDate = {};
    m_hasChanged = false;
    m_loaded = {};
}

void clsSchedule::makeNew(const QString& title, const WallClock& runDate) {
    m_id = notStored;
    m_title = title;
    m_runDate = runDate;
    m_ranDate = {};
    m_loaded = {};
    m_outcomeUnknown = false;
}

clsTemplate& clsSchedule::Template() {
    if (!m_template) m_template = std::make_unique<clsTemplate>(m_session.db(), m_session.project);
    return *m_template;
}

void clsSchedule::setTemplate(std::unique_ptr<clsTemplate> value) {
    m_template = std::move(value);
    m_hasChanged = true;
}

void clsSchedule::setProjectFile(const QString& project) {
    m_projectFile = project;
    m_hasChanged = true;
}

void clsSchedule::setTitle(const QString& title) {
    m_title = title;
    m_hasChanged = true;
}

void clsSchedule::setRunDate(const WallClock& when) {
    m_runDate = when;
    m_hasChanged = true;
}

clsSchedule::LoadResult clsSchedule::LoadSchedule(int id) {
    Clear();
    if (id == notStored) return NoId;
    const RecordSet rows = m_session.db().query(
        sql("SELECT * FROM NorvaScheduler.dbo.[tblSchedule] WITH (NOLOCK) WHERE [ScheduleID] = {}", id));
    if (rows.isEmpty()) return NotFound;
    const Row row = rows.row(0);
    if (!Template().LoadTemplate(row.integer("TemplateID"))) return TemplateFailed;
    const QString project = row.text("ProjectRef");
    if (project.isEmpty()) return NoProject;
    m_projectFile = project;
    m_title = shownTitle(row.text("ScheduleTitle"));
    if (const auto run = WallClock::fromStored(row.text("RunDate"))) m_runDate = *run;
    if (const auto ran = WallClock::fromStored(row.text("RanDate"))) m_ranDate = *ran;
    m_id = row.integer("ScheduleID");
    m_loaded = ScheduleRow::read(row);
    return Loaded;
}

clsSchedule::SaveResult clsSchedule::SaveSchedule(const QString& newTitle, bool saveTemplate) {
    const QString title = newTitle.isEmpty() ? m_title : newTitle;
    if (title.isEmpty()) return TitleMissing;
    const QString stored = storedTitle(title);
    const bool insert = !newTitle.isEmpty() || m_id == notStored;
    if (insert || stored != m_loaded.title)
        requireFits("schedule title", title, longestTitle, CodePage::Unicode);
    requireFits("project name", m_projectFile, 128, CodePage::Unicode);

    const int former = m_id;
    Transaction transaction(m_session.db());
    if (saveTemplate) lockTemplates(m_session.db()); // before the schedules, as everybody does
    lockSchedules(m_session.db()); // two titles counted before either is written would both be free
    const bool inserted = insert && m_outcomeUnknown && takeTwin(stored);
    if (!inserted && titleIsUsed(stored, insert)) return TitleExists;
    if (!insert)
        if (const SaveResult found = compareWithStoredRow(stored); found != Saved) return found;
    try {
        if (!inserted && insert) m_id = m_session.db().insertedKey(wantedRow(stored).insertion());
        if (!insert) updateRow(stored);
        if (saveTemplate && Template().SaveTemplate() != clsTemplate::Saved)
            throw Refusal("The template's name is used by another template of its account.");
        m_outcomeUnknown = true; // until the answer is there
        transaction.commit();
    } catch (...) {
        m_id = former;
        throw;
    }
    m_title = title;
    m_hasChanged = m_outcomeUnknown = false;
    m_loaded = wantedRow(stored);
    if (insert) m_loaded.status = ScheduleStatus::Pending;
    return Saved;
}

/// Saved when the row may be overwritten. It stays locked until the transaction ends, so that neither
/// a user nor the engine comes in between.
clsSchedule::SaveResult clsSchedule::compareWithStoredRow(const QString& storedTitle) {
    const RecordSet rows = m_session.db().query(
        sql("SELECT * FROM NorvaScheduler.dbo.[tblSchedule] WITH (UPDLOCK) WHERE ([ScheduleID] = {})", m_id));
    if (rows.isEmpty()) return Gone;
    m_found = ScheduleRow::read(rows.row(0));
    if (m_found.status == ScheduleStatus::Processing || isFinished(m_found.status)) return RunMeanwhile;
    // What is there already is no conflict: the reply to an earlier save may have been lost.
    const ScheduleRow wanted = wantedRow(storedTitle);
    const auto is = [this](const ScheduleRow& row) {
        return m_found.decidesAs(row) && sameOnServer(m_found.userName, row.userName);
    };
    const bool same = is(m_loaded) || is(wanted);
    return same ? Saved : ChangedMeanwhile;
}

/// An earlier save has inserted the schedule when its answer got lost: then its row is this one's.
bool clsSchedule::takeTwin(const QString& storedTitle) {
    const RecordSet rows = m_session.db().query(
        sql("SELECT * FROM NorvaScheduler.dbo.[tblSchedule] WITH (NOLOCK) WHERE ([ScheduleTitle] = {})",
            storedTitle));
    if (rows.isEmpty()) return false;
    const ScheduleRow found = ScheduleRow::read(rows.row(0));
    if (!found.decidesAs(wantedRow(storedTitle)) || found.userName != m_session.userName) return false;
    m_id = rows.row(0).integer("ScheduleID");
    return true;
}

ScheduleRow clsSchedule::wantedRow(const QString& storedTitle) {
    return {storedTitle,        Template().ID(), m_projectFile,
            m_runDate.stored(), m_loaded.status, m_session.userName};
}

bool clsSchedule::titleIsUsed(const QString& storedTitle, bool insert) const {
    Connection& db = m_session.db();
    const QString count =
        insert ? db.scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.[tblSchedule] WITH (NOLOCK) "
                               "WHERE ([ScheduleTitle] = {})",
                               storedTitle))
               : db.scalar(sql("SELECT COUNT(*) FROM NorvaScheduler.dbo.[tblSchedule] WITH (NOLOCK) "
                               "WHERE ([ScheduleTitle] = {} AND [ScheduleID] <> {})",
                               storedTitle, m_id));
    return count.toInt() >= 1;
}

void clsSchedule::updateRow(const QString& storedTitle) {
    m_session.db().execute(sql("UPDATE NorvaScheduler.dbo.[tblSchedule] SET [ScheduleTitle] = {}, "
                               "[TemplateID] = {}, [ProjectRef] = {}, "
                               "[RunDate] = {}, [Username] = {} WHERE ([ScheduleID] = {})",
                               storedTitle, Template().ID(), m_projectFile, m_runDate.stored(),
                               m_session.userName, m_id));
}

ScheduleStatus clsSchedule::GetStatus() const {
    const RecordSet rows = m_session.db().query(sql(
        "SELECT [Status] FROM NorvaScheduler.dbo.[tblSchedule] WITH (NOLOCK) WHERE [ScheduleID] = {}", m_id));
    return rows.isEmpty() ? ScheduleStatus::NoSuchSchedule : scheduleStatus(rows.row(0).integer("Status"));
}

void clsSchedule::SetRanDate(const WallClock& when) {
    m_session.db().execute(
        sql("UPDATE [tblSchedule] SET [RanDate] = {} WHERE ([ScheduleID] = {})", when.stored(), m_id));
    readRanDate();
}

void clsSchedule::readRanDate() {
    const QString ran = m_session.db().scalar(
        sql("SELECT TOP 1 [RanDate] FROM NorvaScheduler.dbo.tblSchedule WHERE ([ScheduleID] = {})", m_id));
    m_ranDate = WallClock::fromStored(ran).value_or(WallClock());
}

QString saveProblem(clsSchedule::SaveResult result) {
    switch (result) {
    case clsSchedule::Saved:
        return {};
    case clsSchedule::TitleMissing:
        return "Please enter a schedule title";
    case clsSchedule::TitleExists:
        return "Title already exists, please rename the schedule";
    default:
        return "Error saving schedule";
    }
}

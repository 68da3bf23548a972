#pragma once

#include "base/WallClock.h"
#include "schedules/ScheduleRow.h"
#include "templates/clsTemplate.h"

#include <memory>

struct Session;

/// A schedule: one template bound to one project and a time. Loaded from and saved to tblSchedule;
/// database errors pass through as DbError.
class clsSchedule {
public:
    enum LoadResult { Loaded = 0, NoId = -1, NotFound = -2, TemplateFailed = -3, NoProject = -4 };
    enum SaveResult {
        Saved = 0,
        TitleExists = -1,
        TitleMissing = -2,
        ChangedMeanwhile = -3, ///< somebody else saved the row since it was loaded
        RunMeanwhile = -4,     ///< the engine runs or has run the schedule since it was loaded
        Gone = -5,             ///< somebody else deleted the row
    };

    static constexpr int notStored = -1;
    static constexpr int longestTitle = 50; ///< characters, as typed

    explicit clsSchedule(Session& session);

    void Clear();
    /// A loaded schedule becomes a new one that is not stored yet, with the same template and project.
    void makeNew(const QString& title, const WallClock& runDate);
    /// Stores when the schedule was run, and reads it back.
    void SetRanDate(const WallClock& when);
    /// Inserts under `newTitle` when it is given or the schedule is not stored yet, else updates. With
    /// `saveTemplate` the template is saved as well, in the same transaction. A row that is no longer
    /// as it was loaded is not overwritten. Throws a Refusal when a text does not fit; a longer title of an
    /// older version may stay.
    SaveResult SaveSchedule(const QString& newTitle, bool saveTemplate);
    /// After ChangedMeanwhile: what the other user changed, in words, and who he is.
    QStringList ForeignChanges() const { return m_found.changesSince(m_loaded); }
    const QString& ForeignUser() const { return m_found.userName; }
    /// After ChangedMeanwhile: the next save overwrites what was found then.
    void acceptForeignChanges() { m_loaded = m_found; }
    /// On failure the object is left cleared, but for what was read before the failure.
    LoadResult LoadSchedule(int id);
    /// The stored status; NoSuchSchedule when the row is gone.
    ScheduleStatus GetStatus() const;

    /// The template that is run; an empty one when none was set.
    clsTemplate& Template();
    void setTemplate(std::unique_ptr<clsTemplate> value);
    int ID() const { return m_id; }
    const QString& ProjectFile() const { return m_projectFile; }
    /// Whether its row names the same project.
    bool KeepsProject() const { return m_id != notStored && m_projectFile == m_loaded.project; }
    void setProjectFile(const QString& project);
    const QString& Title() const { return m_title; }
    void setTitle(const QString& title);
    const WallClock& RunDate() const { return m_runDate; }
    /// The stored run date as it was loaded, which may be no date: then RunDate() is the present.
    const QString& StoredRunDate() const { return m_loaded.runDate; }
    void setRunDate(const WallClock& when);
    const WallClock& RanDate() const { return m_ranDate; }
    bool HasChanged() const { return m_hasChanged; }
    void setHasChanged(bool changed) { m_hasChanged = changed; }

private:
    bool titleIsUsed(const QString& storedTitle, bool insert) const;
    void updateRow(const QString& storedTitle);
    SaveResult compareWithStoredRow(const QString& storedTitle);
    bool takeTwin(const QString& storedTitle);
    ScheduleRow wantedRow(const QString& storedTitle);
    void readRanDate();

    Session& m_session;
    int m_id = notStored;
    QString m_title;
    QString m_projectFile;
    std::unique_ptr<clsTemplate> m_template;
    WallClock m_runDate;
    WallClock m_ranDate;
    bool m_hasChanged = false;
    bool m_outcomeUnknown = false; ///< a commit failed, or its answer got lost
    ScheduleRow m_loaded;          ///< the row when it was loaded or saved last
    ScheduleRow m_found;           ///< the row that stood against a save
};

/// Why a new schedule was not saved, in words; empty when it was.
QString saveProblem(clsSchedule::SaveResult result);

#pragma once

#include "templates/TemplateFile.h"

#include <functional>

struct Session;

/// Templates of a file on their way into the account of the current project: what becomes of each, as its
/// user decides, and the writing of all of them or none.
class TemplateImport {
public:
    struct Entry {
        FiledTemplate content;
        QString title; ///< a free one, under which it would be imported
        bool leftOut = false;
        QStringList notes; ///< what its user should know beforehand

        bool isRenamed() const { return title != content.header.title; }
    };

    using Progress = std::function<void(qsizetype done, qsizetype all)>;

    /// Needs a current project. Throws a Refusal when there is none, or when the user may not import.
    TemplateImport(Session& session, const QList<FiledTemplate>& templates);

    /// Why the session's user may not import templates; empty when he may.
    static QString refusalFor(const Session& session);

    const QString& account() const { return m_account; }
    const QList<Entry>& entries() const { return m_entries; }
    void setLeftOut(const QList<int>& places, bool leftOut);
    /// How many are not left out.
    qsizetype wantedCount() const;
    /// "new", "new, as 'March (2)'" or "left out"
    static QString outcome(const Entry& entry);

    /// The key of the first of them. `tell` hears how much of the writing is done. Throws a Refusal, with
    /// nothing written, when somebody else has taken a title meanwhile; other titles are chosen then. After a
    /// failure whose outcome is not known, nothing is written that is there already: what was to be imported
    /// then has been.
    int write(const Progress& tell = {});
    bool isOutcomeUnknown() const { return !m_unanswered.isEmpty(); }

private:
    QStringList notesOn(const FiledTemplate& content) const;
    TemplateHeader newHeader(const Entry& entry) const;
    QSet<QString> usedTitles() const;
    void chooseTitles();
    void refuseTakenTitles();
    QList<FiledTemplate> asStored(const QList<Entry>& entries) const;
    bool areThere(const QList<FiledTemplate>& templates) const;
    void insertHeaders();

    Session& m_session;
    QString m_account;
    QSet<QString> m_used; ///< titles of the account, as the server compares them
    QList<Entry> m_entries;
    QList<Entry> m_unanswered; ///< as they were when a commit failed, or its answer got lost
};

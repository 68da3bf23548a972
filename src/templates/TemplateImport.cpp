#include "templates/TemplateImport.h"

#include "base/Session.h"
#include "base/modCommonFunctions.h"
#include "db/DbError.h"
#include "db/Refusal.h"
#include "db/ServerText.h"
#include "db/StoredTitle.h"
#include "reports/BillType.h"
#include "reports/clsReport.h"
#include "templates/modTemplates.h"

#include <QSet>
#include <algorithm>

namespace {

QString titleKey(const QString& title) {
    return serverKey(storedTitle(title));
}

QString counted(qsizetype count) {
    return count == 1 ? QString("1 report") : QString("%1 reports").arg(count);
}

} // namespace

TemplateImport::TemplateImport(Session& session, const QList<FiledTemplate>& templates)
    : m_session(session), m_account(session.project.unitabAccount) {
    if (const QString refusal = refusalFor(session); !refusal.isEmpty()) throw Refusal(refusal);
    if (session.project.database.isEmpty()) throw Refusal("Please select a project");
    templateFile::checkNulls(session.db(), templates);
    m_used = usedTitles();
    for (const FiledTemplate& content : templates) m_entries.append({content, {}, false, notesOn(content)});
    chooseTitles();
    for (const Entry& entry : m_entries) newHeader(entry).columns(); // refuses what does not fit
}

QString TemplateImport::refusalFor(const Session& session) {
    return session.userLevel == UserLevel::Restricted
               ? "Users who are restricted to cost centres cannot import templates, whose reports may be of "
                 "others."
               : QString();
}

QStringList TemplateImport::notesOn(const FiledTemplate& content) const {
    CurrentProject project = m_session.project;
    project.edited = {}; // what it offers by itself
    qsizetype unknown = 0;
    QStringList notOffered;
    for (const QJsonObject& row : content.rows[FiledTemplate::Reports]) {
        clsReport report(project);
        report.setReportType(row["ReportType"].toInt());
        report.setReportSubType(row["ReportSubType"].toInt());
        if (!report.Entry())
            ++unknown;
        else if (!report.IsOffered())
            notOffered << report.ShownTitle();
    }
    QStringList notes;
    const int billType = content.header.billType;
    if (isBillType(billType) && isBillType(project.billType) && billType != project.billType)
        notes << QString("It was made for %1 bills, the account's are %2.")
                     .arg(billTypeName(billType), billTypeName(project.billType));
    if (unknown > 0) notes << QString("This server's catalogue does not know %1.").arg(counted(unknown));
    if (!notOffered.isEmpty())
        notes << QString("The project does not offer %1: %2.")
                     .arg(counted(notOffered.size()), notOffered.join("; "));
    return notes;
}

/// The account decides about its bills, as far as they tell their type.
TemplateHeader TemplateImport::newHeader(const Entry& entry) const {
    TemplateHeader header = entry.content.header;
    header.title = entry.title;
    header.unitabAccount = m_account;
    if (isBillType(m_session.project.billType)) header.billType = m_session.project.billType;
    return header;
}

QSet<QString> TemplateImport::usedTitles() const {
    QSet<QString> used;
    for (const Row row : m_session.db().query(sql("SELECT [Title] FROM NorvaScheduler.dbo.[tblTemplate] WITH "
                                                  "(NOLOCK) WHERE ([UnitabAccount] = {})",
                                                  m_account)))
        used << serverKey(row.text(0));
    return used;
}

void TemplateImport::chooseTitles() {
    QSet<QString> used = m_used;
    for (Entry& entry : m_entries) {
        entry.title = entry.content.header.title;
        if (entry.leftOut) continue;
        for (int number = 2; used.contains(titleKey(entry.title)); ++number)
            entry.title = numberedTitle(entry.content.header.title, number, TemplateHeader::longestTitle);
        used << titleKey(entry.title);
    }
}

void TemplateImport::setLeftOut(const QList<int>& places, bool leftOut) {
    for (const int place : places) m_entries[place].leftOut = leftOut;
    chooseTitles();
}

qsizetype TemplateImport::wantedCount() const {
    return std::ranges::count(m_entries, false, &Entry::leftOut);
}

QString TemplateImport::outcome(const Entry& entry) {
    if (entry.leftOut) return "left out";
    return entry.isRenamed() ? QString("new, as '%1'").arg(entry.title) : QString("new");
}

/// Titles that somebody has taken since they were chosen; others are chosen then.
void TemplateImport::refuseTakenTitles() {
    m_used = usedTitles();
    const auto isTaken = [this](const Entry& entry) {
        return !entry.leftOut && m_used.contains(titleKey(entry.title));
    };
    const auto taken = std::ranges::find_if(m_entries, isTaken);
    if (taken == m_entries.end()) return;
    const QString title = taken->title;
    chooseTitles();
    throw Refusal(QString("Somebody else has just made a template of the name '%1'. Nothing was imported; "
                          "please try again.")
                      .arg(title));
}

/// The wanted ones as they become, with the keys of the account's templates of their titles; none when one of
/// these is not there.
QList<FiledTemplate> TemplateImport::asStored(const QList<Entry>& entries) const {
    QHash<QString, int> keys;
    for (const Row row :
         m_session.db().query(sql("SELECT [TemplateID], [Title] FROM NorvaScheduler.dbo.[tblTemplate] WITH "
                                  "(NOLOCK) WHERE ([UnitabAccount] = {})",
                                  m_account)))
        keys.insert(row.text(1), row.integer(0));
    QList<FiledTemplate> templates;
    for (const Entry& entry : entries) {
        if (entry.leftOut) continue;
        FiledTemplate each{newHeader(entry), entry.content.rows};
        each.header.id = keys.value(each.header.storedTitle(), -1);
        if (each.header.id == -1) return {};
        templates << each;
    }
    return templates;
}

/// Whether the templates hold what they are to hold.
bool TemplateImport::areThere(const QList<FiledTemplate>& templates) const {
    if (templates.isEmpty()) return false;
    QList<int> ids;
    for (const FiledTemplate& each : templates) ids << each.header.id;
    const auto isSame = [](const FiledTemplate& wanted, const FiledTemplate& stored) {
        return wanted.header.columns().values().text() == stored.header.columns().values().text()
               && wanted.holdsSameRows(stored);
    };
    try {
        return std::ranges::equal(templates, templateFile::load(m_session.db(), ids), isSame);
    } catch (const Refusal&) { // one is gone, or of somebody who stored what no file holds
        return false;
    }
}

int TemplateImport::write(const Progress& tell) {
    Connection& db = m_session.db();
    if (isOutcomeUnknown()) {
        const QList<FiledTemplate> written = asStored(m_unanswered);
        const bool done = areThere(written);
        const QList<Entry> former = std::exchange(m_unanswered, {});
        if (done) {
            m_entries = former;
            return written.first().header.id;
        }
    }
    if (wantedCount() == 0) return -1;
    Transaction transaction(db);
    lockTemplates(db);
    refuseTakenTitles();
    insertHeaders();
    const QList<FiledTemplate> templates = asStored(m_entries);
    if (templates.isEmpty()) throw DbError(0, "The server's answer is not whole.");
    const QList<Sql> insertions = templateFile::insertions(templates);
    db.executeAll(insertions, [&](qsizetype done) {
        if (tell) tell(done, insertions.size());
    });
    m_unanswered = m_entries; // until the answer is there
    transaction.commit();
    m_unanswered.clear();
    return templates.first().header.id;
}

/// All before their rows, so that not every template waits for its key.
void TemplateImport::insertHeaders() {
    QList<Sql> insertions;
    for (const Entry& entry : m_entries) {
        if (entry.leftOut) continue;
        const ColumnValues columns = newHeader(entry).columns();
        insertions << sql("INSERT INTO NorvaScheduler.dbo.tblTemplate ({}) VALUES ({})", columns.names(),
                          columns.values());
    }
    m_session.db().executeAll(insertions);
}

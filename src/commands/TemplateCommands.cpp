#include "commands/TemplateCommands.h"

#include "base/FilterWords.h"
#include "base/Session.h"
#include "commands/CommandFailure.h"
#include "commands/Projects.h"
#include "commands/TerminalText.h"
#include "commands/oneNamed.h"
#include "db/DbError.h"
#include "reports/BillType.h"
#include "templates/TemplateImport.h"
#include "templates/TemplateSummary.h"
#include "templates/TemplateUsage.h"

#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>

namespace {

struct ListedTemplate {
    TemplateSummary summary;
    TemplateUsage usage;

    QStringList cells() const {
        const TemplateHeader& header = summary.header;
        return {QString::number(header.id),
                header.title,
                header.unitabAccount,
                billTypeName(header.billType),
                QString::number(summary.reportCount),
                QString::number(usage.activeCount),
                lastUsed()};
    }
    QString lastUsed() const { return lastRun().value_or(usage.lastUsed); }
    QJsonObject json() const {
        const TemplateHeader& header = summary.header;
        return {{"id", header.id},
                {"name", header.title},
                {"account", header.unitabAccount},
                {"billType", billTypeName(header.billType)},
                {"subProjects", !header.isOrdinary()},
                {"reports", summary.reportCount},
                {"activeSchedules", usage.activeCount},
                {"lastUsed", lastRun().has_value() ? QJsonValue(lastUsed()) : QJsonValue()}};
    }

private:
    std::optional<QString> lastRun() const {
        if (!usage.lastRun || usage.lastRun->isZeroDate()) return {};
        return usage.lastRun->iso();
    }
};

QList<ListedTemplate> allTemplates(Session& session) {
    const QHash<int, TemplateSummary> summaries = loadTemplateSummaries(session.db());
    QList<ListedTemplate> all;
    for (const TemplateUsage& usage : loadTemplateUsage(session))
        if (const auto summary = summaries.constFind(usage.templateId); summary != summaries.constEnd())
            all.append({*summary, usage});
    std::ranges::sort(all, {}, [](const ListedTemplate& each) {
        return std::pair(each.summary.header.title.toCaseFolded(), each.usage.templateId);
    });
    return all;
}

int idOf(const QList<ListedTemplate>& all, const QString& name) {
    QList<Named> named;
    for (const ListedTemplate& each : all) named << Named{each.summary.header.id, each.summary.header.title};
    return oneNamed(named, name, "templates", QString("There is no template %1.").arg(quoted(name)));
}

void leaveOut(TemplateImport& import, const QStringList& names) {
    QList<int> places;
    for (const QString& name : names) {
        const qsizetype before = places.size();
        for (int i = 0; i < int(import.entries().size()); ++i)
            if (import.entries()[i].content.header.title == name) places << i;
        if (places.size() == before)
            throw CommandFailure(ExitCode::NotFound,
                                 QString("The file holds no template %1.").arg(quoted(name)));
    }
    import.setLeftOut(places, true);
}

/// Where the answer got lost with the connection, the second attempt finds what the first has written.
void write(Console& console, TemplateImport& import) {
    try {
        import.write();
    } catch (const DbError& error) {
        const bool isStopped = error.number() == DbError::StoppedCommit;
        if (isStopped || !error.connectionLost() || !import.isOutcomeUnknown()) throw;
        console.tell("The server's answer got lost, looking what has become of the import: " + error.text());
        import.write();
    }
}

/// What becomes, or has become, of each template of a file.
void tellImport(CommandContext& context, const TemplateImport& import) {
    QList<QStringList> rows;
    QJsonArray json;
    for (const TemplateImport::Entry& entry : import.entries()) {
        const TemplateHeader& header = entry.content.header;
        const int reports = int(entry.content.rows[FiledTemplate::Reports].size());
        rows << QStringList{header.title, header.unitabAccount, QString::number(reports),
                            TemplateImport::outcome(entry), entry.notes.join(' ')};
        json << QJsonObject{{"name", header.title},
                            {"fromAccount", header.unitabAccount},
                            {"reports", reports},
                            {"importedAs", entry.leftOut ? QJsonValue() : QJsonValue(entry.title)},
                            {"notes", QJsonArray::fromStringList(entry.notes)}};
    }
    context.console.write(context.isSet("json")
                              ? jsonText(QJsonDocument(json))
                              : tableText({"Name", "From Account", "Reports", "Becomes", "Notes"}, rows));
}

} // namespace

ExitCode listTemplates(CommandContext& context) {
    const QStringList words = filterWords(context.arguments.join(' '));
    QList<QStringList> rows;
    QJsonArray json;
    for (const ListedTemplate& each : allTemplates(context.session)) {
        const QStringList cells = each.cells();
        if (!holdsWords(cells.mid(1).join('\n'), words)) continue;
        rows << cells;
        json << each.json();
    }
    context.console.write(context.isSet("json") ? jsonText(QJsonDocument(json))
                                                : tableText({"ID", "Name", "Account", "Bill Type", "Reports",
                                                             "Active Schedules", "Last Used"},
                                                            rows));
    return ExitCode::Done;
}

ExitCode exportTemplates(CommandContext& context) {
    const QList<ListedTemplate> all = allTemplates(context.session);
    QList<int> ids;
    for (const QString& name : context.arguments)
        if (const int id = idOf(all, name); !ids.contains(id)) ids << id;
    if (context.arguments.isEmpty())
        for (const ListedTemplate& each : all) ids << each.summary.header.id;
    const QByteArray document = templateFile::write(templateFile::load(context.session.db(), ids));
    context.console.write(jsonText(document));
    return ExitCode::Done;
}

ExitCode importTemplates(CommandContext& context) {
    Session& session = context.session;
    const QString project = context.needed("project");
    const QList<FiledTemplate> templates = templateFile::readFile(context.arguments.first());
    openOfferedProject(session, project, context.isSet("preview") ? ProjectUse::Look : ProjectUse::Use);
    TemplateImport import(session, templates);
    leaveOut(import, context.parser.values("leave-out"));
    const QString where = QString("the account %1 of the project %2.")
                              .arg(quoted(import.account()), quoted(session.project.database));
    if (context.isSet("preview")) {
        context.console.tell("Nothing is written; this would be added to " + where);
    } else {
        write(context.console, import);
        const qsizetype count = import.wantedCount();
        context.console.tell((count == 1 ? "1 template was" : QString("%1 templates were").arg(count))
                             + " added to " + where);
    }
    tellImport(context, import);
    return ExitCode::Done;
}

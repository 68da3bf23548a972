#include "commands/TemplateCommands.h"

#include "base/FilterWords.h"
#include "base/Session.h"
#include "commands/TerminalText.h"
#include "reports/BillType.h"
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
    QString lastUsed() const { return isUsed() ? usage.lastRun->iso() : usage.lastUsed; }
    QJsonObject json() const {
        const TemplateHeader& header = summary.header;
        return {{"id", header.id},
                {"name", header.title},
                {"account", header.unitabAccount},
                {"billType", billTypeName(header.billType)},
                {"subProjects", !header.isOrdinary()},
                {"reports", summary.reportCount},
                {"activeSchedules", usage.activeCount},
                {"lastUsed", isUsed() ? QJsonValue(usage.lastRun->iso()) : QJsonValue()}};
    }

private:
    bool isUsed() const { return usage.lastRun && !usage.lastRun->isZeroDate(); }
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

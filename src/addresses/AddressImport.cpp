#include "addresses/AddressImport.h"

#include "addresses/AddressBook.h"

#include <QRegularExpression>
#include <QSet>
#include <algorithm>
#include <optional>

namespace {

using enum AddressField;

std::optional<AddressField> fieldOfCaption(const QString& caption) {
    const auto holds = [&](const char* word) {
        return caption.contains(QLatin1StringView(word), Qt::CaseInsensitive);
    };
    if (holds("mail")) return EmailAddress;
    if (holds("level")) return Level;
    if (holds("account")) return BillAccount;
    if (holds("centre") || holds("center")) return CostCentre;
    return {};
}

/// Empty when the captions do not say it, or do not name what every entry needs.
AddressLayout layoutOfHeading(const QStringList& heading) {
    AddressLayout layout;
    for (const QString& caption : heading) {
        const auto field = fieldOfCaption(caption);
        if (!field || layout.contains(*field)) return {};
        layout << *field;
    }
    return layout.contains(CostCentre) && layout.contains(EmailAddress) ? layout : AddressLayout();
}

QList<AddressLayout> usualLayouts(qsizetype columns) {
    switch (columns) {
    case 2:
        return {{CostCentre, EmailAddress}, {EmailAddress, CostCentre}};
    case 3:
        return {{CostCentre, Level, EmailAddress},
                {BillAccount, CostCentre, EmailAddress},
                {CostCentre, EmailAddress, Level},
                {EmailAddress, CostCentre, Level}};
    default:
        return {{BillAccount, CostCentre, Level, EmailAddress},
                {BillAccount, CostCentre, EmailAddress, Level},
                {BillAccount, Level, CostCentre, EmailAddress}};
    }
}

bool isNumber(const QString& text) {
    static const QRegularExpression number("^[+-]?[0-9]+$");
    return number.match(text).hasMatch();
}

bool agrees(const AddressLayout& layout, const QStringList& fields) {
    if (fields.size() != layout.size()) return false;
    return fields[layout.indexOf(EmailAddress)].contains('@')
           && (!layout.contains(Level) || isNumber(fields[layout.indexOf(Level)]));
}

ImportRow mapLine(const AddressLine& line, const AddressLayout& layout, const MailEntry& defaults) {
    ImportRow row{line.number, defaults, defaults.level, ImportRow::New, {}};
    for (qsizetype i = 0; i < qMin(layout.size(), line.fields.size()); ++i) {
        switch (layout[i]) {
        case BillAccount:
            row.entry.billAccount = line.fields[i];
            break;
        case CostCentre:
            row.entry.costCentre = line.fields[i];
            break;
        case EmailAddress:
            row.entry.emailAddress = line.fields[i];
            break;
        case Level:
            row.levelText = line.fields[i];
            row.entry.level = QString::number(row.levelText.toInt());
        }
    }
    const auto end = [&](ImportRow::Status status, const QString& reason) {
        row.status = status;
        row.reason = reason;
        return row;
    };
    if (line.fields.isEmpty()) return end(ImportRow::Unreadable, "A double quote is not closed.");
    if (line.fields.size() != layout.size())
        return end(
            ImportRow::Unreadable,
            QString("The line has %1 fields instead of %2.").arg(line.fields.size()).arg(layout.size()));
    if (!isNumber(row.levelText))
        return end(ImportRow::Unreadable, QString("'%1' is no level.").arg(row.levelText));
    if (!row.entry.hasLevel())
        return end(ImportRow::BadLevel, QString("The level is %1.").arg(row.levelText));
    const QString problem = problemOf(row.entry);
    return problem.isEmpty() ? row : end(ImportRow::Refused, problem);
}

QString entries(qsizetype count) {
    return count == 1 ? "1 address" : QString("%1 addresses").arg(count);
}

} // namespace

QString layoutText(const AddressLayout& layout) {
    QStringList captions;
    for (const AddressField field : layout)
        captions << QStringList{"Bill Account", "Cost Centre", "CC Level", "Email Address"}[int(field)];
    return captions.join(", ");
}

QList<AddressLayout> layoutsFor(const AddressFile& file) {
    QList<AddressLayout> layouts = usualLayouts(file.columns);
    if (!file.lines.isEmpty())
        std::stable_partition(layouts.begin(), layouts.end(), [&](const AddressLayout& layout) {
            return agrees(layout, file.lines.first().fields);
        });
    const AddressLayout named = layoutOfHeading(file.heading);
    if (!named.isEmpty()) {
        layouts.removeAll(named);
        layouts.prepend(named);
    }
    return layouts;
}

QList<ImportRow> mapLines(const AddressFile& file, const AddressLayout& layout, const MailEntry& defaults,
                          const AddressBook& book, const std::function<void(qsizetype done)>& tell) {
    constexpr qsizetype linesBetweenReports = 5000;
    QList<ImportRow> rows;
    QSet<QString> seen;
    rows.reserve(file.lines.size());
    for (const AddressLine& line : file.lines) {
        ImportRow row = mapLine(line, layout, defaults);
        if (row.status == ImportRow::New) {
            const QString key = row.entry.key();
            if (book.EntryAlreadyExists(row.entry))
                row.reason = "It is in the address book already.";
            else if (seen.contains(key))
                row.reason = "An earlier line holds it.";
            if (!row.reason.isEmpty()) row.status = ImportRow::Known;
            seen.insert(key);
        }
        rows << row;
        if (rows.size() % linesBetweenReports == 0) tell(rows.size());
    }
    return rows;
}

ImportCounts countRows(const QList<ImportRow>& rows) {
    ImportCounts counts;
    for (const ImportRow& row : rows) {
        switch (row.status) {
        case ImportRow::New:
            ++counts.added;
            break;
        case ImportRow::Known:
            ++counts.known;
            break;
        case ImportRow::Refused:
            ++counts.refused;
            break;
        case ImportRow::BadLevel:
        case ImportRow::Unreadable:
            if (!counts.stopper) counts.stopper = &row;
        }
    }
    return counts;
}

QString countsText(const ImportCounts& counts) {
    return QString("%1 new, %2 known, %3 refused").arg(counts.added).arg(counts.known).arg(counts.refused);
}

QString leftOutText(const QList<ImportRow>& rows) {
    constexpr qsizetype reasonsShown = 8;
    const ImportCounts counts = countRows(rows);
    QStringList lines;
    if (counts.known > 0) lines << entries(counts.known) + " known already.";
    if (counts.refused > 0) lines << entries(counts.refused) + " refused:";
    qsizetype shown = 0;
    for (const ImportRow& row : rows) {
        if (row.status != ImportRow::Refused) continue;
        if (++shown > reasonsShown) break;
        lines << QString("Line %1: %2").arg(row.line).arg(row.reason);
    }
    if (counts.refused > reasonsShown) lines << QString("and %1 more.").arg(counts.refused - reasonsShown);
    return lines.join('\n');
}

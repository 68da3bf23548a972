#pragma once

#include <QList>
#include <QString>

/// An entry of the list of report types.
struct ReportTypeChoice {
    int type; ///< one of enum ReportType; 0 for an entry that chooses nothing
    QString caption;
};

/// What the report editor offers for bills of this type.
QList<ReportTypeChoice> reportTypeChoices(int billType);
/// "Itemised Call Report"; for a report that is there whatever may be chosen. Empty for an unknown type.
QString reportTypeName(int reportType);

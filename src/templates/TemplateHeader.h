#pragma once

#include "db/RecordSet.h"
#include "templates/ColumnValues.h"

/// The kinds of cost centres for which a sub-project template makes files: TemplateHeader::subType.
enum SubProjectKind : qint16 {
    EveryCostCentre = 0,
    EveryCentreAndNone = 1, ///< and the numbers without a cost centre
    TickedCostCentres = 2,
};

/// One row of tblTemplate.
struct TemplateHeader {
    static constexpr int longestTitle = 50; ///< characters, as typed

    int id = -1; ///< -1 for a template not yet saved
    QString title;
    QString unitabAccount;
    int billType = 0;
    bool csvReportDefs = false;
    bool defaultDates = false;
    int templateType = 0; ///< 0 ordinary, any other a cost-centre sub-project
    qint16 subType = 0;
    qint16 subLevel = 1; ///< cost-centre level 1 to 5
    bool subEmail = false;

    bool operator==(const TemplateHeader&) const = default;
    bool isOrdinary() const { return templateType == 0; }
    /// The title as the database holds it: two apostrophes for each double quote.
    QString storedTitle() const;

    /// Of a row of "SELECT * FROM … tblTemplate"; NULL gives the default.
    static TemplateHeader read(const Row& row);
    /// All but the key. Throws a Refusal when a text does not fit.
    ColumnValues columns() const;
};

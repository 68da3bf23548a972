#include "reports/Catalogue.h"

// Kept as a table: one row is one line, whatever its length.
// clang-format off

namespace {

using enum Presence;

constexpr CatalogueEntry billing[] = {
    {211, "Billing - Invoice", "NNNNNNNN", "", "ECP", Always},
    {2118, "Billing - Invoice Summary (for appended projects)", "NNNNNNNN", "", "ECP", Always},
    {212, "Billing - VAT Statement", "NNNNNNNN", "", "ECP", Always},
    {213, "Billing - Executive Summary", "NNNNNNNN", "", "ECP", Always},
    {214, "Billing - Billing Services Summary", "NNNNNNNN", "", "ECP", Always},
    {215, "Billing - Zero Usage Summary", "NNNNYNNN", "", "ECP", Always},
    {221, "Cost Centre Reports - Cost Centre Summary", "NNNNYNNN", "", "ECP", Always},
    {222, "Cost Centre Reports - Cost Centre Hierarchy", "NNNNNNNN", "", "ECP", Always},
    {231, "Account Level Report - Current Bill By Service Number", "NNNNYNNY", "", "ECP", Always},
    {241, "Cost Elements Summary - Usage Charges", "NNNNYNNY", "", "ECP", Always},
    {242, "Cost Elements Summary - One Off Charges And Credits", "NNNNYNNY", "", "ECP", Always},
    {243, "Cost Elements Summary - Recurring Charges", "NNNNYNNY", "", "ECP", Always},
    {244, "Cost Elements Summary - Adjustments", "NNNNYNNY", "", "ECP", Always},
    {245, "Cost Elements Summary - Discount", "NNNNYNNY", "", "ECP", Always},
    {251, "Cost Element Detail - One Off Charges And Credits", "NNNNYNNY", "", "ECP", Always},
    {252, "Cost Element Detail - Recurring Charges", "NNNNYNNY", "", "ECP", Always},
    {253, "Cost Element Detail - Adjustments", "NNNNYNNY", "", "ECP", Always},
    {281, "Cost Elements By Category - One Off Charges And Credits", "NNNNYNNY", "", "ECP", Always},
    {282, "Cost Elements By Category - Recurring Charges", "NNNNYNNY", "", "ECP", Always},
};

constexpr CatalogueEntry calls[] = {
    {161, "Call Summary Reports - All Calls Summary", "YYYYYNNNNNYN", "LMVD", "ECP", Always},
    {162, "Call Summary Reports - Summary by Number", "YYYYYNNNNNYN", "LMVD", "ECP", Always},
    {163, "Call Summary Reports - Summary by Cost", "YYYNYNNNNNYN", "LMVD", "ECP", Always},
    {166, "Call Summary Reports - Summary by Duration", "YYYNYNNNNNYN", "LMVD", "ECP", Always},
    {165, "Call Summary Reports - Inter Site Analysis", "YYNYNNNNNNYN", "LMVD", "ECP", Always},
    {164, "Call Summary Reports - Call Trends", "NNNNYNNNNNNN", "LMV", "EP", Always},
    {182, "Call Summary Reports - GPRS Summary", "YYNNYNNNNNYN", "LMV", "ECP", Always},
    {183, "Call Summary Reports - GPRS Details", "YYNNYNNNNNYN", "LMV", "ECP", Always},
    {170, "Call Summary Reports - Line Selection", "YYYYYNNNNNYN", "LMVD", "ECP", Always},
    {141, "General Reports - All Call Records", "YYYYYNNNNYYY", "LMVD", "CP", Always},
    {142, "General Reports - Calls To Number", "YYNYYNNNNNYN", "LMVD", "ECP", Always},
    {146, "General Reports - Calls Not To Number", "YYYYYNNNNNYN", "LMVD", "ECP", Always},
    {143, "General Reports - Calls From Number", "YYYYNNNNNNYN", "LMVD", "CP", Always},
    {144, "General Reports - ChargeCard Calls", "YYNYYNNNNNYN", "LV", "ECP", Always},
    {147, "General Reports - Directory Enquiries", "YYNYYNNNNNYN", "LMV", "ECP", Always},
    {148, "General Reports - Special Call Charges", "YYNYYNNNNNYN", "LV", "ECP", Always},
    {111, "100 Most Expensive - All Calls", "YYYYYNNNNYYY", "LMVD", "ECP", Always},
    {112, "100 Most Expensive - UK Calls", "YYYYYNNNNYYY", "LMVD", "ECP", Always},
    {113, "100 Most Expensive - Countries", "YYNYYNNNNNYN", "LMVD", "ECP", ExceptIdc},
    {113, "100 Most Expensive - Countries", "YYYYYNNNNNYN", "LMVD", "ECP", OnlyIdc},
    {114, "100 Most Expensive - Calls to Mobiles", "YYNYYNNNNYYY", "LMVD", "ECP", Always},
    {115, "100 Most Expensive - Destination", "YYYYYNNNNYYY", "LMVD", "ECP", Always},
    {116, "100 Most Expensive - Roamed From Mobile", "YYNYYNNNNYYY", "M", "ECP", ExceptLinkvale},
    {121, "100 Most Frequent - All Calls", "YYYYYNNNNYYY", "LMVD", "ECP", Always},
    {122, "100 Most Frequent - UK Calls", "YYYYYNNNNYYY", "LMVD", "ECP", Always},
    {123, "100 Most Frequent - Countries", "YYYYYNNNNNYN", "LMVD", "ECP", Always},
    {124, "100 Most Frequent - Calls to Mobiles", "YYNYYNNNNYYY", "LMVD", "ECP", Always},
    {125, "100 Most Frequent - Roamed From Mobile", "YYNYYNNNNYYY", "M", "ECP", ExceptLinkvale},
    {145, "100 Longest - Calls by Duration", "YYYYYNNNNYYY", "LMVD", "ECP", Always},
    {181, "Mobile Reports - International Summary", "YYNYYNNNNNNN", "M", "ECP", ExceptLinkvale},
    {178, "Mobile Reports - Mobile Hardware Report", "NNNNNNNNNN", "M", "ECP", ExceptLinkvale},
    {179, "Mobile Reports - Mobile Management Summary", "YYYYYNNNNN", "M", "ECP", ExceptLinkvale},
    {180, "Mobile Reports - Mobile Call Category Summary", "YYYYYNNNNN", "M", "ECP", ExceptLinkvale},
    {184, "Mobile Reports - Corporate Meldra Calls", "YYYYYNNNNN", "M", "ECP", ExceptLinkvale},
    {177, "Telemarketing Reports - Telemarketing Trends", "NNNNNNNNNNNN", "", "ECP", ExceptLinkvale},
    {171, "Telemarketing Reports - UK - Summary By Number", "YNNNYNNNNNNN", "LV", "ECP", ExceptLinkvale},
    {172, "Telemarketing Reports - UK - Summary By Number Group", "YNNNYNNNNNNN", "LV", "ECP", ExceptLinkvale},
    {173, "Telemarketing Reports - UK - All Records", "YNNNYNNNNNNN", "LV", "ECP", ExceptLinkvale},
    {174, "Telemarketing Reports - International - Summary By Number", "YNNNYNNNNNNN", "LV", "ECP", ExceptLinkvale},
    {175, "Telemarketing Reports - International - Summary By Number Group", "YNNNYNNNNNNN", "LV", "ECP", ExceptLinkvale},
    {176, "Telemarketing Reports - International - All Records", "YNNNYNNNNNNN", "LV", "ECP", ExceptLinkvale},
    {131, "Wispera Reports - All Call Records", "YYNYYNNNYNNY", "", "ECP", OnlyWispera},
    {132, "Wispera Reports - Cost Centre Summary", "NNNNNNNNNNNY", "", "ECP", OnlyWispera},
    {133, "Wispera Reports - Service Charges", "NNNNNNNNNNNN", "", "ECP", OnlyWispera},
    {134, "Wispera Reports - User Summary", "YYNYYNNNYNNY", "", "ECP", OnlyWispera},
    {135, "Wispera Reports - Top 100 Hotspots", "YYNYYNNNYNNY", "", "ECP", OnlyWispera},
    {136, "Wispera Reports - Top 100 Users By Duration", "YYNYYNNNYNNY", "", "ECP", OnlyWispera},
    {137, "Wispera Reports - Top 100 Users By Cost", "YYNYYNNNYNNY", "", "ECP", OnlyWispera},
};

constexpr CatalogueEntry circuits[] = {
    {341, "Summary - Cost Centre Summary", "NNNNNNNN", "", "ECP", Always},
    {311, "Billing - Private Circuit Invoice", "NNNNNNNN", "", "ECP", OnlyPrivateCircuits},
    {321, "Circuit Details - Total Circuit Charges", "NNYNYNNN", "", "ECP", Always},
    {322, "Circuit Details - All Cct Elements", "NNNNYNNN", "", "ECP", Always},
    {323, "Circuit Details - Broken Rentals/Ceased", "NNNNYNNN", "", "ECP", Always},
    {324, "Circuit Details - Part Rentals", "NNNNYNNN", "", "ECP", Always},
    {325, "Circuit Details - Exceptions", "NNYNYNNN", "", "ECP", Always},
    {326, "Circuit Details - Selected Circuit", "NNNNNNYN", "", "ECP", Always},
    {327, "Circuit Details - Equipment", "NNNNYNNN", "", "ECP", Always},
    {328, "Circuit Details - Maintenance", "NNNNYNNN", "", "ECP", Always},
};

constexpr CatalogueEntry invoice[] = {
    {271, "Invoice Charges Summary", "NNNNNNNN", "", "ECP", Always},
    {273, "Recurring Charges", "NNNNNYNN", "", "ECP", Always},
    {274, "One Off Charges And Credits", "NNNNNYNN", "", "ECP", Always},
    {272, "Cost Centre Summary", "NNNNNNNN", "", "ECP", Always},
    {278, "Call Summary", "NNNNNNNN", "", "ECP", Always},
    {275, "Discount Summary", "NNNNNNNN", "", "ECP", Always},
    {276, "Discount Breakdown", "NNNNNNNN", "", "ECP", Always},
    {277, "Commitment Charge Summary", "NNNNNNNN", "", "ECP", Always},
    {279, "Invoice Summary By Group Bill", "NNNNNNNNN", "", "ECP", Always},
};

constexpr CatalogueEntry mobile[] = {
    {161, "Call Summary Reports - All Calls Summary", "YYYYYNNNNNYNN", "LMVD", "ECP", Always},
    {162, "Call Summary Reports - Summary by Number", "YYYYYNNNNNYNN", "LMVD", "ECP", Always},
    {163, "Call Summary Reports - Summary by Cost", "YYYNYNNNNNYNN", "LMVD", "ECP", Always},
    {166, "Call Summary Reports - Summary by Duration", "YYYNYNNNNNYNN", "LMVD", "ECP", Always},
    {165, "Call Summary Reports - Inter Site Analysis", "YYNYNNNNNNYNN", "LMVD", "ECP", Always},
    {164, "Call Summary Reports - Call Trends", "NNNNYNNNNNNNN", "LMV", "EP", Always},
    {10, "Call Summary Reports - GPRS Summary", "YYNNYNNNNNYNN", "LMV", "ECP", Always},
    {100, "Call Summary Reports - GPRS Details", "YYNNYNNNNNYNN", "LMV", "ECP", Always},
    {141, "General Reports - All Call Records", "YYYYYNNNNYYNY", "LMVD", "CP", Always},
    {142, "General Reports - Calls To Number", "YYNYYNNNNNYNN", "LMVD", "ECP", Always},
    {146, "General Reports - Calls Not To Number", "YYYYYNNNNNYNN", "LMVD", "ECP", Always},
    {143, "General Reports - Calls From Number", "YYYYNNNNNNYNN", "LMVD", "CP", Always},
    {147, "General Reports - Directory Enquiries", "YYNYYNNNNNYNN", "LMV", "ECP", Always},
    {111, "100 Most Expensive - All Calls", "YYYYYNNNNYYNY", "LMVD", "ECP", Always},
    {112, "100 Most Expensive - UK Calls", "YYYYYNNNNYYNY", "LMVD", "ECP", Always},
    {113, "100 Most Expensive - Countries", "YYYYYNNNNNYNN", "LMVD", "ECP", Always},
    {114, "100 Most Expensive - Calls to Mobiles", "YYYYYNNNNYYNY", "LMVD", "ECP", Always},
    {115, "100 Most Expensive - Destination", "YYYYYNNNNYYYYY", "LMVD", "ECP", Always},
    {116, "100 Most Expensive - Roamed From Mobile", "YYNYYNNNNYYNY", "M", "ECP", ExceptLinkvale},
    {121, "100 Most Frequent - All Calls", "YYYYYNNNNYYNY", "LMVD", "ECP", Always},
    {122, "100 Most Frequent - UK Calls", "YYYYYNNNNYYNY", "LMVD", "ECP", Always},
    {123, "100 Most Frequent - Countries", "YYYYYNNNNNYNN", "LMVD", "ECP", Always},
    {124, "100 Most Frequent - Calls to Mobiles", "YYNYYNNNNYYNY", "LMVD", "ECP", Always},
    {125, "100 Most Frequent - Roamed From Mobile", "YYNYYNNNNYYNY", "M", "ECP", ExceptLinkvale},
    {145, "100 Longest - Calls by Duration", "YYYYYNNNNYYNY", "LMVD", "ECP", Always},
    {191, "Tagged Call Reports - Usage Summary", "YYNYYNNNNNYNN", "LMVD", "ECP", Always},
    {192, "Tagged Call Reports - Analysis by Originating Number", "YYNYYNNNNYYNY", "LMVD", "ECP", Always},
    {194, "Management Summary", "YYYYYNNNNNYNY", "M", "ECP", Always},
    {195, "Handset Summary", "YYYYYNNNNNYNN", "M", "ECP", Always},
    {196, "Handset Itemised", "YYYYYNNNNNYNY", "M", "ECP", Always},
    {197, "Hardware Detail Report", "NNNNNNNNNNNNN", "M", "ECP", Always},
    {180, "Mobile Call Category", "YYNNYNNNNNYNN", "M", "ECP", Always},
    {184, "Mobile Reports - Corporate Meldra Calls", "YYYYYNNNNNNNN", "M", "ECP", Always},
    {131, "Wispera Reports - All Call Records", "YYNYYNNNYNNNN", "", "ECP", OnlyWispera},
    {132, "Wispera Reports - Cost Centre Summary", "NNNNNNNNNNNNN", "", "ECP", OnlyWispera},
    {133, "Wispera Reports - Service Charges", "NNNNNNNNNNNNN", "", "ECP", OnlyWispera},
    {134, "Wispera Reports - User Summary", "YYNYYNNNYNNNN", "", "ECP", OnlyWispera},
    {135, "Wispera Reports - Top 100 Hotspots", "YYNYYNNNYNNNN", "", "ECP", OnlyWispera},
    {136, "Wispera Reports - Top 100 Users By Duration", "YYNYYNNNYNNNN", "", "ECP", OnlyWispera},
    {137, "Wispera Reports - Top 100 Users By Cost", "YYNYYNNNYNNNN", "", "ECP", OnlyWispera},
};
} // namespace

// clang-format on

std::span<const CatalogueEntry> catalogueRows(int reportType) {
    switch (reportType) {
    case BillingReport:
        return billing;
    case CallReport:
        return calls;
    case CircuitReport:
        return circuits;
    case InvoiceReport:
        return invoice;
    case MobileReport:
        return mobile;
    default:
        return {};
    }
}

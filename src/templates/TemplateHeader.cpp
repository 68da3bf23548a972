#include "templates/TemplateHeader.h"

#include "db/StoredTitle.h"

QString TemplateHeader::storedTitle() const {
    return ::storedTitle(title);
}

TemplateHeader TemplateHeader::read(const Row& row) {
    TemplateHeader header;
    header.id = row.integer("TemplateID");
    header.title = shownTitle(row.text("Title"));
    header.unitabAccount = row.text("UnitabAccount");
    header.billType = row.integer("BillType");
    header.csvReportDefs = row.flag("CSVDefs");
    header.defaultDates = row.flag("DefaultDates");
    header.templateType = row.integer("TemplateType");
    header.subType = qint16(row.integer("SubType"));
    if (!row.isNull("SubCCLevel")) header.subLevel = qint16(row.integer("SubCCLevel"));
    header.subEmail = row.flag("SubCCSendEmail");
    return header;
}

ColumnValues TemplateHeader::columns() const {
    ColumnValues columns;
    columns.addText("Title", "template name", storedTitle(), 100, CodePage::Unicode);
    columns.addText("UnitabAccount", "account reference", unitabAccount, 50, CodePage::Latin1252);
    columns.add("BillType", billType);
    columns.add("CSVDefs", csvReportDefs);
    columns.add("DefaultDates", defaultDates);
    columns.add("TemplateType", templateType);
    columns.add("SubType", subType);
    columns.add("SubCCLevel", subLevel);
    columns.add("SubCCSendEmail", subEmail);
    return columns;
}

#include "parameters/uctCallClasses.h"

#include "db/ServerText.h"
#include "ui/Labels.h"
#include "ui/uctCheckList.h"

#include <QLabel>
#include <QSet>
#include <QVBoxLayout>

uctCallClasses::uctCallClasses(const EditedReport& report, QWidget* parent)
    : uctParameterGroup(report, parent), m_list(new uctCheckList(this)) {
    m_list->setObjectName("lstCallClasses");
    m_list->setEmptyText("This project holds no classes of mobile calls.");
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_list);
    column->addWidget(hintLabel(this, "With no class ticked, calls of all classes are reported."));
    connect(m_list, &uctCheckList::changed, this, &uctCallClasses::edited);
}

void uctCallClasses::load(const clsReportParameters& parameters) {
    const QStringList chosen = parameters.CallClassParams().split('|', Qt::SkipEmptyParts);
    std::vector<CheckListEntry> entries;
    QSet<QString> known;
    for (const CallClass& each : editedReport().lists.callClasses()) {
        entries.push_back({each.code, {each.description.isEmpty() ? each.code : each.description}});
        known.insert(serverKey(each.code));
    }
    for (const QString& code : chosen) {
        if (known.contains(serverKey(code))) continue;
        known.insert(serverKey(code));
        entries.push_back({code, {code + "   (not in this project)"}});
    }
    m_list->setEntries(std::move(entries), chosen);
}

void uctCallClasses::store(clsReportParameters& parameters) const {
    parameters.setCallClassParams(m_list->tickedKeys().join('|'));
}

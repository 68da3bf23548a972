#pragma once

#include "parameters/ProjectLists.h"
#include "reports/clsReport.h"
#include "ui/ScreenContext.h"

#include <QScopedValueRollback>
#include <QWidget>

/// What the groups of the parameter editor share: all of it outlives them.
struct EditedReport {
    ScreenContext& context;
    const clsReport& report;
    const CatalogueEntry& entry;
    const ProjectLists& lists;
    int templateId; ///< whose exclusion list belongs to the report; -1 for a template never saved
};

/// One group of parameters in the parameter editor: shows them and takes them back.
class uctParameterGroup : public QWidget {
    Q_OBJECT

public:
    explicit uctParameterGroup(const EditedReport& report, QWidget* parent)
        : QWidget(parent), m_edited(report) {}

    /// Shows what the parameters say; not taken for an edit.
    void refresh(const clsReportParameters& parameters) {
        const QScopedValueRollback quiet(m_refreshing, true);
        load(parameters);
    }
    /// Puts what is shown into the parameters.
    virtual void store(clsReportParameters& parameters) const = 0;
    /// What has to be amended before the parameters can be saved; null when nothing has.
    virtual QWidget* boxAtFault() const { return nullptr; }

signals:
    void changed(); ///< the user edited the group

protected:
    virtual void load(const clsReportParameters& parameters) = 0;
    void edited() {
        if (!m_refreshing) emit changed();
    }
    bool isRefreshing() const { return m_refreshing; }
    const EditedReport& editedReport() const { return m_edited; }

private:
    EditedReport m_edited;
    bool m_refreshing = false;
};

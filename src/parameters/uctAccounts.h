#pragma once

#include "parameters/uctParameterGroup.h"

#include <QHash>

class QButtonGroup;
class QComboBox;
class QLabel;
class QStackedWidget;
class uctCheckList;
class uctMultiCC;

/// Which accounts, cost centres, numbers or lines the report covers. Several values chosen at once are
/// joined by "|"; the template makes a report of each.
class uctAccounts : public uctParameterGroup {
    Q_OBJECT

public:
    uctAccounts(const EditedReport& report, QWidget* parent);
    void store(clsReportParameters& parameters) const override;

protected:
    void load(const clsReportParameters& parameters) override;

private:
    void addOption(int filter, const QString& caption, int row, int column);
    bool isAllowed(int filter) const;
    void OptSelect_Click(int filter);
    void check(int filter);
    void show(int filter);
    void fillList(int filter);
    void fillLines();
    QStringList valuesOf(int filter);
    QString emptyText(int filter) const;
    /// What may be ticked for a filter: for a restricted user only what he is restricted to.
    QStringList withinLimits(const QStringList& numbers) const;

    ProjectLists::CostCentres m_limits;
    QButtonGroup* m_optSelect; ///< the buttons' numbers are the account filters
    QStackedWidget* m_details;
    QWidget* m_nothing;
    uctCheckList* m_list;
    uctCheckList* m_lines;
    uctMultiCC* m_multi;
    QLabel* m_hint;
    QComboBox* m_summaryLevel = nullptr; ///< billing reports only
    int m_shown = -1;                    ///< the filter that m_list is filled for
    QHash<int, QStringList> m_ticked;    ///< what is ticked for each filter that was shown
};

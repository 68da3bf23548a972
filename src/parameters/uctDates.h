#pragma once

#include "parameters/uctParameterGroup.h"

#include <array>

class QCheckBox;
class QDateEdit;
class QLabel;
class QToolButton;

/// Call dates and the days of the week, of which at least one stays ticked.
class uctDates : public uctParameterGroup {
    Q_OBJECT

public:
    uctDates(const EditedReport& report, QWidget* parent);
    void store(clsReportParameters& parameters) const override;
    QWidget* boxAtFault() const override;

protected:
    void load(const clsReportParameters& parameters) override;

private:
    using Period = std::pair<QDate, QDate>; ///< its first and its last day
    void ChkDay_Click(QCheckBox* day);
    QWidget* presetButton();
    void set(const Period& period);
    void setToLastBill();
    void showHint();

    QDateEdit* m_start;
    QDateEdit* m_end;
    QToolButton* m_presets = nullptr;
    QLabel* m_hint;
    std::array<QCheckBox*, 7> m_days; ///< from Sunday
};

#pragma once

#include "parameters/uctParameterGroup.h"

#include <array>

class QCheckBox;
class QGroupBox;
class QLabel;

/// Distance bands, grouped by the lines whose calls fall into them. Bands that the call filter rules
/// out are greyed.
class uctDistance : public uctParameterGroup {
    Q_OBJECT

public:
    uctDistance(const EditedReport& report, QWidget* parent);
    void store(clsReportParameters& parameters) const override;
    /// Greys what does not suit the filter.
    void showCallFilter(int callFilter);
    /// Ticks all that suits the filter, and nothing else.
    void tickSuiting(int callFilter);
    /// Offers the bands of another choice of lines and leaves the ticks of those as they are.
    void narrow(int callFilter);

protected:
    void load(const clsReportParameters& parameters) override;

private:
    QGroupBox* bandBox(const QString& title, distanceBands::Range bands);
    void tickAll(bool ticked);
    void showProblem();
    QCheckBox* band(int index) const { return m_bands[std::size_t(index) - 1]; }

    std::array<QCheckBox*, distanceBands::Count> m_bands;
    QLabel* m_problem;
};

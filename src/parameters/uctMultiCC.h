#pragma once

#include "parameters/uctParameterGroup.h"

class QComboBox;

/// Cost centres on several levels at once: each level lists what the choices above it leave.
class uctMultiCC : public QWidget {
    Q_OBJECT

public:
    /// `limits` are the cost centres that the user cannot leave.
    uctMultiCC(const EditedReport& report, const ProjectLists::CostCentres& limits, QWidget* parent);

    void setChosen(const ProjectLists::CostCentres& chosen);
    ProjectLists::CostCentres chosen() const;
    /// Blanks the choices on all levels below the given one, whose lists are read anew.
    void BlankRemainingMulti(int level);

signals:
    void changed(); ///< by the user

private:
    void fillFrom(int firstLevel, ProjectLists::CostCentres wanted);
    void fill(int level, const QStringList& centres, const QString& wanted);
    void choose(int level, const QString& centre);
    int typedEntry(int level) const;
    void takeTyped(int level);
    void cmbCC_Click(int level);
    QComboBox* box(int level) const { return m_boxes[std::size_t(level) - 1]; }

    EditedReport m_report;
    ProjectLists::CostCentres m_limits;
    ProjectLists::CostCentres m_shown; ///< the choices that the lists were read for
    std::array<QComboBox*, 5> m_boxes;
};

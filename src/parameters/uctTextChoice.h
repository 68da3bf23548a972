#pragma once

#include "parameters/uctParameterGroup.h"

#include <functional>

class QComboBox;

/// A group with one text, chosen from a list or typed.
class uctTextChoice : public uctParameterGroup {
    Q_OBJECT

public:
    struct Field {
        QString control;   ///< the object name of the box
        QString caption;   ///< with a mnemonic
        QString hint;      ///< when there is a choice
        QString emptyHint; ///< when the list is empty
        QStringList choices;
        bool typed = true; ///< other texts may be typed
        std::function<QString(const clsReportParameters&)> get;
        std::function<void(clsReportParameters&, const QString&)> set;
    };
    uctTextChoice(const EditedReport& report, Field field, QWidget* parent);
    void store(clsReportParameters& parameters) const override;
    const QStringList& choices() const { return m_field.choices; }

protected:
    void load(const clsReportParameters& parameters) override;

private:
    Field m_field;
    QComboBox* m_box;
};

/// The fields that there are.
uctTextChoice::Field percentageField();
uctTextChoice::Field circuitField(const ProjectLists& lists);
uctTextChoice::Field sourceBillField(const ProjectLists& lists);
uctTextChoice::Field wisperaUserField(const ProjectLists& lists);
uctTextChoice::Field callTaggingField();

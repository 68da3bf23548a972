#pragma once

#include "templates/clsTemplate.h"
#include "ui/ScreenDialog.h"

#include <QHash>
#include <QSet>
#include <functional>
#include <memory>
#include <optional>

class QRadioButton;
namespace Ui {
class frmTransfer;
}

/// Makes or edits a template of cost-centre sub-projects: for which cost centres of a project sets of
/// files are made, and whether they are e-mailed.
class frmTransfer : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmTransfer(ScreenContext& context, QWidget* parent = nullptr);
    ~frmTransfer() override;

    /// A negative ID prepares a new template for the current project. 0 when the template could be
    /// loaded.
    int Setup(int templateId);
    /// Of the template; -1 while it was never saved.
    int ID() const { return m_template.ID(); }

protected:
    bool mayClose() override;

private slots:
    void cmdOpen_Click();
    void cmdSave_Click();
    void cmdStop_Click();
    void chkEmailFiles_Click(bool ticked);

private:
    /// What the user decides on this screen.
    struct Choices {
        QString title;
        QString account;
        int type = 0;
        int level = 0;
        bool email = false;
        QStringList costCentres;

        bool operator==(const Choices&) const = default;
    };

    void buildFooter();
    void connectControls();
    QString lackingTables() const;
    bool isProjectChosen() const;
    void showProject();
    void showChoices();
    void showLevel();
    QRadioButton* optionOf(int type) const;
    QRadioButton* OptCC(int level) const;
    QWidget& entries() const;
    Choices choices() const;

    void OptCC_Click(int level);
    void Option_Click(int type);
    QStringList readCostCentresOf(int level);
    void loadCCTasks();
    void setFilling(bool filling);
    bool readAddresses();
    void showAddressGaps();

    bool checkChoices();
    bool confirmSave();
    void save();
    bool refused(const QString& text, QWidget* field);

    std::unique_ptr<Ui::frmTransfer> m_ui;
    clsTemplate m_template;
    QString m_projectProblem;                 ///< why the project has no cost centres; empty while it has
    QHash<int, QStringList> m_ticked;         ///< by level, of the levels that were left
    QStringList m_listed;                     ///< the cost centres of the level
    std::optional<QSet<QString>> m_addressed; ///< of them, with an address, as serverKey(); while it matters
    QString m_defaultEmail;                   ///< where the files of the others go
    Choices m_before;
    bool m_filling = false;
    bool m_stop = false;
};

#pragma once

#include "addresses/AddressBook.h"
#include "ui/ScreenDialog.h"

#include <functional>
#include <memory>

class QAction;
namespace Ui {
class frmEmailSettings;
}

/// The e-mail address book with its default address and the limit of attachments. The book is edited in
/// the screen and stored whole.
class frmEmailSettings : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmEmailSettings(ScreenContext& context, QWidget* parent = nullptr);
    ~frmEmailSettings() override;

    /// Reads book and options; 0 on success.
    int Setup();
    /// Whether there are changes to save.
    bool CheckSaveState() const;

public slots:
    /// For the screens that add entries.
    void CalledBack();

protected:
    bool mayClose() override;

private slots:
    void cmdAdd_Click();
    void cmdDelete_Click();
    void cmdEdit_Click();
    void cmdImport_Click();
    void cmdExport_Click();
    void cmdSave_Click();

private:
    void buildFooter();
    void showBook();
    void Sortthegrid();
    void updateControls();
    bool optionsChanged() const;

    QString changeProblem(const MailEntry& entry, int former) const;
    QString deleteQuestion(const QList<int>& ids) const;
    QList<MailEntry> exportable();
    bool store();
    void showProgress(qsizetype entries);

    std::unique_ptr<Ui::frmEmailSettings> m_ui;
    QAction* m_cmdSave = nullptr;
    AddressBook m_book;
    QList<MailEntry> m_asRead;
    QString m_defaultEmail; ///< as read, like the next
    int m_maxFileSize = 0;
    bool m_bookChanged = false;
};

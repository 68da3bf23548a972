#pragma once

#include "addresses/AddressImport.h"
#include "ui/ScreenDialog.h"

#include <functional>
#include <memory>

class AddressBook;
class QAction;
namespace Ui {
class frmMailImport;
}

/// Adds the entries of a CSV file to the e-mail address book, after showing what becomes of each line.
class frmMailImport : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmMailImport(ScreenContext& context, QWidget* parent = nullptr);
    ~frmMailImport() override;

    /// The book, which the entries are added to, must outlive the screen. Always 0.
    int Setup(AddressBook& book);

private slots:
    void cmdOpen_Click();
    void cmdImport_Click();
    void readFile();
    void showLines();

private:
    void buildFooter();
    void attempt(const std::function<void()>& body);
    QString refusalOfFile();
    void offerLayouts();
    MailEntry defaults() const;
    AddressLayout layout() const;
    void mapFile();
    void fillPreview();
    void tellStop(const ImportRow& stopper);
    void showProgress(qsizetype done);

    std::unique_ptr<Ui::frmMailImport> m_ui;
    QAction* m_cmdImport = nullptr;
    AddressBook* m_book = nullptr;
    AddressFile m_file;
    QList<AddressLayout> m_layouts;
    QList<ImportRow> m_rows;
    MailEntry m_mappedWith; ///< the account and level that m_rows were made with
};

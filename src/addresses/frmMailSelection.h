#pragma once

#include "ui/ScreenDialog.h"

#include <functional>
#include <memory>

class AddressBook;
namespace Ui {
class frmMailSelection;
}

/// Adds entries to the e-mail address book: a cost centre of a project and an address. Stays open for
/// the next one.
class frmMailSelection : public ScreenDialog {
    Q_OBJECT

public:
    explicit frmMailSelection(ScreenContext& context, QWidget* parent = nullptr);
    ~frmMailSelection() override;

    /// Shows the cost centres of the current project; 0 on success. The entries are added to the book, which
    /// must outlive the screen.
    int Setup(AddressBook& book);

protected:
    bool mayClose() override;

private slots:
    void cmdOpen_Click();
    void cmdAdd_Click();
    void cmbLevel_Click();

private:
    void fillCentres();
    void add();

    std::unique_ptr<Ui::frmMailSelection> m_ui;
    AddressBook* m_book = nullptr;
};

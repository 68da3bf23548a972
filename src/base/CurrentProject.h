#pragma once

#include "db/ServerText.h"

#include <QDate>
#include <QElapsedTimer>
#include <QString>

/// What is known about the analysis project that the user works with. One object for the whole run,
/// filled when a project is chosen; models hold a reference to it and read it when they are asked.
struct CurrentProject {
    QString database;      ///< empty while no project is chosen
    QString unitabAccount; ///< the account of its bills
    int billType = 0;      ///< see reports/BillType.h; 0 while unknown
    QDate defaultStart;    ///< of its bills; invalid while unknown
    QDate defaultEnd;
    QElapsedTimer sinceDatesRead;
    bool wispera = false;             ///< it holds Wispera data
    bool ownCentresReady = false;     ///< the user's copy of its cost centres is up to date
    bool ownCentresListReady = false; ///< and so is his list of them

    /// The template whose reports are edited. Belongs to the application, not to the project: it outlives
    /// a change of project.
    struct EditedTemplate {
        QString account;
        int billType = 0;             ///< 0 while unknown
        bool useDefaultDates = false; ///< its reports take the project's default dates instead of their own
    };
    EditedTemplate edited;

    bool isOfAccount(const QString& account) const {
        return !database.isEmpty() && sameOnServer(unitabAccount, account);
    }
    /// The bills that the reports are about: those of the template, which a project of another account
    /// may be open beside.
    int reportedBillType() const { return edited.billType != 0 ? edited.billType : billType; }
    /// Another account's dates are none of the template's.
    bool givesDates() const { return edited.useDefaultDates && isOfAccount(edited.account); }
};

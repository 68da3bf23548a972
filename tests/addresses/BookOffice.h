#pragma once

#include "addresses/MailEntry.h"
#include "support/Files.h"
#include "support/Office.h"

#include <QLineEdit>
#include <QTest>

/// An office with an address book, and a folder for its files.
struct BookOffice : Office {
    QTemporaryDir folder;

    using Office::Office;
    QString file(const QByteArray& content) {
        const QString path = folder.filePath("addresses.csv");
        writeFile(path, content);
        return path;
    }
    /// "account|centre|address|level" of every row of the stored book.
    QStringList storedBook() {
        QStringList rows;
        for (const Row row : db().query(sql("SELECT * FROM NorvaScheduler.dbo.tblMailAddresses")))
            rows << QStringList{row.text(0), row.text(1), row.text(2), row.text(3)}.join('|');
        rows.sort();
        return rows;
    }
};

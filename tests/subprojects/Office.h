#pragma once

#include "projects/modProjects.h"
#include "subprojects/MailEntry.h"
#include "support/TestProgram.h"

#include <QAbstractButton>
#include <QFile>
#include <QLineEdit>
#include <QTest>

/// Whom a screen calls back.
class Caller : public QObject {
    Q_OBJECT

public:
    int calls = 0;

public slots:
    void CalledBack() { ++calls; }
};

/// A user at work in a project of the demo server.
struct Office {
    TestProgram program;
    Caller caller;
    QTemporaryDir folder;

    explicit Office(const QString& user = Session::serverLoginName, const QString& project = "Brightwater") {
        program.logIn(user);
        if (!project.isEmpty()) openProject(program.session, project);
    }
    Connection& db() { return program.other(); }
    QStringList shown() { return program.messages.takeShown(); }
    QString file(const QByteArray& content) {
        QFile made(folder.filePath("addresses.csv"));
        made.open(QIODevice::WriteOnly);
        made.write(content);
        return made.fileName();
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

template <class T = QWidget>
T& child(QWidget& screen, const char* name) {
    T* found = screen.findChild<T*>(QString::fromLatin1(name));
    if (!found) qFatal("the screen has no %s", name);
    return *found;
}

inline void press(QWidget& screen, const char* button) {
    child<QAbstractButton>(screen, button).click();
}

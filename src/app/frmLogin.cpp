#include "app/frmLogin.h"

#include "app/cLogin.h"
#include "app/frmCreateDB.h"
#include "base/Session.h"
#include "db/DbError.h"
#include "db/SchedulerDatabase.h"
#include "db/wipe.h"
#include "ui/Cursors.h"
#include "ui/Labels.h"
#include "ui/Messages.h"
#include "ui/Palette.h"
#include "ui/SlotGuard.h"
#include "ui/frmHelp.h"
#include "ui_frmLogin.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QShortcut>

frmLogin::frmLogin(ScreenContext& context, QWidget* parent)
    : QDialog(parent), m_context(context), m_ui(std::make_unique<Ui::frmLogin>()) {
    m_ui->setupUi(this);
    QPushButton* cmdOk = m_ui->buttons->addButton(QDialogButtonBox::Ok);
    cmdOk->setObjectName("cmdOk");
    QPushButton* cmdCancel = m_ui->buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
    cmdCancel->setObjectName("cmdCancel");
    connect(cmdOk, &QPushButton::clicked, this, &frmLogin::cmdOk_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmLogin::reject);
    m_ui->txtServer->setText(lastServer());
    m_ui->TxtUsername->setText(lastUser());
    (m_ui->TxtUsername->text().isEmpty() ? m_ui->TxtUsername : m_ui->TxtPassword)->setFocus();
    setTextColour(*m_ui->lblCapsLock, Palette::problem());
    m_ui->lblCapsLock->hide();
    m_ui->TxtPassword->installEventFilter(this);
    connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
            [this] { showHelp(m_context.session.paths.AppFolder(), this); });
}

/// Qt does not tell the state of the key, but what it does to a letter.
bool frmLogin::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_ui->TxtPassword && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const QString text = key->text();
        const bool shift = key->modifiers() & Qt::ShiftModifier;
        if (text.size() == 1 && text.front().toLower() != text.front().toUpper())
            m_ui->lblCapsLock->setVisible(text.front().isUpper() != shift);
    }
    return QDialog::eventFilter(watched, event);
}

frmLogin::~frmLogin() = default;

bool frmLogin::logInUnseen(const QString& userName, const QString& password, const QString& server) {
    m_ui->TxtUsername->setText(userName);
    m_ui->TxtPassword->setText(password);
    m_ui->txtServer->setText(server);
    cmdOk_Click();
    return result() == Accepted;
}

void frmLogin::cmdOk_Click() {
    guarded(m_context, this, [this] { logIn(); });
}

void frmLogin::logIn() {
    Session& session = m_context.session;
    cLogin login(session, [&] {
        NormalCursor pointer;
        frmCreateDB screen(m_context, this);
        return screen.exec() == Accepted;
    });
    LoginOutcome outcome;
    {
        WaitCursor wait;
        QString password = m_ui->TxtPassword->text();
        outcome = login.logIn(m_ui->txtServer->text().trimmed(), m_ui->TxtUsername->text(), password);
        if (outcome.result != LoginOutcome::Stay) m_ui->TxtPassword->setText({}); // its copy goes first
        wipe(password);
    }
    if (!outcome.message.isEmpty())
        m_context.messages.notice(this, outcome.message, Messages::Plain, {}, outcome.details);
    switch (outcome.result) {
    case LoginOutcome::Done:
        rememberLogin(session);
        if (session.dropDatabase) offerToDropDatabase();
        m_endProgram ? reject() : accept();
        return;
    case LoginOutcome::EndProgram:
        m_endProgram = true;
        reject();
        return;
    case LoginOutcome::Stay:
        break;
    }
    QLineEdit* const fields[] = {nullptr, m_ui->txtServer, m_ui->TxtUsername, m_ui->TxtPassword};
    if (QLineEdit* field = fields[outcome.focus]) {
        field->setFocus();
        field->selectAll();
    }
}

void frmLogin::offerToDropDatabase() {
    Session& session = m_context.session;
    if (!m_context.messages.ask(
            this, QString("Are you sure you wish to clear and delete the Norva Scheduler database from the "
                          "server '%1?.  "
                          "In order to do this no other user must be accessing the Norva Scheduler database.")
                      .arg(session.serverName)))
        return;
    try {
        dropSchedulerDatabase(session.db());
        m_context.messages.notice(this,
                                  "The NorvaScheduler database was deleted and will be recreated on the next "
                                  "login.  The program will now end.");
    } catch (const DbError& error) {
        session.log.write("frmLogin.DropDatabase", error);
        m_context.messages.notice(this, "The following Error has occurred: " + error.text()
                                            + "  The program will now end.");
    }
    m_endProgram = true;
}

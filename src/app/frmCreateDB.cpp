#include "app/frmCreateDB.h"

#include "app/modCreateDB.h"
#include "base/Session.h"
#include "db/DbError.h"
#include "db/Refusal.h"
#include "ui/Cursors.h"
#include "ui/Messages.h"
#include "ui_frmCreateDB.h"

#include <QPushButton>

frmCreateDB::frmCreateDB(ScreenContext& context, QWidget* parent)
    : QDialog(parent), m_context(context), m_ui(std::make_unique<Ui::frmCreateDB>()) {
    m_ui->setupUi(this);
    const Session& session = context.session;
    m_ui->lblExplain->setText(
        QString("The server '%1' holds no scheduler database yet. It will be created now, with "
                "empty tables.")
            .arg(session.db().connectionString().dataSource));
    m_ui->lblData->setText(session.serverDefaults.dataFolder);
    m_ui->lblLog->setText(session.serverDefaults.logFolder);
    QPushButton* cmdCreate = m_ui->buttons->addButton("C&reate", QDialogButtonBox::AcceptRole);
    cmdCreate->setObjectName("cmdCreate");
    cmdCreate->setDefault(true);
    QPushButton* cmdCancel = m_ui->buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
    cmdCancel->setObjectName("cmdCancel");
    connect(cmdCreate, &QPushButton::clicked, this, &frmCreateDB::cmdCreate_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmCreateDB::reject);
}

frmCreateDB::~frmCreateDB() = default;

int frmCreateDB::exec() {
    const ServerDefaults& folders = m_context.session.serverDefaults;
    if (!folders.dataFolder.isEmpty() && !folders.logFolder.isEmpty()) return QDialog::exec();
    m_context.messages.notice(this,
                              "The SQL Server has no default data directory or default log directory setup.  "
                              "Please contact your Administrator.");
    return Rejected;
}

void frmCreateDB::tell(const QString& step) {
    m_ui->lblStep->setText(step);
    m_context.session.turn();
}

void frmCreateDB::tellFailure(const QString& reason) {
    m_context.messages.notice(this, "Failed to create the database.\r\nCan not continue.", Messages::Plain,
                              {}, reason);
    reject();
}

void frmCreateDB::cmdCreate_Click() {
    try {
        {
            WaitCursor wait;
            createFromScripts(m_context.session, [this](const QString& step) { tell(step); });
        }
        m_context.messages.notice(this, "Succsessfuly created the database.");
        accept();
    } catch (const DbError& error) {
        m_context.session.log.write("frmCreateDB.cmdCreate_Click", error);
        tellFailure(error.text());
    } catch (const Refusal& refusal) { // a script that cannot be read
        m_context.session.log.write("frmCreateDB.cmdCreate_Click", 1, refusal.text());
        tellFailure(refusal.text());
    }
}

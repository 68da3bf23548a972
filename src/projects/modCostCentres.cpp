#include "projects/modCostCentres.h"

#include "base/Session.h"
#include "db/DbError.h"
#include "db/Procedure.h"

namespace {

const QString costCentres = "CostCentres";

/// A table with its database, as it stands in statements and, quoted once more, in object_id().
struct Table {
    QString database;
    QString name;

    QString fullName() const { return Name(database).quoted() + ".[dbo]." + Name(name).quoted(); }
    Sql sqlName() const { return sql("{}.[dbo].{}", Name(database), Name(name)); }
};

Sql allocationColumns() {
    return sql("[ID] [int] IDENTITY (1, 1) NOT NULL ,\r\n"
               "[UnitabAccount] [varchar] (20) COLLATE Latin1_General_CI_AS NOT NULL ,\r\n"
               "[CostCentre1] [varchar] (30) COLLATE Latin1_General_CI_AS NULL ,\r\n"
               "[CostCentre2] [varchar] (30) COLLATE Latin1_General_CI_AS NULL ,\r\n"
               "[CostCentre3] [varchar] (30) COLLATE Latin1_General_CI_AS NULL ,\r\n"
               "[CostCentre4] [varchar] (30) COLLATE Latin1_General_CI_AS NULL ,\r\n"
               "[CostCentre5] [varchar] (30) COLLATE Latin1_General_CI_AS NULL ,\r\n"
               "[TelNo] [varchar] (25) COLLATE Latin1_General_CI_AS NULL ,\r\n"
               "[SourceAccount] [varchar] (30) COLLATE Latin1_General_CI_AS NULL ,\r\n"
               "[Found] [varchar] (10) COLLATE Latin1_General_CI_AS NULL ,\r\n"
               "[Checked] [smallint] NULL\r\n");
}

Sql centresColumns() {
    return sql("[Account] [varchar] (50) COLLATE Latin1_General_CI_AS NULL ,\r\n"
               "[CostCentre] [varchar] (30) COLLATE Latin1_General_CI_AS NULL ,\r\n"
               "[Level] [smallint] NULL\r\n");
}

/// The existence test may look into the catalogue of another database than the table's, and then the
/// table may be there all the same: that failure is the wanted state.
void createTable(Connection& db, const Table& table, const Sql& catalogue, const Sql& columns) {
    try {
        db.execute(sql("if not exists (select * from {} where id = object_id({}) and "
                       "OBJECTPROPERTY(id, N'IsUserTable') = 1)\r\nCREATE TABLE {} (\r\n{}) ON [PRIMARY]",
                       catalogue, table.fullName(), table.sqlName(), columns));
    } catch (const DbError& error) {
        if (error.number() != DbError::AlreadyExists) throw;
    }
}

/// For the rest of the transaction.
void lockTable(Connection& db, const Table& table) {
    db.query(sql("SELECT TOP 1 ID FROM {} WITH (TABLOCKX, HOLDLOCK)", table.sqlName()));
}

Sql dropProcedure(const Sql& catalogue, const QString& name) {
    return sql("If Exists(Select Name from {} Where Name = {}) Drop Procedure {}", catalogue, name,
               Name(name));
}

void runProcedure(Connection& db, const Sql& catalogue, const QString& name, const Sql& body,
                  const QString& account) {
    runRecreated(db, dropProcedure(catalogue, name),
                 sql("CREATE PROCEDURE {}\r\n@BillAccount varchar(20)\r\nAS\r\n{}\r\n", Name(name), body),
                 sql("EXECUTE {} {}", Name(name), account));
}

/// Numbers of the master, or of the copy itself, that the copy lacks. Nothing is "not in" a list that holds
/// a NULL, so rows without a number are left out of it.
Sql lackingNumbers(const Table& copy, const Sql& account) {
    return sql(
        "Where UnitabAccount = {} AND TelNo Not in (Select Distinct TelNo from {} Where UnitabAccount = {} "
        "AND TelNo is not null)",
        account, copy.sqlName(), account);
}

Sql insertAllocation(const Table& into, const QString& account, const Table& from, const Sql& condition) {
    return sql(
        "insert {} (UnitabAccount, Costcentre1, Costcentre2,Costcentre3,Costcentre4,Costcentre5,TelNo, "
        "SourceAccount) Select {},CostCentre1,CostCentre2,CostCentre3,CostCentre4,CostCentre5,TelNo, "
        "SourceAccount From {} {}",
        into.sqlName(), account, from.sqlName(), condition);
}

/// Adds to the user's copy what the master gained. The procedure's cursor is never opened; where
/// cursors are global it outlives the procedure, so it is given back, or the next run would find its
/// name taken.
void ensureAllNumbers(Connection& db, const Session& session, const Table& master, const Table& copy) {
    const QString& account = session.project.unitabAccount;
    const QString lacking = db.scalar(
        sql("Select Count (*) From {} {}", master.sqlName(), lackingNumbers(copy, Sql::value(account))));
    if (lacking.toInt() == 0) return;
    const Sql condition = lackingNumbers(copy, sql("@billaccount"));
    runProcedure(
        db, sql("sysobjects"), session.userName + "_EnsureAllNumbers",
        sql("Declare csrCC Cursor for Select CostCentre1,CostCentre2,CostCentre3,CostCentre4,CostCentre5,"
            "TelNo, SourceAccount From {} {}\r\n{}\r\nDeallocate csrCC",
            copy.sqlName(), condition, insertAllocation(copy, account, master, condition)),
        account);
}

} // namespace

QString masterTable(const QString& account) {
    return account + "_TblCC";
}
QString masterCentresTable(const QString& account) {
    return account + "_TblCentres";
}

QString userTable(const Session& session) {
    return session.project.unitabAccount + '_' + session.userName + "_TblCC";
}

QString userCentresTable(const Session& session) {
    return session.project.unitabAccount + '_' + session.userName + "_TblCentres";
}

void prepareUserCostCentres(Session& session) {
    Connection& db = session.db();
    const QString& account = session.project.unitabAccount;
    const QString& project = session.project.database;
    const Table own{project, session.userName + "_TblCC"};
    DefaultDatabase inProject(db, project);
    createTable(db, own, sql("{}.dbo.sysobjects", Name(project)), allocationColumns());
    db.execute(dropProcedure(sql("sysobjects"), session.userName + "_CreateCC"));
    runProcedure(db, sql("sysobjects"), session.userName + "_CreateMasterCentres",
                 sql("Delete From {}\r\n{}", own.sqlName(),
                     insertAllocation(own, account, {costCentres, masterTable(account)},
                                      sql("Where UnitabAccount = @BillAccount"))),
                 account);
}

void prepareAccountCostCentres(Session& session, bool fullRebuild) {
    Connection& db = session.db();
    const QString& account = session.project.unitabAccount;
    const QString& project = session.project.database;
    const Table master{costCentres, masterTable(account)};
    const Table copy{costCentres, userTable(session)};
    const Table centres{costCentres, userCentresTable(session)};
    const Table inProject{project, userTable(session)};
    const Sql projectCatalogue = sql("{}.dbo.sysobjects", Name(project));
    const Sql ofBillAccount = sql("Where UnitabAccount = @BillAccount");

    DefaultDatabase ofProject(db, project);
    createTable(db, copy, sql("dbo.sysobjects"), allocationColumns());
    createTable(db, centres, projectCatalogue, centresColumns());
    createTable(db, inProject, sql("dbo.sysobjects"), allocationColumns());
    Transaction transaction(db);
    lockTable(db, copy); // another desk of the same user would add the same numbers
    ensureAllNumbers(db, session, master, copy);
    runProcedure(db, sql("sysobjects"), session.userName + "_TransferUserCentres",
                 sql("Delete from {} \r\n{}", inProject.sqlName(),
                     insertAllocation(inProject, account, copy, ofBillAccount)),
                 account);
    if (fullRebuild)
        runProcedure(db, projectCatalogue, session.userName + "_CreateCentres",
                     sql("Delete From {} Where Account = @BillAccount\r\n"
                         "insert {} (Account, Costcentre, Level) Select {},CostCentre, [level] From {} "
                         "Where Account = @BillAccount",
                         centres.sqlName(), centres.sqlName(), account,
                         Table{costCentres, masterCentresTable(account)}.sqlName()),
                     account);
    transaction.commit();
}

QStringList readCostCentres(Session& session, int level, CostCentreSource source) {
    const Table table = source == CostCentreSource::UserInProject
                            ? Table{session.project.database, userTable(session)}
                            : Table{costCentres, masterTable(session.project.unitabAccount)};
    const Name column(QString("CostCentre%1").arg(level));
    QStringList names;
    for (const Row row : session.db().query(sql("SELECT Distinct {} FROM {} WHERE len({}) > 0 Order By {}",
                                                column, table.sqlName(), column, column)))
        names << row.text(0);
    return names;
}

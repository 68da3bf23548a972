#include "demo/CentralDatabases.h"

#include "demo/BulkInsert.h"
#include "demo/DemoUser.h"

namespace centralDatabases {

namespace {

void createUsers(Connection& connection) {
    connection.execute(sql("CREATE TABLE NorvaTallymere.dbo.TblUsers ("
                           "[Username] [nvarchar] (50) COLLATE Latin1_General_CI_AS NOT NULL, "
                           "[Password] [nvarchar] (50) COLLATE Latin1_General_CI_AS NOT NULL, "
                           "[UserLevel] [int] NOT NULL, [MultiLevel] [smallint] NULL, "
                           "[Costcentre1] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, "
                           "[Costcentre2] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, "
                           "[Costcentre3] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, "
                           "[Costcentre4] [varchar] (30) COLLATE Latin1_General_CI_AS NULL, "
                           "[Costcentre5] [varchar] (30) COLLATE Latin1_General_CI_AS NULL)"));
    BulkInsert rows(connection,
                    sql("INSERT INTO NorvaTallymere.dbo.TblUsers (Username, Password, UserLevel, MultiLevel, "
                        "Costcentre1, Costcentre2, Costcentre3, Costcentre4, Costcentre5) VALUES"));
    for (const DemoUser& user : DemoUser::all()) {
        const QStringList& centres = user.costCentres;
        rows.add(user.name, Secret{DemoUser::password}, user.level, user.multiLevel, centres[0], centres[1],
                 centres[2], centres[3], centres[4]);
    }
    rows.finish();
}

void createSettings(Connection& connection) {
    connection.execute(
        sql("CREATE TABLE NorvaTallymere.dbo.TblSQLSettings ("
            "[SettingID] [int] NOT NULL, [DataPath] [varchar] (260) COLLATE Latin1_General_CI_AS NULL)"));
    connection.execute(
        sql("INSERT INTO NorvaTallymere.dbo.TblSQLSettings (SettingID, DataPath) VALUES (1, {})",
            QString("C:\\SQLData\\")));
}

void createCallClasses(Connection& connection) {
    connection.execute(sql("CREATE TABLE QXSpNum.dbo.TblMobileCallClass ("
                           "[CallClass] [varchar] (10) COLLATE Latin1_General_CI_AS NOT NULL, "
                           "[CallDescription] [varchar] (50) COLLATE Latin1_General_CI_AS NULL)"));
    BulkInsert rows(connection,
                    sql("INSERT INTO QXSpNum.dbo.TblMobileCallClass (CallClass, CallDescription) VALUES"));
    const QList<std::pair<QString, QString>> classes{{"VOICE", "Voice calls"},
                                                     {"SMS", "Text messages"},
                                                     {"GPRS", "Data sessions"},
                                                     {"ROAM", "Calls from abroad"},
                                                     {"PREM", "Premium-rate services"}};
    for (const auto& [callClass, description] : classes) rows.add(callClass, description);
    rows.finish();
}

} // namespace

QStringList names() {
    // Sundries holds no bills: a database of another program, which is no project.
    return {"NorvaTallymere", "QXCcts", "QXSpNum", "CostCentres", "TrendDB", "InterSite", "Sundries"};
}

void create(Connection& connection) {
    for (const QString& database : names()) connection.execute(sql("CREATE DATABASE {}", Name(database)));
    connection.execute(sql("CREATE TABLE Sundries.dbo.Notes ([NoteID] [int] NOT NULL)"));
    Transaction transaction(connection);
    createUsers(connection);
    createSettings(connection);
    createCallClasses(connection);
    transaction.commit();
}

} // namespace centralDatabases
